// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The receiver of the bound model's events: its slots hand them to the
// progress. It belongs to the panel's handlers and goes with them. The
// model's signals reach its slots by their signatures, the quickest way Qt
// calls a slot, since StepIt comes millions of times a command.
#pragma once

#include <QObject>
#include <QString>

#include <cstdint>

namespace tessaly {

class Progress;

class ModelEvents : public QObject {
    Q_OBJECT
public:
    ModelEvents(QObject* handlers, Progress& progress);

public slots:
    void StepIt(int32_t lPort);
    void GetSubTotalProgressCount(const QString& bstrSubProcessName, int32_t dwTotalProgressCount, int32_t lPort);
    void GetTotalProgressCount(int32_t dwTotalProgressCount, int32_t lPort);
    void SetProcessStep(int32_t lProcess, int32_t nStatus, int32_t lPort);
    void SetSubProcessStep(int32_t lProcess, int32_t nStatus, int32_t lPort);

private:
    Progress& m_progress;
};

} // namespace tessaly
