// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The bench window: every handset found on the machine's ports as a row of a
// table, with its port, model, ESN and MEID, software version, state,
// progress and last backup. "Back up" takes a full backup of the chosen
// handsets at once, each on its own link, a fault on one ending its own run
// only; "Open" asks for the panel of one handset in a process of its own.
#pragma once

#include "Options.h"
#include "bench/DeviceWatch.h"

#include <QWidget>

#include <memory>

class QPushButton;
class QTableView;

namespace halvane {

class BenchTable;

class BenchWindow : public QWidget {
    Q_OBJECT
public:
    // `options` give the probe's and the backups' reply times, the SPC and
    // the full backup's range; backups are looked for in `backups`.
    BenchWindow(const Options& options, const QString& backups, QWidget* parent = nullptr);
    ~BenchWindow() override;

    // Shows the handsets of the ports `lister` gives, now and as they come
    // and go.
    void watch(const DeviceWatch::Lister& lister);
    // Shows the handsets on these ports alone (devices or nodes), once probed.
    void probe(const QStringList& ports);

    BenchTable& table() const;
    QTableView& view() const;
    QPushButton& backUpButton() const;
    QPushButton& openButton() const;
    QPushButton& lookAgainButton() const;
    // Wide enough for every column and a backup's path, tall enough for
    // eight rows.
    QSize sizeHint() const override;
    // Whether backups are under way.
    bool working() const;

    // Backs up the chosen rows that are not being read or gone.
    void backUpChosen();
    // Asks for the panel of the current row's handset.
    void openCurrent();
    // Probes again every free port that has no handset row.
    void lookAgain();

signals:
    // Every search of ports under way has ended.
    void searched();
    // The panel of the handset on `device` is asked for.
    void openRequested(const QString& device);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    struct Private;
    std::unique_ptr<Private> const d;
};

// Starts `halvane --port DEVICE` as a process of its own, with the reply
// time and SPC of `options`; false when it could not be started.
bool OpenPanelProcess(const QString& device, const Options& options);

} // namespace halvane
