// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The panel's controls as the layout stores them: kind, name, container,
// place and look. Controls are made from the bottom of each container's
// stacking order to the top, so that each lies over those made before it.
#include "layout/PanelControls.h"

#include "layout/LayoutFonts.h"
#include "layout/SkinArt.h"

namespace tessaly {

namespace {

QFont LayoutFont(const QString& family, double points, bool bold = false)
{
    QFont font(family);
    font.setPointSizeF(points);
    font.setBold(bold);
    return font;
}

// A frame over the whole data area.
Frame* PlaceInDataArea(QWidget* container, const char* name)
{
    return Place<Frame>(container, name, DataArea.x(), DataArea.y(), DataArea.width(), DataArea.height());
}

// A transparent caption.
Label* PlaceLabel(QWidget* container, const char* name, int left, int top, int width, int height,
                  const QString& caption)
{
    auto* label = Place<Label>(container, name, left, top, width, height);
    label->setCaption(caption);
    return label;
}

// A display-only value box of the basic information page.
TextBox* PlaceInfoBox(QWidget* container, const char* name, int top)
{
    auto* box = Place<TextBox>(container, name, 2760, top, 2835, 300);
    box->setFrame(false);
    box->setEnabled(false);
    box->setFont(LayoutFont(Tahoma, 11.25, true));
    SetControlColors(*box, QColor(0xFE, 0xF8, 0xDC), {});
    return box;
}

// A hidden holder of one bitmap of the skin, out of sight beyond the
// panel's edge; the bitmap has the holder's name.
Image* PlaceBitmap(QWidget* container, const char* name, int left, int top, int width, int height)
{
    auto* image = Place<Image>(container, name, left, top, width, height);
    image->setPicture(SkinPicture(image->objectName()));
    image->hide();
    return image;
}

// An image button of the command bar: it draws its command's caption in
// its bitmap, so its name is told to screen readers and automation here.
PictureBox* PlaceButton(QWidget* container, int left, int top, int width, int height, const QString& command)
{
    auto* button = Place<PictureBox>(container, "picCommand", left, top, width, height);
    button->setAccessibleName(command);
    button->setRole(PictureRole::Button);
    return button;
}

// The caption of a value box of the basic information page, left of the box
// on the page's background, and the box's name for screen readers.
void PlaceCaption(QWidget* container, TextBox* box, const QString& caption)
{
    auto* label = new Label(container);
    label->setObjectName(QStringLiteral("lbl") + box->objectName().mid(3)); // txtESN: lblESN
    label->Move(540, box->Top(), 1980, box->Height());
    label->setCaption(caption);
    label->setFont(LayoutFont(Tahoma, 8.25, true));
    label->setForeColor(QColor(0x1E, 0x28, 0x32));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setBuddy(box);
}

// The panel draws the same whatever the desktop's colour scheme: the system
// colours that the layout leaves to its controls are fixed here.
QPalette LayoutPalette()
{
    QPalette palette(Qt::black, QColor(0xC3, 0xC3, 0xC3));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::Button, QColor(0xF0, 0xF0, 0xF0));
    palette.setColor(QPalette::ButtonText, Qt::black);
    palette.setColor(QPalette::Highlight, QColor(0x33, 0x99, 0xFF));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Disabled, QPalette::Text, QColor(0x6D, 0x6D, 0x6D));
    return palette;
}

} // namespace

PanelControls::PanelControls(QWidget& userControl)
    : Widget(userControl)
{
    BuildLayout();
}

CommandControls PanelControls::ForCommands()
{
    const auto looks = [](const Image* idle, const Image* over, const Image* sel, const Image* dim) {
        return ButtonLooks{idle->Picture(), over->Picture(), sel->Picture(), dim->Picture()};
    };
    return {picCommand,
            {
                looks(imageReadIdle, imageReadOver, imageReadSel, imageReadDim),
                looks(imageWriteIdle, imageWriteOver, imageWriteSel, imageWriteDim),
                looks(imageExitIdle, imageExitOver, imageExitSel, imageExitDim),
                looks(imageUndoIdle, imageUndoOver, imageUndoSel, imageUndoDim),
            }};
}

FrameControls PanelControls::ForFrame()
{
    return {*imgWndClose, *imgWndMin, *lblTitle, {imageClose->Picture(), {}, imageCloseSel->Picture(), {}},
            {imageMinize->Picture(), {}, imageMinimizeSel->Picture(), {}}};
}

