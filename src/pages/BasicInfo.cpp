// The six values of the basic information page. The security values of the
// host interface have no store in the panel.
#include "pages/BasicInfo.h"

#include "frame/ReportError.h"

#include <tessaly/Tessaly.h>

namespace tessaly {

BasicInfo::BasicInfo(PanelControls& controls)
    : c(controls)
{
}

void BasicInfo::SetBasicInfo(const QString& PhoneVersion, const QString& WarrantyDate, const QString& ESN,
                             const QString& MEID, const QString& LifeTime, const QString& LifeCnt)
{
    OnErrorReport("Interface", "SetBasicInfo", [&] {
        const std::pair<TextBox*, const QString&> boxes[] = {
            {c.txtPhoneSWVer, PhoneVersion}, {c.txtWarrantyDate, WarrantyDate}, {c.txtESN, ESN},
            {c.txtMEID, MEID}, {c.txtLifeCnt, LifeCnt}, {c.txtLifeTimer, LifeTime},
        };
        for (const auto& [box, value] : boxes)
            box->setText(value);
        // From the first values on they read in regular weight.
        for (const auto& [box, value] : boxes)
            box->setFontBold(false);
    });
}

} // namespace tessaly

void Tessaly::SetSecurityInfo(const QString&, bool, const QString&, const QString&, const QString&, const QString&,
                              const QString&, const QString&, const QString&, const QString&, const QString&,
                              const QString&, const QString&)
{
}

QString Tessaly::GetSecCode() { return {}; }
QString Tessaly::GetLockCode() { return {}; }
QString Tessaly::GetAKey(int16_t) { return {}; }
