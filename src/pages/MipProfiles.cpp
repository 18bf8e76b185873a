// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "pages/MipProfiles.h"

#include "frame/ReportError.h"
#include "pages/PageTable.h"
#include "pages/PageTree.h"

namespace tessaly {

MipProfiles::MipProfiles(ProfileControls controls, PageTree& tree)
    : m_controls(controls)
    , m_tree(tree)
{
}

void MipProfiles::FillCountList()
{
    for (int count = 1; count <= ProfilePages; ++count)
        m_controls.count.AddItem(QString::number(count));
}

int16_t MipProfiles::GetProfileCount()
{
    int16_t count = 0;
    OnErrorReport("Interface", "GetProfileCount", [&] {
        const int index = m_controls.count.ListIndex();
        count = index >= 0 && index < ProfilePages ? int16_t(index + 1) : int16_t(1);
    });
    return count;
}

void MipProfiles::SetProfileCount(int16_t count)
{
    OnErrorReport("Interface", "SetProfileCount", [&] {
        m_controls.count.setListIndex(count - 1); // a change runs cmbProfileCount_Click
        for (int i = 0; i < ProfilePages; ++i)
            m_controls.buttons(i)->setEnabled(i < count);
    });
}

int16_t MipProfiles::GetActiveProfileIndex()
{
    int16_t active = 0;
    OnErrorReport("Interface", "GetActiveProfileIndex", [&] {
        int remembered = -1;
        for (int i = 0; i < ProfilePages; ++i)
            if (m_controls.buttons(i)->Value() && m_controls.buttons(i)->Enabled())
                remembered = i;
        if (remembered >= 0) {
            active = int16_t(remembered);
            return;
        }
        // Nothing valid is selected: reading selects profile 0.
        m_controls.buttons(0)->setValue(true);
        active = 0;
    });
    return active;
}

void MipProfiles::SetActiveProfileIndex(int16_t ActiveIdx)
{
    OnErrorReport("Interface", "SetActiveProfileIndex", [&] { m_controls.buttons(ActiveIdx)->setValue(true); });
}

void MipProfiles::SetActiveProfileEnable(bool bEnable)
{
    for (int i = 0; i < ProfilePages; ++i)
        m_controls.buttons(i)->setEnabled(bEnable);
}

void MipProfiles::SetProfileCountEnable(bool bEnable)
{
    m_controls.count.setEnabled(bEnable);
}

void MipProfiles::cmbProfileCount_Click()
{
    OnErrorReport("Event_Function", "cmbProfileCount_Click", [&] {
        const int count = m_controls.count.ListIndex() + 1;
        int active = 0;
        for (int i = 0; i < ProfilePages; ++i)
            if (m_controls.buttons(i)->Value() && m_controls.buttons(i)->Enabled())
                active = i;
        for (int i = 0; i < ProfilePages; ++i)
            m_controls.buttons(i)->setEnabled(i < count);
        if (active >= count)
            m_controls.buttons(0)->setValue(true); // the active profile has gone
        m_tree.ShowProfileNodes(InUse());
    });
}

} // namespace tessaly