// The panel's own surface leaves out the controls with windows of their own,
// which Qt would otherwise repaint with it.
QRegion PanelWidget::OwnSurface() const
{
    QRegion surface(UserControl.rect());
    for (QObject* child : UserControl.children()) {
        auto* control = qobject_cast<QWidget*>(child);
        if (control && control->isVisible() && !qobject_cast<Label*>(control) && !qobject_cast<Image*>(control)
            && !qobject_cast<Shape*>(control))
            surface -= control->geometry();
    }
    return surface;
}

void PanelControls::BuildLayout()
{
    LoadLayoutFonts();
    QWidget* panel = &Widget.UserControl;
    panel->setObjectName(QStringLiteral("Tessaly"));
    panel->setFixedSize(ToPixels(PanelWidth), ToPixels(PanelHeight));
    panel->setFont(LayoutFont(Tahoma, 9.75, true));
    panel->setPalette(LayoutPalette());
    Picture = SkinPicture(QStringLiteral("Tessaly"));
    panel->setAttribute(Qt::WA_OpaquePaintEvent); // the panel paints all of itself

    imageReadDim = PlaceBitmap(panel, "imageReadDim", 480, 10320, 870, 450);
    imageReadOver = PlaceBitmap(panel, "imageReadOver", 1560, 10320, 870, 450);
    imageReadSel = PlaceBitmap(panel, "imageReadSel", 480, 10800, 870, 450);
    imageReadIdle = PlaceBitmap(panel, "imageReadIdle", 1560, 10800, 870, 450);
    imageWriteIdle = PlaceBitmap(panel, "imageWriteIdle", 1560, 12000, 870, 450);
    imageWriteSel = PlaceBitmap(panel, "imageWriteSel", 480, 12000, 870, 450);
    imageWriteOver = PlaceBitmap(panel, "imageWriteOver", 1560, 11520, 870, 450);
    imageWriteDim = PlaceBitmap(panel, "imageWriteDim", 480, 11520, 870, 450);
    imageExitIdle = PlaceBitmap(panel, "imageExitIdle", 1560, 12960, 870, 450);
    imageExitSel = PlaceBitmap(panel, "imageExitSel", 480, 12960, 870, 450);
    imageExitOver = PlaceBitmap(panel, "imageExitOver", 1560, 12480, 870, 450);
    imageExitDim = PlaceBitmap(panel, "imageExitDim", 480, 12480, 870, 450);
    imageUndoIdle = PlaceBitmap(panel, "imageUndoIdle", 10800, 10800, 1665, 405);
    imageUndoSel = PlaceBitmap(panel, "imageUndoSel", 10800, 10320, 1665, 405);
    imageUndoOver = PlaceBitmap(panel, "imageUndoOver", 10800, 9840, 1665, 405);
    imageUndoDim = PlaceBitmap(panel, "imageUndoDim", 10800, 9360, 1665, 405);
    imageBasicInfo2 = PlaceBitmap(panel, "imageBasicInfo2", 12840, 4080, 6750, 7005);
    imageMinize = PlaceBitmap(panel, "imageMinize", 14160, 12480, 270, 270);
    imageClose = PlaceBitmap(panel, "imageClose", 14640, 12480, 270, 270);
    imageCloseSel = PlaceBitmap(panel, "imageCloseSel", 14640, 12840, 270, 270);
    imageMinimizeSel = PlaceBitmap(panel, "imageMinimizeSel", 14160, 12840, 270, 270);

    lblTitleShadow = PlaceLabel(panel, "lblTitleShadow", 645, 135, 9255, 360, QStringLiteral("Orven Tessaly"));
    lblTitleShadow->setForeColor(Qt::white);
    Shape1 = Place<Shape>(panel, "Shape1", 320, 1280, 375, 5100);
    Shape1->setFillColor(QColor(0xFA, 0xFA, 0xFA));
    imgWndMin = Place<Image>(panel, "imgWndMin", 10020, 120, 255, 255);
    imgWndMin->setAccessibleName(QStringLiteral("Minimize"));
    imgWndMin->setRole(PictureRole::Button);
    imgWndClose = Place<Image>(panel, "imgWndClose", 10320, 120, 255, 255);
    imgWndClose->setAccessibleName(QStringLiteral("Close"));
    imgWndClose->setRole(PictureRole::Button);
    lblTitle = PlaceLabel(panel, "lblTitle", 630, 120, 9255, 375, QStringLiteral("Orven Tessaly"));
    lblDataTitle = PlaceLabel(panel, "lblDataTitle", 4015, 645, 4095, 495, QStringLiteral("Basic Information"));
    lblDataTitle->setForeColor(QColor(0xFF, 0xD9, 0x4F));
    lblDataTitle->setFont(LayoutFont(Tahoma, 18));
    lblModelPortInfo = PlaceLabel(panel, "lblModelPortInfo", 480, 830, 2535, 375, QStringLiteral("Mode Name"));
    lblModelPortInfo->setForeColor(QColor(0x51, 0x51, 0x51));
    lblModelPortInfo->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    lblProcess = PlaceLabel(panel, "lblProcess", 480, 6660, 1335, 375, QString());
    lblProcess->setFont(LayoutFont(Tahoma, 14.25));
    picCommand.Adopt(0, PlaceButton(panel, 360, 7520, 879, 460, QStringLiteral("NV Read")));

    fraBasicInfo = PlaceInDataArea(panel, "fraBasicInfo");
    fraBasicInfo->setFont(LayoutFont(Gulim, 9));
    imgDataBack = Place<Image>(fraBasicInfo, "imgDataBack", 0, 0, 7260, 7020);
    imgDataBack->setPicture(imageBasicInfo2->Picture());
    imgDataBack->setEnabled(false);
    imgDataBack->setAttribute(Qt::WA_TransparentForMouseEvents);
    txtLifeCnt = PlaceInfoBox(fraBasicInfo, "txtLifeCnt", 3240);
    txtLifeTimer = PlaceInfoBox(fraBasicInfo, "txtLifeTimer", 2760);
    txtMEID = PlaceInfoBox(fraBasicInfo, "txtMEID", 2280);
    txtWarrantyDate = PlaceInfoBox(fraBasicInfo, "txtWarrantyDate", 1320);
    txtPhoneSWVer = PlaceInfoBox(fraBasicInfo, "txtPhoneSWVer", 840);
    txtESN = PlaceInfoBox(fraBasicInfo, "txtESN", 1800);
    PlaceCaption(fraBasicInfo, txtPhoneSWVer, QStringLiteral("Phone S/W Version"));
    PlaceCaption(fraBasicInfo, txtWarrantyDate, QStringLiteral("Warranty Date"));
    PlaceCaption(fraBasicInfo, txtESN, QStringLiteral("ESN"));
    PlaceCaption(fraBasicInfo, txtMEID, QStringLiteral("MEID"));
    PlaceCaption(fraBasicInfo, txtLifeTimer, QStringLiteral("Life Timer"));
    PlaceCaption(fraBasicInfo, txtLifeCnt, QStringLiteral("Life Count"));

    // Page 0's controls, which the other pages copy as they are loaded: the
    // grid fills its frame, and the frame shows when its node is clicked.
    Frame* page0 = PlaceInDataArea(panel, "fraFlexGrid");
    page0->setBackColor(QColor(0xFF, 0xFF, 0xC0));
    page0->setFont(LayoutFont(Tahoma, 8.25));
    page0->hide();
    fraFlexGrid.Adopt(0, page0);
    auto* grid0 = Place<MSFlexGrid>(page0, "MSFlexGrid1", 0, 0, DataArea.width(), DataArea.height());
    grid0->setRows(5);
    grid0->setCols(10);
    grid0->setFont(LayoutFont(Tahoma, 8.25));
    grid0->setBackColorFixed(QColor(0xC0, 0xC0, 0xC0));
    grid0->setBackColorBkg(Qt::white);
    grid0->setGridColor(QColor(0xC0, 0xC0, 0xC0));
    grid0->setGridColorFixed(QColor(0xD7, 0xD7, 0xD7));
    MSFlexGrid1.Adopt(0, grid0);
    auto* combo0 = Place<ComboBox>(page0, "cboEditCell", 240, 240, 1695, 315);
    combo0->setFont(LayoutFont(Tahoma, 8.25));
    cboEditCell.Adopt(0, combo0);
    auto* text0 = Place<TextBox>(page0, "txtEdit", 360, 600, 1335, 360);
    text0->setText(QStringLiteral("Text2"));
    text0->setFont(LayoutFont(Tahoma, 8.25));
    text0->setFlatBorder(QColor(0x33, 0x99, 0xFF)); // the editor is as low as a grid row
    txtEdit.Adopt(0, text0);

    OrvenTreeView1 = Place<OrvenTreeView>(panel, "OrvenTreeView1", 330, 1260, 2865, 5190);
    OrvenTreeView1->setFont(LayoutFont(Tahoma, 9)); // the tree's own, not the panel's title font
    picCommand.Adopt(1, PlaceButton(panel, 1300, 7520, 879, 460, QStringLiteral("NV Write")));
    picCommand.Adopt(2, PlaceButton(panel, 2250, 7520, 879, 460, QStringLiteral("Exit")));

    fraMIPProfile = PlaceInDataArea(panel, "fraMIPProfile");
    fraMIPProfile->setFont(LayoutFont(Gulim, 9));
    fraMIPProfile->hide();
    imgMIPProfile = Place<Image>(fraMIPProfile, "imgMIPProfile", 0, 0, 6750, 7005);
    imgMIPProfile->setPicture(SkinPicture(imgMIPProfile->objectName()));
    Label1 = PlaceLabel(fraMIPProfile, "Label1", 3960, 960, 1815, 375, QStringLiteral("Number Of Profiles"));
    Label1->setFont(LayoutFont(Gulim, 9));
    for (int profile : {4, 5, 3, 2, 1, 0}) {
        auto* button = Place<OptionButton>(fraMIPProfile, "rbMIPProfile", 600, 840 + 480 * profile, 3135, 495);
        button->setText(QStringLiteral("MIP Profile %1").arg(profile));
        SetControlColors(*button, Qt::white, {});
        rbMIPProfile.Adopt(profile, button);
    }
    cmbProfileCount = Place<ComboBox>(fraMIPProfile, "cmbProfileCount", 4200, 1440, 1215, 360);
    cmbProfileCount->setFont(LayoutFont(Gulim, 9));
    Label1->setBuddy(cmbProfileCount);

    auto* restore = PlaceButton(panel, 8840, 680, 1670, 375, QStringLiteral("Restore"));
    restore->setPicture(SkinPicture(QStringLiteral("imageUndoIdle")));
    picCommand.Adopt(3, restore);
    // The two bars only show progress; they take no focus.
    pbProgressBg = Place<PictureBox>(panel, "pbProgressBg", 480, 7080, 2535, 255);
    pbProgressBg->setPicture(SkinPicture(pbProgressBg->objectName()));
    pbProgressBg->setFocusPolicy(Qt::NoFocus);
    pbProgressBg->setRole(PictureRole::ProgressBar);
    pbProgressBg->setAccessibleName(QStringLiteral("Progress"));
    pbProgress = Place<PictureBox>(panel, "pbProgress", 480, 8880, 2535, 255);
    pbProgress->setPicture(SkinPicture(pbProgress->objectName()));
    pbProgress->setFocusPolicy(Qt::NoFocus);
    fralabelPercent = Place<Frame>(panel, "fralabelPercent", 1800, 6760, 1215, 260);
    fralabelPercent->setBackColor(QColor(0xD7, 0xD7, 0xD7));
    lblPercent = PlaceLabel(fralabelPercent, "lblPercent", 0, 0, 1215, 260, QString());
    lblPercent->setAlignment(Qt::AlignRight | Qt::AlignTop);
    lblPercent->setFont(LayoutFont(Tahoma, 8.25, true));

    // Qt's focus chain runs in the order of the layout's tab indexes among
    // the controls that take the focus.
    const QList<QWidget*> tabOrder = {
        OrvenTreeView1, picCommand(0), txtLifeTimer, txtLifeCnt, txtMEID, picCommand(1), picCommand(2),
        MSFlexGrid1(0), rbMIPProfile(4), rbMIPProfile(5), rbMIPProfile(3), rbMIPProfile(2), rbMIPProfile(1),
        rbMIPProfile(0), cboEditCell(0), txtEdit(0), picCommand(3), cmbProfileCount, txtWarrantyDate,
        txtPhoneSWVer, txtESN,
    };
    for (qsizetype i = 1; i < tabOrder.size(); ++i)
        QWidget::setTabOrder(tabOrder[i - 1], tabOrder[i]);
    // The window's two buttons, which have no tab index, come last.
    QWidget::setTabOrder(tabOrder.last(), imgWndMin);
    QWidget::setTabOrder(imgWndMin, imgWndClose);
}

} // namespace tessaly
