// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Reading and writing the emulator's file system file. A file is taken only
// when every entry is sound and every entry's folder is in it: a damaged one
// is set aside whole, as the NV memory file is (model/FileNvMemory.cpp).
#include "EfsStateFile.h"

#include "FactoryEfs.h"

#include "link/Efs2.h"
#include "model/NvFile.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace emu {

using namespace tessaly;
using link::EfsKindMask;

namespace {

const QLatin1String Format("tessaly-emu file system");

bool KnownKind(uint32_t mode)
{
    switch (mode & EfsKindMask) {
    case link::EfsKindFolder:
    case link::EfsKindFile:
    case link::EfsKindLink:
    case link::EfsKindItem: return true;
    default: return false;
    }
}

// Why entry `n` cannot be taken, or an empty string; the node in `node`.
QString ReadEntry(const QJsonObject& entry, int n, QString& path, EfsNode& node)
{
    const QString where = QStringLiteral("entry %1").arg(n);
    path = entry[QLatin1String("path")].toString();
    if (!path.startsWith(u'/') || (path.size() > 1 && path.endsWith(u'/')) || path.contains(QLatin1String("//")))
        return where + QStringLiteral(" has no absolute path");
    bool octal = false;
    node.mode = entry[QLatin1String("mode")].toString().toUInt(&octal, 8);
    if (!octal || !KnownKind(node.mode) || (node.mode & ~(EfsKindMask | 07777)) != 0)
        return where + QStringLiteral(" (%1) has no mode of a folder, file or link").arg(path);
    int32_t* const times[] = {&node.atime, &node.mtime, &node.ctime};
    const char* const names[] = {"atime", "mtime", "ctime"};
    for (int i = 0; i < 3; ++i) {
        const QJsonValue time = entry[QLatin1String(names[i])];
        if (!time.isDouble())
            return where + QStringLiteral(" (%1) has no %2").arg(path, QLatin1String(names[i]));
        *times[i] = time.toInt();
    }
    const auto data = QByteArray::fromBase64Encoding(entry[QLatin1String("data")].toString().toLatin1(),
                                                     QByteArray::AbortOnBase64DecodingErrors);
    if (!data)
        return where + QStringLiteral(" (%1) has data that is not base64").arg(path);
    node.data = *data;
    node.target = entry[QLatin1String("target")].toString();
    if ((node.mode & EfsKindMask) == link::EfsKindLink && node.target.isEmpty())
        return where + QStringLiteral(" (%1) is a link without a target").arg(path);
    return {};
}

// Why `bytes` are not a file system of this format, or an empty string.
QString ReadNodes(const QByteArray& bytes, std::map<QString, EfsNode>& nodes)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        return QStringLiteral("%1 at byte %2").arg(error.errorString()).arg(error.offset);
    const QJsonObject top = document.object();
    if (top[QLatin1String("format")].toString() != Format || !top[QLatin1String("entries")].isArray())
        return QStringLiteral("it is not a file system of tessaly-emu");
    const QJsonArray entries = top[QLatin1String("entries")].toArray();
    for (int n = 0; n < entries.size(); ++n) {
        QString path;
        EfsNode node;
        if (QString problem = ReadEntry(entries[n].toObject(), n + 1, path, node); !problem.isEmpty())
            return problem;
        if (!nodes.emplace(path, node).second)
            return QStringLiteral("%1 is listed twice").arg(path);
    }
    for (const auto& [path, node] : nodes) {
        const QString folder = path.left(std::max<qsizetype>(1, path.lastIndexOf(u'/')));
        const auto parent = nodes.find(folder);
        if (path != u"/" && (parent == nodes.end() || (parent->second.mode & EfsKindMask) != link::EfsKindFolder))
            return QStringLiteral("%1 has no folder %2").arg(path, folder);
    }
    return {};
}

} // namespace

QString EfsPathBeside(const QString& state)
{
    return state + QStringLiteral(".efs.json");
}

std::map<QString, EfsNode> LoadEfs(const QString& path, QString& problem)
{
    QFile file(path);
    if (!file.exists())
        return FactoryEfs();
    std::map<QString, EfsNode> nodes;
    const QString reason = file.open(QIODevice::ReadOnly) ? ReadNodes(file.readAll(), nodes) : file.errorString();
    if (reason.isEmpty())
        return nodes;
    const QString aside = tessaly::model::AsideName(path);
    problem = QFile::rename(path, aside)
        ? QStringLiteral("The file system file %1 was damaged: %2. It is kept as %3, and the handset starts again "
                         "with its factory files.")
              .arg(path, reason, aside)
        : QStringLiteral("The file system file %1 was damaged: %2. It could not be moved aside, so it is left as "
                         "it is.")
              .arg(path, reason);
    return FactoryEfs();
}

QString SaveEfs(const QString& path, const EfsTree& tree)
{
    QJsonArray entries;
    for (const auto& [name, node] : tree.nodes()) {
        QJsonObject entry{{"path", name},
                          {"mode", QString::number(node->mode, 8).rightJustified(7, u'0')},
                          {"atime", node->atime},
                          {"mtime", node->mtime},
                          {"ctime", node->ctime}};
        if (!node->data.isEmpty())
            entry[QLatin1String("data")] = QString::fromLatin1(node->data.toBase64());
        if (!node->target.isEmpty())
            entry[QLatin1String("target")] = node->target;
        entries.append(entry);
    }
    return model::WriteWhole(path, QJsonDocument(QJsonObject{{"format", Format}, {"entries", entries}}).toJson());
}

} // namespace emu
