// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The handset's file system (EFS2) as a client uses it: folders listed, files
// read and written whole, links read and made, each with several requests on
// the line at once (link/EfsRequests.h). Reads and writes go in pieces as
// large as the window the handset gives in its hello allows.
//
// The operations come two ways: queued, for work on many files at once (a
// backup's walk), whose outcome goes to a callback with the handset's errno;
// and at once, which throw TessalyError naming the path and the errno.
#pragma once

#include "link/EfsRequests.h"

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace tessaly::link {

// One entry of a folder: its path, what readdir tells of it, and for a link
// its target.
struct EfsListing {
    QString path;
    int32_t entryType = EfsEntryFile;
    EfsAttributes attributes;
    QString target;
};

class EfsClient {
public:
    using Listed = std::function<void(int32_t error, std::vector<EfsListing> entries)>;
    using Read = std::function<void(int32_t error, QByteArray bytes)>;
    using Written = std::function<void(int32_t error)>;

    EfsClient(SerialLink& link, int inFlight, std::chrono::milliseconds replyTime);

    // Greets the file system and takes its window. Throws TessalyError when
    // the handset has none over its diagnostic port.
    void hello();

    // Queued: the entries of `folder` (without "." and ".."); a file's
    // `size` bytes; `bytes` written as the whole of `path`, created with
    // `mode` when new; a link's target.
    void postList(const QString& folder, Listed done);
    void postRead(const QString& path, int32_t size, Read done);
    void postWrite(const QString& path, const QByteArray& bytes, int32_t mode, Written done);
    void postReadLink(const QString& path, std::function<void(int32_t error, QString target)> done);
    // Runs what was queued (EfsRequests::run).
    void run() { m_requests.run(); }

    // At once: one request and its reply.
    EfsReply call(const EfsRequest& request);
    std::vector<EfsListing> list(const QString& folder);
    // A file's bytes, its size taken from stat first.
    QByteArray read(const QString& path);
    void write(const QString& path, const QByteArray& bytes, int32_t mode);
    // Makes `folder` and every folder above it that is missing.
    void makeFolders(const QString& folder);

    int resent() const { return m_requests.resent(); }

private:
    // Descriptors a handset lends at once are few: files and folders wait
    // for one of a bounded number to be given back before they are opened.
    class Slots {
    public:
        explicit Slots(int free)
            : m_free(free)
        {
        }
        // Runs `open` now, or when a slot is given back.
        void take(std::function<void()> open);
        void giveBack();

    private:
        int m_free;
        std::deque<std::function<void()>> m_waiting;
    };

    struct FileRead;
    struct FileWrite;
    struct FolderRead;
    void readPiece(const std::shared_ptr<FileRead>& file, uint32_t offset, uint32_t size);
    void readDone(const std::shared_ptr<FileRead>& file);
    void writePiece(const std::shared_ptr<FileWrite>& file, uint32_t offset, uint32_t size);
    void writeDone(const std::shared_ptr<FileWrite>& file);
    void nextEntry(const std::shared_ptr<FolderRead>& folder);

    EfsRequests m_requests;
    Slots m_files;
    Slots m_folders;
    uint32_t m_readPiece = 512;
    uint32_t m_writePiece = 512;
};

// Throws TessalyError for `error` of the operation `what` on `path`:
// "/nv/x could not be read: No such file or directory (ENOENT)".
void ThrowEfsError(int32_t error, const QString& path, const QString& what);

} // namespace tessaly::link
