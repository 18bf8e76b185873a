// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Two backups compared without halvane: items by address and files by path,
// what differs, was added or is gone, the catalogue's values of both sides,
// and the entries that only look different (an item kept as lacking beside
// one left out, a status without bytes, a file's time).
#include "link/BackupDiff.h"
#include "model/Catalogue.h"

#include <gtest/gtest.h>

using namespace tessaly;
using namespace tessaly::model;
using link::Change;

namespace {

NvEntry Entry(NvAddress address, const QByteArray& head, NvStatus status = NvStatus::Done)
{
    NvEntry entry{address, status, {}};
    std::copy(head.begin(), head.end(), entry.data.begin());
    return entry;
}

link::Backup Full(std::vector<NvEntry> items, std::vector<EfsEntry> files = {})
{
    link::Backup backup = link::Backup::FromItems(std::move(items));
    backup.files = std::move(files);
    return backup;
}

const NvAddress Mdn{178, 0};
const NvAddress HomeSid{259, 1};
const NvAddress Banner{71, -1};

} // namespace

TEST(BackupDiffTest, ItemsDifferAddedGoneOrOfAnotherStatusWithTheCataloguesValuesSideBySide)
{
    const link::Backup before = Full({
        Entry({0, -1}, QByteArray::fromHex("c4213a8f")),
        Entry(Mdn, QByteArray("\0" "8585550143", 11)),
        // Home SID, its first two columns: 4139 and 4140.
        Entry(HomeSid, QByteArray::fromHex("012b100000" "2c10")),
        Entry(Banner, "Halvane"),
        Entry({4000, -1}, "gone"),
        Entry({4001, -1}, "busy", NvStatus::Busy),
        Entry({4002, -1}, {}, NvStatus::Inactive),
    });
    const link::Backup after = Full({
        Entry({0, -1}, QByteArray::fromHex("c4213a8f")),
        Entry(Mdn, QByteArray("\0" "8585550199", 11)),
        Entry(HomeSid, QByteArray::fromHex("012b100000" "2d10")),
        Entry(Banner, {}, NvStatus::NotValid),
        Entry({4001, -1}, "echoed other bytes", NvStatus::Busy),
        Entry({5000, -1}, "new"),
    });
    const link::BackupDifference difference = link::CompareBackups(before, after);
    EXPECT_FALSE(difference.otherHandsets);
    ASSERT_EQ(difference.items.size(), 5u) << "4001: the same status, no bytes to compare; 4002: lacking either way";

    const link::ItemDifference& banner = difference.items[0];
    EXPECT_EQ(banner.address, Banner);
    EXPECT_EQ(banner.change, Change::Differs);
    ASSERT_EQ(banner.values.size(), 1u);
    EXPECT_EQ(banner.values[0].before, "Halvane");
    EXPECT_EQ(banner.values[0].after, std::nullopt) << "not held: no value";

    const link::ItemDifference& mdn = difference.items[1];
    EXPECT_EQ(mdn.address, Mdn);
    ASSERT_EQ(mdn.values.size(), 1u);
    EXPECT_EQ(mdn.values[0].name, "Mobile Directory Number (MDN)");
    EXPECT_EQ(mdn.values[0].before, "8585550143");
    EXPECT_EQ(mdn.values[0].after, "8585550199");

    const link::ItemDifference& sid = difference.items[2];
    EXPECT_EQ(sid.address, HomeSid);
    ASSERT_EQ(sid.values.size(), 1u) << "only the column that differs";
    EXPECT_EQ(sid.values[0].name, "Home SID (column 2)");
    EXPECT_EQ(sid.values[0].before, "4140");
    EXPECT_EQ(sid.values[0].after, "4141");

    EXPECT_EQ(difference.items[3].address, (NvAddress{4000, -1}));
    EXPECT_EQ(difference.items[3].change, Change::Gone);
    EXPECT_TRUE(difference.items[3].values.empty()) << "unknown to the catalogue";
    EXPECT_EQ(difference.items[4].address, (NvAddress{5000, -1}));
    EXPECT_EQ(difference.items[4].change, Change::Added);
    EXPECT_EQ(difference.items[4].after->data[0], 'n');
    EXPECT_EQ(difference.itemsCompared, 8u);
}

TEST(BackupDiffTest, FilesDifferInBytesModeOrTargetAndTheirTimesAreNotCompared)
{
    const std::vector<EfsEntry> before = {
        {"/nv", 0040755, 1, {}, {}},
        {"/nv/band_pref", 0100644, 2, QByteArray::fromHex("0102030405"), {}},
        {"/nv/policy", 0100644, 3, "abc", {}},
        {"/nv/link", 0120777, 4, {}, "band_pref"},
        {"/nv/gone", 0100644, 5, "x", {}},
    };
    const std::vector<EfsEntry> after = {
        {"/nv", 0040755, 100, {}, {}},
        {"/nv/band_pref", 0100644, 2, QByteArray::fromHex("01ff03ee0506"), {}},
        {"/nv/policy", 0100600, 3, "abc", {}},
        {"/nv/link", 0120777, 4, {}, "policy"},
        {"/nv/new", 0040700, 6, {}, {}},
    };
    const link::BackupDifference difference = link::CompareBackups(Full({}, before), Full({}, after));
    ASSERT_EQ(difference.files.size(), 5u) << "/nv: its time alone";
    const link::FileDifference& bytes = difference.files[0];
    EXPECT_EQ(bytes.path, "/nv/band_pref");
    EXPECT_EQ(bytes.differingBytes, 2);
    EXPECT_EQ(bytes.firstDifference, 1);
    EXPECT_EQ(difference.files[1].path, "/nv/gone");
    EXPECT_EQ(difference.files[1].change, Change::Gone);
    EXPECT_EQ(difference.files[2].path, "/nv/link");
    EXPECT_EQ(difference.files[3].path, "/nv/new");
    EXPECT_EQ(difference.files[3].change, Change::Added);
    EXPECT_EQ(difference.files[4].path, "/nv/policy");
    EXPECT_EQ(difference.files[4].differingBytes, 0) << "its mode alone";
    EXPECT_EQ(difference.filesComparedCount, 6u);
}

TEST(BackupDiffTest, NvReadBackupBesideFullOneComparesTheCataloguesItemsAndNoFiles)
{
    link::Backup read = Full({Entry({0, -1}, QByteArray::fromHex("c4213a8f")), Entry(Banner, "Halvane")});
    read.full = false;
    const link::Backup full = Full({Entry({0, -1}, QByteArray::fromHex("c4213a8f")), Entry(Banner, "Halvane"),
                                    Entry({4000, -1}, "beyond the catalogue")},
                                   {{"/nv", 0040755, 1, {}, {}}});
    link::BackupDifference difference = link::CompareBackups(read, full);
    EXPECT_TRUE(difference.same());
    EXPECT_TRUE(difference.catalogueItemsAlone);
    EXPECT_FALSE(difference.filesCompared);

    link::Backup other = full;
    other.esn = QStringLiteral("8F3A21C5");
    difference = link::CompareBackups(full, other);
    EXPECT_TRUE(difference.otherHandsets);
    EXPECT_TRUE(difference.same()) << "told, and compared all the same";
}
