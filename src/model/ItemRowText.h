// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The texts of an NV item as a row of the NV Items page shows it, and the
// reading of the bytes a person typed over them. No I/O: strings in, strings
// or bytes out.
#pragma once

#include "model/NvMemory.h"

namespace tessaly::model {

// The most characters of a hex cell: 128 bytes of two digits with a space
// between each two.
inline constexpr int ItemHexLength = 128 * 3 - 1;

// "1943" for an item kept once, "10:1" for index 1 of an indexed item.
QString ItemNumberText(NvAddress address);

// The bytes as hexadecimal, two upper-case digits a byte with a space
// between bytes. The zero bytes at the end are left off, as the item is
// padded with zeros when written; an item of zeros alone shows "00".
QString ItemHexText(const NvData& data);

// Reads the bytes of an item from a hex cell: 1 to 128 bytes of two digits,
// with spaces between bytes or none, zeros after them. An indexed item's
// first byte must be its index. Gives why the text is refused, as words that
// follow the quoted text, and then leaves `data` as it was; an empty string
// when it is read.
QString ReadItemHex(const QString& text, NvAddress address, NvData& data);

} // namespace tessaly::model
