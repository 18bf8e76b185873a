// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The NV Items page halvane adds to the panel: every item the handset holds,
// one row each, listed at each NV Read. For a real handset the list comes
// from the newest full backup taken of it, with the items just read over it;
// where there is none, from a scan of every item number, kept as a full
// backup for the next time. The simulated handset lists the items of its
// memory.
#pragma once

#include "Handset.h"
#include "Options.h"

#include "link/Backup.h"
#include "model/ItemsPage.h"

#include <memory>
#include <optional>

class Tessaly;

namespace halvane {

// Adds the page behind the others and hands it to the handset's model.
std::unique_ptr<tessaly::model::ItemsPage> AddNvItemsPage(Tessaly& panel, Handset& handset, const Options& options);

// The newest full backup in `folder` taken of the handset with this ESN that
// can be read, by the time in its name; nothing when there is none.
std::optional<tessaly::link::Backup> NewestFullBackup(const QString& folder, const QString& esn);

} // namespace halvane
