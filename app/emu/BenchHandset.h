// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// What sets handset k of a bench (tessaly-emu --count N) apart from the
// others: a state file of its own beside the one given, and, while that file
// is new, an ESN and a MEID of its own in its factory memory.
#pragma once

#include "model/NvMemory.h"

#include <QString>

namespace emu {

// The state file of handset `handset` (1, 2, ...): `state` with "-k" before
// its extension, "bench.json" -> "bench-2.json"; "bench" -> "bench-2".
QString BenchStatePath(const QString& state, int handset);

// `factory` with the ESN and MEID of handset `handset`: each one's serial
// number (its low 24 bits) moved on by `handset`, wrapping within those bits,
// so that the maker's code, and the MEID's region, stay as they were.
tessaly::model::NvImage BenchFactory(tessaly::model::NvImage factory, int handset);

} // namespace emu
