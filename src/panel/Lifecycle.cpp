// The panel's start-up, repaint and end.
#include "panel/Panel.h"

#include "frame/ReportError.h"
#include "frame/modWheelScroll.h"
#include "platform/ModalBox.h"
#include "platform/Numeric.h"

#include <tessaly/Tessaly.h>

namespace tessaly {

namespace {

// What is left of a panel that ended while a box was open: its controls,
// hidden, and its state, until the boxes have closed. Then it ends as any
// panel does.
class EndedPanel : public QWidget {
public:
    explicit EndedPanel(std::unique_ptr<Panel> panel)
        : m_panel(std::move(panel))
    {
    }
    ~EndedPanel() override { m_panel->UserControl_Terminate(); }

private:
    std::unique_ptr<Panel> m_panel;
};

} // namespace

Panel::Panel(Tessaly& userControl)
    : UserControl(userControl)
{
    BuildLayout();
    QObject::connect(OrvenTreeView1, &OrvenTreeView::Click, Handlers.get(), [this] { OrvenTreeView1_Click(); });
    WireEditingEvents();
    WireCommandEvents();
    WireFrameEvents();
    QObject::connect(cmbProfileCount, &ComboBox::Click, Handlers.get(), [this] { cmbProfileCount_Click(); });
    UserControl_Initialize();
}

void Panel::UserControl_Initialize()
{
    OnErrorReport("Event_Function", "UserControl_Initialize", [&] {
        g_nLastTab = 20;
        g_arrCellAttr.ReDimSingle();
        g_arrAddedTab = {};
        g_arrLockCodeCells = {};

        for (int16_t page = 1; page <= g_nLastTab; ++page)
            LoadTabControls(page);

        UserControl.setFixedSize(ToPixels(10800), ToPixels(8430));
        g_bNVReadDone = false;
        g_bCommandBusy = false;

        InitTreeCtrl();

        fraBasicInfo->setWidth(6735);
        fraBasicInfo->setHeight(6855);
        fraMIPProfile->setWidth(6735);
        fraMIPProfile->setHeight(6855);
        fraMIPProfile->Move(3720, 1340, 6735, 6855);
        fraMIPProfile->setVisible(false);

        // Pages 10 and 11 keep the column count of the layout.
        static constexpr struct { int16_t page; int32_t cols; } PageCols[] = {
            {0, 23}, {20, 23}, {1, 4}, {2, 2}, {3, 7}, {4, 2}, {5, 3}, {6, 3}, {7, 3}, {8, 3},
            {9, 2}, {12, 3}, {13, 41}, {14, 2}, {15, 2}, {16, 2}, {17, 2}, {18, 2}, {19, 2},
        };
        for (const auto& [page, cols] : PageCols)
            MSFlexGrid1(page)->setCols(cols);

        for (int16_t page = 0; page <= g_nLastTab; ++page) {
            Frame* frame = fraFlexGrid(page);
            frame->setWidth(6735);
            frame->setHeight(6855);
            frame->Move(3720, 1340, 6735, 6855);
            frame->setVisible(false);

            InitFlexGrid(page);

            MSFlexGrid* grid = MSFlexGrid1(page);
            TextBox* editor = txtEdit(page);
            editor->setTop(float(grid->CellTop()) + grid->Top());
            editor->setLeft(float(grid->CellLeft()) + grid->Left());
            editor->setWidth(float(grid->CellWidth()));
            editor->setHeight(float(grid->CellHeight()));
            editor->setText(grid->TextMatrix(grid->Row(), grid->Col()));
            editor->setForeColor(RGB(73, 73, 73));
            editor->setFontSize(9);
            editor->setFontName(QStringLiteral("Tahoma"));
            editor->setVisible(false);
            editor->Refresh();

            ComboBox* combo = cboEditCell(page);
            combo->setFontSize(9);
            combo->setFontName(QStringLiteral("Tahoma"));
            combo->setVisible(false);

            SetWheelScroll(grid, 1);
        }

        SetFlexGridTitleAll();

        g_nMaxGridCols = ToInt16(MSFlexGrid1(13)->Cols());
        g_nMaxGridRows = ToInt16(MSFlexGrid1(13)->Rows());
        // Every page gets as many cells as the widest page.
        g_arrCellAttr.ReDim(g_nLastTab, ToInt16((g_nMaxGridCols + 1) * g_nMaxGridRows));

        fraBasicInfo->Move(3720, 1340);

        picCommand(0)->setPicture(imageReadIdle->Picture());
        picCommand(1)->setPicture(imageWriteDim->Picture());
        picCommand(2)->setPicture(imageExitIdle->Picture());
        picCommand(3)->setPicture(imageUndoIdle->Picture());
        imgDataBack->setPicture(imageBasicInfo2->Picture());
        imgWndMin->setPicture(imageMinize->Picture());
        imgWndClose->setPicture(imageClose->Picture());

        fraBasicInfo->setVisible(true);
        fraMIPProfile->setVisible(false);

        OrvenTreeView1->SelectNode(QStringLiteral("Basic Information"));

        lblTitle->Move(630, 120);
        lblTitleShadow->Move(lblTitle->Left() + 15, lblTitle->Top() + 15);

        g_nActiveCommand = -1;

        for (int count = 1; count <= 6; ++count)
            cmbProfileCount->AddItem(QString::number(count));
    });
}

void Panel::UserControl_Paint()
{
    OnErrorReport("Event_Function", "UserControl_Paint", [&] {
        pbProgressBg->Refresh();
        DrawProgressBar();
    });
}

void Panel::EndAfterModalBoxes(std::unique_ptr<Panel> panel)
{
    Panel& ending = *panel;
    ending.Handlers.reset();
    auto* rest = new EndedPanel(std::move(panel));
    const QObjectList children = ending.UserControl.children();
    for (QObject* child : children)
        if (auto* control = qobject_cast<QWidget*>(child))
            control->setParent(rest);
    DeleteAfterModalBoxes(rest);
}

// The panel's own surface: its background and the controls without a window
// of their own on it (labels, images, shapes). Repainting it runs
// UserControl_Paint; the controls with windows of their own keep what they
// show, as under the platform's Refresh, where Qt would otherwise repaint
// every one of them as well.
QRegion Panel::OwnSurface() const
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

void Panel::UserControl_Terminate()
{
    OnErrorReport("Event_Function", "UserControl_Terminate", [&] {
        MemoryFree();
    });
}

void Panel::MemoryFree()
{
    OnErrorReport("Common_Function", "MemoryFree", [&] {
        g_arrCellAttr.ReDimSingle();
        for (int16_t page = 0; page <= g_nLastTab; ++page)
            UnloadTabControls(page);
    });
}

} // namespace tessaly
