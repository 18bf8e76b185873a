// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The NV memory of a handset on its diagnostic serial link, for the same model
// and catalogue as the simulated handset's. A read gives the status the
// handset answers, with zero bytes for an item it does not hold as done (it
// lacks it, or answers busy or of a fault); an item that answers busy is asked
// again a few times first. A fault of the link throws TessalyError. A write sends only items whose
// bytes differ from what was read, never an item the catalogue protects (ESN,
// MEID, counters, read-only items), and reads each item back to compare all
// 128 bytes. A handset that wants its service programming code (SPC) before a
// write gets it from the host; a write refused for it ends the command, so it
// is asked once a command.
#pragma once

#include "link/DiagPackets.h"
#include "link/SerialLink.h"
#include "model/NvMemory.h"

#include <functional>

namespace tessaly::link {

class LiveNvMemory : public model::NvMemory {
public:
    // `askSpc` gives the SPC when the handset asks for it; an empty answer
    // gives up, and the write fails.
    LiveNvMemory(SerialLink& link, std::function<QString()> askSpc);

    model::NvStatus read(model::NvAddress address, model::NvData& data) override;
    // Reads an item as the handset answers it, asked again while it answers
    // busy: its status and the bytes it sent, whatever the status (a
    // read-only item comes with its value). The read counts for the backup
    // as read() does.
    NvItemReply readAnswer(model::NvAddress address);
    model::NvStatus write(model::NvAddress address, const model::NvData& data) override;
    void commit() override {}
    // Saves a backup of everything the read gave, into `backups` when set.
    void readDone() override;

    // Where each read's backup goes; none: no backup.
    void setBackupFolder(QString folder) { m_backupFolder = std::move(folder); }
    const QString& lastBackup() const { return m_lastBackup; }

private:
    NvItemReply exchange(Command command, model::NvAddress address, const model::NvData& data);
    void unlock();

    SerialLink& m_link;
    std::function<QString()> m_askSpc;
    std::map<model::NvAddress, model::NvData> m_onHandset; // the bytes last read or written
    std::map<model::NvAddress, uint16_t> m_statuses;        // as the last read answered
    QString m_backupFolder;
    QString m_lastBackup;
};

} // namespace tessaly::link
