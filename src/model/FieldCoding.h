// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// One value of the panel as it stands in an NV item's bytes: where it is, how
// it is coded, and the turning of its text into bytes and back.
#pragma once

#include "model/NvMemory.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace tessaly::model {

enum class Encoding {
    Digits, // decimal digits, one character a byte, zero after the last
    Number, // an unsigned little-endian number
    Hex, // an unsigned little-endian number, shown in hexadecimal
    Text, // Latin-1 characters, zero after the last
    CountedText, // a byte with the length, then Latin-1 characters
    Choice, // a little-endian number: the position of the value in a list
    Address, // an IPv4 address, its four parts in the order written
};

// The name of an encoding in the catalogue, as "digits" or "counted-text".
std::optional<Encoding> EncodingNamed(const QString& name);

struct Field {
    uint16_t item = 0;
    bool indexed = false; // kept per NAM or per profile, the index in byte 0
    int offset = 0; // of the first byte in the item's data
    int width = 0; // in bytes
    Encoding encoding = Encoding::Text;
    QStringList choices; // of a Choice

    NvAddress address(int copy) const { return {item, indexed ? int16_t(copy) : int16_t(-1)}; }
};

// What is wrong with the field's place and width, or an empty string.
QString LayoutProblem(const Field& field);

// The panel's attributes of the field's cells: the most characters a value
// takes (0 for a list), and whether it takes digits only.
int MaxLength(const Field& field);
bool TakesDigitsOnly(const Field& field);

QString Decode(const Field& field, const NvData& data);
// Writes `text` into the field's bytes of `data`. Returns why the text does
// not fit, as words that follow the quoted value, and then leaves `data` as
// it was; an empty string when it is written.
QString Encode(const Field& field, const QString& text, NvData& data);

} // namespace tessaly::model
