// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

/**
 * \file BaseModel.h
 * \brief The model interface, IBaseModel, and the events it raises,
 * IBaseModelEvents.
 */
#pragma once

#include <tessaly/TessalyError.h>
#include <tessaly/tessaly_export.h>

#include <QObject>
#include <QString>

#include <cstdint>

/**
 * \brief The events a model raises while a command runs; the panel shows
 * them as its progress bar and percentage.
 *
 * The panel connects to these signals when a model is bound
 * (Tessaly::SetModelDLL) and leaves them when the model is replaced or
 * dropped. A model emits them on the panel's thread, from inside the command
 * the panel called: each is drawn at once, before the emit returns.
 *
 * Every signal carries `lPort`, the model's port number; the panel passes it
 * over.
 *
 * The bar counts steps: GetTotalProgressCount (or GetSubTotalProgressCount)
 * sets how many make 100 %, and each StepIt adds one. The percentage shown is
 * the whole percentage of the count in the total, redrawn when it changes;
 * at 100 the caption reads "Complete".
 */
class TESSALY_EXPORT IBaseModelEvents : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

Q_SIGNALS:
    /**
     * \brief One step of the current sub-process is done.
     *
     * Adds one to the count and redraws the bar when the whole percentage
     * changes. A step before any total is set tells the user "Sub Total
     * Count Not Set" in the panel's message box.
     * \param lPort The model's port number.
     */
    void StepIt(int32_t lPort);
    /**
     * \brief A sub-process begins, of so many steps.
     *
     * The bar's total becomes `dwTotalProgressCount`, and SetProcessStep or
     * SetSubProcessStep with status 2 later sets the count to it.
     * \param bstrSubProcessName The sub-process's name; the panel does not
     *        show it.
     * \param dwTotalProgressCount The number of StepIt signals that make
     *        100 %.
     * \param lPort The model's port number.
     */
    void GetSubTotalProgressCount(const QString& bstrSubProcessName, int32_t dwTotalProgressCount, int32_t lPort);
    /**
     * \brief The command has so many steps in all.
     *
     * Emit it before the first StepIt of a command.
     * \param dwTotalProgressCount The number of StepIt signals that make
     *        100 %.
     * \param lPort The model's port number.
     */
    void GetTotalProgressCount(int32_t dwTotalProgressCount, int32_t lPort);
    /**
     * \brief A process of the command starts or ends.
     *
     * A start (status 1) sets the count back to 0; an end (status 2) sets it
     * to the last sub-process's total. Nothing is drawn until the next
     * StepIt; other statuses change nothing.
     * \param lProcess The process's number; the panel does not show it.
     * \param nStatus 1 when the process starts, 2 when it ends.
     * \param lPort The model's port number.
     */
    void SetProcessStep(int32_t lProcess, int32_t nStatus, int32_t lPort);
    /**
     * \brief A sub-process starts or ends; the panel takes it as
     * SetProcessStep.
     * \param lProcess The sub-process's number; the panel does not show it.
     * \param nStatus 1 when the sub-process starts, 2 when it ends.
     * \param lPort The model's port number.
     */
    void SetSubProcessStep(int32_t lProcess, int32_t nStatus, int32_t lPort);
};

/**
 * \brief The model: the object that stands for one connected handset and
 * does all work on it.
 *
 * A host writes one by deriving from IBaseModel, and hands it to the panel
 * with Tessaly::SetModelDLL. The panel's command bar calls NVRead, NVWrite and
 * NVRestore when the user clicks NV Read, NV Write and Restore (NV Write and
 * Restore only once an NV Read has run), and the binding asks GetModelName and
 * GetPortNumber for the label above the page tree.
 *
 * \snippet host.cpp model
 *
 * The panel hands no item data to the three commands: whoever carries one out
 * reads and writes the values through the panel's public methods. A command
 * returns when it is over; the panel's controls change while it runs, from the
 * events, which the model raises on the panel's thread, from inside the call.
 * A command or question fails by throwing TessalyError with a number and a
 * description; the panel reports it, and any other exception with its text.
 * A command that throws stops the command bar: its buttons answer no more
 * clicks.
 *
 * The host owns the model. The panel holds it while bound and never deletes
 * it; a model deleted while bound leaves the panel as it is without one.
 */
class TESSALY_EXPORT IBaseModel : public IBaseModelEvents {
    Q_OBJECT
public:
    using IBaseModelEvents::IBaseModelEvents;

    /**
     * \brief The NV Read command: fills the panel from the handset.
     *
     * Sets each page's item count, writes the item titles and values
     * (Tessaly::SetNVFieldItemCount, Tessaly::AddItemToGrid2,
     * Tessaly::AddItemToGrd), the basic information and the profiles, and
     * reports its progress by the events of IBaseModelEvents.
     * \throws TessalyError when the read fails; the panel reports it.
     */
    virtual void NVRead() = 0;
    /**
     * \brief The name of the connected model, for the label above the tree.
     * \param[out] name Set to the model's name.
     * \throws TessalyError when the model cannot tell; the panel reports it.
     */
    virtual void GetModelName(QString& name) = 0;
    /**
     * \brief The number of the COM port as text, without the word "COM".
     *
     * The label reads the name, two spaces and the port in brackets:
     * "SIM-800  (COM7)" for the port "7".
     * \param[out] port Set to the port's number.
     * \throws TessalyError when the model cannot tell; the panel reports it.
     */
    virtual void GetPortNumber(QString& port) = 0;
    /**
     * \brief The NV Write command: writes the panel's values to the handset.
     *
     * Reads the values back with Tessaly::GetItemFromGrd.
     * \throws TessalyError when the write fails; the panel reports it.
     */
    virtual void NVWrite() = 0;
    /**
     * \brief The Restore command: puts back the values of the last read.
     * \throws TessalyError when the restore fails; the panel reports it.
     */
    virtual void NVRestore() = 0;
};
