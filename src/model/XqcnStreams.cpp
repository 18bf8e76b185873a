// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "model/XqcnStreams.h"

namespace tessaly::model {

void Put16(QByteArray& bytes, uint16_t value)
{
    bytes.append(char(value & 0xFF));
    bytes.append(char(value >> 8));
}

void Put32(QByteArray& bytes, uint32_t value)
{
    Put16(bytes, uint16_t(value & 0xFFFF));
    Put16(bytes, uint16_t(value >> 16));
}

uint32_t Get(QByteArrayView bytes, qsizetype at, int size)
{
    uint32_t value = 0;
    for (int i = size - 1; i >= 0; --i)
        value = value << 8 | uint8_t(bytes[at + i]);
    return value;
}

std::optional<QString> Text(QByteArrayView bytes, qsizetype at)
{
    const qsizetype end = bytes.indexOf('\0', at);
    if (end < 0)
        return {};
    return QString::fromLatin1(bytes.sliced(at, end - at));
}

void StartStorage(QXmlStreamWriter& xml, const QString& name)
{
    xml.writeStartElement(QStringLiteral("Storage"));
    xml.writeAttribute(QStringLiteral("Name"), name);
}

void WriteStream(QXmlStreamWriter& xml, const QString& name, const QByteArray& bytes)
{
    xml.writeEmptyElement(QStringLiteral("Stream"));
    xml.writeAttribute(QStringLiteral("Length"), QString::number(bytes.size()));
    xml.writeAttribute(QStringLiteral("Name"), name);
    xml.writeAttribute(QStringLiteral("Value"), QString::fromLatin1(bytes.toHex(' ').toUpper()));
}

QString StreamBytes(const QXmlStreamReader& xml, const QString& where, QByteArray& bytes)
{
    const QXmlStreamAttributes attributes = xml.attributes();
    // XML turns any white space of an attribute into spaces.
    const QStringView value = attributes.value(QLatin1String("Value"));
    bytes.clear();
    bytes.reserve(value.size() / 3 + 1);
    for (qsizetype at = 0; at < value.size();) {
        if (value[at] == u' ') {
            ++at;
            continue;
        }
        const qsizetype start = at;
        while (at < value.size() && value[at] != u' ')
            ++at;
        const QStringView pair = value.sliced(start, at - start);
        bool ok = false;
        const uint byte = pair.toUInt(&ok, 16);
        if (!ok || pair.size() != 2)
            return QStringLiteral("%1 holds \"%2\" at byte %3, not a hexadecimal byte")
                .arg(where, pair.toString())
                .arg(bytes.size());
        bytes.append(char(byte));
    }
    bool ok = false;
    const qsizetype length = attributes.value(QLatin1String("Length")).toLongLong(&ok);
    if (!ok || length != bytes.size())
        return QStringLiteral("%1 holds %2 bytes where its Length says \"%3\"")
            .arg(where)
            .arg(bytes.size())
            .arg(attributes.value(QLatin1String("Length")));
    return {};
}

} // namespace tessaly::model
