// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The records that the panel keeps beside its page grids.
#pragma once

#include <QString>

#include <cstdint>

namespace tessaly {

// How one cell may be edited. A record nobody wrote holds two empty strings
// and two false flags.
struct CellAttr {
    QString ComboStr;   // the choices of the cell's list, joined by "|"; empty: no list
    QString FormatType; // only its length counts: the text editor's maximum length
    bool IsNumber = false;
    bool ReadOnly = false;
};

// Where an item titled "LOCK CODE" stands.
struct LockCodeCell {
    int16_t nPart = 0;
    int16_t nRow = 0;
    int16_t nCol = 0;
};

// A page added by the host: its number, -1 once removed, and its node text.
struct AddedTab {
    int32_t TabNumber = 0;
    QString TabName;
};

// The range of values that a numeric item allows, keyed on its title. The
// record holds the greatest value before the smallest.
struct ItemBoundary {
    QString strTitle;
    int32_t lReserved = 0; // always 0; nothing reads it
    int16_t nMax = 0;
    int16_t nMin = 0;
    int16_t nDefault = 0; // what the cell gets after a refusal
};

} // namespace tessaly
