// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The model: the object that stands for one connected handset and does all
// work on it. A host writes one by deriving from IBaseModel, and hands it to
// the panel with Tessaly::SetModelDLL.
//
//     class MyHandset : public IBaseModel {
//         void NVRead() override
//         {
//             Q_EMIT GetTotalProgressCount(items, port);
//             for (...) { panel.AddItemToGrd(...); Q_EMIT StepIt(port); }
//         }
//         ...
//     };
//
// The panel hands no item data to the three commands: whoever carries one out
// reads and writes the values through the panel's public methods. A command
// returns when it is over; the panel's controls change while it runs, from the
// events, which the model raises on the panel's thread, from inside the call.
// A command or question fails by throwing TessalyError with a number and a
// description; the panel reports it, and any other exception with its text.
//
// The host owns the model. The panel holds it while bound and never deletes
// it; a model deleted while bound leaves the panel as it is without one.
#pragma once

#include <tessaly/TessalyError.h>
#include <tessaly/tessaly_export.h>

#include <QObject>
#include <QString>

#include <cstdint>

// The events a model raises while a command runs; the panel shows them as its
// progress bar and percentage. `lPort` is the model's port number.
class TESSALY_EXPORT IBaseModelEvents : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

Q_SIGNALS:
    // One step of the current sub-process is done.
    void StepIt(int32_t lPort);
    // A sub-process begins, of so many steps.
    void GetSubTotalProgressCount(const QString& bstrSubProcessName, int32_t dwTotalProgressCount, int32_t lPort);
    // The command has so many steps in all.
    void GetTotalProgressCount(int32_t dwTotalProgressCount, int32_t lPort);
    void SetProcessStep(int32_t lProcess, int32_t nStatus, int32_t lPort);
    void SetSubProcessStep(int32_t lProcess, int32_t nStatus, int32_t lPort);
};

class TESSALY_EXPORT IBaseModel : public IBaseModelEvents {
    Q_OBJECT
public:
    using IBaseModelEvents::IBaseModelEvents;

    // The NV Read command: fills the panel from the handset.
    virtual void NVRead() = 0;
    // The name of the connected model.
    virtual void GetModelName(QString& name) = 0;
    // The number of the COM port as text, without the word "COM".
    virtual void GetPortNumber(QString& port) = 0;
    // The NV Write command: writes the panel's values to the handset.
    virtual void NVWrite() = 0;
    // The Restore command: puts back the values of the last read.
    virtual void NVRestore() = 0;
};
