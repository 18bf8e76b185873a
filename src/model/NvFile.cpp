// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "model/NvFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>
#include <set>

namespace tessaly::model {

namespace {

constexpr int FormatVersion = 1;

QLatin1String FormatName(NvFileKind kind)
{
    switch (kind) {
    case NvFileKind::Memory: return QLatin1String("Halvane NV memory");
    case NvFileKind::Backup: return QLatin1String("Halvane NV backup");
    case NvFileKind::FullBackup: return QLatin1String("Halvane NV full backup");
    }
    return {};
}

QString Hex(const NvData& data)
{
    const auto end = std::find_if(data.rbegin(), data.rend(), [](uint8_t byte) { return byte != 0; }).base();
    return QString::fromLatin1(QByteArray(reinterpret_cast<const char*>(data.data()), end - data.begin()).toHex());
}

bool FromHex(const QJsonValue& value, NvData& data)
{
    const QString hex = value.toString();
    const bool digits = std::all_of(hex.begin(), hex.end(), [](QChar c) {
        return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
    });
    if (!value.isString() || !digits || hex.size() % 2 != 0 || hex.size() > 2 * qsizetype(data.size()))
        return false;
    const QByteArray bytes = QByteArray::fromHex(hex.toLatin1());
    data.fill(0);
    std::copy(bytes.begin(), bytes.end(), data.begin());
    return true;
}

// A whole number of the entry within [low, high], or `absent` when the entry
// has none and may go without; nothing for anything else.
std::optional<int> Whole(const QJsonObject& entry, QLatin1String key, int low, int high,
                         std::optional<int> absent = {})
{
    const QJsonValue value = entry[key];
    if (value.isUndefined())
        return absent;
    const double number = value.toDouble();
    if (!value.isDouble() || number < low || number > high || number != std::trunc(number))
        return {};
    return int(number);
}

// A value as JSON writes it: a string quoted, with its escapes.
QString JsonText(const QJsonValue& value)
{
    return QString::fromUtf8(QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).chopped(1).sliced(1));
}

bool Printable(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() <= 0xFF && c.isPrint(); });
}

QString Entries(const QJsonValue& items, std::vector<NvEntry>& entries)
{
    if (!items.isArray())
        return QStringLiteral("it has no list of items");
    std::set<NvAddress> seen;
    const QJsonArray list = items.toArray();
    for (qsizetype i = 0; i < list.size(); ++i) {
        const QJsonObject entry = list[i].toObject();
        const std::optional<int> item = Whole(entry, QLatin1String("item"), 0, 0xFFFF);
        const std::optional<int> index = Whole(entry, QLatin1String("index"), 0, 0xFF, -1);
        const std::optional<int> status = Whole(entry, QLatin1String("status"), 0, LastNvStatus);
        NvData data{};
        if (!list[i].isObject() || !item || !index || !status || !FromHex(entry[QLatin1String("data")], data))
            return QStringLiteral("its entry %1 is not an item of a known status with 128 bytes at most").arg(i + 1);
        const NvAddress address{uint16_t(*item), int16_t(*index)};
        if (!seen.insert(address).second)
            return QStringLiteral("its entry %1 repeats %2").arg(i + 1).arg(Describe(address));
        entries.push_back({address, NvStatus(*status), data});
    }
    return {};
}

// The file system's entry `number` of the list, or why it cannot be taken.
QString FileEntry(const QJsonValue& value, qsizetype number, EfsEntry& file)
{
    const QJsonObject entry = value.toObject();
    const QString path = entry[QLatin1String("path")].toString();
    if (!value.isObject() || !IsEfsPath(path))
        return QStringLiteral("its file entry %1 has no absolute path of printable characters without \".\" or \"..\" "
                              "parts or doubled slashes")
            .arg(number);
    const QString named = QStringLiteral("its file entry %1 (%2)").arg(number).arg(path);
    const std::optional<int> mode = Whole(entry, QLatin1String("mode"), 0, std::numeric_limits<int>::max());
    const std::optional<int> mtime = Whole(entry, QLatin1String("mtime"), std::numeric_limits<int32_t>::min(),
                                           std::numeric_limits<int32_t>::max());
    if (!mode || !IsEfsKind(uint32_t(*mode)))
        return named + QStringLiteral(" has no mode of a folder, a file, a link or an item file");
    if (!mtime)
        return named + QStringLiteral(" has no time in whole seconds");
    file = {path, uint32_t(*mode), *mtime, {}, {}};
    const QJsonValue size = entry[QLatin1String("size")];
    const QJsonValue data = entry[QLatin1String("data")];
    const QJsonValue target = entry[QLatin1String("target")];
    if (IsEfsFolder(file)) {
        if (!size.isUndefined() || !data.isUndefined() || !target.isUndefined())
            return named + QStringLiteral(" is a folder, with a size, data or a target");
        return {};
    }
    if (IsEfsLink(file)) {
        file.target = target.toString();
        if (!size.isUndefined() || !data.isUndefined() || !IsEfsTarget(file.target))
            return named + QStringLiteral(" is a link without a target of printable characters, or with data");
        return {};
    }
    const QByteArray text = data.toString().toLatin1();
    const auto bytes = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    if (!target.isUndefined() || !data.isString() || !bytes || bytes.decoded.toBase64() != text)
        return named + QStringLiteral(" is a file without data in base64, or with a target");
    if (Whole(entry, QLatin1String("size"), 0, std::numeric_limits<int>::max()) != bytes.decoded.size())
        return named
            + QStringLiteral(" holds %1 bytes where its size says %2").arg(bytes.decoded.size()).arg(JsonText(size));
    file.data = bytes.decoded;
    return {};
}

