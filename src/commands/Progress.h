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

    PanelControls& c;
    int32_t g_lTotalProgressCount = 0;
    int32_t g_lSubTotalProgressCount = 0;
    int32_t g_lProgressCount = 0;
    bool m_drawing = false;
};

} // namespace tessaly
