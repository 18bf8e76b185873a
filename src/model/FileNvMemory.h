// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The NV memory of the simulated handset, kept in an NV file of the memory
// kind (model/NvFile.h).
//
// Without a file the handset is new and holds its factory values. A file that
// cannot be read, is not such a memory or has any entry of a wrong kind is
// never written over: it is renamed aside, lastProblem() tells what happened,
// and the handset starts new.
#pragma once

#include "model/NvMemory.h"

#include <QJsonObject>
#include <QString>

namespace tessaly::model {

class FileNvMemory : public NvMemory {
public:
    FileNvMemory(QString path, const NvImage& factory);

    // The file in the user's data folder that a host uses by default.
    static QString DefaultPath();

    // What went wrong when the file was opened, for the host to show, or an
    // empty string.
    const QString& lastProblem() const { return m_problem; }
    // The file's fields besides its items, such as the handset's identity
    // that the emulator keeps there; a save writes them back as they were.
    const QJsonObject& fields() const { return m_fields; }

    NvStatus read(NvAddress address, NvData& data) override;
    NvStatus write(NvAddress address, const NvData& data) override;
    // Saves the items when written since the last save, all at once: a crash
    // leaves the file whole, old or new.
    void commit() override;

private:
    struct Item {
        NvStatus status = NvStatus::Done;
        NvData data{};
    };

    // Why the file's items cannot be taken, or an empty string.
    QString load();
    void setAside(const QString& reason);

    QString m_path;
    QString m_problem;
    bool m_savable = true; // false when a damaged file could not be moved
    bool m_changed = false;
    std::map<NvAddress, Item> m_items;
    QJsonObject m_fields;
};

} // namespace tessaly::model
