// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The roaming list a new emulated handset holds: an IS-683-A list as a
// carrier of the bench's handsets ships it, with acquisition records of most
// types and a few dozen systems in several geographic regions, home systems
// first, roaming partners after them and a few negative systems.
#pragma once

#include "model/Prl.h"

namespace emu {

tessaly::model::Prl FactoryPrl();

} // namespace emu
