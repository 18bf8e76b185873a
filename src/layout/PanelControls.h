// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The panel's controls as the layout makes them (PanelLayout.cpp): every
// control by its layout name, the page control arrays, and the hidden
// holders of the skin's bitmaps. The panel owns one set and hands each
// subsystem, through the For... functions, only the controls it alone
// changes; a subsystem that needs another's control asks its owner.
#pragma once

#include "layout/ButtonLooks.h"
#include "layout/PanelWidget.h"
#include "platform/ControlArray.h"
#include "platform/Controls.h"
#include "platform/MSFlexGrid.h"
#include "platform/OrvenTreeView.h"
#include "platform/Pictures.h"

#include <QPixmap>
#include <QRect>

#include <array>

namespace tessaly {

// The panel's size, in twips.
inline constexpr int32_t PanelWidth = 10800;
inline constexpr int32_t PanelHeight = 8430;
// The data area, right of the tree, in twips: every page's frame, the basic
// information and the MIP profile frame lie there, one shown at a time.
inline constexpr QRect DataArea(3720, 1340, 6735, 6855);

// The page tree's: the tree, the title over the data area, and the two
// frames that show a node without a grid.
struct TreeControls {
    OrvenTreeView& tree;
    Label& dataTitle;
    Frame& basicInfo;
    Frame& profiles;
};

// PageGrids': the page control sets, each a frame with a grid and its two
// editors.
struct PageControls {
    ControlArray<Frame>& frames;
    ControlArray<MSFlexGrid>& grids;
    ControlArray<ComboBox>& lists;
    ControlArray<TextBox>& texts;
};

// Progress': the bar, drawn onto the empty one from the filled one, the
// percentage and the running command's name.
struct ProgressControls {
    PictureBox& bar;
    const PictureBox& fill;
    Label& percent;
    Label& process;
};

// MipProfiles': the list of the profile count and the six option buttons.
struct ProfileControls {
    ComboBox& count;
    ControlArray<OptionButton>& buttons;
};

// BasicInfo's: the six value boxes.
struct InfoControls {
    TextBox& phoneVersion;
    TextBox& warrantyDate;
    TextBox& esn;
    TextBox& meid;
    TextBox& lifeTimer;
    TextBox& lifeCount;
};

// CommandBar's: the four image buttons (NV Read, NV Write, Exit, Restore)
// and their bitmaps.
struct CommandControls {
    ControlArray<PictureBox>& buttons;
    std::array<ButtonLooks, 4> looks;
};

// WindowFrame's: the window's two buttons with their bitmaps, and the title
// that drags the window.
struct FrameControls {
    Image& close;
    Image& minimise;
    Label& title;
    ButtonLooks closeLooks;
    ButtonLooks minimiseLooks;
};

struct PanelControls {
    // Makes every control on `userControl`, the panel's widget.
    explicit PanelControls(QWidget& userControl);
    PanelControls(const PanelControls&) = delete;
    PanelControls& operator=(const PanelControls&) = delete;

    TreeControls ForTree() { return {*OrvenTreeView1, *lblDataTitle, *fraBasicInfo, *fraMIPProfile}; }
    PageControls ForPages() { return {fraFlexGrid, MSFlexGrid1, cboEditCell, txtEdit}; }
    ProgressControls ForProgress() { return {*pbProgressBg, *pbProgress, *lblPercent, *lblProcess}; }
    ProfileControls ForProfiles() { return {*cmbProfileCount, rbMIPProfile}; }
    InfoControls ForInfo() { return {*txtPhoneSWVer, *txtWarrantyDate, *txtESN, *txtMEID, *txtLifeTimer, *txtLifeCnt}; }
    CommandControls ForCommands();
    FrameControls ForFrame();
    // ModelBinding's: the label naming the model and its port.
    Label& ForModel() { return *lblModelPortInfo; }

    PanelWidget Widget;
    QPixmap Picture; // the panel's background, under every control
    ControlArray<Frame> fraFlexGrid{QStringLiteral("fraFlexGrid")};
    ControlArray<MSFlexGrid> MSFlexGrid1{QStringLiteral("MSFlexGrid1")};
    ControlArray<ComboBox> cboEditCell{QStringLiteral("cboEditCell")};
    ControlArray<TextBox> txtEdit{QStringLiteral("txtEdit")};
    ControlArray<PictureBox> picCommand{QStringLiteral("picCommand")};
    ControlArray<OptionButton> rbMIPProfile{QStringLiteral("rbMIPProfile")};
    OrvenTreeView* OrvenTreeView1 = nullptr;
    Frame* fraBasicInfo = nullptr;
    Frame* fraMIPProfile = nullptr;
    Frame* fralabelPercent = nullptr;
    ComboBox* cmbProfileCount = nullptr;
    PictureBox* pbProgress = nullptr;
    PictureBox* pbProgressBg = nullptr;
    Label* lblPercent = nullptr;
    Label* lblProcess = nullptr;
    Label* lblModelPortInfo = nullptr;
    Label* lblDataTitle = nullptr;
    Label* lblTitle = nullptr;
    Label* lblTitleShadow = nullptr;
    Label* Label1 = nullptr;
    TextBox* txtPhoneSWVer = nullptr;
    TextBox* txtWarrantyDate = nullptr;
    TextBox* txtESN = nullptr;
    TextBox* txtMEID = nullptr;
    TextBox* txtLifeTimer = nullptr;
    TextBox* txtLifeCnt = nullptr;
    Image* imgDataBack = nullptr;
    Image* imgMIPProfile = nullptr;
    Image* imgWndMin = nullptr;
    Image* imgWndClose = nullptr;
    Shape* Shape1 = nullptr;

    // The bitmap store: hidden images whose pictures the subsystems get as
    // their buttons' looks.
    Image* imageMinimizeSel = nullptr;
    Image* imageCloseSel = nullptr;
    Image* imageClose = nullptr;
    Image* imageMinize = nullptr;
    Image* imageBasicInfo2 = nullptr;
    Image* imageUndoDim = nullptr;
    Image* imageUndoOver = nullptr;
    Image* imageUndoSel = nullptr;
    Image* imageUndoIdle = nullptr;
    Image* imageExitDim = nullptr;
    Image* imageExitOver = nullptr;
    Image* imageExitSel = nullptr;
    Image* imageExitIdle = nullptr;
    Image* imageWriteDim = nullptr;
    Image* imageWriteOver = nullptr;
    Image* imageWriteSel = nullptr;
    Image* imageWriteIdle = nullptr;
    Image* imageReadIdle = nullptr;
    Image* imageReadSel = nullptr;
    Image* imageReadOver = nullptr;
    Image* imageReadDim = nullptr;

private:
    void BuildLayout();
};

} // namespace tessaly
