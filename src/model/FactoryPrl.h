// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The roaming list a new handset holds, emulated or simulated: an IS-683-A
// list as a carrier of the bench's handsets ships it, with acquisition
// records of most types and a few dozen systems in several geographic
// regions, home systems first, roaming partners after them and a few
// negative systems.
#pragma once

#include "model/Prl.h"

namespace tessaly::model {

Prl FactoryPrl();

} // namespace tessaly::model
