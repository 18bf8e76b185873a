// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Bytes shown as xxd shows them, 16 to a row: the offset, the bytes in
// hexadecimal in pairs, and the printable ASCII characters beside them ('.'
// for the others); and a row of marks under the bytes of one row that
// differ from another's, for the comparison of two backups.
#pragma once

#include <QByteArray>
#include <QString>

namespace halvane {

inline constexpr qsizetype HexRowBytes = 16;

// The row of `bytes` that starts at `offset`: "00000010: 0038 3538 ...  .858...".
QString HexRow(const QByteArray& bytes, qsizetype offset);
// Under HexRow(one, offset), a '^' below each hexadecimal digit and each
// character of a byte that `other` holds otherwise or not at all.
QString MarkRow(const QByteArray& one, const QByteArray& other, qsizetype offset);

} // namespace halvane
