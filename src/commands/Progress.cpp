// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "commands/Progress.h"

#include "frame/ReportError.h"
#include "platform/MsgBox.h"
#include "platform/Numeric.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessaly {

namespace {

// The whole percentage of `count` in `total`: the product count x 100 in 32
// bits, divided in double precision, rounded half to even into 16 bits. Each
// step past those widths is an overflow error.
int16_t Percentage(int32_t count, int32_t total)
{
    const int32_t hundredfold = ToInt32(int64_t(count) * 100);
    return RoundToInt16(double(hundredfold) / double(total));
}

// The count after `count` at which the percentage first differs from `now`,
// the percentage at `count`, in `total`. The search starts where the
// quotient passes the next half and steps to the exact count; the run ends
// where a product would overflow.
int32_t EndOfRun(int32_t count, int16_t now, int32_t total)
{
    constexpr int64_t LastCount = std::numeric_limits<int32_t>::max() / 100;
    if (total <= 0)
        return count + 1;
    const auto same = [&](int64_t at) { return std::nearbyint(double(at * 100) / double(total)) == double(now); };
    int64_t end = std::max<int64_t>(int64_t(count) + 1, (2 * int64_t(now) + 1) * total / 200);
    while (end <= LastCount && same(end))
        ++end;
    while (end - 1 > count && !same(end - 1))
        --end;
    return int32_t(std::min(end, LastCount + 1));
}

} // namespace

Progress::Progress(const PanelWidget& panel, ProgressControls controls)
    : m_panel(panel)
    , m_controls(controls)
{
}

void Progress::Start(const QString& command, bool restore)
{
    m_controls.process.setCaption(command);
    m_controls.percent.setCaption(QStringLiteral("0 %"));
    if (restore) {
        m_count = 0;
    } else {
        m_panel.UserControl.repaint(m_panel.OwnSurface());
        m_controls.bar.Refresh();
    }
}

// A control drawn at once makes Qt first paint what is pending on the panel
// around it; that is no repaint of the panel, and the bar stays as drawn.
void Progress::Redraw()
{
    if (m_drawing)
        return;
    m_controls.bar.Refresh();
    DrawProgressBar();
}

void Progress::events_StepIt(int32_t)
{
    OnErrorReport("Event_Function", "events_StepIt", [&] {
        m_count = ToInt32(int64_t(m_count) + 1);
        if (m_totalCount == 0) {
            MsgBox(QStringLiteral("Sub Total Count Not Set"));
            return;
        }
        // Only a change of the whole percentage is drawn.
        if (PercentageChanged())
            DrawProgress();
    });
}

bool Progress::FindRun()
{
    const int32_t count = m_count;
    const int32_t total = m_totalCount;
    const int16_t now = Percentage(count, total);
    const bool changed = now != Percentage(count - 1, total);
    m_run = {total, count, EndOfRun(count, now, total)};
    return changed;
}

void Progress::events_GetSubTotalProgressCount(const QString&, int32_t dwTotalProgressCount, int32_t)
{
    OnErrorReport("Event_Function", "events_GetSubTotalProgressCount", [&] {
        m_subTotalCount = dwTotalProgressCount;
        m_totalCount = dwTotalProgressCount;
    });
}

void Progress::events_GetTotalProgressCount(int32_t dwTotalProgressCount, int32_t)
{
    OnErrorReport("Event_Function", "events_GetTotalProgressCount",
                  [&] { m_totalCount = dwTotalProgressCount; });
}

void Progress::events_SetProcessStep(int32_t, int32_t nStatus, int32_t)
{
    OnErrorReport("Event_Function", "events_SetProcessStep", [&] { MoveToStep(nStatus); });
}

void Progress::events_SetSubProcessStep(int32_t, int32_t nStatus, int32_t)
{
    OnErrorReport("Event_Function", "events_SetSubProcessStep", [&] { MoveToStep(nStatus); });
}

// A step that starts (1) clears the counter; one that ends (2) brings it to
// the count of the last sub-process. Nothing is drawn until the next step.
void Progress::MoveToStep(int32_t nStatus)
{
    if (nStatus == 1)
        m_count = 0;
    else if (nStatus == 2)
        m_count = m_subTotalCount;
}

void Progress::DrawProgress()
{
    OnErrorReport("Common_Function", "DrawProgress", [&] {
        const QScopedValueRollback drawing(m_drawing, true);
        DrawProgressBar();
        DrawProgressState();
    });
}

// Copies as much of the filled bar as the percentage asks onto the empty one,
// one pixel in from its edge. Nothing is erased: a lower percentage leaves the
// wider bar until the empty one is refreshed.
void Progress::DrawProgressBar()
{
    OnErrorReport("Common_Function", "DrawProgressBar", [&] {
        const int16_t percentage =
            m_totalCount == 0 ? int16_t(0) : Percentage(m_count, m_totalCount);
        const int16_t width = RoundToInt16(m_controls.fill.Width() / TwipsPerPixel * percentage / 100.0);
        const int32_t height = RoundToInt32(m_controls.fill.Height() / TwipsPerPixel);
        m_controls.bar.BitBlt(1, 1, width, height, m_controls.fill, 0, 0);
        // Drawn again after every refresh, which sets the value back to 0.
        m_controls.bar.setProgressValue(percentage);
    });
}

void Progress::DrawProgressState()
{
    OnErrorReport("Common_Function", "DrawProgressState", [&] {
        const int16_t percentage =
            m_totalCount == 0 ? int16_t(0) : Percentage(m_count, m_totalCount);
        m_controls.percent.setCaption(percentage == 100 ? QStringLiteral("Complete")
                                                 : QString::number(percentage) + QStringLiteral(" %"));
        m_controls.percent.Refresh();
    });
}

} // namespace tessaly
