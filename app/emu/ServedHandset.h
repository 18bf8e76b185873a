// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// One handset of tessaly-emu on a pseudo-terminal of its own: its NV memory
// kept in its state file, its file system in the file beside it, the faults
// asked for on the command line, and the loop that waits on the terminal,
// answers each request as it comes and sends the handset's own event reports
// and log packets between replies. A bench serves several, each on a thread
// of its own; they share nothing but the options they were made from and
// the pipe that tells them to stop.
#pragma once

#include "Faults.h"
#include "HandsetAnswers.h"
#include "HandsetProfile.h"

#include "model/NvMemory.h"

#include <QString>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

namespace emu {

// What every handset of the emulator is made with, from the command line.
struct ServingOptions {
    HandsetProfile profile;    // the model's; the state file's "handset" fields go over it
    QString spc;               // locks writes and mode changes; empty: unlocked
    Faults faults;             // --slow, --bad-crc, --events, --dead-after, --late
    ItemFaults itemFaults;     // --garble ITEM, --busy
    QString garbledFile;       // --garble PATH, or empty
    int64_t efsCapacity = 0;   // the file system's room, in bytes
    std::optional<uint32_t> chaosSeed; // --chaos: the faults at random instead
    std::chrono::microseconds latency{0};
    size_t queue = 4;
    LeftOn leftOn;             // --events, --logs: reporting and logging on from the start
    std::chrono::milliseconds reportPace{300}; // between event reports, and between log packets
};

class ServedHandset {
public:
    // Opens a pseudo-terminal and the handset kept in `state`; `factory` is
    // the memory it has when that file is not there yet. problem() tells
    // what stands in the way of serving it.
    ServedHandset(const QString& state, const tessaly::model::NvImage& factory, const ServingOptions& options);
    ~ServedHandset();

    // Why the handset cannot be served (no terminal, a damaged state or file
    // system file), or an empty string.
    const QString& problem() const;
    // The terminal's path, for the client's --port.
    const QString& terminal() const;
    // What the handset calls itself, as halvane names it: its extended build
    // id's model, or its version directory and model number.
    QString model() const;
    // Its ESN and MEID as written, in upper-case hexadecimal; no MEID for a
    // model without one.
    QString esnHex() const;
    std::optional<QString> meidHex() const;

    // Answers the requests that come on the terminal until `stop` (a file
    // descriptor) is readable; a reply on its way is finished first.
    void serve(int stop);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace emu
