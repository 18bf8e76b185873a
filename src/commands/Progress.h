// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The progress of a running command: three counters moved by the model's
// events, shown as one bar and a percentage. The bar and the caption are
// drawn at once, while the model's call still holds the thread. The bar is
// only ever added to; only a refresh of the empty bar wipes it.
#pragma once

#include "layout/PanelControls.h"

#include <QString>

#include <cstdint>

namespace tessaly {

class Progress {
public:
    Progress(const PanelWidget& panel, ProgressControls controls);

    // The model's events.
    void events_StepIt(int32_t lPort);
    void events_GetSubTotalProgressCount(const QString& bstrSubProcessName, int32_t dwTotalProgressCount,
                                         int32_t lPort);
    void events_GetTotalProgressCount(int32_t dwTotalProgressCount, int32_t lPort);
    void events_SetProcessStep(int32_t lProcess, int32_t nStatus, int32_t lPort);
    void events_SetSubProcessStep(int32_t lProcess, int32_t nStatus, int32_t lPort);

    // A command starts: its name and 0 % shown before the model holds the
    // thread. A Restore counts its steps from 0 and leaves the bar as it
    // is until the empty one is refreshed; the others show the empty bar.
    void Start(const QString& command, bool restore);
    // The bar drawn again from the counters, as the panel repaints; nothing
    // while the bar or the caption is being drawn.
    void Redraw();

    void DrawProgress();
    void DrawProgressBar();
    void DrawProgressState();

private:
    void MoveToStep(int32_t nStatus);
    // Whether the whole percentage of the count differs from a step before.
    // Counts strictly inside the last run of equal percentages found need no
    // division: most steps of a long command are.
    bool PercentageChanged()
    {
        const int32_t count = m_count;
        return (m_totalCount != m_run.total || count <= m_run.first || count >= m_run.end) && FindRun();
    }
    // Finds the run of equal percentages that the count is in; whether the
    // count starts it.
    bool FindRun();

    const PanelWidget& m_panel;
    ProgressControls m_controls;
    int32_t m_totalCount = 0;
    int32_t m_subTotalCount = 0;
    int32_t m_count = 0;
    bool m_drawing = false;
    // Counts after `first` and before `end` have the percentage of `first`
    // in `total`.
    struct {
        int32_t total = 0;
        int32_t first = 0;
        int32_t end = 0;
    } m_run;
};

} // namespace tessaly
