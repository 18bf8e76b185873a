// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane's work with the handset's file system: --efs-list lists a folder
// as ls -l does (or as JSON), --efs-get copies a file out, --efs-put writes
// one in.
#pragma once

#include "Options.h"

namespace halvane {

// Each works on the handset on the options' port, tells any fault on
// standard error and gives the exit status: 0 when it did what was asked.
int ListFiles(const Options& options);
// Copies the handset's file `options.efsFrom` to the local file
// `options.efsTo`, which must not be there yet.
int GetFile(const Options& options);
// Writes the local file `options.efsFrom` to the handset's `options.efsTo`,
// making the folders on the way; what the handset held there is kept in the
// backups folder first, and the file is read back and compared whole.
int PutFile(const Options& options);

} // namespace halvane
