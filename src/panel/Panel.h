// The panel object behind Tessaly: every control of the panel, all its state,
// its start-up and end, and the routines and event handlers that act on the
// controls. The handlers live in the source files of their subsystems.
#pragma once

#include "pages/PageRecords.h"
#include "platform/Arrays.h"
#include "platform/ControlArray.h"
#include "platform/Controls.h"
#include "platform/MSFlexGrid.h"
#include "platform/OrvenTreeView.h"
#include "platform/Pictures.h"

#include <tessaly/BaseModel.h>

#include <QList>
#include <QPointer>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

class Tessaly;

namespace tessaly {

class Panel {
public:
    explicit Panel(Tessaly& userControl);
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    // Ends a panel whose widget is going while a modal box is open, which a
    // handler of the panel may be waiting on: no handler runs any more, and
    // the controls and state live on, hidden, until the boxes have closed.
    static void EndAfterModalBoxes(std::unique_ptr<Panel> panel);
    // Whether the panel's widget has gone. A handler that comes back from a
    // modal box returns at once when it has.
    bool Ended() const { return !Handlers; }

    // Host interface: cells and rows.
    void AddItemToGrd(int16_t Part, const QString& FormatType, bool IsNumber, bool ReadOnly,
                      const QString& ComboStr, const QString& InputStr, int32_t row, int32_t col);
    void AddItemToGrid2(int16_t Part, const QString& FormatType, bool ReadOnly,
                        const QString& ComboStr, const QString& InputStr, int32_t row, int32_t col);
    QString GetItemFromGrd(int16_t Part, int32_t row, int32_t col);
    void SetNVFieldItemCount(int16_t Part, int16_t count);
    void SetGrid1Rows(int16_t Number);
    void SetGrid2Rows(int16_t Number);
    void SetSettingRows(int16_t Number);
    void SetSystemRows(int16_t Number);

    // The model of the connected handset, and its events.
    void SetModelDLL(IBaseModel* model);
    bool CheckModelDLL();
    void events_StepIt(int32_t lPort);
    void events_GetSubTotalProgressCount(const QString& bstrSubProcessName, int32_t dwTotalProgressCount,
                                         int32_t lPort);
    void events_GetTotalProgressCount(int32_t dwTotalProgressCount, int32_t lPort);
    void events_SetProcessStep(int32_t lProcess, int32_t nStatus, int32_t lPort);
    void events_SetSubProcessStep(int32_t lProcess, int32_t nStatus, int32_t lPort);
    void MoveToStep(int32_t nStatus);
    void DrawProgress();
    void DrawProgressBar();
    void DrawProgressState();

    // The command bar.
    struct ButtonLooks {
        Image* idle;
        Image* over;
        Image* sel;
        Image* dim;
    };
    void WireCommandEvents();
    ButtonLooks LooksOf(int16_t Index) const;
    bool IsLive(int16_t Index) const;
    void picCommand_MouseMove(int16_t Index, int16_t Button, int16_t Shift, float X, float Y);
    void picCommand_MouseDown(int16_t Index, int16_t Button, int16_t Shift, float X, float Y);
    void picCommand_Click(int16_t Index);
    void SetDefaultButtonState();

    // The window frame and the wheel.
    void WireFrameEvents();
    void imgWndClose_MouseDown();
    void imgWndClose_MouseUp();
    void imgWndClose_Click();
    void imgWndMin_MouseDown();
    void imgWndMin_MouseUp();
    void imgWndMin_Click();
    void lblTitle_MouseMove(int Button, int Shift, float X, float Y);
    void ReleaseWheel();

    // Pages of the host's own.
    int16_t AddTab(const QString& strTabName, int16_t nFlexGridColCount);
    void RemoveTab(int16_t TabNumber);

    // The MIP profiles and the basic information.
    int16_t GetProfileCount();
    void SetProfileCount(int16_t count);
    int16_t GetActiveProfileIndex();
    void SetActiveProfileIndex(int16_t ActiveIdx);
    void SetActiveProfileEnable(bool bEnable);
    void SetProfileCountEnable(bool bEnable);
    void cmbProfileCount_Click();
    void SetBasicInfo(const QString& PhoneVersion, const QString& WarrantyDate, const QString& ESN, const QString& MEID,
                      const QString& LifeTime, const QString& LifeCnt);

