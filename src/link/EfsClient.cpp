// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "link/EfsClient.h"

#include "link/DiagPackets.h"

#include <tessaly/TessalyError.h>

#include <QStringList>

#include <algorithm>

namespace tessaly::link {

namespace {

// Readdir requests a folder keeps on the way: the entries of a folder come a
// request each, and most folders hold a handful.
constexpr int EntriesAhead = 4;
// Files and folders open at once: enough to keep the line busy, few enough
// for any handset's table of descriptors.
constexpr int OpenFiles = 4;
constexpr int OpenFolders = 2;
// Bounds of a piece of a read or write, whatever the window says: a packet of
// the diagnostic protocol stays below 8 KB.
constexpr uint32_t LeastPiece = 64;
constexpr uint32_t MostPiece = 4096;

uint32_t Piece(uint32_t bytes, uint32_t packets)
{
    return std::clamp<uint32_t>(packets > 0 ? bytes / packets : bytes, LeastPiece, MostPiece);
}

} // namespace

struct EfsClient::FileRead {
    QByteArray bytes;
    int32_t fd = -1;
    qsizetype end = 0; // the bytes the file holds, as far as the reads tell
    int pending = 0;   // reads on the way
    int32_t error = EfsOk;
    Read done;
};

struct EfsClient::FileWrite {
    QByteArray bytes;
    int32_t fd = -1;
    int pending = 0;
    int32_t error = EfsOk;
    Written done;
};

struct EfsClient::FolderRead {
    QString path;
    uint32_t handle = 0;
    int32_t next = 1; // the sequence number of the next entry asked for
    int pending = 0;
    bool ended = false;
    int32_t error = EfsOk;
    std::map<int32_t, EfsListing> entries; // by sequence number
    Listed done;
};

void ThrowEfsError(int32_t error, const QString& path, const QString& what)
{
    throw TessalyError(errEfsRefused, QStringLiteral("%1 could not be %2: %3.").arg(path, what, EfsErrorText(error)));
}

void EfsClient::Slots::take(std::function<void()> open)
{
    if (m_free == 0)
        return m_waiting.push_back(std::move(open));
    --m_free;
    open();
}

void EfsClient::Slots::giveBack()
{
    ++m_free;
    if (m_waiting.empty())
        return;
    std::function<void()> next = std::move(m_waiting.front());
    m_waiting.pop_front();
    take(std::move(next));
}

EfsClient::EfsClient(SerialLink& link, int inFlight, std::chrono::milliseconds replyTime)
    : m_requests(link, inFlight, replyTime)
    , m_files(OpenFiles)
    , m_folders(OpenFolders)
{
}

void EfsClient::hello()
{
    // The host offers large windows; the handset answers with what it takes.
    EfsRequest request{.command = EfsHello};
    request.window = {0x100000, 0x100000, 0x100000, 0x100000, 0x100000, 0x100000, 1, 1, 1, 0};
    const EfsWindow window = call(request).window;
    m_readPiece = Piece(window.targetBytes, window.targetPackets);
    m_writePiece = Piece(window.hostBytes, window.hostPackets);
}

void EfsClient::postList(const QString& folder, Listed done)
{
    auto read = std::make_shared<FolderRead>();
    read->path = folder;
    read->done = std::move(done);
    m_folders.take([this, read] {
        m_requests.post({.command = EfsOpendir, .path = read->path}, [this, read](const EfsReply& reply) {
            if (reply.error != EfsOk) {
                m_folders.giveBack();
                return read->done(reply.error, {});
            }
            read->handle = reply.folder;
            for (int ahead = 0; ahead < EntriesAhead; ++ahead)
                nextEntry(read);
        });
    });
}

void EfsClient::nextEntry(const std::shared_ptr<FolderRead>& folder)
{
    if (folder->ended)
        return;
    ++folder->pending;
    const EfsRequest request{.command = EfsReaddir, .folder = folder->handle, .sequence = folder->next++};
    m_requests.post(request, [this, folder](const EfsReply& reply) {
        --folder->pending;
        // Past the last entry a handset answers an error of its own, or an
        // entry without a name.
        if (reply.error == EfsDirEntryNotFound || (reply.error == EfsOk && reply.name.isEmpty())) {
            folder->ended = true;
        } else if (reply.error != EfsOk) {
            folder->ended = true;
            folder->error = reply.error;
        } else {
            if (reply.name != QLatin1String(".") && reply.name != QLatin1String(".."))
                folder->entries[reply.sequence]
                    = {EfsPath(folder->path, reply.name), reply.entryType, reply.attributes, {}};
            nextEntry(folder);
        }
        if (!folder->ended || folder->pending > 0)
            return;
        m_requests.post({.command = EfsClosedir, .folder = folder->handle}, [this, folder](const EfsReply&) {
            m_folders.giveBack();
            std::vector<EfsListing> entries;
            for (auto& [sequence, entry] : folder->entries)
                entries.push_back(std::move(entry));
            folder->done(folder->error, std::move(entries));
        });
    });
}

void EfsClient::postRead(const QString& path, int32_t size, Read done)
{
    auto file = std::make_shared<FileRead>();
    file->done = std::move(done);
    file->bytes.resize(std::max(0, size));
    file->end = file->bytes.size();
    m_files.take([this, file, path] {
        m_requests.post({.command = EfsOpen, .flags = EfsReadOnly, .path = path}, [this, file](const EfsReply& reply) {
            if (reply.error != EfsOk) {
                m_files.giveBack();
                return file->done(reply.error, {});
            }
            file->fd = reply.fd;
            if (file->bytes.isEmpty())
                return readDone(file);
            for (uint32_t offset = 0; offset < uint32_t(file->bytes.size()); offset += m_readPiece)
                readPiece(file, offset, std::min<uint32_t>(m_readPiece, uint32_t(file->bytes.size()) - offset));
        });
    });
}

void EfsClient::readPiece(const std::shared_ptr<FileRead>& file, uint32_t offset, uint32_t size)
{
    ++file->pending;
    const EfsRequest request{.command = EfsRead, .fd = file->fd, .size = size, .offset = offset};
    m_requests.post(request, [this, file, offset, size](const EfsReply& reply) {
        --file->pending;
        const uint32_t count = uint32_t(std::clamp<qsizetype>(reply.data.size(), 0, size));
        if (reply.error != EfsOk)
            file->error = reply.error;
        else if (count == 0)
            file->end = std::min<qsizetype>(file->end, offset); // the file is shorter than it was
        else
            std::copy_n(reply.data.constData(), count, file->bytes.data() + offset);
        if (reply.error == EfsOk && count > 0 && count < size)
            readPiece(file, offset + count, size - count);
        if (file->pending == 0)
            readDone(file);
    });
}

void EfsClient::readDone(const std::shared_ptr<FileRead>& file)
{
    m_requests.post({.command = EfsClose, .fd = file->fd}, [this, file](const EfsReply&) {
        m_files.giveBack();
        file->bytes.truncate(file->end);
        file->done(file->error, file->error == EfsOk ? std::move(file->bytes) : QByteArray());
    });
}

void EfsClient::postWrite(const QString& path, const QByteArray& bytes, int32_t mode, Written done)
{
    auto file = std::make_shared<FileWrite>();
    file->bytes = bytes;
    file->done = std::move(done);
    m_files.take([this, file, path, mode] {
        const EfsRequest open{
            .command = EfsOpen, .flags = EfsWriteOnly | EfsCreate | EfsTruncate, .mode = mode, .path = path};
        m_requests.post(open, [this, file](const EfsReply& reply) {
            if (reply.error != EfsOk) {
                m_files.giveBack();
                return file->done(reply.error);
            }
            file->fd = reply.fd;
            if (file->bytes.isEmpty())
                return writeDone(file);
            for (uint32_t offset = 0; offset < uint32_t(file->bytes.size()); offset += m_writePiece)
                writePiece(file, offset, std::min<uint32_t>(m_writePiece, uint32_t(file->bytes.size()) - offset));
        });
    });
}

void EfsClient::writePiece(const std::shared_ptr<FileWrite>& file, uint32_t offset, uint32_t size)
{
    ++file->pending;
    const EfsRequest request{
        .command = EfsWrite, .fd = file->fd, .offset = offset, .data = file->bytes.mid(offset, size)};
    m_requests.post(request, [this, file, offset, size](const EfsReply& reply) {
        --file->pending;
        const uint32_t count = uint32_t(std::clamp<int32_t>(reply.count, 0, int32_t(size)));
        if (reply.error != EfsOk)
            file->error = reply.error;
        else if (count == 0)
            file->error = EfsNoSpace; // a handset that takes nothing more has no room for it
        else if (count < size)
            writePiece(file, offset + count, size - count);
        if (file->pending == 0)
            writeDone(file);
    });
}

void EfsClient::writeDone(const std::shared_ptr<FileWrite>& file)
{
    m_requests.post({.command = EfsClose, .fd = file->fd}, [this, file](const EfsReply& closed) {
        m_files.giveBack();
        file->done(file->error != EfsOk ? file->error : closed.error);
    });
}

void EfsClient::postReadLink(const QString& path, std::function<void(int32_t error, QString target)> done)
{
    m_requests.post({.command = EfsReadlink, .path = path},
                    [done = std::move(done)](const EfsReply& reply) { done(reply.error, reply.name); });
}

EfsReply EfsClient::call(const EfsRequest& request)
{
    EfsReply answer;
    m_requests.post(request, [&answer](const EfsReply& reply) { answer = reply; });
    m_requests.run();
    return answer;
}

std::vector<EfsListing> EfsClient::list(const QString& folder)
{
    std::vector<EfsListing> entries;
    int32_t error = EfsOk;
    postList(folder, [&](int32_t listed, std::vector<EfsListing> found) {
        error = listed;
        entries = std::move(found);
        for (EfsListing& entry : entries)
            if (entry.entryType == EfsEntryLink)
                postReadLink(entry.path, [&entry](int32_t, QString target) { entry.target = std::move(target); });
    });
    run();
    if (error != EfsOk)
        ThrowEfsError(error, folder, QStringLiteral("listed"));
    return entries;
}

QByteArray EfsClient::read(const QString& path)
{
    const EfsReply stat = call({.command = EfsStat, .path = path});
    if (stat.error == EfsOk && (uint32_t(stat.attributes.mode) & EfsKindMask) == EfsKindFolder)
        ThrowEfsError(EfsIsFolder, path, QStringLiteral("read"));
    int32_t error = stat.error;
    QByteArray bytes;
    if (error == EfsOk) {
        postRead(path, stat.attributes.size, [&](int32_t read, QByteArray found) {
            error = read;
            bytes = std::move(found);
        });
        run();
    }
    if (error != EfsOk)
        ThrowEfsError(error, path, QStringLiteral("read"));
    return bytes;
}

void EfsClient::write(const QString& path, const QByteArray& bytes, int32_t mode)
{
    int32_t error = EfsOk;
    postWrite(path, bytes, mode, [&error](int32_t written) { error = written; });
    run();
    if (error != EfsOk)
        ThrowEfsError(error, path, QStringLiteral("written"));
}

void EfsClient::makeFolders(const QString& folder)
{
    QString path;
    for (const QString& part : folder.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        path += QLatin1Char('/') + part;
        const EfsReply stat = call({.command = EfsStat, .path = path});
        if (stat.error == EfsNoEntry) {
            if (const int32_t error = call({.command = EfsMkdir, .mode = 0755, .path = path}).error; error != EfsOk)
                ThrowEfsError(error, path, QStringLiteral("made"));
        } else if (stat.error != EfsOk) {
            ThrowEfsError(stat.error, path, QStringLiteral("looked at"));
        } else if ((uint32_t(stat.attributes.mode) & EfsKindMask) != EfsKindFolder) {
            ThrowEfsError(EfsNotFolder, path, QStringLiteral("used as a folder"));
        }
    }
}

} // namespace tessaly::link
