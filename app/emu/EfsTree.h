// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The handset's embedded file system as tessaly-emu keeps it in memory:
// folders, files and symbolic links by absolute path, each with its mode and
// times, and the calls EFS2 offers on them. Each call gives the errno a
// handset gives (the EfsErrno values of link/Efs2.h), 0 when it went well.
//
// Paths are resolved component by component; a link met on the way is
// followed, and so is the last one for open, stat, chmod and opendir, not for
// lstat, readlink, unlink, rmdir and rename. The owner's permission bits
// guard each call: reading a file or listing a folder needs its read bit,
// writing a file or changing a folder's entries its write bit, passing
// through a folder its search bit. A write that would take the files past
// the volume's capacity is refused whole, and so is a new entry past
// MaxEntries.
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace emu {

struct EfsNode {
    uint32_t mode = 0; // kind and permissions, as EfsFileKind and POSIX lay them out
    int32_t atime = 0;
    int32_t mtime = 0;
    int32_t ctime = 0;
    QByteArray data; // a file's bytes
    QString target;  // a link's target
};

// One entry of a folder, as readdir tells it.
struct EfsListed {
    QString name;
    std::shared_ptr<const EfsNode> node;
};

class EfsTree {
public:
    static constexpr int MaxOpenFiles = 64;
    static constexpr int MaxOpenFolders = 64;
    static constexpr int MaxLinkDepth = 8;
    static constexpr int MaxName = 128;
    static constexpr int MaxPath = 1024;
    static constexpr int MaxEntries = 4096; // folders, files and links in all
    static constexpr int32_t LinkLoop = 40; // ELOOP: more links on a path than MaxLinkDepth

    // A tree of `nodes` by absolute path; the root "/" is made when it is
    // missing. Its files may hold `capacity` bytes in all.
    EfsTree(std::map<QString, EfsNode> nodes, int64_t capacity);

    // Writes to the file at `path` keep other bytes than were sent, as a
    // failing flash does: the last byte of each write is changed.
    void garbleWritesTo(QString path) { m_garbled = std::move(path); }

    const std::map<QString, std::shared_ptr<EfsNode>>& nodes() const { return m_nodes; }
    int64_t capacity() const { return m_capacity; }
    int64_t used() const;
    // Whether a call changed the tree since this was asked last.
    bool takeChanged();

    int32_t open(const QString& path, int32_t flags, int32_t mode, int32_t& fd);
    int32_t close(int32_t fd);
    // At most `size` bytes from `offset`; none past the end.
    int32_t read(int32_t fd, uint32_t offset, uint32_t size, QByteArray& data);
    // At `offset`, or at the end for a file opened to append; a gap before
    // it is filled with zero bytes.
    int32_t write(int32_t fd, uint32_t offset, const QByteArray& data);
    int32_t fstat(int32_t fd, EfsNode& node) const;
    int32_t stat(const QString& path, EfsNode& node) const;
    int32_t lstat(const QString& path, EfsNode& node) const;

    // A folder's entries are fixed when it is opened, in the order of their
    // names; readdir's sequence numbers count them from 1.
    int32_t opendir(const QString& path, uint32_t& folder);
    int32_t readdir(uint32_t folder, int32_t sequence, EfsListed& entry) const;
    int32_t closedir(uint32_t folder);

    int32_t mkdir(const QString& path, int32_t mode);
    int32_t rmdir(const QString& path);
    int32_t unlink(const QString& path);
    int32_t rename(const QString& from, const QString& to);
    int32_t symlink(const QString& target, const QString& link);
    int32_t readlink(const QString& path, QString& target) const;
    int32_t chmod(const QString& path, int32_t mode);

private:
    struct OpenFile {
        std::shared_ptr<EfsNode> node;
        int32_t flags = 0;
    };

    // The path of what `path` names, its links followed (the last one only
    // when `followLast`), in `found`.
    int32_t resolve(const QString& path, bool followLast, QString& found) const;
    // The path a new entry `path` takes: its folder must be there, searchable
    // and writable, and the name free.
    int32_t place(const QString& path, QString& placed) const;
    // Whether the entry at `path` may be taken away or renamed: its folder
    // writable; the root never.
    int32_t removable(const QString& found) const;
    std::vector<QString> children(const QString& folder) const;
    void add(const QString& path, uint32_t mode);
    void touch(EfsNode& node);

    std::map<QString, std::shared_ptr<EfsNode>> m_nodes;
    int64_t m_capacity;
    std::map<int32_t, OpenFile> m_files;
    QString m_garbled;
    std::map<uint32_t, std::vector<EfsListed>> m_folders;
    uint32_t m_nextFolder = 1;
    bool m_changed = false;
};

} // namespace emu