QString Files(const QJsonValue& files, std::vector<EfsEntry>& entries)
{
    if (files.isUndefined())
        return {};
    if (!files.isArray())
        return QStringLiteral("its files are not a list");
    std::set<QString> seen;
    const QJsonArray list = files.toArray();
    for (qsizetype i = 0; i < list.size(); ++i) {
        EfsEntry entry;
        if (const QString problem = FileEntry(list[i], i + 1, entry); !problem.isEmpty())
            return problem;
        if (!seen.insert(entry.path).second)
            return QStringLiteral("its file entry %1 repeats %2").arg(i + 1).arg(entry.path);
        entries.push_back(std::move(entry));
    }
    return {};
}

QString FileLine(const EfsEntry& entry)
{
    QString line = QStringLiteral("    {\"path\": %1, \"mode\": %2, \"mtime\": %3")
                       .arg(JsonText(entry.path), QString::number(entry.mode), QString::number(entry.mtime));
    if (IsEfsLink(entry))
        line += QStringLiteral(", \"target\": ") + JsonText(entry.target);
    else if (!IsEfsFolder(entry))
        line += QStringLiteral(", \"size\": %1, \"data\": \"%2\"")
                    .arg(QString::number(entry.data.size()), QString::fromLatin1(entry.data.toBase64()));
    return line + u'}';
}

} // namespace

bool IsEfsPath(const QString& path)
{
    if (!path.startsWith(u'/') || !Printable(path))
        return false;
    const QStringList parts = path.sliced(1).split(u'/');
    return std::none_of(parts.begin(), parts.end(), [](const QString& part) {
        return part.isEmpty() || part == QLatin1String(".") || part == QLatin1String("..");
    });
}

bool IsEfsTarget(const QString& target)
{
    return !target.isEmpty() && Printable(target);
}

bool IsEfsKind(uint32_t mode)
{
    const uint32_t kind = mode & EfsModeKind;
    return mode <= 0177777
        && (kind == EfsModeFolder || kind == EfsModeFile || kind == EfsModeLink || kind == EfsModeItemFile);
}

QString ReadNvFile(const QString& path, NvFileKind kind, NvFile& file)
{
    return ReadNvFile(path, {kind}, file);
}

QString ReadNvFile(const QString& path, std::initializer_list<NvFileKind> kinds, NvFile& file)
{
    QFile source(path);
    if (!source.open(QIODevice::ReadOnly))
        return QStringLiteral("it cannot be read: %1").arg(source.errorString());
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(source.readAll(), &error);
    if (document.isNull())
        return QStringLiteral("it is not JSON: %1 at byte %2").arg(error.errorString()).arg(error.offset);
    QJsonObject root = document.object();
    const auto kind = std::find_if(kinds.begin(), kinds.end(), [&](NvFileKind candidate) {
        return root[QLatin1String("format")].toString() == FormatName(candidate);
    });
    if (kind == kinds.end() || root[QLatin1String("version")].toInt() != FormatVersion)
        return QStringLiteral("it is not a file of the format \"%1\", version %2")
            .arg(FormatName(*kinds.begin()))
            .arg(FormatVersion);
    std::vector<NvEntry> entries;
    if (const QString problem = Entries(root.take(QLatin1String("items")), entries); !problem.isEmpty())
        return problem;
    std::vector<EfsEntry> files;
    if (const QString problem = Files(root.take(QLatin1String("files")), files); !problem.isEmpty())
        return problem;
    root.remove(QLatin1String("format"));
    root.remove(QLatin1String("version"));
    file = NvFile{*kind, root, std::move(entries), std::move(files)};
    return {};
}

QString WriteNvFile(const QString& path, const NvFile& file)
{
    QStringList lines;
    for (const NvEntry& entry : file.entries) {
        const QString index
            = entry.address.index >= 0 ? QStringLiteral("\"index\": %1, ").arg(entry.address.index) : QString();
        lines << QStringLiteral("    {\"item\": %1, %2\"status\": %3, \"data\": \"%4\"}")
                     .arg(entry.address.item)
                     .arg(index)
                     .arg(int(entry.status))
                     .arg(Hex(entry.data));
    }
    QString fields;
    for (auto field = file.fields.begin(); field != file.fields.end(); ++field)
        fields += QStringLiteral("  \"%1\": %2,\n").arg(field.key(), JsonText(field.value()));
    QStringList files;
    std::transform(file.files.begin(), file.files.end(), std::back_inserter(files), FileLine);
    const QString fileList = files.isEmpty()
        ? QString()
        : QStringLiteral(",\n  \"files\": [\n%1\n  ]").arg(files.join(QStringLiteral(",\n")));
    const QString text = QStringLiteral("{\n  \"format\": \"%1\",\n  \"version\": %2,\n%3  \"items\": [\n%4\n  ]%5\n}\n")
                             .arg(FormatName(file.kind))
                             .arg(FormatVersion)
                             .arg(fields, lines.join(QStringLiteral(",\n")), fileList);

    QDir().mkpath(QFileInfo(path).absolutePath());
    return WriteWhole(path, text.toUtf8());
}

QString WriteWhole(const QString& path, const QByteArray& bytes)
{
    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly) || !out.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner)
        || out.write(bytes) < 0 || !out.commit())
        return out.errorString().isEmpty() ? QStringLiteral("it cannot be written") : out.errorString();
    return {};
}

QString AsideName(const QString& path)
{
    const QString stem
        = path + QStringLiteral(".damaged-") + QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString name = stem;
    for (int n = 2; QFileInfo::exists(name); ++n)
        name = stem + QStringLiteral("-%1").arg(n);
    return name;
}

} // namespace tessaly::model
