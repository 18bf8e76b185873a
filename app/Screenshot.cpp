// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "Screenshot.h"

#include "UserActions.h"

#include "model/SimulatedHandset.h"

#include <tessaly/MessageBox.h>
#include <tessaly/Tessaly.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileInfo>

#include <cstdio>
#include <memory>

namespace halvane {

bool ShowAsAsked(const Options& options, Tessaly& panel)
{
    if (!options.page.isEmpty() && !ClickTreeNode(panel, options.page)) {
        std::fprintf(stderr, "halvane: no page node \"%s\"; the nodes are: %s\n", qPrintable(options.page),
                     qPrintable(PageNodes(panel).join(QStringLiteral(", "))));
        return false;
    }
    if (!options.edit.isEmpty() && !OpenCellEditor(panel, options.edit)) {
        std::fprintf(stderr, "halvane: no value cell \"%s\" on the page on view\n", qPrintable(options.edit));
        return false;
    }
    return true;
}

int RenderScreenshot(const Options& options, Tessaly& panel, tessaly::model::SimulatedHandset& handset,
                     UnattendedDialogs& dialogs)
{
    ClickCommand(panel, 0); // no one else is there to press NV Read
    if (!handset.succeeded())
        return 1;
    dialogs.clear(); // the read's own boxes are told, not drawn
    panel.window()->activateWindow(); // as it is after a box closes, so that an opened editor takes the focus
    QApplication::processEvents();
    if (!ShowAsAsked(options, panel))
        return 2;
    const std::unique_ptr<QDialog> box(options.hasMessage ? TessalyCreateMessageBox(&panel, options.message) : nullptr);
    if (box)
        box->show();
    QApplication::processEvents(); // let the shown page lay itself out
    const QString file = options.screenshot.isEmpty() ? QDir::current().filePath(QStringLiteral("halvane.png"))
                                                      : options.screenshot;
    if (!(box ? RenderShaped(*box) : RenderWithPopups(panel, dialogs.seen())).save(file)) {
        std::fprintf(stderr, "halvane: cannot write %s\n", qPrintable(file));
        return 1;
    }
    std::printf("%s\n", qPrintable(QFileInfo(file).absoluteFilePath()));
    return 0;
}

} // namespace halvane