    // Events of the panel itself.
    void UserControl_Initialize();
    void UserControl_Paint();
    void UserControl_Terminate();
    QRegion OwnSurface() const;
    void OrvenTreeView1_Click();

    // A page's control set.
    void LoadTabControls(int16_t page);
    void InitFlexGrid(int16_t page);
    void UnloadTabControls(int16_t page);
    int16_t FindAddedTabByName(const QString& name) const;
    QString FindAddedTabByNumber(int16_t number, int16_t& index) const;
    void MemoryFree();

    // Tree and pages.
    void InitTreeCtrl();
    void SetFraFlexGridVisible(int16_t page, bool visible);

    // In-place editing: opening and closing the editors of a page.
    void WireEditingEvents();
    void MSFlexGrid1_RowConlChange(int16_t Index);
    void MSFlexGrid1_Scroll(int16_t Index);
    void MSFlexGrid1_DblClick(int16_t Index);
    void MSFlexGrid1_KeyDown(int16_t Index, int16_t KeyCode, int16_t Shift);
    void MSFlexGrid1_KeyUp(int16_t Index, int16_t KeyCode, int16_t Shift);
    void SetComboOrTextBox(int16_t Index);
    void SetCellPosition();
    void CloseEditors(int16_t Index);
    void WatchEditorsClosing(int16_t Index);
    void StopWatchingEditors(int16_t Index);

    // The text editor, the combo editor and the value limits.
    void txtEdit_GotFocus(int16_t Index);
    void txtEdit_KeyPress(int16_t Index, int16_t& KeyAscii);
    void txtEdit_KeyUp(int16_t Index, int16_t KeyCode, int16_t Shift);
    void txtEdit_LostFocus(int16_t Index);
    void cboEditCell_Click(int16_t Index);
    void CheckOverflow();
    ItemBoundary SetBoundaryOfItem(const QString& strTitle, int32_t lReserved, int16_t nMin, int16_t nMax,
                                   int16_t nDefault);

    // Cells and titles.
    void SetCellForeColor(int16_t Part, int32_t row, int32_t col, bool ReadOnly);
    void SetFlexGridTitleAll();
    void SetFlexGridTitle(int16_t page, int16_t first, int16_t last);

    // The controls. The layout makes them (src/layout), start-up dresses them.
    Tessaly& UserControl;
    // The receiver of the controls' events: the handlers run while it lives.
    std::unique_ptr<QObject> Handlers = std::make_unique<QObject>();
    // Per page, while an editor is open: its grid's RowColChange and Scroll.
    std::vector<std::pair<QMetaObject::Connection, QMetaObject::Connection>> EditorWatch;
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

    // Panel state. The host owns the model; the panel only holds it while
    // bound, and a model deleted meanwhile is as none.
    QPointer<IBaseModel> g_objModel;
    QList<QMetaObject::Connection> events;
    Array2D<CellAttr> g_arrCellAttr;
    Array1D<AddedTab> g_arrAddedTab;
    Array1D<LockCodeCell> g_arrLockCodeCells;
    int16_t g_nLastTab = 0;
    int16_t g_nActiveCommand = 0;
    int16_t g_nEditPart = 0;
    int16_t g_nEditRow = 0;
    int16_t g_nEditCol = 0;
    int32_t g_lTotalProgressCount = 0;
    int32_t g_lSubTotalProgressCount = 0;
    int32_t g_lProgressCount = 0;
    bool g_bNVReadDone = false;
    bool g_bCommandBusy = false;
    int16_t g_nMaxGridCols = 0;
    int16_t g_nMaxGridRows = 0;

private:
    void BuildLayout();
    void WriteCell(int16_t page, int32_t row, int32_t col, const QString& FormatType, bool IsNumber,
                   bool ReadOnly, const QString& ComboStr, const QString& InputStr);
};

} // namespace tessaly

// The panel object behind a Tessaly widget.
tessaly::Panel& PanelOf(Tessaly& panel);

namespace tessaly {
// How many panels of this library are alive.
int LivePanels();
} // namespace tessaly
