// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The emulator's file system kept on disk beside its state file, as
// "<state>.efs.json": a JSON object whose "format" says what it is and whose
// "entries" list every folder, file and link by path, each with its mode (in
// octal), times, bytes (base64) or target. It is written whole after each
// call that changes the tree.
#pragma once

#include "EfsTree.h"

#include <QString>

#include <map>

namespace emu {

QString EfsPathBeside(const QString& state);

// The tree kept at `path`; the factory tree when there is none there. A file
// that cannot be read is renamed aside and `problem` tells so.
std::map<QString, EfsNode> LoadEfs(const QString& path, QString& problem);

// Writes `tree` to `path`; gives what went wrong, or an empty string.
QString SaveEfs(const QString& path, const EfsTree& tree);

} // namespace emu
