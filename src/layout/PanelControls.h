// The panel's controls as the layout makes them (PanelLayout.cpp): every
// control by its layout name, the page control arrays, and the hidden
// holders of the skin's bitmaps. The panel owns one set; each subsystem works
// on the controls it needs.
#pragma once

#include "platform/ControlArray.h"
#include "platform/Controls.h"
#include "platform/MSFlexGrid.h"
#include "platform/OrvenTreeView.h"
#include "platform/Pictures.h"

#include <QPixmap>
#include <QRegion>

#include <memory>

namespace tessaly {

struct PanelControls {
    // Makes every control on `userControl`, the panel's widget.
    explicit PanelControls(QWidget& userControl);
    PanelControls(const PanelControls&) = delete;
    PanelControls& operator=(const PanelControls&) = delete;

    // The panel's own surface: its background and the controls without a
    // window of their own on it (labels, images, shapes). Repainting it runs
    // the panel's Paint; the controls with windows of their own keep what
    // they show.
    QRegion OwnSurface() const;
    // Whether the panel's widget has gone. A handler that comes back from a
    // modal box returns at once when it has.
    bool Ended() const { return !Handlers; }

    QWidget& UserControl;
    // The receiver of the controls' events: the handlers run while it lives.
    std::unique_ptr<QObject> Handlers = std::make_unique<QObject>();
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

    // The bitmap store: hidden images whose pictures are copied into the
    // controls on view when their state changes.
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
