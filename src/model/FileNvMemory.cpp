#include "model/FileNvMemory.h"

#include "model/ErrorNumbers.h"

#include <tessaly/BaseModel.h>

#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>

namespace tessaly::model {

namespace {

const QLatin1String FormatName("Halvane NV memory");
constexpr int FormatVersion = 1;

QString Hex(const NvData& data)
{
    const auto end = std::find_if(data.rbegin(), data.rend(), [](uint8_t byte) { return byte != 0; }).base();
    return QString::fromLatin1(QByteArray(reinterpret_cast<const char*>(data.data()), end - data.begin()).toHex());
}

bool FromHex(const QString& hex, NvData& data)
{
    const bool digits = std::all_of(hex.begin(), hex.end(), [](QChar c) {
        return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
    });
    if (!digits || hex.size() % 2 != 0 || hex.size() > 2 * qsizetype(data.size()))
        return false;
    const QByteArray bytes = QByteArray::fromHex(hex.toLatin1());
    data.fill(0);
    std::copy(bytes.begin(), bytes.end(), data.begin());
    return true;
}

// A name beside `path` that no file has yet.
QString AsideName(const QString& path)
{
    const QString stem
        = path + QStringLiteral(".damaged-") + QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString name = stem;
    for (int n = 2; QFileInfo::exists(name); ++n)
        name = stem + QStringLiteral("-%1").arg(n);
    return name;
}

} // namespace

FileNvMemory::FileNvMemory(QString path, const NvImage& factory)
    : m_path(std::move(path))
{
    if (QFileInfo::exists(m_path)) {
        const QString reason = load();
        if (reason.isEmpty())
            return;
        setAside(reason);
    }
    for (const auto& [address, data] : factory)
        m_items[address] = Item{NvStatus::Done, data};
}

QString FileNvMemory::DefaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/nv-memory.json");
}

QString FileNvMemory::load()
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("it cannot be read: %1").arg(file.errorString());
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (document.isNull())
        return QStringLiteral("it is not JSON: %1 at byte %2").arg(error.errorString()).arg(error.offset);
    const QJsonObject root = document.object();
    if (root[QLatin1String("format")].toString() != FormatName
        || root[QLatin1String("version")].toInt() != FormatVersion)
        return QStringLiteral("it is not an NV memory of format %1").arg(FormatVersion);

    std::map<NvAddress, Item> items;
    const QJsonArray entries = root[QLatin1String("items")].toArray();
    for (qsizetype i = 0; i < entries.size(); ++i) {
        const QJsonObject entry = entries[i].toObject();
        const int item = entry[QLatin1String("item")].toInt(-1);
        const int index = entry[QLatin1String("index")].toInt(-1);
        const int status = entry[QLatin1String("status")].toInt(-1);
        NvData data{};
        if (item < 0 || item > 0xFFFF || index < -1 || index > 0xFF || status < 0 || status > 0xFFFF
            || !FromHex(entry[QLatin1String("data")].toString(), data))
            return QStringLiteral("its entry %1 is not an item of 128 bytes at most").arg(i + 1);
        if (!items.try_emplace(NvAddress{uint16_t(item), int16_t(index)}, Item{NvStatus(status), data}).second)
            return QStringLiteral("its entry %1 repeats an item").arg(i + 1);
    }
    m_items = std::move(items);
    return {};
}

void FileNvMemory::setAside(const QString& reason)
{
    const QString aside = AsideName(m_path);
    // QFile::rename never replaces a file that is there.
    if (QFile::rename(m_path, aside)) {
        m_problem = QStringLiteral("The NV memory file %1 was damaged: %2. It is kept as %3, and the handset "
                                   "starts again with its factory values.")
                        .arg(m_path, reason, aside);
    } else {
        m_savable = false;
        m_problem = QStringLiteral("The NV memory file %1 was damaged: %2. It could not be moved aside, so it is "
                                   "left as it is; the handset starts with its factory values and cannot save them.")
                        .arg(m_path, reason);
    }
    qWarning().noquote() << m_problem;
}

NvStatus FileNvMemory::read(NvAddress address, NvData& data)
{
    const auto found = m_items.find(address);
    if (found == m_items.end()) {
        data.fill(0);
        if (address.index >= 0)
            data[0] = uint8_t(address.index);
        return NvStatus::Inactive;
    }
    data = found->second.data;
    return found->second.status;
}

NvStatus FileNvMemory::write(NvAddress address, const NvData& data)
{
    m_items[address] = Item{NvStatus::Done, data};
    m_changed = true;
    return NvStatus::Done;
}

void FileNvMemory::commit()
{
    if (!m_changed)
        return;
    if (!m_savable)
        throw TessalyError(errMemoryNotSaved, QStringLiteral("The NV items were not saved. %1").arg(m_problem));

    // One item a line, in the order of their numbers.
    QStringList lines;
    for (const auto& [address, item] : m_items) {
        const QString index = address.index >= 0 ? QStringLiteral("\"index\": %1, ").arg(address.index) : QString();
        lines << QStringLiteral("    {\"item\": %1, %2\"status\": %3, \"data\": \"%4\"}")
                     .arg(address.item)
                     .arg(index)
                     .arg(int(item.status))
                     .arg(Hex(item.data));
    }
    const QString text = QStringLiteral("{\n  \"format\": \"%1\",\n  \"version\": %2,\n  \"items\": [\n%3\n  ]\n}\n")
                             .arg(FormatName)
                             .arg(FormatVersion)
                             .arg(lines.join(QStringLiteral(",\n")));

    QDir().mkpath(QFileInfo(m_path).absolutePath());
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toLatin1()) < 0 || !file.commit())
        throw TessalyError(errMemoryNotSaved,
                         QStringLiteral("The NV items could not be saved to %1: %2").arg(m_path, file.errorString()));
    m_changed = false;
}

} // namespace tessaly::model
