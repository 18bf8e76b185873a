// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "RoamingListPages.h"

#include <tessaly/Tessaly.h>

namespace halvane {

using tessaly::model::RoamingListPages;

std::unique_ptr<RoamingListPages> AddRoamingListPages(Tessaly& panel, Handset& handset)
{
    const int16_t systems = panel.AddTab(QStringLiteral("Roaming List"), RoamingListPages::SystemColumns);
    const int16_t acquisitions
        = panel.AddTab(QStringLiteral("Acquisition Table"), RoamingListPages::AcquisitionColumns);
    auto pages = std::make_unique<RoamingListPages>(panel, systems, acquisitions);
    handset.model->setRoamingListPages(pages.get(), handset.roamingList.get());
    return pages;
}

} // namespace halvane
