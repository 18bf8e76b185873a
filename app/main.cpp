// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane: the phone service tool's host window around the Tessaly panel,
// bound to a simulated handset whose NV memory is kept in a file between
// runs, or to a real handset on a serial port with --port. Without a display,
// or with --screenshot FILE, it runs an NV Read, renders the panel to a PNG
// file, prints the file's path and exits; every box meanwhile is told on
// standard error. --read and --restore-backup work on a real handset without
// a window; --read --all-items keeps every NV item, --info tells what the
// handset says of itself, --efs-list, --efs-get and --efs-put work with its
// file system, --nv-read and --nv-write one NV item by its number, --prl-get
// and --prl-put its roaming list (--prl-show shows a roaming list file),
// --diff compares two backups, --convert turns an NV file into an XQCN file
// or back, --list-ports tells the serial ports and --port auto takes the one
// where a handset answers; --port with a list of devices, or all, works on a
// bench of handsets at once. With --message TEXT it shows the panel's own
// message box, with --edit ROW,COLUMN the editor of that cell, as a double
// click opens it. --bench shows every handset on the machine's ports in the
// bench window, to back them up at once.
#include "Convert.h"
#include "Files.h"
#include "Diff.h"
#include "FullBackup.h"
#include "Handset.h"
#include "ItemByNumber.h"
#include "NvItemsPage.h"
#include "Options.h"
#include "PortChoice.h"
#include "Prl.h"
#include "Restore.h"
#include "RoamingListPages.h"
#include "Screenshot.h"
#include "UnattendedDialogs.h"
#include "bench/BenchCommand.h"
#include "bench/BenchWindowCommand.h"

#include <tessaly/MessageBox.h>
#include <tessaly/Tessaly.h>

#include <QApplication>
#include <QDialog>
#include <QMessageBox>

#include <cstdio>

namespace {

bool HasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        || !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

// Platforms that draw into memory only: nothing would ever be seen.
bool DrawsNowhere()
{
    const QString platform = QGuiApplication::platformName();
    return platform == QLatin1String("offscreen") || platform == QLatin1String("minimal");
}

} // namespace

int main(int argc, char** argv)
{
    if (!HasDisplay())
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Halvane"));
    QApplication::setApplicationVersion(QStringLiteral(HALVANE_VERSION));
    const std::optional<halvane::Options> parsed = halvane::ParseOptions(app);
    if (!parsed)
        return 2;
    halvane::Options options = *parsed; // its port made a device once chosen
    if (options.listPorts)
        return halvane::ListPortsCommand(options);
    if (!options.convertFrom.isEmpty())
        return halvane::Convert(options.convertFrom, options.convertTo);
    if (!options.diffFrom.isEmpty())
        return halvane::DiffBackups(options);
    if (!options.prlShow.isEmpty())
        return halvane::ShowPrl(options);
    // The item and its bytes are checked before a port is chosen: nothing is
    // sent to a handset for a request that would be refused.
    std::optional<halvane::ItemWork> itemWork;
    if (!options.nvRead.isEmpty() || !options.nvWrite.isEmpty()) {
        itemWork = halvane::CheckItemWork(options);
        if (!itemWork)
            return 2;
    }
    const bool unattended
        = DrawsNowhere() || !options.screenshot.isEmpty() || options.read || options.info
          || !options.restoreBackup.isEmpty() || options.fileWork != halvane::Options::FileWork::None || itemWork
          || !options.prlGet.isEmpty() || !options.prlPut.isEmpty();
    halvane::UnattendedDialogs dialogs;
    if (unattended)
        app.installEventFilter(&dialogs);
    if (options.bench)
        return halvane::BenchWindowCommand(options, unattended);

    // A port that stands in the way is told on the command line and, with a
    // person there, in a box.
    const auto fail = [unattended](const QString& failure) {
        std::fprintf(stderr, "halvane: %s\n", qPrintable(failure));
        if (!unattended)
            QMessageBox::critical(nullptr, QStringLiteral("Halvane"), failure);
        return 1;
    };
    QString failure;
    if (options.manyPorts()) {
        const std::optional<QStringList> devices = halvane::ChooseBenchPorts(options, failure);
        if (!devices)
            return fail(failure);
        return halvane::RunBenchCommand(options, *devices);
    }
    if (!options.port.isEmpty()) {
        const std::optional<QString> node = halvane::ChoosePort(options, failure);
        if (!node)
            return fail(failure);
        options.port = *node;
    }
    if (options.info)
        return halvane::PrintIdentity(options);
    if (itemWork)
        return options.nvWrite.isEmpty() ? halvane::ReadItemByNumber(options, *itemWork)
                                         : halvane::WriteItemByNumber(options, *itemWork);
    if (!options.prlGet.isEmpty())
        return halvane::GetPrl(options);
    if (!options.prlPut.isEmpty())
        return halvane::PutPrl(options);
    switch (options.fileWork) {
    case halvane::Options::FileWork::List: return halvane::ListFiles(options);
    case halvane::Options::FileWork::Get: return halvane::GetFile(options);
    case halvane::Options::FileWork::Put: return halvane::PutFile(options);
    case halvane::Options::FileWork::None: break;
    }
    if (!options.restoreBackup.isEmpty())
        return halvane::RestoreFromBackup(options);
    if (options.read && options.allItems)
        return halvane::SaveFullBackup(options);

    // The panel draws its own title bar: the window has no other.
    QWidget window(nullptr, Qt::FramelessWindowHint);
    window.setWindowTitle(QStringLiteral("Halvane"));
    Tessaly panel(&window);
    window.setFixedSize(panel.size());
    const std::unique_ptr<halvane::Handset> handset = halvane::OpenHandset(options, panel, unattended, failure);
    if (!handset)
        return fail(failure);
    if (options.read)
        return halvane::ReadToBackup(*handset);

    const auto roamingPages = halvane::AddRoamingListPages(panel, *handset);
    const auto itemsPage = halvane::AddNvItemsPage(panel, *handset, options);
    panel.SetModelDLL(handset->model.get());
    window.show();
    if (!handset->problem.isEmpty())
        QMessageBox::warning(&window, QStringLiteral("Halvane"), handset->problem);
    if (unattended)
        return halvane::RenderScreenshot(options, panel, *handset->model, dialogs);
    if (!halvane::ShowAsAsked(options, panel))
        return 2;
    if (options.hasMessage) {
        const std::unique_ptr<QDialog> box(TessalyCreateMessageBox(&panel, options.message));
        box->exec();
    }
    return app.exec();
}
