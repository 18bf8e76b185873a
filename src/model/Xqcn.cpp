#include "model/Xqcn.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>


namespace tessaly::model {

namespace {

// The tree of storages and the numbered-items stream, as the open tool qfenix
// (iamromulan/qfenix) writes its XQCN backups and reads them back
// for a restore: Storage "<file name>" / "00000000" / "default" /
// "NV_NUMBERED_ITEMS", holding the Stream "NV_ITEM_ARRAY". A stream's Value is
// its bytes in hexadecimal, two digits a byte, separated by spaces; its Length
// the number of bytes.
constexpr QLatin1String NumberedItems("NV_NUMBERED_ITEMS");
constexpr QLatin1String ItemArray("NV_ITEM_ARRAY");
constexpr QLatin1String ItemStatus("Halvane_Item_Status");

// One record of NV_ITEM_ARRAY, as qfenix writes and reads it: the record's
// size (136) as 16 bits, then 16 bits of 1, the item number as 32 bits, and
// the item's 128 data bytes; numbers little-endian.
constexpr qsizetype RecordSize = 136;
constexpr qsizetype RecordData = 8;
// One record of halvane's status stream: item, index (0xFFFF: none), status,
// each 16 bits little-endian.
constexpr qsizetype StatusSize = 6;

// The file's version: three 16-bit numbers, major, minor and revision, as the
// QCN parser of the Open Radio Calibration Toolkit (ORCT) reads File_Version.
const QByteArray FileVersion = QByteArray::fromHex("020000000000");

void Put16(QByteArray& bytes, uint16_t value)
{
    bytes.append(char(value & 0xFF));
    bytes.append(char(value >> 8));
}

uint32_t Get(QByteArrayView bytes, qsizetype at, int size)
{
    uint32_t value = 0;
    for (int i = size - 1; i >= 0; --i)
        value = value << 8 | uint8_t(bytes[at + i]);
    return value;
}

void WriteStream(QXmlStreamWriter& xml, QLatin1String name, const QByteArray& bytes)
{
    xml.writeEmptyElement(QStringLiteral("Stream"));
    xml.writeAttribute(QStringLiteral("Length"), QString::number(bytes.size()));
    xml.writeAttribute(QStringLiteral("Name"), name);
    xml.writeAttribute(QStringLiteral("Value"), QString::fromLatin1(bytes.toHex(' ').toUpper()));
}

// A stream's bytes from its Value and Length, or why they cannot be taken.
QString StreamBytes(const QXmlStreamReader& xml, QByteArray& bytes)
{
    const QXmlStreamAttributes attributes = xml.attributes();
    const QString name = attributes.value(QLatin1String("Name")).toString();
    const QString where = QStringLiteral("the stream %1 (line %2)").arg(name).arg(xml.lineNumber());
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

QString ItemRecords(QByteArrayView bytes, int line, const std::set<uint16_t>& indexed, std::vector<NvEntry>& entries)
{
    const QString where = QStringLiteral("the stream NV_ITEM_ARRAY (line %1)").arg(line);
    if (bytes.size() % RecordSize != 0)
        return QStringLiteral("%1 holds %2 bytes, not a whole number of %3-byte records")
            .arg(where)
            .arg(bytes.size())
            .arg(RecordSize);
    for (qsizetype at = 0; at < bytes.size(); at += RecordSize) {
        const qsizetype record = at / RecordSize + 1;
        if (const uint32_t size = Get(bytes, at, 2); size != RecordSize)
            return QStringLiteral("%1: its record %2 (byte %3) says it is %4 bytes, not %5")
                .arg(where)
                .arg(record)
                .arg(at)
                .arg(size)
                .arg(RecordSize);
        const uint32_t item = Get(bytes, at + 4, 4);
        if (item > 0xFFFF)
            return QStringLiteral("%1: its record %2 (byte %3) is for item %4, out of 0 to 65535")
                .arg(where)
                .arg(record)
                .arg(at)
                .arg(item);
        NvEntry entry;
        std::copy_n(reinterpret_cast<const uint8_t*>(bytes.data()) + at + RecordData, entry.data.size(),
                    entry.data.begin());
        entry.address = {uint16_t(item), indexed.count(uint16_t(item)) ? int16_t(entry.data[0]) : int16_t(-1)};
        entries.push_back(entry);
    }
    return {};
}

QString StatusRecords(QByteArrayView bytes, int line, std::vector<NvEntry>& entries)
{
    const QString where = QStringLiteral("the stream %1 (line %2)").arg(ItemStatus).arg(line);
    if (bytes.size() % StatusSize != 0)
        return QStringLiteral("%1 holds %2 bytes, not a whole number of %3-byte records")
            .arg(where)
            .arg(bytes.size())
            .arg(StatusSize);
    for (qsizetype at = 0; at < bytes.size(); at += StatusSize) {
        const uint32_t index = Get(bytes, at + 2, 2);
        const uint32_t status = Get(bytes, at + 4, 2);
        if ((index > 0xFF && index != 0xFFFF) || status == 0 || status > LastNvStatus)
            return QStringLiteral("%1: its record %2 (byte %3) is not an item with an index and a status")
                .arg(where)
                .arg(at / StatusSize + 1)
                .arg(at);
        NvEntry entry{{uint16_t(Get(bytes, at, 2)), index == 0xFFFF ? int16_t(-1) : int16_t(index)}, NvStatus(status), {}};
        if (entry.address.index >= 0)
            entry.data[0] = uint8_t(entry.address.index);
        entries.push_back(entry);
    }
    return {};
}

} // namespace

QByteArray WriteXqcn(const std::vector<NvEntry>& entries)
{
    QByteArray items;
    QByteArray statuses;
    for (const NvEntry& entry : entries) {
        if (entry.status == NvStatus::Done) {
            Put16(items, uint16_t(RecordSize));
            Put16(items, 1);
            Put16(items, entry.address.item);
            Put16(items, 0);
            items.append(reinterpret_cast<const char*>(entry.data.data()), qsizetype(entry.data.size()));
        } else {
            Put16(statuses, entry.address.item);
            Put16(statuses, entry.address.index < 0 ? 0xFFFF : uint16_t(entry.address.index));
            Put16(statuses, uint16_t(entry.status));
        }
    }
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("Storage"));
    xml.writeAttribute(QStringLiteral("Name"), QStringLiteral("Halvane"));
    xml.writeStartElement(QStringLiteral("Storage"));
    xml.writeAttribute(QStringLiteral("Name"), QStringLiteral("00000000"));
    xml.writeStartElement(QStringLiteral("Storage"));
    xml.writeAttribute(QStringLiteral("Name"), QStringLiteral("default"));
    xml.writeStartElement(QStringLiteral("Storage"));
    xml.writeAttribute(QStringLiteral("Name"), NumberedItems);
    WriteStream(xml, ItemArray, items);
    xml.writeEndElement();
    if (!statuses.isEmpty())
        WriteStream(xml, ItemStatus, statuses);
    xml.writeEndElement();
    xml.writeEndElement();
    WriteStream(xml, QLatin1String("File_Version"), FileVersion);
    xml.writeEndElement();
    xml.writeEndDocument();
    return bytes;
}

QString ReadXqcn(QByteArrayView bytes, const std::set<uint16_t>& indexed, std::vector<NvEntry>& entries)
{
    QXmlStreamReader xml(bytes.toByteArray());
    QStringList storages; // the Names of the storages around the element read
    std::vector<NvEntry> found;
    bool numbered = false;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::EndElement && xml.name() == QLatin1String("Storage"))
            storages.removeLast();
        if (token != QXmlStreamReader::StartElement)
            continue;
        const QString name = xml.attributes().value(QLatin1String("Name")).toString();
        if (xml.name() == QLatin1String("Storage")) {
            storages << name;
            continue;
        }
        const bool items = name == ItemArray && !storages.isEmpty() && storages.last() == NumberedItems;
        if (xml.name() != QLatin1String("Stream") || (!items && name != ItemStatus))
            continue;
        QByteArray stream;
        QString problem = StreamBytes(xml, stream);
        if (problem.isEmpty())
            problem = items ? ItemRecords(stream, int(xml.lineNumber()), indexed, found)
                            : StatusRecords(stream, int(xml.lineNumber()), found);
        if (!problem.isEmpty())
            return problem;
        numbered = numbered || items;
    }
    if (xml.hasError())
        return QStringLiteral("it is not well-formed XML: %1 at line %2, column %3")
            .arg(xml.errorString())
            .arg(xml.lineNumber())
            .arg(xml.columnNumber());
    if (!numbered)
        return QStringLiteral("it has no numbered-items stream (%1 in the storage %2)").arg(ItemArray, NumberedItems);
    std::set<NvAddress> seen;
    for (const NvEntry& entry : found)
        if (!seen.insert(entry.address).second)
            return QStringLiteral("it lists %1 twice").arg(Describe(entry.address));
    entries = std::move(found);
    return {};
}

} // namespace tessaly::model
