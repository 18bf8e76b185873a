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

} // namespace tessaly
