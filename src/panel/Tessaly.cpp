#include <tessaly/Tessaly.h>

#include "panel/Panel.h"
#include "platform/ModalBox.h"

#include <QPaintEvent>

#include <QPainter>

#include <atomic>

using tessaly::Panel;

namespace {
std::atomic<int> g_livePanels{0};
}

int tessaly::LivePanels()
{
    return g_livePanels;
}

Tessaly::Tessaly(QWidget* parent)
    : TessalyByName(parent)
    , d(std::make_unique<Panel>(*this))
{
    ++g_livePanels;
}

Tessaly::~Tessaly()
{
    --g_livePanels;
    // A handler of the panel may be waiting on an open box: what it works on
    // must outlive it.
    if (tessaly::ModalBoxOpen())
        Panel::EndAfterModalBoxes(std::move(d));
    else
        d->UserControl_Terminate();
}

void Tessaly::AddItemToGrd(int16_t Part, const QString& FormatType, bool IsNumber, bool ReadOnly,
                           const QString& ComboStr, const QString& InputStr, int32_t row, int32_t col)
{
    d->AddItemToGrd(Part, FormatType, IsNumber, ReadOnly, ComboStr, InputStr, row, col);
}

void Tessaly::AddItemToGrid2(int16_t Part, const QString& FormatType, bool ReadOnly,
                             const QString& ComboStr, const QString& InputStr, int32_t row, int32_t col)
{
    d->AddItemToGrid2(Part, FormatType, ReadOnly, ComboStr, InputStr, row, col);
}

QString Tessaly::GetItemFromGrd(int16_t Part, int32_t row, int32_t col)
{
    return d->GetItemFromGrd(Part, row, col);
}

void Tessaly::SetNVFieldItemCount(int16_t Part, int16_t count) { d->SetNVFieldItemCount(Part, count); }
void Tessaly::SetGrid1Rows(int16_t Number) { d->SetGrid1Rows(Number); }
void Tessaly::SetGrid2Rows(int16_t Number) { d->SetGrid2Rows(Number); }
void Tessaly::SetSettingRows(int16_t Number) { d->SetSettingRows(Number); }
void Tessaly::SetSystemRows(int16_t Number) { d->SetSystemRows(Number); }

void Tessaly::SetModelDLL(IBaseModel* model) { d->SetModelDLL(model); }

int16_t Tessaly::AddTab(const QString& strTabName, int16_t nFlexGridColCount)
{
    return d->AddTab(strTabName, nFlexGridColCount);
}

void Tessaly::RemoveTab(int16_t TabNumber) { d->RemoveTab(TabNumber); }

int16_t Tessaly::GetProfileCount() { return d->GetProfileCount(); }
void Tessaly::SetProfileCount(int16_t count) { d->SetProfileCount(count); }
int16_t Tessaly::GetActiveProfileIndex() { return d->GetActiveProfileIndex(); }
void Tessaly::SetActiveProfileIndex(int16_t ActiveIdx) { d->SetActiveProfileIndex(ActiveIdx); }
void Tessaly::SetActiveProfileEnable(bool bEnable) { d->SetActiveProfileEnable(bEnable); }
void Tessaly::SetProfileCountEnable(bool bEnable) { d->SetProfileCountEnable(bEnable); }

void Tessaly::SetBasicInfo(const QString& PhoneVersion, const QString& WarrantyDate, const QString& ESN,
                           const QString& MEID, const QString& LifeTime, const QString& LifeCnt)
{
    d->SetBasicInfo(PhoneVersion, WarrantyDate, ESN, MEID, LifeTime, LifeCnt);
}

void Tessaly::paintEvent(QPaintEvent* event)
{
    QPainter painter(this); // clipped to what needs painting
    if (d->Picture.isNull())
        painter.fillRect(event->rect(), palette().window());
    else
        painter.drawPixmap(0, 0, d->Picture);
    painter.end();
    const tessaly::PictureBox::ContainerPainting painting;
    d->UserControl_Paint();
}

tessaly::Panel& PanelOf(Tessaly& panel)
{
    return *panel.d;
}
