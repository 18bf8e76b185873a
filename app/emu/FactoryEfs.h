// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The file system a handset leaves the factory with, made in code from a
// fixed seed so that every fresh emulator holds the same bytes: item files
// under /nv/item_files (call manager, IMS, data, NAS, SIM, RF values of 1 to
// 64 bytes) with the .conf files that list them, provisioning (data
// profiles, policy manager XML), modem configuration images and an RF
// calibration blob, a few symbolic links, and one file and one folder of mode
// 0000 that the diagnostic port may not open.
#pragma once

#include "EfsTree.h"

#include <QString>

#include <map>

namespace emu {

std::map<QString, EfsNode> FactoryEfs();
// The factory volume's room: its files and 512 KB besides.
int FactoryEfsCapacity();

} // namespace emu
