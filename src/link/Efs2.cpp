// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The EFS2 packets: one table of each command's fields in the order they are
// sent, walked by one writer and one reader, so that an encoder and its
// decoder cannot disagree.
#include "link/Efs2.h"

#include "link/DiagPackets.h"
#include "link/DiagSubsystem.h"
#include "link/PacketBytes.h"

#include <tessaly/TessalyError.h>

#include <algorithm>
#include <concepts>
#include <vector>

namespace tessaly::link {

namespace {

// The fields of the packets. Numbers are 32 bits unless said otherwise.
enum Field {
    Window,      // hello: ten numbers
    Limits,      // query: six numbers
    Volume,      // statfs: id, type (8 bytes), seven numbers
    Error,
    Fd,
    Folder,
    Sequence,
    Flags,
    Mode,
    ShortMode,   // mkdir, chmod: 16 bits
    Size,        // read request: bytes wanted; stat, fstat, readdir: the file's size
    Offset,
    Count,
    EntryType,
    Links,
    Times,       // atime, mtime, ctime
    Path,        // text ended by a NUL
    Path2,
    Name,
    Data,        // the rest of the packet
};

struct Layout {
    std::vector<Field> request;
    std::vector<Field> reply;
};

// Each command's fields after the subsystem header, as libopenpst's
// qc/diag_efs.h lays them out; qfenix sends open, write and mkdir the same
// way (flags of POSIX, 0100 to create; mkdir's mode in 16 bits).
std::optional<Layout> LayoutOf(uint16_t command)
{
    switch (command) {
    case EfsHello: return Layout{{Window}, {Window}};
    case EfsQuery: return Layout{{}, {Limits}};
    case EfsOpen: return Layout{{Flags, Mode, Path}, {Fd, Error}};
    case EfsClose: return Layout{{Fd}, {Error}};
    // The reply echoes the descriptor and the offset; its data is the rest
    // of the packet, `count` bytes.
    case EfsRead: return Layout{{Fd, Size, Offset}, {Fd, Offset, Count, Error, Data}};
    case EfsWrite: return Layout{{Fd, Offset, Data}, {Fd, Offset, Count, Error}};
    // The target first, then the link.
    case EfsSymlink: return Layout{{Path, Path2}, {Error}};
    // The target ends with a NUL, as every text of these packets.
    case EfsReadlink: return Layout{{Path}, {Error, Name}};
    case EfsUnlink:
    case EfsRmdir: return Layout{{Path}, {Error}};
    case EfsMkdir:
    case EfsChmod: return Layout{{ShortMode, Path}, {Error}};
    case EfsOpendir: return Layout{{Path}, {Folder, Error}};
    // The reply echoes the handle and the sequence number.
    case EfsReaddir:
        return Layout{{Folder, Sequence}, {Folder, Sequence, Error, EntryType, Mode, Size, Times, Name}};
    case EfsClosedir: return Layout{{Folder}, {Error}};
    case EfsRename: return Layout{{Path, Path2}, {Error}};
    case EfsStat: return Layout{{Path}, {Error, Mode, Size, Links, Times}};
    case EfsFstat: return Layout{{Fd}, {Error, Mode, Size, Links, Times}};
    // A link's own attributes: no size and no link count.
    case EfsLstat: return Layout{{Path}, {Error, Mode, Times}};
    case EfsStatfs: return Layout{{Path}, {Error, Volume}};
    }
    return {};
}

// Appends each field to a packet.
class Writer {
public:
    explicit Writer(QByteArray& bytes) : bytes_(bytes) {}

    void Word(std::integral auto& value) { AppendLittle32(bytes_, uint32_t(value)); }
    void Half(int32_t& value) { AppendLittle16(bytes_, uint16_t(value)); }
    // Text byte for byte (Latin-1), so that a name read from a handset goes
    // back to it unchanged.
    void Text(QString& text)
    {
        bytes_.append(text.toLatin1());
        bytes_.append('\0');
    }
    void Fixed(QByteArray& field, qsizetype width)
    {
        bytes_.append(field.left(width));
        bytes_.append(QByteArray(width - std::min(field.size(), width), '\0'));
    }
    void Rest(QByteArray& data) { bytes_.append(data); }

private:
    QByteArray& bytes_;
};

// Reads each field from a packet; a field that runs past its end leaves the
// packet not whole, and nothing more is read.
class Reader {
public:
    explicit Reader(QByteArrayView packet) : packet_(packet) {}

    bool Whole() const { return whole_; }

