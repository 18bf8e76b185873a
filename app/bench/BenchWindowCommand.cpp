// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "BenchWindowCommand.h"

#include "BenchWindow.h"
#include "PortChoice.h"

#include "link/Backup.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QMessageBox>

#include <cstdio>

namespace halvane {

int BenchWindowCommand(const Options& options, bool unattended)
{
    BenchWindow window(options, tessaly::link::BackupFolder());
    QObject::connect(&window, &BenchWindow::openRequested, &window, [&window, &options](const QString& device) {
        if (!OpenPanelProcess(device, options))
            QMessageBox::warning(&window, window.windowTitle(),
                                 QStringLiteral("The panel of %1 could not be started.").arg(device));
    });
    QEventLoop searching;
    QObject::connect(&window, &BenchWindow::searched, &searching, &QEventLoop::quit);
    if (options.port.isEmpty() || options.port == QLatin1String("all"))
        window.watch(Ports);
    else
        window.probe(options.port.split(QLatin1Char(','), Qt::SkipEmptyParts));
    window.resize(window.sizeHint());
    window.show();
    if (!unattended)
        return QApplication::exec();

    searching.exec();
    QApplication::processEvents(); // the rows laid out
    const QString file = options.screenshot.isEmpty() ? QDir::current().filePath(QStringLiteral("halvane-bench.png"))
                                                      : options.screenshot;
    if (!window.grab().save(file)) {
        std::fprintf(stderr, "halvane: cannot write %s\n", qPrintable(file));
        return 1;
    }
    std::printf("%s\n", qPrintable(QFileInfo(file).absoluteFilePath()));
    return 0;
}

} // namespace halvane
