// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Item rows of the pages, with their twin pages.
#include "support/PanelFixture.h"

using namespace tessaly;

using GridRowsTest = PanelFixture;

TEST_F(GridRowsTest, ItemCountSetsRowsCarriesTheTwinPagesAndReportsWhatTheGridRefuses)
{
    host->SetNVFieldItemCount(3, 12);
    for (int page : {3, 14, 15, 16, 17, 18, 19})
        EXPECT_EQ(grid(page)->Rows(), 13) << page;

    host->SetNVFieldItemCount(0, 30);
    host->SetNVFieldItemCount(20, 5);
    EXPECT_EQ(QPoint(grid(0)->Rows(), grid(20)->Rows()), QPoint(31, 6)) << "page 20 is set alone";

    // Counts the grid refuses are reported; the steps behind the failure do not run.
    DialogAnswerer answerer;
    host->SetNVFieldItemCount(3, -1);
    host->SetNVFieldItemCount(25, 4);
    EXPECT_EQ(grid(14)->Rows(), 13);
    EXPECT_EQ(answerer.texts(), QStringList({
                                    "Error[Interface/SetNVFieldItemCount]:380\tInvalid property value\t",
                                    "Error[Interface/SetNVFieldItemCount]:340\tControl array element '25' doesn't exist\t",
                                }));
}
