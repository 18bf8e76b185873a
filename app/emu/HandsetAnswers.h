// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The handset's answers to the diagnostic protocol, one request at a time:
// its identity from its profile, NV items from its memory (plain and by
// subscription), its file system through EFS2 (EfsAnswers.h), its roaming
// list (PrlAnswers.h, its writes behind the SPC lock), the SPC lock,
// mode changes, the log, event and message configuration it keeps, and "bad
// command" for the rest, echoing the request as a real handset does. Every
// reply is built by the encoders of link/.
//
// It keeps what a tool turned on, event reporting and the log codes of its
// masks, for the sources of what it sends on its own (EventSource.h,
// LogSource.h).
//
// An item kept with status 7 (read-only) or 8 (not valid) is answered with
// that status, for reads and writes alike; the ESN is never written. A reset
// (mode change 2, taken only while offline) keeps the memory, locks the
// handset again and leaves it silent for a moment while it starts.
#pragma once

#include "EfsAnswers.h"
#include "HandsetProfile.h"
#include "PrlAnswers.h"

#include "link/DiagIdentity.h"
#include "link/DiagLogging.h"
#include "link/DiagPackets.h"
#include "model/NvMemory.h"

#include <QByteArray>

#include <chrono>
#include <map>
#include <optional>
#include <set>

namespace emu {

// The faults of single NV items.
struct ItemFaults {
    int garbled = -1; // its writes keep other bytes than were sent
    int busy = -1;    // its reads answer status 1, "busy"...
    int busyReads = 0; // ...this many times, then as they should; 0: always
};

// What an earlier client left on: event reporting, and logging of every 1X
// code.
struct LeftOn {
    bool events = false;
    bool logs = false;
};

class HandsetAnswers {
public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds ResetTime{1500};

    // `spc` locks NV writes and mode changes until it is given; none: the
    // handset is unlocked and takes the factory SPC, 000000. `files` is its
    // file system, served when the profile has subsystem commands.
    // `leftOn`: what is on from the start, as an earlier client left it.
    HandsetAnswers(tessaly::model::NvMemory& memory, HandsetProfile profile, QString spc, ItemFaults faults,
                   EfsTree& files, LeftOn leftOn = {});

    // The reply to `request`, or nothing while the handset is silent.
    std::optional<QByteArray> answer(const QByteArray& request);
    bool silent() const { return Clock::now() < m_silentUntil; }
    // Keeps the roaming list in the file `path` (PrlAnswers::keepIn).
    QString keepRoamingListIn(const QString& path) { return m_roamingList.keepIn(path); }

    const HandsetProfile& profile() const { return m_profile; }
    // A ControlMode: online, offline or low power.
    uint16_t mode() const { return m_mode; }
    bool online() const;
    // How many times the mode changed, and how many times the handset came
    // online from another mode or a reset and acquired its system: what the
    // sources tell however quickly it went back.
    unsigned modeChanges() const { return m_modeChanges; }
    unsigned acquisitions() const { return m_acquisitions; }
    bool reportingEvents() const { return m_reportingEvents; }
    // Whether a log mask, by equipment or the extended one, turns `code` on.
    bool logging(uint16_t code) const;

private:
    uint32_t esn();
    QByteArray nvItem(const QByteArray& request);
    QByteArray subscriptionNv(const QByteArray& request);
    QByteArray subsystem(const QByteArray& request);
    QByteArray control(const QByteArray& request);
    void changeMode(uint16_t mode);
    QByteArray logConfig(const QByteArray& request);
    QByteArray extendedLogMask(const QByteArray& request);
    QByteArray callManagerState();
    tessaly::link::StationStatus status();
    // The equipment's mask, all its items off until a tool turns some on.
    tessaly::link::LogMask& logMask(uint32_t equipment);
    QByteArray messageConfig(const QByteArray& request);
    // Reads or writes one item as a handset does; `data` is what was sent and
    // becomes what the reply carries.
    tessaly::model::NvStatus exchangeItem(bool write, uint16_t item, tessaly::model::NvData& data);

    tessaly::model::NvMemory& m_memory;
    HandsetProfile m_profile;
    QString m_spc;
    ItemFaults m_faults;
    int m_busyReadsSeen = 0;
    EfsAnswers m_files;
    PrlAnswers m_roamingList;
    bool m_lockable; // locked at start and after a reset
    bool m_locked;
    uint16_t m_mode; // a ControlMode: online, offline or low power
    unsigned m_modeChanges = 0;
    unsigned m_acquisitions = 0;
    Clock::time_point m_silentUntil{};
    std::set<uint16_t> m_indexed;
    bool m_reportingEvents;
    std::map<uint32_t, tessaly::link::LogMask> m_logMasks; // by equipment id, over its whole range
    std::map<uint16_t, uint32_t> m_messageMasks; // by subsystem id
};

} // namespace emu
