// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane against a handset that reports all the while: event reports and
// log packets between and before its replies change nothing in what a full
// read, a restore or a listing of the file system gives.
#include "model/Catalogue.h"
#include "model/NvFile.h"
#include "support/Programs.h"

#include <gtest/gtest.h>

using namespace tessaly::model;

namespace {

class HalvaneReportsTest : public HandsetRunTest {
protected:
    // The emulator again on the state it kept, with `options`.
    QString restart(const QStringList& options) { return emulator.startOn(state(), {}, options); }

    // The full backup of the handset on `port` and the listing of its root
    // folder.
    std::pair<Items, QString> readAll(const QString& port)
    {
        const Outcome read = halvane({"--port", port, "--read", "--all-items", "--no-files"});
        EXPECT_EQ(read.status, 0) << qPrintable(read.err);
        const Outcome listed = halvane({"--port", port, "--efs-list", "/", "--json"});
        EXPECT_EQ(listed.status, 0) << qPrintable(listed.err);
        return {HandsetRunTest::read(read.out.section(QLatin1Char('\n'), 0, 0), NvFileKind::FullBackup), listed.out};
    }
};

} // namespace

TEST_F(HalvaneReportsTest, EventsAndLogsBetweenRepliesChangeNothingInAReadARestoreOrAListing)
{
    Items items;
    for (const auto& [address, data] : tessaly::model::Catalogue::BuiltIn().factory())
        items[address] = {address, NvStatus::Done, data};
    const auto [quietItems, quietListing] = readAll(start(items));
    ASSERT_FALSE(quietItems.empty());

    const QString port = restart({"--events", "--logs", "--report-pace", "2"});
    const auto [items2, listing2] = readAll(port);
    EXPECT_TRUE(items2 == quietItems) << "the same items, bytes and statuses";
    EXPECT_EQ(listing2, quietListing);

    const QStringList kept = backups();
    ASSERT_FALSE(kept.isEmpty());
    const Outcome restore = halvane({"--port", port, "--restore-backup", kept.first()});
    EXPECT_EQ(restore.status, 0) << qPrintable(restore.err);
    EXPECT_FALSE(restore.out.contains(QLatin1String("failed"))) << qPrintable(restore.out);
    EXPECT_TRUE(restore.out.contains(QLatin1String("unchanged"))) << qPrintable(restore.out);
}
