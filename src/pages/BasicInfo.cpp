// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "pages/BasicInfo.h"

#include "frame/ReportError.h"

namespace tessaly {

BasicInfo::BasicInfo(InfoControls controls)
    : m_controls(controls)
{
}

void BasicInfo::SetBasicInfo(const QString& PhoneVersion, const QString& WarrantyDate, const QString& ESN,
                             const QString& MEID, const QString& LifeTime, const QString& LifeCnt)
{
    OnErrorReport("Interface", "SetBasicInfo", [&] {
        const std::pair<TextBox&, const QString&> boxes[] = {
            {m_controls.phoneVersion, PhoneVersion}, {m_controls.warrantyDate, WarrantyDate},
            {m_controls.esn, ESN}, {m_controls.meid, MEID}, {m_controls.lifeCount, LifeCnt},
            {m_controls.lifeTimer, LifeTime},
        };
        for (const auto& [box, value] : boxes)
            box.setText(value);
        // From the first values on they read in regular weight.
        for (const auto& [box, value] : boxes)
            box.setFontBold(false);
    });
}

} // namespace tessaly
