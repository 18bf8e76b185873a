// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// One NV item by its number, beside the catalogue: --nv-read ITEM[:INDEX]
// prints the handset's answer, its bytes as xxd shows them and the values
// the catalogue reads in them; --nv-write ITEM[:INDEX] HEX writes the item by
// the rules of every write (never an item the catalogue protects nor one the
// handset refuses, what it held kept as a backup first, read back and
// compared whole).
#pragma once

#include "Options.h"

#include "model/NvMemory.h"

#include <optional>

namespace halvane {

// The item of --nv-read or --nv-write and the bytes to write: those given,
// zeros after them.
struct ItemWork {
    tessaly::model::NvAddress address;
    tessaly::model::NvData data{};
    qsizetype given = 0; // bytes given
};

// Checks the item, its index and the bytes before anything is sent: an item
// of 0 to 65535, an index of 0 to 255 for the items the catalogue keeps per
// NAM or profile and for those alone, 1 to 128 bytes of hexadecimal with
// spaces between them or not, an indexed item's first byte its index, and for
// a write an item the catalogue does not protect. Tells a fault on standard
// error and gives nothing.
std::optional<ItemWork> CheckItemWork(const Options& options);

// Each works on the handset on the options' port and gives the exit status:
// 0 when the handset gave the item's bytes, or took the write and gave them
// back the same.
int ReadItemByNumber(const Options& options, const ItemWork& work);
int WriteItemByNumber(const Options& options, const ItemWork& work);

} // namespace halvane
