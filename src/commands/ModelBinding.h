// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The model of the connected handset: binding it, its label, the refusal to
// work without one, and its events routed to the progress. The host owns the
// model; the panel only holds it while bound, and a model deleted meanwhile
// is as none.
#pragma once

#include "layout/PanelControls.h"

#include <tessaly/BaseModel.h>

#include <QList>
#include <QPointer>

namespace tessaly {

class ModelEvents;
class Progress;

class ModelBinding {
public:
    ModelBinding(const PanelWidget& panel, Label& portInfo, Progress& progress);

    void SetModelDLL(IBaseModel* model);
    // Whether a model is bound; says so in a box when none is.
    bool CheckModelDLL();
    // The bound model, or nullptr.
    IBaseModel* Model() const { return m_model; }

private:
    const PanelWidget& m_panel;
    Label& m_portInfo;
    Progress& m_progress;
    QPointer<IBaseModel> m_model;
    QList<QMetaObject::Connection> m_events;
    QPointer<ModelEvents> m_receiver; // made at the first binding, with the handlers as its parent
};

} // namespace tessaly
