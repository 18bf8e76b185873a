// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// What the catalogue reads in the bytes of one NV item: the values of the
// panel that the item holds, decoded as the panel shows them, for the
// commands that show an item outside the panel (one item read by its number,
// two backups compared).
#pragma once

#include "model/Catalogue.h"

#include <QStringList>

#include <vector>

namespace tessaly::model {

// One row of the panel, or one value of the basic information, as far as it
// lies in the item: its title and the text of each of its columns there.
struct ItemValue {
    QString title;
    QStringList values;
};

// The values `catalogue` places in the item at `address`, holding `data`, in
// the catalogue's order; none for an item it does not know. An indexed
// address is read with the fields of indexed items, an address without an
// index with the others; the index itself only says which NAM or profile,
// and every copy is laid out alike.
std::vector<ItemValue> ItemValues(const Catalogue& catalogue, NvAddress address, const NvData& data);

// "Home SID (column 2)": the name of column `column` of `value`, or the
// title alone for a value of one column.
QString ColumnName(const ItemValue& value, qsizetype column);

} // namespace tessaly::model
