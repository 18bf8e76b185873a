#include "pages/MipProfiles.h"

#include "frame/ReportError.h"

namespace tessaly {

MipProfiles::MipProfiles(PanelControls& controls)
    : c(controls)
{
}

void MipProfiles::FillCountList()
{
    for (int count = 1; count <= 6; ++count)
        c.cmbProfileCount->AddItem(QString::number(count));
}

int16_t MipProfiles::GetProfileCount()
{
    int16_t count = 0;
    OnErrorReport("Interface", "GetProfileCount", [&] {
        const int index = c.cmbProfileCount->ListIndex();
        count = index >= 0 && index <= 5 ? int16_t(index + 1) : int16_t(1);
    });
    return count;
}

void MipProfiles::SetProfileCount(int16_t count)
{
    OnErrorReport("Interface", "SetProfileCount", [&] {
        c.cmbProfileCount->setListIndex(count - 1); // a change runs cmbProfileCount_Click
        for (int i = 0; i <= 5; ++i)
            c.rbMIPProfile(i)->setEnabled(i < count);
    });
}

int16_t MipProfiles::GetActiveProfileIndex()
{
    int16_t active = 0;
    OnErrorReport("Interface", "GetActiveProfileIndex", [&] {
        int remembered = -1;
        for (int i = 0; i <= 5; ++i)
            if (c.rbMIPProfile(i)->Value() && c.rbMIPProfile(i)->Enabled())
                remembered = i;
        if (remembered >= 0) {
            active = int16_t(remembered);
            return;
        }
        // Nothing valid is selected: reading selects profile 0.
        c.rbMIPProfile(0)->setValue(true);
        active = 0;
    });
    return active;
}

void MipProfiles::SetActiveProfileIndex(int16_t ActiveIdx)
{
    OnErrorReport("Interface", "SetActiveProfileIndex", [&] { c.rbMIPProfile(ActiveIdx)->setValue(true); });
}

void MipProfiles::SetActiveProfileEnable(bool bEnable)
{
    for (int i = 0; i <= 5; ++i)
        c.rbMIPProfile(i)->setEnabled(bEnable);
}

void MipProfiles::SetProfileCountEnable(bool bEnable)
{
    c.cmbProfileCount->setEnabled(bEnable);
}

void MipProfiles::cmbProfileCount_Click()
{
    OnErrorReport("Event_Function", "cmbProfileCount_Click", [&] {
        const int count = c.cmbProfileCount->ListIndex() + 1;
        int active = 0;
        for (int i = 0; i <= 5; ++i)
            if (c.rbMIPProfile(i)->Value() && c.rbMIPProfile(i)->Enabled())
                active = i;
        for (int i = 0; i <= 5; ++i)
            c.rbMIPProfile(i)->setEnabled(i < count);
        if (active >= count)
            c.rbMIPProfile(0)->setValue(true); // the active profile has gone
        for (int i = 0; i <= 5; ++i)
            c.OrvenTreeView1->RemoveNode(QStringLiteral("MIP Profile %1").arg(i));
        for (int i = 0; i <= c.cmbProfileCount->ListIndex(); ++i)
            c.OrvenTreeView1->AddChildNode(QStringLiteral("MIP Profile %1").arg(i), QStringLiteral("MIP Profile"));
    });
}

} // namespace tessaly
