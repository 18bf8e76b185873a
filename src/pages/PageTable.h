// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The panel's fixed pages in one table: each page's number, the tree node
// that shows it and that node's parent, its grid's columns, whether its grid
// carries a title row, and the default width of its value columns. The
// tree, the grids, their titles, RemoveTab and the catalogue all read it.
// It needs no widgets.
#pragma once

#include <QString>

#include <cstdint>
#include <span>

namespace tessaly {

// What a node of the tree shows on the right.
enum class PageView : uint8_t {
    Grid,      // the page's own grid
    BasicInfo, // the basic information frame
    Profiles,  // the MIP profile frame
};

struct PageEntry {
    int16_t number;        // -1: a node that shows a frame and has no grid
    const char* node;      // nullptr: a page that no node shows
    const char* parent;    // nullptr: a root node
    PageView view;
    int16_t cols;          // the grid's columns, the item titles' included
    bool titled;           // whether start-up writes its title row
    int32_t valueWidth;    // twips, of each value column
};

// The highest fixed page: pages the host adds are numbered after it.
inline constexpr int16_t LastFixedPage = 20;
// The second NAM's page, whose rows page 0's item count sets.
inline constexpr int16_t SecondNamPage = 20;
// Page 3 of the host's cell calls stands for the six MIP profile pages.
inline constexpr int16_t ProfilesPart = 3;
inline constexpr int16_t FirstProfilePage = 14;
inline constexpr int16_t LastProfilePage = 19;
inline constexpr int16_t ProfilePages = LastProfilePage - FirstProfilePage + 1;
// Column 0 of every grid holds the item titles.
inline constexpr int32_t TitleColumnWidth = 3500;
// Each value column of a page the host adds.
inline constexpr int32_t AddedValueWidth = 2800;

// Every fixed page and node: the nodes in the tree's order, then the pages
// that no node shows.
std::span<const PageEntry> FixedPages();
// The entry of page `number`, or nullptr for a page the table does not hold.
const PageEntry* FindPage(int16_t number);
// The entry of the node with that text, matched exactly, or nullptr.
const PageEntry* FindPageByNode(const QString& node);
// The fixed page with the most columns: every page's cell records are as
// many as its cells.
int16_t WidestFixedPage();

} // namespace tessaly
