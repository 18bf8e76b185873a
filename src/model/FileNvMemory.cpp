// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "model/FileNvMemory.h"

#include "model/ErrorNumbers.h"
#include "model/NvFile.h"

#include <tessaly/TessalyError.h>

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace tessaly::model {

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
    NvFile file;
    if (QString problem = ReadNvFile(m_path, NvFileKind::Memory, file); !problem.isEmpty())
        return problem;
    for (const NvEntry& entry : file.entries)
        m_items[entry.address] = Item{entry.status, entry.data};
    m_fields = file.fields;
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

    NvFile file{NvFileKind::Memory, m_fields, {}};
    for (const auto& [address, item] : m_items)
        file.entries.push_back({address, item.status, item.data});
    if (const QString problem = WriteNvFile(m_path, file); !problem.isEmpty())
        throw TessalyError(errMemoryNotSaved, QStringLiteral("The NV items could not be saved to %1: %2. The file "
                                                             "keeps what it held before.")
                                                  .arg(m_path, problem));
    m_changed = false;
}

} // namespace tessaly::model
