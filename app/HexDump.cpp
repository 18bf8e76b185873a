// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "HexDump.h"

namespace halvane {

namespace {

// Where byte `column` of a row stands in it: after the offset's 8 digits and
// ": ", two digits a byte and a space after each pair.
qsizetype HexColumn(qsizetype column)
{
    return 10 + column * 2 + column / 2;
}

// The characters start after the last pair's space and one more.
constexpr qsizetype TextColumn = 10 + HexRowBytes * 2 + HexRowBytes / 2 + 1;

} // namespace

QString HexRow(const QByteArray& bytes, qsizetype offset)
{
    QString row = QStringLiteral("%1:").arg(offset, 8, 16, QLatin1Char('0'));
    row.resize(TextColumn, QLatin1Char(' '));
    for (qsizetype column = 0; column < HexRowBytes && offset + column < bytes.size(); ++column) {
        const auto byte = uint8_t(bytes[offset + column]);
        row.replace(HexColumn(column), 2, QStringLiteral("%1").arg(byte, 2, 16, QLatin1Char('0')));
        row += byte >= 0x20 && byte < 0x7F ? QLatin1Char(char(byte)) : QLatin1Char('.');
    }
    return row;
}

QString MarkRow(const QByteArray& one, const QByteArray& other, qsizetype offset)
{
    QString marks(TextColumn + HexRowBytes, QLatin1Char(' '));
    for (qsizetype column = 0; column < HexRowBytes && offset + column < one.size(); ++column) {
        const qsizetype at = offset + column;
        if (at < other.size() && one[at] == other[at])
            continue;
        marks.replace(HexColumn(column), 2, QStringLiteral("^^"));
        marks[TextColumn + column] = QLatin1Char('^');
    }
    while (marks.endsWith(QLatin1Char(' ')))
        marks.chop(1);
    return marks;
}

} // namespace halvane