    void Word(std::integral auto& value)
    {
        if (Take(4))
            value = std::remove_reference_t<decltype(value)>(Little32(packet_, at_ - 4));
    }
    void Half(int32_t& value)
    {
        if (Take(2))
            value = Little16(packet_, at_ - 2);
    }
    void Text(QString& text)
    {
        const qsizetype end = whole_ ? packet_.indexOf('\0', at_) : -1;
        whole_ = end >= 0;
        if (whole_) {
            text = QString::fromLatin1(packet_.sliced(at_, end - at_));
            at_ = end + 1;
        }
    }
    void Fixed(QByteArray& field, qsizetype width)
    {
        if (!Take(width))
            return;
        const QByteArrayView bytes = packet_.sliced(at_ - width, width);
        const qsizetype end = bytes.indexOf('\0');
        field = (end < 0 ? bytes : bytes.first(end)).toByteArray();
    }
    void Rest(QByteArray& data)
    {
        if (whole_)
            data = packet_.sliced(at_).toByteArray();
        at_ = packet_.size();
    }

private:
    bool Take(qsizetype size)
    {
        whole_ = whole_ && at_ + size <= packet_.size();
        at_ += size;
        return whole_;
    }

    QByteArrayView packet_;
    qsizetype at_ = 4;
    bool whole_ = true;
};

template <class Io>
void VisitWindow(Io& io, EfsWindow& window)
{
    for (uint32_t* field : {&window.targetPackets, &window.targetBytes, &window.hostPackets, &window.hostBytes,
                            &window.folderPackets, &window.folderBytes, &window.version, &window.minVersion,
                            &window.maxVersion, &window.features})
        io.Word(*field);
}

template <class Io>
void Visit(Io& io, EfsRequest& request, Field field)
{
    switch (field) {
    case Window: VisitWindow(io, request.window); break;
    case Fd: io.Word(request.fd); break;
    case Folder: io.Word(request.folder); break;
    case Sequence: io.Word(request.sequence); break;
    case Flags: io.Word(request.flags); break;
    case Mode: io.Word(request.mode); break;
    case ShortMode: io.Half(request.mode); break;
    case Size: io.Word(request.size); break;
    case Offset: io.Word(request.offset); break;
    case Path: io.Text(request.path); break;
    case Path2: io.Text(request.path2); break;
    case Data: io.Rest(request.data); break;
    default: break; // the fields of replies alone
    }
}

template <class Io>
void Visit(Io& io, EfsReply& reply, Field field)
{
    EfsAttributes& attributes = reply.attributes;
    EfsLimits& limits = reply.limits;
    EfsVolume& volume = reply.volume;
    switch (field) {
    case Window: VisitWindow(io, reply.window); break;
    case Limits:
        for (int32_t* limit : {&limits.maxName, &limits.maxPath, &limits.maxLinkDepth, &limits.maxFileSize,
                               &limits.maxFolderEntries, &limits.maxMounts})
            io.Word(*limit);
        break;
    case Volume:
        io.Word(volume.id);
        io.Fixed(volume.type, 8);
        for (int32_t* number : {&volume.blockSize, &volume.totalBlocks, &volume.availableBlocks, &volume.freeBlocks,
                                &volume.maxFileSize, &volume.files, &volume.maxFiles})
            io.Word(*number);
        break;
    case Error: io.Word(reply.error); break;
    case Fd: io.Word(reply.fd); break;
    case Folder: io.Word(reply.folder); break;
    case Sequence: io.Word(reply.sequence); break;
    case Mode: io.Word(attributes.mode); break;
    case Size: io.Word(attributes.size); break;
    case Offset: io.Word(reply.offset); break;
    case Count: io.Word(reply.count); break;
    case EntryType: io.Word(reply.entryType); break;
    case Links: io.Word(attributes.links); break;
    case Times:
        io.Word(attributes.atime);
        io.Word(attributes.mtime);
        io.Word(attributes.ctime);
        break;
    case Name: io.Text(reply.name); break;
    case Data: io.Rest(reply.data); break;
    default: break; // the fields of requests alone
    }
}

// The bytes of `packet`: the subsystem header, then the fields of its
// command's request or reply (`side`) in their order.
template <class Packet>
QByteArray Encode(Packet packet, std::vector<Field> Layout::*side)
{
    QByteArray bytes(1, char(CmdSubsystem));
    bytes.append(char(SubsysEfs));
    AppendLittle16(bytes, packet.command);
    Writer writer(bytes);
    const Layout layout = *LayoutOf(packet.command);
    for (Field field : layout.*side)
        Visit(writer, packet, field);
    return bytes;
}

// The fields of an EFS2 packet; nothing for another packet or one cut short.
template <class Packet>
std::optional<Packet> Decode(QByteArrayView bytes, std::vector<Field> Layout::*side)
{
    const std::optional<SubsystemHeader> header = ReadSubsystemHeader(bytes);
    const std::optional<Layout> layout = header && header->subsystem == SubsysEfs ? LayoutOf(header->command)
                                                                                  : std::nullopt;
    if (!layout)
        return {};
    Packet packet;
    packet.command = EfsCommand(header->command);
    Reader reader(bytes);
    for (Field field : (*layout).*side)
        Visit(reader, packet, field);
    if (!reader.Whole())
        return {};
    return packet;
}

} // namespace

QByteArray EncodeEfsRequest(const EfsRequest& request)
{
    return Encode(request, &Layout::request);
}

QByteArray EncodeEfsReply(const EfsReply& reply)
{
    return Encode(reply, &Layout::reply);
}

std::optional<EfsRequest> ReadEfsRequest(QByteArrayView packet)
{
    return Decode<EfsRequest>(packet, &Layout::request);
}

std::optional<EfsReply> ReadEfsReply(QByteArrayView packet)
{
    std::optional<EfsReply> reply = Decode<EfsReply>(packet, &Layout::reply);
    // A read's data shorter than the count it claims was cut short too.
    if (reply && reply->command == EfsRead && reply->data.size() < reply->count)
        return {};
    return reply;
}

bool EfsAnswers(QByteArrayView request, QByteArrayView reply)
{
    if (!Answers(request, reply, false))
        return false;
    const std::optional<EfsRequest> asked = ReadEfsRequest(request);
    const std::optional<EfsReply> answer = ReadEfsReply(reply);
    // An error reply that echoes the request, or a reply cut short:
    // ParseEfsReply says which.
    if (!asked || !answer)
        return true;
    if (asked->command == EfsRead || asked->command == EfsWrite)
        return answer->fd == asked->fd && answer->offset == asked->offset;
    if (asked->command == EfsReaddir)
        return answer->folder == asked->folder && answer->sequence == asked->sequence;
    return true;
}

EfsReply ParseEfsReply(QByteArrayView request, QByteArrayView reply)
{
    if (IsBadCommand(reply))
        throw TessalyError(errHandsetRefused, QStringLiteral("The handset does not know the file system's commands: "
                                                             "it offers no file system (EFS2) over this port."));
    CheckReply(request, reply, 4);
    if (reply.first(4) != request.first(4))
        throw TessalyError(errWrongReply, QStringLiteral("The handset answered another subsystem's command."));
    const std::optional<EfsReply> answer = ReadEfsReply(reply);
    if (!answer)
        throw TessalyError(errWrongReply, QStringLiteral("The handset's file system reply was cut short (%1 bytes).")
                                              .arg(reply.size()));
    if (!EfsAnswers(request, reply)) {
        const EfsRequest asked = *ReadEfsRequest(request);
        if (asked.command == EfsRead || asked.command == EfsWrite)
            throw TessalyError(errWrongReply, QStringLiteral("The handset answered for file %1 at offset %2 "
                                                             "when asked for file %3 at offset %4.")
                                                  .arg(answer->fd)
                                                  .arg(answer->offset)
                                                  .arg(asked.fd)
                                                  .arg(asked.offset));
        throw TessalyError(errWrongReply, QStringLiteral("The handset answered for entry %1 of folder handle %2 "
                                                         "when asked for entry %3 of folder handle %4.")
                                              .arg(answer->sequence)
                                              .arg(answer->folder)
                                              .arg(asked.sequence)
                                              .arg(asked.folder));
    }
    return *answer;
}

QString EfsErrorText(int32_t error)
{
    struct Meaning {
        int32_t error;
        const char* text;
    };
    static constexpr Meaning Meanings[] = {
        {EfsOk, "Success"},
        {EfsNoEntry, "No such file or directory (ENOENT)"},
        {EfsBadFile, "Bad file descriptor (EBADF)"},
        {EfsDenied, "Permission denied (EACCES)"},
        {EfsExists, "File exists (EEXIST)"},
        {EfsNotFolder, "Not a directory (ENOTDIR)"},
        {EfsIsFolder, "Is a directory (EISDIR)"},
        {EfsInvalid, "Invalid argument (EINVAL)"},
        {EfsTooManyOpen, "Too many open files (EMFILE)"},
        {EfsNoSpace, "No space left on device (ENOSPC)"},
        {EfsNameTooLong, "File name too long (ENAMETOOLONG)"},
        {EfsNotEmpty, "Directory not empty (ENOTEMPTY)"},
        {EfsDirNotOpen, "Directory not open (0x40000003)"},
        {EfsDirEntryNotFound, "No more directory entries (0x40000004)"},
    };
    for (const Meaning& meaning : Meanings)
        if (meaning.error == error)
            return QLatin1String(meaning.text);
    return QStringLiteral("error %1").arg(error);
}

QString EfsPath(const QString& folder, const QString& name)
{
    return folder.endsWith(QLatin1Char('/')) ? folder + name : folder + QLatin1Char('/') + name;
}

QString EfsParent(const QString& path)
{
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    return slash <= 0 ? QStringLiteral("/") : path.left(slash);
}

} // namespace tessaly::link
