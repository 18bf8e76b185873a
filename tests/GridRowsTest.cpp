// Item rows of the pages, with their twin pages, and the title rows that
// start-up writes.
#include "support/PanelFixture.h"

using namespace tessaly;

using GridRowsTest = PanelFixture;

namespace {

QStringList TitleRow(MSFlexGrid* grid)
{
    QStringList titles;
    for (int col = 0; col < grid->Cols(); ++col)
        titles << grid->TextMatrix(0, col);
    return titles;
}

} // namespace

TEST_F(GridRowsTest, ItemCountSetsRowsAndCarriesTheTwinPages)
{
    host->SetNVFieldItemCount(3, 12);
    for (int page : {3, 14, 15, 16, 17, 18, 19})
        EXPECT_EQ(grid(page)->Rows(), 13) << page;

    host->SetNVFieldItemCount(0, 30);
    host->SetNVFieldItemCount(20, 5);
    EXPECT_EQ(QPoint(grid(0)->Rows(), grid(20)->Rows()), QPoint(31, 6)) << "page 20 is set alone";
}

TEST_F(GridRowsTest, RowsTheGridRefusesAreReported)
{
    DialogAnswerer answerer;
    host->SetNVFieldItemCount(3, -1);
    host->SetNVFieldItemCount(25, 4);
    EXPECT_EQ(grid(14)->Rows(), 100); // the steps behind the failure did not run
    EXPECT_EQ(answerer.texts(), QStringList({
                                    "Error[Interface/SetNVFieldItemCount]:380\tInvalid property value\t",
                                    "Error[Interface/SetNVFieldItemCount]:340\tControl array element '25' doesn't exist\t",
                                }));
}

// "VALUE" alone over the one value column of a two-column grid, numbered
// over each of several; the spare pages 9 to 11 have no titles.
TEST_F(GridRowsTest, EveryPageButTheSpareOnesCarriesItsTitles)
{
    for (int page = 0; page <= 20; ++page) {
        MSFlexGrid* g = grid(page);
        QStringList expected;
        if (page < 9 || page > 11) {
            expected << "NV Items";
            for (int col = 1; col < g->Cols(); ++col)
                expected << (g->Cols() == 2 ? QStringLiteral("VALUE") : QStringLiteral("VALUE%1").arg(col));
        } else {
            expected = QStringList(g->Cols(), QString());
        }
        EXPECT_EQ(TitleRow(g), expected) << page;
    }
}
