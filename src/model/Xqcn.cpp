// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "model/Xqcn.h"

#include "model/XqcnStreams.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <map>
#include <optional>

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
constexpr QLatin1String FileEntries("Halvane_EFS_Entries");
constexpr QLatin1String FileVersion("File_Version");

// One record of NV_ITEM_ARRAY, as qfenix writes and reads it: the record's
// size (136) as 16 bits, then 16 bits of 1, the item number as 32 bits, and
// the item's 128 data bytes; numbers little-endian.
constexpr qsizetype RecordSize = 136;
constexpr qsizetype RecordData = 8;
// One record of halvane's status stream: item, index (0xFFFF: none), status,
// each 16 bits little-endian.
constexpr qsizetype StatusSize = 6;

// The storages of files beside NV_NUMBERED_ITEMS, as qfenix writes them
// (diag_efs_backup_xqcn) and reads them (diag_efs_restore_xqcn): each holds a
// storage EFS_Dir of path streams and a storage EFS_Data of data streams, the
// n-th of each named n in eight hexadecimal digits. A path stream is the path
// ended by a NUL; in EFS_Backup it comes after a header of 8 bytes, 01 00 01
// 01 and the file's mode as 32 bits little-endian. qfenix puts the RF
// calibration items (/nv/item_files/rfnv/) in EFS_Backup, the files of /rfc/
// both there and in NV_Items, and every other file in Provisioning_Item_Files.
constexpr QLatin1String EfsBackup("EFS_Backup");
constexpr QLatin1String NvItems("NV_Items");
constexpr QLatin1String Provisioning("Provisioning_Item_Files");
constexpr QLatin1String EfsDir("EFS_Dir");
constexpr QLatin1String EfsData("EFS_Data");
constexpr qsizetype BackupHeaderSize = 8;
// The mode of a file whose streams give none: a plain file, as qfenix gives
// the files of an XQCN file it turns into a tar archive.
constexpr uint32_t PlainFileMode = EfsModeFile | 0644;
// One record of halvane's entries stream, one for each entry of the file
// system in the order of the backup: mode and time, 32 bits little-endian
// each, then the path and a link's target (empty for the others), each ended
// by a NUL. A file's bytes stay in the streams above.
constexpr qsizetype EntryHeadSize = 8;

// The file's version: three 16-bit numbers, major, minor and revision, as the
// QCN parser of the Open Radio Calibration Toolkit (ORCT) reads File_Version.
const QByteArray FileVersionBytes = QByteArray::fromHex("020000000000");

// The storages a file goes into, as qfenix sorts them.
std::vector<QLatin1String> StoragesOf(const QString& path)
{
    if (path.startsWith(QLatin1String("/nv/item_files/rfnv/")))
        return {EfsBackup};
    if (path.startsWith(QLatin1String("/rfc/")))
        return {EfsBackup, NvItems};
    return {Provisioning};
}

void WriteFiles(QXmlStreamWriter& xml, QLatin1String storage, const std::vector<const EfsEntry*>& files)
{
    if (files.empty())
        return;
    StartStorage(xml, storage);
    for (const QLatin1String part : {EfsDir, EfsData}) {
        StartStorage(xml, part);
        for (size_t n = 0; n < files.size(); ++n) {
            QByteArray bytes;
            if (part == EfsData) {
                bytes = files[n]->data;
            } else {
                if (storage == EfsBackup) {
                    bytes = QByteArray::fromHex("01000101");
                    Put32(bytes, files[n]->mode);
                }
                bytes.append(files[n]->path.toLatin1()).append('\0');
            }
            WriteStream(xml, QStringLiteral("%1").arg(n, 8, 16, QLatin1Char('0')).toUpper(), bytes);
        }
        xml.writeEndElement();
    }
    xml.writeEndElement();
}

