// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "NvItemsPage.h"

#include "link/Backup.h"
#include "link/IdentityText.h"
#include "link/ItemScan.h"

#include <tessaly/Tessaly.h>

#include <QDir>

#include <cstdio>

namespace halvane {

using namespace tessaly;

QString NewestFullBackup(const QString& folder, const QString& esn)
{
    // "<ESN>-<yyyyMMdd-HHmmss>-full.json", or "-full-2.json" for a second one
    // of the same second: the names sort by time.
    QStringList names = QDir(folder).entryList({esn + QStringLiteral("-*-full*.json")}, QDir::Files, QDir::Name);
    for (auto name = names.crbegin(); name != names.crend(); ++name) {
        const QString path = QDir(folder).filePath(*name);
        try {
            const link::Backup backup = link::Backup::Load(path);
            if (backup.full && backup.esn.compare(esn, Qt::CaseInsensitive) == 0)
                return path;
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
        if (const QString path = esn.isEmpty() ? QString() : NewestFullBackup(folder, esn); !path.isEmpty()) {
            link::Backup backup = link::Backup::Load(path);
            progress(backup.items.size(), backup.items.size());
            return std::move(backup.items);
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
