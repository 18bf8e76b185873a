// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The pages of the handset's roaming list that halvane adds to the panel,
// "Roaming List" and "Acquisition Table": filled at each NV Read from the
// handset's list, written back by NV Write when edited.
#pragma once

#include "Handset.h"

#include "model/RoamingListPages.h"

#include <memory>

class Tessaly;

namespace halvane {

// Adds both pages behind the others and hands them to the handset's model.
std::unique_ptr<tessaly::model::RoamingListPages> AddRoamingListPages(Tessaly& panel, Handset& handset);

} // namespace halvane
