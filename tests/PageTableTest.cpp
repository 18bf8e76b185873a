// The table of pages that the tree, the grids and the catalogue all read.
#include "pages/PageTable.h"

#include <QSet>

#include <gtest/gtest.h>

using namespace tessaly;

TEST(PageTable, EveryFixedPageOnceAndEveryNodeBuildableInTheTablesOrder)
{
    QSet<int> numbers;
    QSet<QString> roots;
    QSet<QString> nodes;
    for (const PageEntry& page : FixedPages()) {
        SCOPED_TRACE(page.number);
        if (page.number >= 0) {
            EXPECT_FALSE(numbers.contains(page.number)) << "listed twice";
            numbers << page.number;
            EXPECT_GE(page.cols, 2) << "the titles' column and a value column at least";
            EXPECT_GT(page.valueWidth, 0);
        }
        if (!page.node)
            continue;
        const QString node = QLatin1String(page.node);
        EXPECT_FALSE(nodes.contains(node)) << "two nodes of one text";
        nodes << node;
        if (page.parent) {
            EXPECT_TRUE(roots.contains(QLatin1String(page.parent))) << "a child before its parent";
        } else {
            roots << node;
        }
        EXPECT_EQ(FindPageByNode(node), &page);
        EXPECT_EQ(page.view == PageView::Grid, page.number >= 0 && page.number != ProfilesPart);
    }
    EXPECT_EQ(numbers.size(), LastFixedPage + 1);
    for (int number = 0; number <= LastFixedPage; ++number)
        EXPECT_EQ(FindPage(int16_t(number))->number, number);
    for (int profile = FirstProfilePage; profile <= LastProfilePage; ++profile)
        EXPECT_STREQ(FindPage(int16_t(profile))->parent, FindPage(ProfilesPart)->node);
    // Look-ups match exactly and know no added page.
    EXPECT_FALSE(FindPage(-1) || FindPage(LastFixedPage + 1) || FindPageByNode(QStringLiteral("data")));
}
