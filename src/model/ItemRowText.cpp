// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "model/ItemRowText.h"

namespace tessaly::model {

namespace {

constexpr char16_t HexDigits[] = u"0123456789ABCDEF";

int DigitValue(QChar c)
{
    const char16_t u = c.unicode();
    if (u >= u'0' && u <= u'9')
        return u - u'0';
    if (u >= u'a' && u <= u'f')
        return u - u'a' + 10;
    if (u >= u'A' && u <= u'F')
        return u - u'A' + 10;
    return -1;
}

} // namespace

QString ItemNumberText(NvAddress address)
{
    return address.index < 0 ? QString::number(address.item)
                              : QString::number(address.item) + u':' + QString::number(address.index);
}

QString ItemHexText(const NvData& data)
{
    size_t used = data.size();
    while (used > 1 && data[used - 1] == 0)
        --used;
    // Written character by character: a page of 65,536 rows makes as many of
    // these, and arg() or a stream would cost several times the time.
    QString text(qsizetype(used * 3 - 1), u' ');
    QChar* out = text.data();
    for (size_t i = 0; i < used; ++i) {
        out[i * 3] = QChar(HexDigits[data[i] >> 4]);
        out[i * 3 + 1] = QChar(HexDigits[data[i] & 0xF]);
    }
    return text;
}

QString ReadItemHex(const QString& text, NvAddress address, NvData& data)
{
    NvData bytes{};
    size_t count = 0;
    int high = -1; // the first digit of a byte, while its second is awaited
    for (QChar c : text) {
        if (c == u' ') {
            if (high >= 0)
                return QStringLiteral("has a byte of one digit: write each byte as two hexadecimal digits");
            continue;
        }
        const int digit = DigitValue(c);
        if (digit < 0)
            return QStringLiteral("is not hexadecimal: \"%1\" is not a digit of 0 to 9 or A to F").arg(c);
        if (high < 0) {
            if (count == bytes.size())
                return QStringLiteral("is longer than the item's %1 bytes").arg(bytes.size());
            high = digit;
            continue;
        }
        bytes[count++] = uint8_t(high << 4 | digit);
        high = -1;
    }
    if (high >= 0)
        return QStringLiteral("has a byte of one digit: write each byte as two hexadecimal digits");
    if (count == 0)
        return QStringLiteral("holds no byte: an item takes 1 to %1 bytes").arg(bytes.size());
    if (address.index >= 0 && bytes[0] != address.index)
        return QStringLiteral("does not begin with the item's index %1: the first byte of an indexed item is its "
                              "index")
            .arg(QString(QChar(HexDigits[address.index >> 4])) + QChar(HexDigits[address.index & 0xF]));
    data = bytes;
    return {};
}

} // namespace tessaly::model
