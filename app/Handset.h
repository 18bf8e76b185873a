// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The handset halvane binds to the panel: the simulated one over its NV
// memory file, or a real one on a serial port (--port), named in the panel's
// label by its own version reply and the port as the user gave it.
#pragma once

#include "Options.h"

#include "link/LiveNvMemory.h"
#include "link/SerialLink.h"
#include "model/RoamingListSource.h"
#include "model/SimulatedHandset.h"

#include <memory>

class Tessaly;

namespace halvane {

struct Handset {
    std::unique_ptr<tessaly::link::SerialLink> line;
    std::unique_ptr<tessaly::model::NvMemory> memory;
    std::unique_ptr<tessaly::model::SimulatedHandset> model;
    tessaly::link::LiveNvMemory* live = nullptr; // the memory, when the handset is real
    // Its roaming list: over the line, or in "<state>.prl" beside the NV memory file.
    std::unique_ptr<tessaly::model::RoamingListSource> roamingList;
    QString problem; // with the memory file, for the user once the window shows
};

// Opens the handset the options name. A port that cannot be opened gives
// nothing, with `failure` saying why and what to do. Without a person to ask
// (`unattended`), the SPC is the one given with --spc or none.
std::unique_ptr<Handset> OpenHandset(const Options& options, Tessaly& panel, bool unattended, QString& failure);

// Reads the real handset without a window and prints its backup's path.
// Gives the exit status: 0 when the read succeeded.
int ReadToBackup(Handset& handset);

// Prints what the handset on --port says of itself: model, software version,
// the dates of its software, ESN, and MEID when it has one. Gives the exit
// status: 0 when it answered.
int PrintIdentity(const Options& options);

} // namespace halvane
