// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// One EFS2 request: its fields to the file system's call, the call's outcome
// to the reply's fields.
#include "EfsAnswers.h"

#include "link/DiagPackets.h"
#include "link/DiagSubsystem.h"
#include "link/Efs2.h"

#include <algorithm>
#include <limits>

namespace emu {

using namespace tessaly::link;

namespace {

// Sixteen packets on the way each way, each of a read's or write's largest
// piece.
constexpr uint32_t WindowPackets = 16;
constexpr uint32_t WindowBytes = WindowPackets * EfsAnswers::MaxReadBytes;
constexpr int32_t BlockSize = 512;

EfsAttributes AttributesOf(const EfsNode& node)
{
    const bool folder = (node.mode & EfsKindMask) == EfsKindFolder;
    return {int32_t(node.mode), int32_t(node.data.size()), folder ? 2 : 1, node.atime, node.mtime, node.ctime};
}

int32_t EntryTypeOf(const EfsNode& node)
{
    switch (node.mode & EfsKindMask) {
    case EfsKindFolder: return EfsEntryFolder;
    case EfsKindLink: return EfsEntryLink;
    default: return EfsEntryFile;
    }
}

int32_t Clamped(int64_t value)
{
    return int32_t(std::min<int64_t>(value, std::numeric_limits<int32_t>::max()));
}

} // namespace

EfsAnswers::EfsAnswers(EfsTree& tree)
    : m_tree(tree)
{
}

QByteArray EfsAnswers::answer(const QByteArray& request)
{
    const std::optional<EfsRequest> asked = ReadEfsRequest(request);
    if (!asked) {
        const bool known = ReadSubsystemHeader(request)->command <= EfsStatfs;
        return ErrorReply(known ? CmdBadLength : CmdBadCommand, request);
    }
    EfsReply reply;
    reply.command = asked->command;
    const auto attributes = [&](int32_t error, const EfsNode& node) {
        reply.error = error;
        if (error == EfsOk)
            reply.attributes = AttributesOf(node);
    };
    EfsNode node;
    switch (asked->command) {
    case EfsHello:
        reply.window = {WindowPackets, WindowBytes, WindowPackets, WindowBytes, WindowPackets, WindowBytes, 1, 1, 1, 0};
        break;
    case EfsQuery:
        // A folder holds as many entries as the volume does; one volume.
        reply.limits = {EfsTree::MaxName,           EfsTree::MaxPath,    EfsTree::MaxLinkDepth,
                        Clamped(m_tree.capacity()), EfsTree::MaxEntries, 1};
        break;
    case EfsOpen:
        reply.error = m_tree.open(asked->path, asked->flags, asked->mode, reply.fd);
        break;
    case EfsClose:
        reply.error = m_tree.close(asked->fd);
        break;
    case EfsRead:
        reply.fd = asked->fd;
        reply.offset = asked->offset;
        reply.error = m_tree.read(asked->fd, asked->offset, std::min(asked->size, MaxReadBytes), reply.data);
        reply.count = reply.error == EfsOk ? int32_t(reply.data.size()) : -1;
        break;
    case EfsWrite:
        reply.fd = asked->fd;
        reply.offset = asked->offset;
        reply.error = m_tree.write(asked->fd, asked->offset, asked->data);
        reply.count = reply.error == EfsOk ? int32_t(asked->data.size()) : -1;
        break;
    case EfsSymlink:
        reply.error = m_tree.symlink(asked->path, asked->path2);
        break;
    case EfsReadlink:
        reply.error = m_tree.readlink(asked->path, reply.name);
        break;
    case EfsUnlink:
        reply.error = m_tree.unlink(asked->path);
        break;
    case EfsMkdir:
        reply.error = m_tree.mkdir(asked->path, asked->mode);
        break;
    case EfsRmdir:
        reply.error = m_tree.rmdir(asked->path);
        break;
    case EfsOpendir:
        reply.error = m_tree.opendir(asked->path, reply.folder);
        break;
    case EfsReaddir: {
        reply.folder = asked->folder;
        reply.sequence = asked->sequence;
        EfsListed entry;
        reply.error = m_tree.readdir(asked->folder, asked->sequence, entry);
        if (reply.error == EfsOk) {
            reply.entryType = EntryTypeOf(*entry.node);
            reply.attributes = AttributesOf(*entry.node);
            reply.name = entry.name;
        }
        break;
    }
    case EfsClosedir:
        reply.error = m_tree.closedir(asked->folder);
        break;
    case EfsRename:
        reply.error = m_tree.rename(asked->path, asked->path2);
        break;
    case EfsStat:
        attributes(m_tree.stat(asked->path, node), node);
        break;
    case EfsLstat:
        attributes(m_tree.lstat(asked->path, node), node);
        break;
    case EfsFstat:
        attributes(m_tree.fstat(asked->fd, node), node);
        break;
    case EfsChmod:
        reply.error = m_tree.chmod(asked->path, asked->mode);
        break;
    case EfsStatfs:
        reply.error = m_tree.stat(asked->path, node);
        if (reply.error == EfsOk) {
            const int32_t free = Clamped(std::max<int64_t>(0, m_tree.capacity() - m_tree.used()) / BlockSize);
            reply.volume = {1, "EFS2", BlockSize, Clamped(m_tree.capacity() / BlockSize), free, free,
                            Clamped(m_tree.capacity()), int32_t(m_tree.nodes().size()), EfsTree::MaxEntries};
        }
        break;
    }
    return EncodeEfsReply(reply);
}

} // namespace emu
