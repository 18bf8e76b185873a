// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The numbers of the TessalyErrors of the simulated handset and its memory.
#pragma once

#include <cstdint>

namespace tessaly::model {

enum ErrorNumber : int32_t {
    errValueRefused = 1001, // a value that its item cannot hold
    errItemUnreadable = 1002, // the memory did not give an item
    errItemUnwritable = 1003, // the memory did not take an item
    errMemoryNotSaved = 1004, // the memory could not keep what was written
    errNothingRead = 1005, // a write or restore before any read
    errPanelGone = 1006, // the host ended the panel during a command
};

} // namespace tessaly::model
