#include "model/NvFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

#include <algorithm>
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
    if (!value.isDouble() || number != double(int(number)) || number < low || number > high)
        return {};
    return int(number);
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

} // namespace

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
    root.remove(QLatin1String("format"));
    root.remove(QLatin1String("version"));
    file = NvFile{*kind, root, std::move(entries)};
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
        fields += QStringLiteral("  \"%1\": %2,\n")
                      .arg(field.key(), QString::fromUtf8(QJsonDocument(QJsonArray{field.value()})
                                                             .toJson(QJsonDocument::Compact)
                                                             .chopped(1)
                                                             .sliced(1)));
    const QString text = QStringLiteral("{\n  \"format\": \"%1\",\n  \"version\": %2,\n%3  \"items\": [\n%4\n  ]\n}\n")
                             .arg(FormatName(file.kind))
                             .arg(FormatVersion)
                             .arg(fields, lines.join(QStringLiteral(",\n")));

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

} // namespace tessaly::model
