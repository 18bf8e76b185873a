// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The host's cell operations: what lands in the grids and in the cell store,
// the profile alias, and what is refused or reported.
#include "support/PanelFixture.h"

using namespace tessaly;

namespace tessaly {
bool operator==(const CellAttr& a, const CellAttr& b)
{
    return a.ComboStr == b.ComboStr && a.FormatType == b.FormatType && a.IsNumber == b.IsNumber && a.ReadOnly == b.ReadOnly;
}
} // namespace tessaly

namespace {

class CellStoreTest : public PanelFixture {
protected:
    const CellAttr& attr(int page, int row, int col)
    {
        return PanelOf(*host).Cells().Attr(int16_t(page), row, col);
    }
    void add(int16_t part, const QString& text, int32_t row, int32_t col, const QString& format = {},
             bool number = false, bool readOnly = false, const QString& combo = {})
    {
        host->AddItemToGrd(part, format, number, readOnly, combo, text, row, col);
    }
};

} // namespace

TEST_F(CellStoreTest, ValueGoesToTheGridAndItsAttributesToTheStore)
{
    add(1, QStringLiteral("42"), 3, 2, QStringLiteral("####"), true, false, QStringLiteral("1|2|42"));
    EXPECT_EQ(host->GetItemFromGrd(1, 3, 1), "42") << "value columns count from 0";
    EXPECT_EQ(attr(1, 3, 2), (CellAttr{"1|2|42", "####", true, false}));
    // The write leaves the page's current cell on it, coloured as editable.
    EXPECT_EQ(QPoint(grid(1)->Col(), grid(1)->Row()), QPoint(2, 3));
    EXPECT_EQ(grid(1)->CellForeColor(), RGB(73, 73, 73));
    add(1, QStringLiteral("ESN"), 4, 1, {}, false, true);
    EXPECT_EQ(grid(1)->CellForeColor(), RGB(160, 160, 160));

    // Empty strings keep the stored ones; the flags are always written.
    add(1, QString(), 3, 2);
    EXPECT_EQ(attr(1, 3, 2), (CellAttr{"1|2|42", "####", false, false}));
    // The host reads what the grid shows, edited or not.
    grid(1)->setTextMatrix(3, 2, QStringLiteral("edited"));
    EXPECT_EQ(host->GetItemFromGrd(1, 3, 1), "edited");
}

TEST_F(CellStoreTest, PageThreeStandsForTheSixProfilePages)
{
    // Before any profile count is set, profile 0's value reaches all six pages.
    add(3, QStringLiteral("user@realm"), 1, 1);
    for (int page = 14; page <= 19; ++page)
        EXPECT_EQ(grid(page)->TextMatrix(1, 1), "user@realm") << page;
    EXPECT_EQ(grid(3)->TextMatrix(1, 1), "");

    // With two profiles in use, profile 0 is copied to the unused ones only.
    panel().cmbProfileCount->setListIndex(1);
    add(3, QStringLiteral("second"), 2, 1, QStringLiteral("########"), false, false, QStringLiteral("x|y"));
    EXPECT_EQ(grid(14)->TextMatrix(2, 1), "second");
    EXPECT_EQ(grid(15)->TextMatrix(2, 1), "");
    for (int page = 16; page <= 19; ++page) {
        EXPECT_EQ(grid(page)->TextMatrix(2, 1), "second") << page;
        EXPECT_EQ(attr(page, 2, 1).ComboStr, "x|y") << page;
    }
    // Any other column writes one profile's page; reading counts from 0.
    add(3, QStringLiteral("profile 1"), 3, 2);
    EXPECT_EQ(QStringList({grid(14)->TextMatrix(3, 1), grid(15)->TextMatrix(3, 1)}), QStringList({"", "profile 1"}));
    EXPECT_EQ(host->GetItemFromGrd(3, 3, 1), "profile 1");

    host->AddItemToGrid2(3, {}, false, {}, QStringLiteral("NAI"), 1, 0);
    for (int page = 14; page <= 19; ++page)
        EXPECT_EQ(grid(page)->TextMatrix(1, 0), "NAI") << page;
}

// Bad pages and columns are refused in plain words; other failures are
// reported under the operation's labels.
TEST_F(CellStoreTest, BadCallsAreRefusedOrReported)
{
    DialogAnswerer answerer;
    add(-1, QStringLiteral("x"), 1, 1);
    add(21, QStringLiteral("x"), 1, 1);
    add(2, QStringLiteral("x"), 1, 2); // page 2 has columns 0 and 1
    host->AddItemToGrid2(21, {}, false, {}, QStringLiteral("x"), 1, 0);
    host->AddItemToGrid2(1, {}, false, {}, QStringLiteral("x"), 1, 1);
    EXPECT_EQ(host->GetItemFromGrd(-1, 1, 0), "");
    EXPECT_EQ(host->GetItemFromGrd(2, 1, 1), "");
    add(1, QStringLiteral("x"), 100, 1);
    // A cell beyond the store keeps its text and gets no attributes.
    host->SetNVFieldItemCount(13, 120);
    add(13, QStringLiteral("far"), 120, 40, QStringLiteral("#"));
    EXPECT_EQ(grid(13)->TextMatrix(120, 40), "far");
    EXPECT_EQ(answerer.texts(), QStringList({"Bad Tab Index.. In AddItemToGrd()", "Bad Tab Index.. In AddItemToGrd()",
                                             "Bad Column Index.. In AddItemToGrd()", "Bad Tab Index.. In AddItemToGrd2()",
                                             "Bad Column Index.. In AddItemToGrd2()", "Bad Tab Index.. In GetItemFromGrd()",
                                             "Bad Column Index.. In GetItemFromGrd()",
                                             "Error[Interface/AddItemToGrid]:30009\tInvalid Row value\t",
                                             "Error[Interface/AddItemToGrid]:9\tSubscript out of range\t"}));
    EXPECT_EQ(grid(2)->TextMatrix(1, 1), "");
    // The highest page number is accepted.
    add(20, QStringLiteral("last page"), 1, 22);
    EXPECT_EQ(grid(20)->TextMatrix(1, 22), "last page");
    EXPECT_EQ(answerer.texts().size(), 9);
}
