// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "NvItemsPage.h"

#include "link/Backup.h"
#include "link/IdentityText.h"
#include "link/ItemScan.h"

#include <tessaly/Tessaly.h>

#include <cstdio>

namespace halvane {

using namespace tessaly;

std::optional<link::Backup> NewestFullBackup(const QString& folder, const QString& esn)
{
    for (const link::KeptBackup& kept : link::KeptBackups(folder, esn)) {
        if (!kept.full)
            continue;
        try {
            link::Backup backup = link::Backup::Load(kept.path);
            if (backup.full && backup.esn.compare(esn, Qt::CaseInsensitive) == 0)
                return backup;
        } catch (const TessalyError& error) {
            std::fprintf(stderr, "halvane: %s\n", qPrintable(error.description())); // the next older, then
        }
    }
    return {};
}

std::unique_ptr<model::ItemsPage> AddNvItemsPage(Tessaly& panel, Handset& handset, const Options& options)
{
    const int16_t page = panel.AddTab(QStringLiteral("NV Items"), model::ItemsPage::Columns);
    auto itemsPage = std::make_unique<model::ItemsPage>(panel, page);
    if (!handset.line) {
        handset.model->setItemsPage(itemsPage.get()); // the memory's items, as read
        return itemsPage;
    }
    link::SerialLink& line = *handset.line;
    const int inFlight = options.inFlight;
    const std::chrono::milliseconds replyTime = options.replyTime;
    handset.model->setItemsPage(itemsPage.get(), [&line, inFlight, replyTime](const model::NvImage& read,
                                                                              const auto& progress) {
        const auto esnItem = read.find({model::EsnItem, -1});
        const QString esn = esnItem == read.end() ? QString() : link::EsnHex(esnItem->second);
        const QString folder = link::BackupFolder();
        if (std::optional<link::Backup> backup = esn.isEmpty() ? std::nullopt : NewestFullBackup(folder, esn)) {
            progress(backup->items.size(), backup->items.size());
            return std::move(backup->items);
        }
        link::ItemScan scan(line, inFlight, replyTime);
        scan.setProgress([&](const link::ScanProgress& at) { progress(at.done, at.total); });
        link::Backup backup = scan.run(0, 0xFFFF);
        backup.save(folder); // the next read lists from it
        return std::move(backup.items);
    });
    return itemsPage;
}

} // namespace halvane
