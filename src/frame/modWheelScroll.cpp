// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "frame/modWheelScroll.h"

#include "frame/ReportError.h"
#include "platform/MSFlexGrid.h"
#include "platform/Numeric.h"

#include <QPointer>
#include <QWheelEvent>

#include <memory>
#include <vector>

namespace tessaly {

namespace {

// One hooked grid. The hook is an event filter on the grid and each widget it
// is made of; it lives as long as the record. A grid that goes without its
// hook taken off leaves a record whose grid has gone, which no search ever
// matches.
class cls_SubClasData : public QObject {
public:
    cls_SubClasData(MSFlexGrid* grid, int32_t distance)
        : objGrid(grid)
        , gridAlive(grid)
        , nDistance(distance)
    {
    }

    bool holds(const MSFlexGrid* grid) const { return gridAlive && objGrid == grid; }

    MSFlexGrid* objGrid;
    QPointer<QObject> gridAlive; // a grid being destroyed is no longer a grid: only its address is compared
    int32_t nDistance;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

// The hooks, in the order they were set; all on the GUI thread. (Not
// thread_local: that would keep the library loaded after dlclose.)
std::vector<std::unique_ptr<cls_SubClasData>>& g_colSubClasData()
{
    static std::vector<std::unique_ptr<cls_SubClasData>> records;
    return records;
}

cls_SubClasData* FindRecord(const MSFlexGrid* grid)
{
    for (const auto& record : g_colSubClasData())
        if (record->holds(grid))
            return record.get();
    return nullptr;
}

// The widgets whose events the hook sees: the grid and every widget inside it.
QList<QWidget*> HookedWidgets(MSFlexGrid* grid)
{
    QList<QWidget*> widgets = grid->findChildren<QWidget*>();
    widgets.prepend(grid);
    return widgets;
}

// Only the sign of the wheel's turn counts: away from the user moves up, any
// other turn, none included, moves down, by the record's distance.
bool Proc_WheelScroll(cls_SubClasData& record, QEvent* event)
{
    if (event->type() != QEvent::Wheel)
        return false;
    OnErrorReport("modWheelScroll", "Proc_WheelScroll", [&] {
        const QPoint turn = static_cast<QWheelEvent*>(event)->angleDelta();
        const int delta = turn.y() != 0 ? turn.y() : turn.x();
        Scroll_Grid(delta > 0 ? -record.nDistance : record.nDistance, record.objGrid);
    });
    event->accept();
    return true;
}

bool cls_SubClasData::eventFilter(QObject*, QEvent* event)
{
    return event->type() == QEvent::Wheel && gridAlive && Proc_WheelScroll(*this, event);
}

} // namespace

void SetWheelScroll(MSFlexGrid* grid, int32_t distance)
{
    OnErrorReport("modWheelScroll", "SetWheelScroll", [&] {
        auto& records = g_colSubClasData();
        // Records whose grids have gone stand in nobody's way; they go here.
        std::erase_if(records, [](const auto& record) { return !record->gridAlive; });
        auto record = std::make_unique<cls_SubClasData>(grid, distance);
        for (QWidget* widget : HookedWidgets(grid))
            widget->installEventFilter(record.get());
        records.push_back(std::move(record));
    });
}

void RestoreWheelScroll(MSFlexGrid* grid)
{
    OnErrorReport("modWheelScroll", "RestoreWheelScroll", [&] {
        auto& records = g_colSubClasData();
        for (auto it = records.begin(); it != records.end(); ++it) {
            if ((*it)->holds(grid)) {
                for (QWidget* widget : HookedWidgets(grid))
                    widget->removeEventFilter(it->get());
                records.erase(it);
                return;
            }
        }
    });
}

void RestoreWheelScrollWithin(const QWidget* panel)
{
    std::vector<MSFlexGrid*> grids;
    for (const auto& record : g_colSubClasData())
        if (record->gridAlive && panel->isAncestorOf(record->objGrid))
            grids.push_back(record->objGrid);
    for (MSFlexGrid* grid : grids)
        RestoreWheelScroll(grid);
}

bool HasWheelScroll(const MSFlexGrid* grid)
{
    return grid && FindRecord(grid);
}

void Scroll_Grid(int32_t lines, MSFlexGrid* grid)
{
    OnErrorReport("modWheelScroll", "Scroll_Grid",
                  [&] { grid->setTopRow(ToInt32(int64_t(grid->TopRow()) + lines)); });
}

} // namespace tessaly
