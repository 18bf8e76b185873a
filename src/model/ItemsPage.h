// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// A page of the panel that lists NV items by number, one row each: its
// number, the catalogue's name for it, the status the handset gave, its bytes
// as hex and the value the catalogue reads in them. The host adds the page
// (AddTab with ItemsPage::Columns columns); this fills its grid through the
// grid's own properties and methods, found by its name, in a few calls
// whatever the number of rows, up to every item number a handset has. The hex
// cells are edited in place; the others are read-only.
#pragma once

#include "model/NvFile.h"

#include <QPointer>
#include <QStringList>
#include <QWidget>

#include <array>
#include <vector>

namespace tessaly::model {

class ItemsPage {
public:
    enum Column : int { NumberColumn, NameColumn, StatusColumn, HexColumn, ValueColumn, Columns };
    using RowTexts = std::array<QStringList, Columns>;

    // Dresses the page `page` of `panel`: column titles and widths, the hex
    // column editable. The page is empty until filled.
    ItemsPage(QWidget& panel, int16_t page);

    int16_t page() const { return m_page; }
    // The items listed, in the order of the rows.
    const std::vector<NvEntry>& entries() const { return m_entries; }

    // Lists `entries`, one row each, in the order of their addresses.
    void fill(std::vector<NvEntry> entries);
    // Puts these items' statuses and bytes in their rows, and lists those
    // not listed yet.
    void merge(const std::vector<NvEntry>& fresh);
    // The items whose hex cell no longer holds what was listed, with the
    // bytes read from it. Throws TessalyError naming the first item whose
    // cell is not an item's bytes.
    NvImage edited() const;

    // The texts of each column for `entries`, row after row.
    static RowTexts Texts(const std::vector<NvEntry>& entries);

private:
    QPointer<QObject> m_grid;
    int16_t m_page;
    std::vector<NvEntry> m_entries;
    QStringList m_hex; // as listed
};

} // namespace tessaly::model
