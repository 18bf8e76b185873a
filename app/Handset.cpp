// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "Handset.h"

#include "link/Backup.h"
#include "link/HandsetIdentity.h"
#include "link/RoamingList.h"
#include "model/Catalogue.h"
#include "model/FileNvMemory.h"

#include <tessaly/Tessaly.h>

#include <QInputDialog>

#include <cstdio>

namespace halvane {

using namespace tessaly;

std::unique_ptr<Handset> OpenHandset(const Options& options, Tessaly& panel, bool unattended, QString& failure)
{
    auto handset = std::make_unique<Handset>();
    if (options.port.isEmpty()) {
        auto file = std::make_unique<model::FileNvMemory>(options.state, model::Catalogue::BuiltIn().factory());
        handset->problem = file->lastProblem();
        handset->memory = std::move(file);
        handset->model = std::make_unique<model::SimulatedHandset>(panel, *handset->memory);
        handset->model->setPace(options.pace);
        handset->roamingList = std::make_unique<model::FileRoamingList>(options.state + QStringLiteral(".prl"));
        return handset;
    }
    try {
        handset->line = std::make_unique<link::SerialLink>(options.port, options.replyTime);
    } catch (const TessalyError& error) {
        failure = error.description();
        return nullptr;
    }
    const QString spc = options.spc;
    QPointer<Tessaly> asker(&panel);
    const auto askSpc = [spc, unattended, asker] {
        if (!spc.isEmpty() || unattended || !asker)
            return spc;
        return QInputDialog::getText(asker->window(), QStringLiteral("Halvane"),
                                     QStringLiteral("The handset is locked. Its SPC (six digits):"));
    };
    auto live = std::make_unique<link::LiveNvMemory>(*handset->line, askSpc);
    handset->roamingList = std::make_unique<link::HandsetRoamingList>(*handset->line, 0, askSpc); // the first NAM's
    live->setBackupFolder(link::BackupFolder()); // every read of a real handset is kept
    handset->live = live.get();
    handset->memory = std::move(live);
    handset->model = std::make_unique<model::SimulatedHandset>(panel, *handset->memory);
    QString name = QStringLiteral("CDMA handset"); // until it answers: the first command tells why not
    try {
        const link::HandsetIdentity identity = link::QueryIdentity(*handset->line);
        name = identity.model;
        handset->model->setSoftwareVersion(identity.softwareVersion);
    } catch (const TessalyError&) {
    }
    handset->model->setIdentity(name, options.port);
    return handset;
}

int PrintIdentity(const Options& options)
{
    try {
        link::SerialLink line(options.port, options.replyTime);
        const link::HandsetIdentity identity = link::QueryIdentity(line);
        std::printf("Model: %s\nSoftware version: %s\nCompiled: %s\nReleased: %s\nESN: %08X\n",
                    qPrintable(identity.model), qPrintable(identity.softwareVersion), qPrintable(identity.compiled),
                    qPrintable(identity.released), identity.esn);
        if (!identity.meid.isEmpty())
            std::printf("MEID: %s\n", qPrintable(identity.meid));
        return 0;
    } catch (const TessalyError& error) {
        std::fprintf(stderr, "halvane: %s\n", qPrintable(error.description()));
        return 1;
    }
}

int ReadToBackup(Handset& handset)
{
    handset.model->NVRead();
    if (!handset.model->succeeded())
        return 1;
    std::printf("%s\n", qPrintable(handset.live->lastBackup()));
    return 0;
}

} // namespace halvane
