// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

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
    d->Cells().AddItemToGrd(Part, FormatType, IsNumber, ReadOnly, ComboStr, InputStr, row, col);
}

void Tessaly::AddItemToGrid2(int16_t Part, const QString& FormatType, bool ReadOnly,
                             const QString& ComboStr, const QString& InputStr, int32_t row, int32_t col)
{
    d->Cells().AddItemToGrid2(Part, FormatType, ReadOnly, ComboStr, InputStr, row, col);
}

QString Tessaly::GetItemFromGrd(int16_t Part, int32_t row, int32_t col)
{
    return d->Cells().GetItemFromGrd(Part, row, col);
}

void Tessaly::SetNVFieldItemCount(int16_t Part, int16_t count) { d->Pages().SetNVFieldItemCount(Part, count); }
void Tessaly::SetGrid1Rows(int16_t Number) { d->Pages().SetGrid1Rows(Number); }
void Tessaly::SetGrid2Rows(int16_t Number) { d->Pages().SetGrid2Rows(Number); }
void Tessaly::SetSettingRows(int16_t Number) { d->Pages().SetSettingRows(Number); }
void Tessaly::SetSystemRows(int16_t Number) { d->Pages().SetSystemRows(Number); }

void Tessaly::SetModelDLL(IBaseModel* model) { d->Model().SetModelDLL(model); }

int16_t Tessaly::AddTab(const QString& strTabName, int16_t nFlexGridColCount)
{
    return d->Tabs().AddTab(strTabName, nFlexGridColCount);
}

void Tessaly::RemoveTab(int16_t TabNumber) { d->Tabs().RemoveTab(TabNumber); }

int16_t Tessaly::GetProfileCount() { return d->Profiles().GetProfileCount(); }
void Tessaly::SetProfileCount(int16_t count) { d->Profiles().SetProfileCount(count); }
int16_t Tessaly::GetActiveProfileIndex() { return d->Profiles().GetActiveProfileIndex(); }
void Tessaly::SetActiveProfileIndex(int16_t ActiveIdx) { d->Profiles().SetActiveProfileIndex(ActiveIdx); }
void Tessaly::SetActiveProfileEnable(bool bEnable) { d->Profiles().SetActiveProfileEnable(bEnable); }
void Tessaly::SetProfileCountEnable(bool bEnable) { d->Profiles().SetProfileCountEnable(bEnable); }

void Tessaly::SetBasicInfo(const QString& PhoneVersion, const QString& WarrantyDate, const QString& ESN,
                           const QString& MEID, const QString& LifeTime, const QString& LifeCnt)
{
    d->Info().SetBasicInfo(PhoneVersion, WarrantyDate, ESN, MEID, LifeTime, LifeCnt);
}

// The panel holds no security values.
void Tessaly::SetSecurityInfo(const QString&, bool, const QString&, const QString&, const QString&, const QString&,
                              const QString&, const QString&, const QString&, const QString&, const QString&,
                              const QString&, const QString&)
{
}

QString Tessaly::GetSecCode() { return {}; }
QString Tessaly::GetLockCode() { return {}; }
QString Tessaly::GetAKey(int16_t) { return {}; }

void Tessaly::paintEvent(QPaintEvent* event)
{
    QPainter painter(this); // clipped to what needs painting
    if (d->Picture().isNull())
        painter.fillRect(event->rect(), palette().window());
    else
        painter.drawPixmap(0, 0, d->Picture());
    painter.end();
    const tessaly::PictureBox::ContainerPainting painting;
    d->UserControl_Paint();
}

tessaly::Panel& PanelOf(Tessaly& panel)
{
    return *panel.d;
}
