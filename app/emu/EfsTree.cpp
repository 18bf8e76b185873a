// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The file system's calls: paths resolved to the tree's keys, then each
// call's checks in the order a POSIX system makes them.
#include "EfsTree.h"

#include "link/Efs2.h"

#include <QDateTime>

#include <algorithm>
#include <utility>

namespace emu {

using namespace tessaly::link;

namespace {

// The owner's permission bits.
constexpr uint32_t MayRead = 0400;
constexpr uint32_t MayWrite = 0200;
constexpr uint32_t MaySearch = 0100;
constexpr uint32_t Permissions = 07777;
constexpr int32_t AccessMask = 3; // the open flags' read-write part

bool IsFolder(const EfsNode& node) { return (node.mode & EfsKindMask) == EfsKindFolder; }
bool IsLink(const EfsNode& node) { return (node.mode & EfsKindMask) == EfsKindLink; }
bool May(const EfsNode& node, uint32_t bits) { return (node.mode & bits) == bits; }

int32_t Now()
{
    return int32_t(QDateTime::currentSecsSinceEpoch() - tessaly::link::EfsTimeStart);
}

} // namespace

EfsTree::EfsTree(std::map<QString, EfsNode> nodes, int64_t capacity)
    : m_capacity(capacity)
{
    for (auto& [path, node] : nodes)
        m_nodes[path] = std::make_shared<EfsNode>(std::move(node));
    if (!m_nodes.count(QStringLiteral("/")))
        m_nodes[QStringLiteral("/")] = std::make_shared<EfsNode>(EfsNode{EfsKindFolder | 0755, 0, 0, 0, {}, {}});
}

int64_t EfsTree::used() const
{
    int64_t bytes = 0;
    for (const auto& [path, node] : m_nodes)
        bytes += node->data.size();
    return bytes;
}

bool EfsTree::takeChanged()
{
    return std::exchange(m_changed, false);
}

int32_t EfsTree::resolve(const QString& path, bool followLast, QString& found) const
{
    if (path.size() > MaxPath)
        return EfsNameTooLong;
    QStringList rest = path.split(u'/', Qt::SkipEmptyParts);
    QString at = QStringLiteral("/");
    int links = 0;
    while (!rest.isEmpty()) {
        const QString part = rest.takeFirst();
        if (!May(*m_nodes.at(at), MaySearch))
            return EfsDenied;
        if (part == u"..")
            at = tessaly::link::EfsParent(at);
        if (part == u"." || part == u"..")
            continue;
        const QString next = tessaly::link::EfsPath(at, part);
        const auto node = m_nodes.find(next);
        if (node == m_nodes.end())
            return EfsNoEntry;
        if (IsLink(*node->second) && (!rest.isEmpty() || followLast)) {
            // The link's target takes its place; a relative one from the
            // link's own folder.
            if (++links > MaxLinkDepth)
                return LinkLoop;
            const QString& target = node->second->target;
            rest = target.split(u'/', Qt::SkipEmptyParts) + rest;
            if (target.startsWith(u'/'))
                at = QStringLiteral("/");
            continue;
        }
        if (!rest.isEmpty() && !IsFolder(*node->second))
            return EfsNotFolder;
        at = next;
    }
    found = at;
    return EfsOk;
}

int32_t EfsTree::place(const QString& path, QString& placed) const
{
    QString trimmed = path;
    while (trimmed.size() > 1 && trimmed.endsWith(u'/'))
        trimmed.chop(1);
    const qsizetype cut = trimmed.lastIndexOf(u'/');
    const QString name = trimmed.mid(cut + 1);
    QString folder;
    if (const int32_t error = resolve(cut < 0 ? QString() : trimmed.left(cut), true, folder); error != EfsOk)
        return error;
    const EfsNode& parent = *m_nodes.at(folder);
    if (!IsFolder(parent))
        return EfsNotFolder;
    if (name.isEmpty() || name == u"." || name == u"..")
        return EfsExists;
    if (name.size() > MaxName)
        return EfsNameTooLong;
    placed = tessaly::link::EfsPath(folder, name);
    if (m_nodes.count(placed))
        return EfsExists;
    if (!May(parent, MayWrite | MaySearch))
        return EfsDenied;
    return int(m_nodes.size()) < MaxEntries ? EfsOk : EfsNoSpace;
}

int32_t EfsTree::removable(const QString& found) const
{
    return found != u"/" && May(*m_nodes.at(tessaly::link::EfsParent(found)), MayWrite) ? EfsOk : EfsDenied;
}

std::vector<QString> EfsTree::children(const QString& folder) const
{
    const QString prefix = folder == u"/" ? folder : folder + u'/';
    std::vector<QString> names;
    for (auto at = m_nodes.upper_bound(prefix); at != m_nodes.end() && at->first.startsWith(prefix); ++at)
        if (at->first.indexOf(u'/', prefix.size()) < 0)
            names.push_back(at->first.mid(prefix.size()));
    return names;
}

void EfsTree::add(const QString& path, uint32_t mode)
{
    const int32_t now = Now();
    m_nodes[path] = std::make_shared<EfsNode>(EfsNode{mode, now, now, now, {}, {}});
    m_changed = true;
}

void EfsTree::touch(EfsNode& node)
{
    node.mtime = node.ctime = Now();
    m_changed = true;
}

int32_t EfsTree::open(const QString& path, int32_t flags, int32_t mode, int32_t& fd)
{
    fd = -1;
    const int32_t access = flags & AccessMask;
    if (access == AccessMask)
        return EfsInvalid;
    if (int(m_files.size()) >= MaxOpenFiles)
        return EfsTooManyOpen;
    QString found;
    int32_t error = resolve(path, true, found);
    const bool create = error == EfsNoEntry && (flags & EfsCreate);
    if (create) {
        if ((error = place(path, found)) != EfsOk)
            return error;
        add(found, EfsKindFile | (uint32_t(mode) & Permissions));
    } else if (error != EfsOk) {
        return error;
    } else if ((flags & EfsCreate) && (flags & EfsExclusive)) {
        return EfsExists;
    }
    EfsNode& node = *m_nodes.at(found);
    if (IsFolder(node))
        return EfsIsFolder;
    // A file is opened as its mode allows; one just made, as it was asked.
    if (!create
        && ((access != EfsWriteOnly && !May(node, MayRead)) || (access != EfsReadOnly && !May(node, MayWrite))))
        return EfsDenied;
    if (access != EfsReadOnly && (flags & EfsTruncate) && !node.data.isEmpty()) {
        node.data.clear();
        touch(node);
    }
    fd = 1;
    while (m_files.count(fd))
        ++fd;
    m_files[fd] = {m_nodes.at(found), flags};
    return EfsOk;
}

int32_t EfsTree::close(int32_t fd)
{
    return m_files.erase(fd) ? EfsOk : EfsBadFile;
}

int32_t EfsTree::read(int32_t fd, uint32_t offset, uint32_t size, QByteArray& data)
{
    const auto file = m_files.find(fd);
    if (file == m_files.end() || (file->second.flags & AccessMask) == EfsWriteOnly)
        return EfsBadFile;
    data = file->second.node->data.mid(qsizetype(offset), qsizetype(size));
    return EfsOk;
}

int32_t EfsTree::write(int32_t fd, uint32_t offset, const QByteArray& data)
{
    const auto file = m_files.find(fd);
    if (file == m_files.end() || (file->second.flags & AccessMask) == EfsReadOnly)
        return EfsBadFile;
    EfsNode& node = *file->second.node;
    const qsizetype at = (file->second.flags & EfsAppend) ? node.data.size() : qsizetype(offset);
    const qsizetype growth = std::max<qsizetype>(0, at + data.size() - node.data.size());
    if (used() + growth > m_capacity)
        return EfsNoSpace;
    if (node.data.size() < at)
        node.data.append(QByteArray(at - node.data.size(), '\0'));
    node.data.replace(at, data.size(), data);
    const auto garbled = m_nodes.find(m_garbled);
    if (garbled != m_nodes.end() && garbled->second == file->second.node && !data.isEmpty())
        node.data[at + data.size() - 1] = char(node.data[at + data.size() - 1] ^ 0x5A);
    touch(node);
    return EfsOk;
}

int32_t EfsTree::fstat(int32_t fd, EfsNode& node) const
{
    const auto file = m_files.find(fd);
    if (file == m_files.end())
        return EfsBadFile;
    node = *file->second.node;
    return EfsOk;
}

int32_t EfsTree::stat(const QString& path, EfsNode& node) const
{
    QString found;
    const int32_t error = resolve(path, true, found);
    if (error == EfsOk)
        node = *m_nodes.at(found);
    return error;
}

int32_t EfsTree::lstat(const QString& path, EfsNode& node) const
{
    QString found;
    const int32_t error = resolve(path, false, found);
    if (error == EfsOk)
        node = *m_nodes.at(found);
    return error;
}

int32_t EfsTree::opendir(const QString& path, uint32_t& folder)
{
    folder = 0;
    QString found;
    if (const int32_t error = resolve(path, true, found); error != EfsOk)
        return error;
    const EfsNode& node = *m_nodes.at(found);
    if (!IsFolder(node))
        return EfsNotFolder;
    if (!May(node, MayRead))
        return EfsDenied;
    if (int(m_folders.size()) >= MaxOpenFolders)
        return EfsTooManyOpen;
    std::vector<EfsListed> entries;
    for (const QString& name : children(found))
        entries.push_back({name, m_nodes.at(tessaly::link::EfsPath(found, name))});
    folder = m_nextFolder++;
    m_folders[folder] = std::move(entries);
    return EfsOk;
}

int32_t EfsTree::readdir(uint32_t folder, int32_t sequence, EfsListed& entry) const
{
    const auto open = m_folders.find(folder);
    if (open == m_folders.end())
        return EfsDirNotOpen;
    if (sequence < 1 || size_t(sequence) > open->second.size())
        return EfsDirEntryNotFound;
    entry = open->second[size_t(sequence) - 1];
    return EfsOk;
}

int32_t EfsTree::closedir(uint32_t folder)
{
    return m_folders.erase(folder) ? EfsOk : EfsDirNotOpen;
}

int32_t EfsTree::mkdir(const QString& path, int32_t mode)
{
    QString placed;
    const int32_t error = place(path, placed);
    if (error == EfsOk)
        add(placed, EfsKindFolder | (uint32_t(mode) & Permissions));
    return error;
}

int32_t EfsTree::rmdir(const QString& path)
{
    QString found;
    if (const int32_t error = resolve(path, false, found); error != EfsOk)
        return error;
    if (!IsFolder(*m_nodes.at(found)))
        return EfsNotFolder;
    if (const int32_t error = removable(found); error != EfsOk)
        return error;
    if (!children(found).empty())
        return EfsNotEmpty;
    m_nodes.erase(found);
    m_changed = true;
    return EfsOk;
}

int32_t EfsTree::unlink(const QString& path)
{
    QString found;
    if (const int32_t error = resolve(path, false, found); error != EfsOk)
        return error;
    if (IsFolder(*m_nodes.at(found)))
        return EfsIsFolder;
    if (const int32_t error = removable(found); error != EfsOk)
        return error;
    m_nodes.erase(found);
    m_changed = true;
    return EfsOk;
}

int32_t EfsTree::rename(const QString& from, const QString& to)
{
    QString source;
    if (const int32_t error = resolve(from, false, source); error != EfsOk)
        return error;
    if (const int32_t error = removable(source); error != EfsOk)
        return error;
    const bool folder = IsFolder(*m_nodes.at(source));
    QString placed;
    int32_t error = resolve(to, false, placed);
    if (error == EfsOk && placed == source)
        return EfsOk;
    if (error == EfsOk) {
        // What is there already is replaced, when it is of the same kind and
        // an empty folder at most.
        const bool there = IsFolder(*m_nodes.at(placed));
        if (folder != there)
            return folder ? EfsNotFolder : EfsIsFolder;
        if (there && !children(placed).empty())
            return EfsNotEmpty;
        error = removable(placed);
    } else if (error == EfsNoEntry) {
        error = place(to, placed);
    }
    if (error != EfsOk)
        return error;
    if (folder && placed.startsWith(source + u'/'))
        return EfsInvalid; // a folder into itself
    m_nodes.erase(placed);
    // The entry and everything under it take their new paths.
    std::vector<QString> moved;
    for (auto at = m_nodes.lower_bound(source); at != m_nodes.end() && at->first.startsWith(source); ++at)
        if (at->first == source || at->first.startsWith(source + u'/'))
            moved.push_back(at->first);
    for (const QString& path : moved)
        m_nodes[placed + path.mid(source.size())] = std::move(m_nodes.extract(path).mapped());
    m_nodes.at(placed)->ctime = Now();
    m_changed = true;
    return EfsOk;
}

int32_t EfsTree::symlink(const QString& target, const QString& link)
{
    if (target.isEmpty())
        return EfsNoEntry;
    QString placed;
    const int32_t error = place(link, placed);
    if (error == EfsOk) {
        add(placed, EfsKindLink | 0777);
        m_nodes.at(placed)->target = target;
    }
    return error;
}

int32_t EfsTree::readlink(const QString& path, QString& target) const
{
    QString found;
    if (const int32_t error = resolve(path, false, found); error != EfsOk)
        return error;
    const EfsNode& node = *m_nodes.at(found);
    if (!IsLink(node))
        return EfsInvalid;
    target = node.target;
    return EfsOk;
}

int32_t EfsTree::chmod(const QString& path, int32_t mode)
{
    QString found;
    if (const int32_t error = resolve(path, true, found); error != EfsOk)
        return error;
    EfsNode& node = *m_nodes.at(found);
    node.mode = (node.mode & EfsKindMask) | (uint32_t(mode) & Permissions);
    node.ctime = Now();
    m_changed = true;
    return EfsOk;
}

} // namespace emu
