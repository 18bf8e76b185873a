// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "link/EfsTreeRead.h"

#include <algorithm>

namespace tessaly::link {

size_t EfsTree::files() const
{
    return size_t(std::count_if(entries.begin(), entries.end(), [](const model::EfsEntry& entry) {
        return !model::IsEfsFolder(entry) && !model::IsEfsLink(entry);
    }));
}

namespace {

class TreeRead {
public:
    TreeRead(EfsClient& client, const std::function<void(size_t, qint64)>& progress)
        : m_client(client)
        , m_progress(progress)
    {
    }

    void folder(const QString& path)
    {
        m_client.postList(path, [this, path](int32_t error, std::vector<EfsListing> entries) {
            if (error != EfsOk)
                return gap(path, QStringLiteral("folder not read: %1").arg(EfsErrorText(error)));
            for (const EfsListing& entry : entries)
                found(entry);
        });
    }

    EfsTree take()
    {
        const auto byPath = [](const auto& a, const auto& b) { return a.path < b.path; };
        std::sort(m_tree.entries.begin(), m_tree.entries.end(), byPath);
        std::sort(m_tree.gaps.begin(), m_tree.gaps.end());
        return std::move(m_tree);
    }

private:
    void found(const EfsListing& listing)
    {
        model::EfsEntry entry{listing.path, uint32_t(listing.attributes.mode), listing.attributes.mtime, {}, {}};
        switch (listing.entryType) {
        case EfsEntryFolder:
            entry.mode = (entry.mode & ~EfsKindMask) | EfsKindFolder;
            m_tree.entries.push_back(entry);
            return folder(listing.path);
        case EfsEntryLink:
            entry.mode = (entry.mode & ~EfsKindMask) | EfsKindLink;
            return m_client.postReadLink(listing.path, [this, entry](int32_t error, QString target) mutable {
                if (error != EfsOk)
                    return gap(entry.path, QStringLiteral("link not read: %1").arg(EfsErrorText(error)));
                entry.target = std::move(target);
                m_tree.entries.push_back(std::move(entry));
            });
        default:
            return m_client.postRead(listing.path, listing.attributes.size,
                                     [this, entry](int32_t error, QByteArray bytes) mutable {
                                         if (error != EfsOk)
                                             return gap(entry.path,
                                                        QStringLiteral("file not read: %1").arg(EfsErrorText(error)));
                                         m_tree.bytes += bytes.size();
                                         entry.data = std::move(bytes);
                                         m_tree.entries.push_back(std::move(entry));
                                         if (m_progress)
                                             m_progress(++m_files, m_tree.bytes);
                                     });
        }
    }

    void gap(const QString& path, const QString& what) { m_tree.gaps.emplace_back(path, what); }

    EfsClient& m_client;
    const std::function<void(size_t, qint64)>& m_progress;
    EfsTree m_tree;
    size_t m_files = 0;
};

} // namespace

EfsTree ReadEfsTree(EfsClient& client, const QString& root, const std::function<void(size_t files, qint64 bytes)>& progress)
{
    TreeRead read(client, progress);
    read.folder(root);
    client.run();
    return read.take();
}

} // namespace tessaly::link
