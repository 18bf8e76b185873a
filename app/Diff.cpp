// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "Diff.h"

#include "HexDump.h"

#include "link/BackupDiff.h"
#include "model/Catalogue.h"

#include <tessaly/TessalyError.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace halvane {

using namespace tessaly;
using link::Change;

namespace {

// A file's rows of bytes shown when they differ, at most.
constexpr int FileRowsShown = 4;

void Print(const QString& line)
{
    std::printf("%s\n", qPrintable(line));
}

QByteArray Bytes(const model::NvData& data)
{
    return QByteArray(reinterpret_cast<const char*>(data.data()), qsizetype(data.size()));
}

bool Held(const model::NvEntry& entry)
{
    return entry.status == model::NvStatus::Done || entry.status == model::NvStatus::ReadOnly;
}

QString KindOf(const QString& path, const link::Backup& backup)
{
    if (path.endsWith(QLatin1String(".xqcn"), Qt::CaseInsensitive))
        return QStringLiteral("an XQCN file");
    return backup.full ? QStringLiteral("a full backup") : QStringLiteral("an NV Read's backup");
}

QString Identity(const link::Backup& backup)
{
    return QStringLiteral("ESN %1, MEID %2")
        .arg(backup.esn.isEmpty() ? QStringLiteral("none") : backup.esn,
             backup.meid.isEmpty() ? QStringLiteral("none") : backup.meid);
}

QString ModeText(uint32_t mode)
{
    return QStringLiteral("0%1").arg(mode, 0, 8);
}

QString EntryKind(const model::EfsEntry& entry)
{
    if (model::IsEfsFolder(entry))
        return QStringLiteral("folder");
    if (model::IsEfsLink(entry))
        return QStringLiteral("link to %1").arg(entry.target);
    return QStringLiteral("file of %1 bytes").arg(entry.data.size());
}

// The rows of `bytes` that hold anything but zeros; the first when none does.
void PrintHeldRows(const char* side, const QByteArray& bytes)
{
    QList<qsizetype> rows;
    for (qsizetype offset = 0; offset < bytes.size(); offset += HexRowBytes)
        if (bytes.mid(offset, HexRowBytes).count('\0') < bytes.mid(offset, HexRowBytes).size())
            rows << offset;
    if (rows.isEmpty())
        rows << 0;
    for (const qsizetype offset : rows)
        Print(QStringLiteral("  %1 %2").arg(QLatin1String(side), HexRow(bytes, offset)));
}

// The rows in which the two differ, each side's with the marks under them;
// at most `rows` of them.
void PrintDifferingRows(const QByteArray& one, const QByteArray& other, int rows)
{
    int shown = 0;
    int more = 0;
    for (qsizetype offset = 0; offset < std::max(one.size(), other.size()); offset += HexRowBytes) {
        if (one.mid(offset, HexRowBytes) == other.mid(offset, HexRowBytes))
            continue;
        if (shown == rows) {
            ++more;
            continue;
        }
        ++shown;
        Print(QStringLiteral("  A %1").arg(HexRow(one, offset)));
        Print(QStringLiteral("  B %1").arg(HexRow(other, offset)));
        const QString marks = MarkRow(one, other, offset);
        const QString otherMarks = MarkRow(other, one, offset);
        Print(QStringLiteral("    ") + (marks.size() >= otherMarks.size() ? marks : otherMarks));
    }
    if (more)
        Print(QStringLiteral("  ... and %1 more rows of 16 bytes differ").arg(more));
}

void PrintItem(const link::ItemDifference& item)
{
    const QString place = model::Catalogue::BuiltIn().placeOf(item.address);
    const QString name = model::Describe(item.address) + (place.isEmpty() ? QString() : QStringLiteral(", ") + place);
    const auto status = [](const model::NvEntry& entry) { return model::NvStatusText(uint16_t(entry.status)); };
    switch (item.change) {
    case Change::Added:
        Print(QStringLiteral("%1: added, %2").arg(name, status(*item.after)));
        if (Held(*item.after))
            PrintHeldRows("B", Bytes(item.after->data));
        break;
    case Change::Gone:
        Print(QStringLiteral("%1: gone, was %2").arg(name, status(*item.before)));
        if (Held(*item.before))
            PrintHeldRows("A", Bytes(item.before->data));
        break;
    case Change::Differs:
        if (item.before->status != item.after->status) {
            Print(QStringLiteral("%1: the status differs: %2 | %3").arg(name, status(*item.before), status(*item.after)));
            if (Held(*item.before) != Held(*item.after)) {
                PrintHeldRows(Held(*item.before) ? "A" : "B", Bytes(Held(*item.before) ? item.before->data : item.after->data));
                break;
            }
        }
        if (Held(*item.before) && item.before->data != item.after->data) {
            const QByteArray one = Bytes(item.before->data);
            const QByteArray other = Bytes(item.after->data);
            qsizetype differing = 0;
            for (qsizetype i = 0; i < one.size(); ++i)
                differing += one[i] != other[i];
            Print(QStringLiteral("%1: %2 of its 128 bytes differ").arg(name).arg(differing));
            PrintDifferingRows(one, other, 8);
        }
        break;
    }
    for (const link::ValueChange& value : item.values) {
        if (item.change == Change::Differs)
            Print(QStringLiteral("  %1: %2 | %3")
                      .arg(value.name, value.before.value_or(QStringLiteral("(none)")),
                           value.after.value_or(QStringLiteral("(none)"))));
        else
            Print(QStringLiteral("  %1: %2").arg(value.name, value.before.value_or(value.after.value_or(QString()))));
    }
}

void PrintFile(const link::FileDifference& file)
{
    if (file.change == Change::Added) {
        Print(QStringLiteral("%1: added, %2").arg(file.path, EntryKind(*file.after)));
        return;
    }
    if (file.change == Change::Gone) {
        Print(QStringLiteral("%1: gone, was %2").arg(file.path, EntryKind(*file.before)));
        return;
    }
    const model::EfsEntry& one = *file.before;
    const model::EfsEntry& other = *file.after;
    QStringList what;
    if (one.mode != other.mode)
        what << QStringLiteral("mode %1 | %2").arg(ModeText(one.mode), ModeText(other.mode));
    if (one.target != other.target)
        what << QStringLiteral("target %1 | %2").arg(one.target, other.target);
    if (one.data.size() != other.data.size())
        what << QStringLiteral("size %1 | %2 bytes").arg(one.data.size()).arg(other.data.size());
    if (file.differingBytes)
        what << QStringLiteral("%1 bytes differ, the first at byte %2").arg(file.differingBytes).arg(file.firstDifference);
    Print(QStringLiteral("%1: %2").arg(file.path, what.join(QStringLiteral("; "))));
    if (one.data != other.data)
        PrintDifferingRows(one.data, other.data, FileRowsShown);
}

const char* ChangeName(Change change)
{
    return change == Change::Added ? "added" : change == Change::Gone ? "gone" : "differs";
}

QJsonObject SideJson(const QString& path, const link::Backup& backup)
{
    QJsonObject side{{"path", path}, {"kind", KindOf(path, backup)}, {"esn", backup.esn}, {"meid", backup.meid}};
    if (!path.endsWith(QLatin1String(".xqcn"), Qt::CaseInsensitive) && backup.time.isValid())
        side[QLatin1String("time")] = backup.time.toString(Qt::ISODate);
    return side;
}

QJsonObject EntryJson(const model::NvEntry& entry)
{
    return {{"status", int(entry.status)},
            {"statusText", model::NvStatusText(uint16_t(entry.status))},
            {"data", QString::fromLatin1(Bytes(entry.data).toHex())}};
}

QJsonObject ItemJson(const link::ItemDifference& item)
{
    QJsonObject object{{"item", item.address.item}, {"change", QLatin1String(ChangeName(item.change))}};
    if (item.address.index >= 0)
        object[QLatin1String("index")] = item.address.index;
    if (const QString place = model::Catalogue::BuiltIn().placeOf(item.address); !place.isEmpty())
        object[QLatin1String("shown")] = place;
    if (item.before)
        object[QLatin1String("before")] = EntryJson(*item.before);
    if (item.after)
        object[QLatin1String("after")] = EntryJson(*item.after);
    if (item.before && item.after && Held(*item.before) && Held(*item.after)) {
        QJsonArray differing;
        for (size_t i = 0; i < item.before->data.size(); ++i)
            if (item.before->data[i] != item.after->data[i])
                differing.append(qint64(i));
        object[QLatin1String("differingBytes")] = differing;
    }
    QJsonArray values;
    for (const link::ValueChange& value : item.values) {
        QJsonObject named{{"name", value.name}};
        if (value.before)
            named[QLatin1String("before")] = *value.before;
        if (value.after)
            named[QLatin1String("after")] = *value.after;
        values.append(named);
    }
    if (!values.isEmpty())
        object[QLatin1String("values")] = values;
    return object;
}

QJsonObject FileEntryJson(const model::EfsEntry& entry)
{
    QJsonObject object{{"mode", qint64(entry.mode)}, {"size", entry.data.size()}};
    if (model::IsEfsLink(entry))
        object[QLatin1String("target")] = entry.target;
    return object;
}

QJsonObject FileJson(const link::FileDifference& file)
{
    QJsonObject object{{"path", file.path}, {"change", QLatin1String(ChangeName(file.change))}};
    if (file.before)
        object[QLatin1String("before")] = FileEntryJson(*file.before);
    if (file.after)
        object[QLatin1String("after")] = FileEntryJson(*file.after);
    if (file.change == Change::Differs) {
        object[QLatin1String("differingBytes")] = file.differingBytes;
        if (file.firstDifference >= 0)
            object[QLatin1String("firstDifference")] = file.firstDifference;
    }
    return object;
}

void PrintJson(const Options& options, const link::Backup& a, const link::Backup& b,
               const link::BackupDifference& difference)
{
    QJsonArray items;
    for (const link::ItemDifference& item : difference.items)
        items.append(ItemJson(item));
    QJsonArray files;
    for (const link::FileDifference& file : difference.files)
        files.append(FileJson(file));
    const QJsonObject root{{"a", SideJson(options.diffFrom, a)},
                           {"b", SideJson(options.diffTo, b)},
                           {"sameHandset", !difference.otherHandsets},
                           {"same", difference.same()},
                           {"catalogueItemsAlone", difference.catalogueItemsAlone},
                           {"filesCompared", difference.filesCompared},
                           {"itemsCompared", qint64(difference.itemsCompared)},
                           {"filesComparedCount", qint64(difference.filesComparedCount)},
                           {"items", items},
                           {"files", files}};
    std::printf("%s", QJsonDocument(root).toJson().constData());
}

// "3 differ, 1 added, 1 gone of 126": the counts of one kind of entry.
template<typename Difference>
QString Counts(const std::vector<Difference>& differences, size_t compared)
{
    int counts[3] = {};
    for (const Difference& difference : differences)
        ++counts[int(difference.change)];
    return QStringLiteral("%1 differ, %2 added, %3 gone of %4")
        .arg(counts[int(Change::Differs)])
        .arg(counts[int(Change::Added)])
        .arg(counts[int(Change::Gone)])
        .arg(compared);
}

void PrintText(const Options& options, const link::Backup& a, const link::Backup& b,
               const link::BackupDifference& difference)
{
    const auto side = [](const char* letter, const QString& path, const link::Backup& backup) {
        QString line = QStringLiteral("%1: %2, %3 of %4").arg(QLatin1String(letter), path, KindOf(path, backup), Identity(backup));
        if (!path.endsWith(QLatin1String(".xqcn"), Qt::CaseInsensitive) && backup.time.isValid())
            line += QStringLiteral(", taken %1").arg(backup.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
        Print(line);
    };
    side("A", options.diffFrom, a);
    side("B", options.diffTo, b);
    if (difference.otherHandsets)
        Print(QStringLiteral("The two are of different handsets: %1 and %2.").arg(Identity(a), Identity(b)));
    if (difference.catalogueItemsAlone)
        Print(QStringLiteral("%1 holds the catalogue's items alone: only those are compared.")
                  .arg(a.full ? QStringLiteral("B") : QStringLiteral("A")));
    if (!difference.filesCompared)
        Print(QStringLiteral("%1 holds no file system: the files are not compared.")
                  .arg(a.files.empty() ? QStringLiteral("A") : QStringLiteral("B")));
    for (const link::ItemDifference& item : difference.items)
        PrintItem(item);
    for (const link::FileDifference& file : difference.files)
        PrintFile(file);
    if (difference.same())
        Print(QStringLiteral("A and B hold the same: %1 items, %2 files compared.")
                  .arg(difference.itemsCompared)
                  .arg(difference.filesComparedCount));
    else
        Print(QStringLiteral("Items: %1; files: %2.")
                  .arg(Counts(difference.items, difference.itemsCompared),
                       Counts(difference.files, difference.filesComparedCount)));
}

} // namespace

int DiffBackups(const Options& options)
{
    link::Backup a;
    link::Backup b;
    bool readable = true;
    const std::pair<const QString*, link::Backup*> sides[] = {{&options.diffFrom, &a}, {&options.diffTo, &b}};
    for (const auto& [path, backup] : sides) {
        try {
            *backup = link::Backup::Load(*path);
            for (const QString& stream : backup->passedOver)
                std::fprintf(stderr, "halvane: %s of %s is not compared: halvane does not know what it holds\n",
                             qPrintable(stream), qPrintable(*path));
        } catch (const TessalyError& error) {
            std::fprintf(stderr, "halvane: %s\n", qPrintable(error.description()));
            readable = false;
        }
    }
    if (!readable)
        return 2;
    const link::BackupDifference difference = link::CompareBackups(a, b);
    if (options.json)
        PrintJson(options, a, b, difference);
    else
        PrintText(options, a, b, difference);
    return difference.same() ? 0 : 1;
}

} // namespace halvane
