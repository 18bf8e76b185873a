// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The six values of the basic information page, which the host sets and the
// user only reads.
#pragma once

#include "layout/PanelControls.h"

namespace tessaly {

class BasicInfo {
public:
    explicit BasicInfo(InfoControls controls);

    void SetBasicInfo(const QString& PhoneVersion, const QString& WarrantyDate, const QString& ESN,
                      const QString& MEID, const QString& LifeTime, const QString& LifeCnt);

private:
    InfoControls m_controls;
};

} // namespace tessaly
