// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane --port LIST (or all) with --info, --read or --restore-backup: the
// bench's handsets worked on at once from the command line.
#pragma once

#include "Options.h"

#include <QStringList>

namespace halvane {

// Works on every device of `devices` as the options say, each handset on its
// own. On a terminal, standard error shows one line per handset that
// rewrites itself; what each handset had to tell (gaps, each item's outcome)
// follows on standard output, each line led by its port, then one line per
// handset: port, ESN, model, outcome, backup (with --json, an array of
// objects). Gives the exit status: 0 only when every handset succeeded.
int RunBenchCommand(const Options& options, const QStringList& devices);

} // namespace halvane
