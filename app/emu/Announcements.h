// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The emulator's terminals announced in the user's runtime folder
// (link/EmulatorAnnouncement.h) for as long as it serves, so that halvane's
// --list-ports and --port auto find them. The files go when the emulator
// stops on a signal; one left behind by a killed emulator names a process
// that no longer runs, and readers pass over it.
#pragma once

#include "link/EmulatorAnnouncement.h"

#include <QString>
#include <QStringList>

namespace emu {

class Announcements {
public:
    // Announces in `folder`, made with mode 0700 when it is not there.
    explicit Announcements(QString folder);
    ~Announcements() { withdraw(); }

    // Writes the file of `announcement`; gives what went wrong, or an empty
    // string.
    QString announce(const tessaly::link::EmulatorAnnouncement& announcement);
    // Removes every file announced.
    void withdraw();

private:
    QString m_folder;
    QStringList m_files;
};

} // namespace emu
