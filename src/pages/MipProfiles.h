// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The MIP profile page: how many profiles are in use, which one is active,
// and the tree's profile nodes kept in line with the count. The count is the
// list's choice and the active profile the option buttons'; the page keeps
// nothing else.
#pragma once

#include "layout/PanelControls.h"

#include <cstdint>

namespace tessaly {

class PageTree;

class MipProfiles {
public:
    MipProfiles(ProfileControls controls, PageTree& tree);

    // Start-up: the counts 1 to 6 in the list.
    void FillCountList();
    // The profiles in use as the list shows them: 0 before a count is chosen.
    int InUse() const { return m_controls.count.ListIndex() + 1; }

    int16_t GetProfileCount();
    void SetProfileCount(int16_t count);
    int16_t GetActiveProfileIndex();
    void SetActiveProfileIndex(int16_t ActiveIdx);
    void SetActiveProfileEnable(bool bEnable);
    void SetProfileCountEnable(bool bEnable);
    void cmbProfileCount_Click();

private:
    ProfileControls m_controls;
    PageTree& m_tree;
};

} // namespace tessaly
