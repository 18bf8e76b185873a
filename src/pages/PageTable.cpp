// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "pages/PageTable.h"

namespace tessaly {

namespace {

// Pages 10 and 11 keep the ten columns that the layout gives the first grid.
constexpr PageEntry Pages[] = {
    {-1, "Basic Information", nullptr, PageView::BasicInfo, 0, false, 0},
    {0, "System NAM1", nullptr, PageView::Grid, 23, true, 1500},
    {20, "System NAM2", nullptr, PageView::Grid, 23, true, 1500},
    {1, "General", nullptr, PageView::Grid, 4, true, 1000},
    {2, "Data", nullptr, PageView::Grid, 2, true, 2800},
    {3, "MIP Profile", nullptr, PageView::Profiles, 7, true, 1500},
    {4, "Feature", nullptr, PageView::Grid, 2, true, 2800},
    {5, "MMS", nullptr, PageView::Grid, 3, true, 1500},
    {6, "SMS/EMS", nullptr, PageView::Grid, 3, true, 1500},
    {7, "WAP", nullptr, PageView::Grid, 3, true, 1500},
    {8, "BREW", nullptr, PageView::Grid, 3, true, 1500},
    {12, "LBS", nullptr, PageView::Grid, 3, true, 1500},
    {13, "Calibration", nullptr, PageView::Grid, 41, true, 1000},
    {14, "MIP Profile 0", "MIP Profile", PageView::Grid, 2, true, 2800},
    {15, "MIP Profile 1", "MIP Profile", PageView::Grid, 2, true, 2800},
    {16, "MIP Profile 2", "MIP Profile", PageView::Grid, 2, true, 2800},
    {17, "MIP Profile 3", "MIP Profile", PageView::Grid, 2, true, 2800},
    {18, "MIP Profile 4", "MIP Profile", PageView::Grid, 2, true, 2800},
    {19, "MIP Profile 5", "MIP Profile", PageView::Grid, 2, true, 2800},
    {9, nullptr, nullptr, PageView::Grid, 2, false, 1500},
    {10, nullptr, nullptr, PageView::Grid, 10, false, 1500},
    {11, nullptr, nullptr, PageView::Grid, 10, false, 1500},
};

} // namespace

std::span<const PageEntry> FixedPages()
{
    return Pages;
}

const PageEntry* FindPage(int16_t number)
{
    if (number < 0 || number > LastFixedPage)
        return nullptr;
    for (const PageEntry& page : Pages)
        if (page.number == number)
            return &page;
    return nullptr;
}

const PageEntry* FindPageByNode(const QString& node)
{
    for (const PageEntry& page : Pages)
        if (page.node && node == QLatin1String(page.node))
            return &page;
    return nullptr;
}

int16_t WidestFixedPage()
{
    const PageEntry* widest = &Pages[0];
    for (const PageEntry& page : Pages)
        if (page.number >= 0 && page.cols > widest->cols)
            widest = &page;
    return widest->number;
}

} // namespace tessaly