QString ItemRecords(QByteArrayView bytes, const QString& where, const std::set<uint16_t>& indexed,
                    std::vector<NvEntry>& entries)
{
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

QString StatusRecords(QByteArrayView bytes, const QString& where, std::vector<NvEntry>& entries)
{
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

QString EntryRecords(QByteArrayView bytes, const QString& where, std::vector<EfsEntry>& entries)
{
    for (qsizetype at = 0, record = 1; at < bytes.size(); ++record) {
        const std::optional<QString> path = at + EntryHeadSize < bytes.size() ? Text(bytes, at + EntryHeadSize)
                                                                             : std::nullopt;
        const std::optional<QString> target
            = path ? Text(bytes, at + EntryHeadSize + path->size() + 1) : std::nullopt;
        if (!target)
            return QStringLiteral("%1: its record %2 (byte %3) is cut short").arg(where).arg(record).arg(at);
        const EfsEntry entry{*path, Get(bytes, at, 4), int32_t(Get(bytes, at + 4, 4)), {}, *target};
        if (!IsEfsPath(entry.path) || !IsEfsKind(entry.mode)
            || (IsEfsLink(entry) ? !IsEfsTarget(entry.target) : !entry.target.isEmpty()))
            return QStringLiteral("%1: its record %2 (byte %3) is not an entry of a known kind with a path and, "
                                  "for a link alone, a target")
                .arg(where)
                .arg(record)
                .arg(at);
        entries.push_back(entry);
        at += EntryHeadSize + path->size() + target->size() + 2;
    }
    return {};
}

// What a stream is to halvane, by its name and the storages around it.
enum class Role { Items, Statuses, Entries, FilePath, FileData, Version, Unknown };

Role RoleOf(const QStringList& storages, const QString& name)
{
    const QString parent = storages.value(storages.size() - 1);
    const QString section = storages.value(storages.size() - 2);
    const bool files = section == EfsBackup || section == NvItems || section == Provisioning;
    if (files && (parent == EfsDir || parent == EfsData))
        return parent == EfsDir ? Role::FilePath : Role::FileData;
    if (name == ItemArray && parent == NumberedItems)
        return Role::Items;
    if (name == ItemStatus)
        return Role::Statuses;
    if (name == FileEntries)
        return Role::Entries;
    // Only the file's storage holds its version.
    return name == FileVersion && storages.size() == 1 ? Role::Version : Role::Unknown;
}

bool IsFileMode(uint32_t mode)
{
    const uint32_t kind = mode & EfsModeKind;
    return IsEfsKind(mode) && (kind == EfsModeFile || kind == EfsModeItemFile);
}

// A stream of a file's path or bytes, named by where it stands.
struct FileStream {
    QString where;
    QByteArray bytes;
    bool backup = false; // of EFS_Backup, whose path streams have a header
    bool paired = false;
};

// The streams of files by their storage beside EFS_Dir and EFS_Data and their
// name ("00000000/default/EFS_Backup/00000000"): the path streams in their
// order in the file, the data streams by that key.
using PathStreams = std::vector<std::pair<QString, FileStream>>;
using DataStreams = std::map<QString, FileStream>;

// The files of the path streams `paths`, each with the bytes of the stream of
// its name in `data`, in the order of the paths; a file kept in two storages
// with the same bytes is taken once.
QString StreamFiles(const PathStreams& paths, DataStreams& data, std::vector<EfsEntry>& files)
{
    std::map<QString, std::pair<QString, size_t>> held; // where each path was first, and its file
    for (const auto& [key, path] : paths) {
        const auto bytes = data.find(key);
        if (bytes == data.end())
            return QStringLiteral("%1 has no stream of its name in %2 beside it").arg(path.where, EfsData);
        bytes->second.paired = true;
        if (path.bytes.size() < (path.backup ? BackupHeaderSize : 0))
            return QStringLiteral("%1 is cut short: %2 bytes, fewer than its header of %3")
                .arg(path.where)
                .arg(path.bytes.size())
                .arg(BackupHeaderSize);
        const std::optional<QString> name = Text(path.bytes, path.backup ? BackupHeaderSize : 0);
        if (!name || !IsEfsPath(*name))
            return QStringLiteral("%1 holds no absolute path of printable characters ended by a NUL").arg(path.where);
        // Only EFS_Backup's header carries a mode; one of another kind than a
        // file's is not taken.
        const uint32_t mode = path.backup ? Get(path.bytes, 4, 4) : 0;
        EfsEntry file{*name, IsFileMode(mode) ? mode : PlainFileMode, 0, bytes->second.bytes, {}};
        if (const auto [first, taken] = held.try_emplace(*name, path.where, files.size()); !taken) {
            if (files[first->second.second].data != file.data)
                return QStringLiteral("%1 and %2 hold %3 with other bytes").arg(first->second.first, path.where, *name);
            continue;
        }
        files.push_back(std::move(file));
    }
    for (const auto& [key, bytes] : data)
        if (!bytes.paired)
            return QStringLiteral("%1 has no stream of its name in %2 beside it").arg(bytes.where, EfsDir);
    return {};
}

} // namespace

QByteArray WriteXqcn(const std::vector<NvEntry>& entries, const std::vector<EfsEntry>& files)
{
    QByteArray items;
    QByteArray statuses;
    for (const NvEntry& entry : entries) {
        if (entry.status == NvStatus::Done) {
            Put16(items, uint16_t(RecordSize));
            Put16(items, 1);
            Put32(items, entry.address.item);
            items.append(reinterpret_cast<const char*>(entry.data.data()), qsizetype(entry.data.size()));
        } else {
            Put16(statuses, entry.address.item);
            Put16(statuses, entry.address.index < 0 ? 0xFFFF : uint16_t(entry.address.index));
            Put16(statuses, uint16_t(entry.status));
        }
    }
    std::map<QLatin1String, std::vector<const EfsEntry*>> stored;
    QByteArray records;
    for (const EfsEntry& file : files) {
        if (!IsEfsFolder(file) && !IsEfsLink(file))
            for (const QLatin1String storage : StoragesOf(file.path))
                stored[storage].push_back(&file);
        Put32(records, file.mode);
        Put32(records, uint32_t(file.mtime));
        records.append(file.path.toLatin1()).append('\0').append(file.target.toLatin1()).append('\0');
    }

    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    StartStorage(xml, QStringLiteral("Halvane"));
    StartStorage(xml, QStringLiteral("00000000"));
    StartStorage(xml, QStringLiteral("default"));
    StartStorage(xml, NumberedItems);
    WriteStream(xml, ItemArray, items);
    xml.writeEndElement();
    for (const QLatin1String storage : {EfsBackup, Provisioning, NvItems})
        WriteFiles(xml, storage, stored[storage]);
    if (!statuses.isEmpty())
        WriteStream(xml, ItemStatus, statuses);
    if (!records.isEmpty())
        WriteStream(xml, FileEntries, records);
    xml.writeEndElement();
    xml.writeEndElement();
    WriteStream(xml, FileVersion, FileVersionBytes);
    xml.writeEndElement();
    xml.writeEndDocument();
    return bytes;
}

QString ReadXqcn(QByteArrayView bytes, const std::set<uint16_t>& indexed, XqcnContents& contents)
{
    QXmlStreamReader xml(bytes.toByteArray());
    QStringList storages; // the Names of the storages around the element read
    XqcnContents found;
    std::vector<EfsEntry> recorded; // halvane's own entries, in the order of the backup
    QString recordedWhere;
    PathStreams paths;
    std::set<QString> pathNames;
    DataStreams data;
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
        if (xml.name() != QLatin1String("Stream"))
            continue;
        const QString key = QStringList(storages.mid(1) << name).join(u'/');
        const QString where = QStringLiteral("the stream %1 (line %2)").arg(key).arg(xml.lineNumber());
        const Role role = RoleOf(storages, name);
        if (role == Role::Version)
            continue;
        if (role == Role::Unknown) {
            if (!xml.attributes().value(QLatin1String("Value")).trimmed().isEmpty())
                found.passedOver << key;
            continue;
        }
        QByteArray stream;
        QString problem = StreamBytes(xml, where, stream);
        if (problem.isEmpty() && role == Role::Items)
            problem = ItemRecords(stream, where, indexed, found.entries);
        if (problem.isEmpty() && role == Role::Statuses)
            problem = StatusRecords(stream, where, found.entries);
        if (problem.isEmpty() && role == Role::Entries)
            problem = EntryRecords(stream, where, recorded);
        if (!problem.isEmpty())
            return problem;
        if (role == Role::Entries)
            recordedWhere = where;
        if (role == Role::FilePath || role == Role::FileData) {
            // Paired by their storage beside EFS_Dir and EFS_Data and their name.
            const QString pair = QStringList(storages.mid(1, storages.size() - 2) << name).join(u'/');
            const FileStream file{where, stream, storages.value(storages.size() - 2) == EfsBackup};
            const bool first = role == Role::FilePath ? pathNames.insert(pair).second : data.emplace(pair, file).second;
            if (!first)
                return QStringLiteral("%1 has the name of another stream of its storage").arg(where);
            if (role == Role::FilePath)
                paths.emplace_back(pair, file);
        }
        numbered = numbered || role == Role::Items;
    }
    if (xml.hasError())
        return QStringLiteral("it is not well-formed XML: %1 at line %2, column %3")
            .arg(xml.errorString())
            .arg(xml.lineNumber())
            .arg(xml.columnNumber());
    if (!numbered)
        return QStringLiteral("it has no numbered-items stream (%1 in the storage %2)").arg(ItemArray, NumberedItems);
    std::set<NvAddress> seen;
    for (const NvEntry& entry : found.entries)
        if (!seen.insert(entry.address).second)
            return QStringLiteral("it lists %1 twice").arg(Describe(entry.address));

    std::vector<EfsEntry> streamed;
    if (const QString problem = StreamFiles(paths, data, streamed); !problem.isEmpty())
        return problem;
    // Halvane's entries first, a file's bytes from its streams; then any file
    // they do not name, as another tool wrote it.
    std::map<QString, EfsEntry*> byPath;
    for (EfsEntry& file : streamed)
        byPath[file.path] = &file;
    std::set<QString> listed;
    for (EfsEntry& entry : recorded) {
        if (!listed.insert(entry.path).second)
            return QStringLiteral("%1 lists %2 twice").arg(recordedWhere, entry.path);
        if (IsEfsFolder(entry) || IsEfsLink(entry)) {
            found.files.push_back(std::move(entry));
            continue;
        }
        const auto held = byPath.find(entry.path);
        if (held == byPath.end())
            return QStringLiteral("%1 lists the file %2, which no stream holds").arg(recordedWhere, entry.path);
        entry.data = std::move(held->second->data);
        found.files.push_back(std::move(entry));
        byPath.erase(held);
    }
    for (EfsEntry& file : streamed)
        if (byPath.count(file.path)) {
            if (listed.count(file.path))
                return QStringLiteral("%1 lists %2 as a folder or a link, which a stream holds as a file")
                    .arg(recordedWhere, file.path);
            found.files.push_back(std::move(file));
        }
    contents = std::move(found);
    return {};
}

} // namespace tessaly::model
