// The MIP profile page: how many profiles are in use, which one is active,
// and the tree's profile nodes kept in line with the count.
#include "panel/Panel.h"

#include "frame/ReportError.h"

namespace tessaly {

int16_t Panel::GetProfileCount()
{
    int16_t count = 0;
    OnErrorReport("Interface", "GetProfileCount", [&] {
        const int index = cmbProfileCount->ListIndex();
        count = index >= 0 && index <= 5 ? int16_t(index + 1) : int16_t(1);
    });
    return count;
}

void Panel::SetProfileCount(int16_t count)
{
    OnErrorReport("Interface", "SetProfileCount", [&] {
        cmbProfileCount->setListIndex(count - 1); // a change runs cmbProfileCount_Click
        for (int i = 0; i <= 5; ++i)
            rbMIPProfile(i)->setEnabled(i < count);
    });
}

int16_t Panel::GetActiveProfileIndex()
{
    int16_t active = 0;
    OnErrorReport("Interface", "GetActiveProfileIndex", [&] {
        int remembered = -1;
        for (int i = 0; i <= 5; ++i)
            if (rbMIPProfile(i)->Value() && rbMIPProfile(i)->Enabled())
                remembered = i;
        if (remembered >= 0) {
            active = int16_t(remembered);
            return;
        }
        // Nothing valid is selected: reading selects profile 0.
        rbMIPProfile(0)->setValue(true);
        active = 0;
    });
    return active;
}

void Panel::SetActiveProfileIndex(int16_t ActiveIdx)
{
    OnErrorReport("Interface", "SetActiveProfileIndex", [&] { rbMIPProfile(ActiveIdx)->setValue(true); });
}

void Panel::SetActiveProfileEnable(bool bEnable)
{
    for (int i = 0; i <= 5; ++i)
        rbMIPProfile(i)->setEnabled(bEnable);
}

void Panel::SetProfileCountEnable(bool bEnable)
{
    cmbProfileCount->setEnabled(bEnable);
}

void Panel::cmbProfileCount_Click()
{
    OnErrorReport("Event_Function", "cmbProfileCount_Click", [&] {
        const int count = cmbProfileCount->ListIndex() + 1;
        int active = 0;
        for (int i = 0; i <= 5; ++i)
            if (rbMIPProfile(i)->Value() && rbMIPProfile(i)->Enabled())
                active = i;
        for (int i = 0; i <= 5; ++i)
            rbMIPProfile(i)->setEnabled(i < count);
        if (active >= count)
            rbMIPProfile(0)->setValue(true); // the active profile has gone
        for (int i = 0; i <= 5; ++i)
            OrvenTreeView1->RemoveNode(QStringLiteral("MIP Profile %1").arg(i));
        for (int i = 0; i <= cmbProfileCount->ListIndex(); ++i)
            OrvenTreeView1->AddChildNode(QStringLiteral("MIP Profile %1").arg(i), QStringLiteral("MIP Profile"));
    });
}

} // namespace tessaly
