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
    explicit Progress(PanelControls& controls);

    // The model's events.
    void events_StepIt(int32_t lPort);
    void events_GetSubTotalProgressCount(const QString& bstrSubProcessName, int32_t dwTotalProgressCount,
                                         int32_t lPort);
    void events_GetTotalProgressCount(int32_t dwTotalProgressCount, int32_t lPort);
    void events_SetProcessStep(int32_t lProcess, int32_t nStatus, int32_t lPort);
    void events_SetSubProcessStep(int32_t lProcess, int32_t nStatus, int32_t lPort);

    // A Restore counts its steps from 0 and leaves the bar as it is.
    void RestartCount() { g_lProgressCount = 0; }

    // Whether the bar or the caption is being drawn at this moment.
    bool Drawing() const { return m_drawing; }

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
        const int32_t count = g_lProgressCount;
        return (g_lTotalProgressCount != m_run.total || count <= m_run.first || count >= m_run.end) && FindRun();
    }
    // Finds the run of equal percentages that the count is in; whether the
    // count starts it.
    bool FindRun();

    PanelControls& c;
    int32_t g_lTotalProgressCount = 0;
    int32_t g_lSubTotalProgressCount = 0;
    int32_t g_lProgressCount = 0;
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
