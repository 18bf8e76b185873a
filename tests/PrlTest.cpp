// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The roaming list's codec against lists written out bit by bit in the test:
// the CRC, both layouts field by field, lists given back byte for byte and
// edited ones with their new size and CRC, and the damaged lists refused for
// why they are damaged.
#include "model/Prl.h"

#include "support/Packets.h"

#include <gtest/gtest.h>

using namespace tessaly::model;

namespace {

// An IS-683-A list of 26 bytes. PR_LIST_SIZE 26, PR_LIST_ID 0x1234, then
// bit-packed: PREF_ONLY 1, DEF_ROAM_IND 1, NUM_ACQ_RECS 3, NUM_SYS_RECS 2;
//   cellular CDMA standard channels: 0010, A_B 00 (A), PRI_SEC 11 (both);
//   PCS CDMA blocks: 0101, NUM_BLOCKS 010, BLOCK 000 (A), 010 (C);
//   PCS CDMA channels: 0110, NUM_CHANS 00001, CHAN 00000011001 (25);
//   SID 4139, NID_INCL 01, NID 1, PREF_NEG 1, GEO 0, PRI 1, ACQ_INDEX 1,
//   ROAM_IND 1;
//   SID 22, NID_INCL 00, PREF_NEG 0 (negative), GEO 1, ACQ_INDEX 0;
// six reserved bits, and PR_LIST_CRC 0xB73E.
const QByteArray Standard = Hex("001a1234 8080c00223541304 0c902b40006804 0400b08000 b73e");

// An extended list of 47 bytes. PR_LIST_SIZE 47, PR_LIST_ID 3000,
// CUR_SSPR_P_REV 3, PREF_ONLY 0, DEF_ROAM_IND 1, NUM_ACQ_RECS 3,
// NUM_COMMON_SUBNET_RECS 0, NUM_SYS_RECS 2, seven reserved bits; then
//   ACQ_TYPE 10 (generic 1x), LENGTH 5: NUM_CHANS 2, band 1 channel 25,
//   band 0 channel 283, reserved bits;
//   ACQ_TYPE 11 (generic HRPD), LENGTH 3: NUM_CHANS 1, band 1 channel 500;
//   ACQ_TYPE 13, which the standard does not define, LENGTH 2: AB CD;
//   SYS_RECORD_LENGTH 10, SYS_RECORD_TYPE 0, PREF_NEG 1, GEO 0, PRI 1,
//   ACQ_INDEX 0, NID_INCL 01, SID 4139, NID 7, ROAM_IND_INCL 1, ROAM_IND 0,
//   ASSOCIATION_INC 1, ASSOCIATION_TAG 5, PN_ASSOCIATION 1,
//   DATA_ASSOCIATION 0;
//   SYS_RECORD_LENGTH 8, SYS_RECORD_TYPE 1 (HRPD), PREF_NEG 1, GEO 1, PRI 0,
//   ACQ_INDEX 1, SUBNET_COMMON_INCLUDED 0, SUBNET_LSB_LENGTH 16, SUBNET_LSB
//   BEEF, ROAM_IND_INCL 0, ASSOCIATION_INC 1, ASSOCIATION_TAG 5,
//   PN_ASSOCIATION 0, DATA_ASSOCIATION 1;
// and PR_LIST_CRC 0x07C4.
const QByteArray Extended = Hex("002f0bb8 03 0080c0000100"
                                "0a05 1040c808d8  0b03 084fa0  0d02 abcd"
                                "50500240ac001e010580  40e00885f77a0a80"
                                "07c4");

// A list a handset gave, as quoted on a public forum in a question about
// this CRC: 49 bytes, nine acquisition records, three systems.
const QByteArray Handset = Hex("00313039000240031051c8498c6bb96ab074d8e1b86e14a3708994a3025d634784574115e00c0822bc81022b9c0a0698dd");

// `body` with its CRC after it.
QByteArray WithCrc(QByteArray body)
{
    const uint16_t crc = PrlCrc(body);
    body.append(char(crc >> 8));
    body.append(char(crc & 0xFF));
    return body;
}

} // namespace

TEST(PrlTest, CrcIsTheStandardsComplementedCrcOfAllOnesStart)
{
    // x^16 + x^12 + x^5 + 1 from all ones, complemented: 0xD64E is the
    // check value of "123456789" for this CRC in the catalogues of CRCs.
    EXPECT_EQ(PrlCrc("123456789"), 0xD64E);
    EXPECT_EQ(PrlCrc(Handset.chopped(2)), 0x98DD);
    EXPECT_EQ(PrlCrc(Standard.chopped(2)), 0xB73E);
}

TEST(PrlTest, StandardListIsReadFieldByField)
{
    const PrlDecoding decoding = DecodePrl(Standard);
    ASSERT_EQ(decoding.problem, "");
    ASSERT_TRUE(decoding.complete);
    const Prl& list = *decoding.list;
    EXPECT_EQ(list.layout, PrlLayout::Standard);
    EXPECT_EQ(decoding.sizeField, 26);
    EXPECT_EQ(list.listId, 0x1234);
    EXPECT_TRUE(list.preferredOnly);
    EXPECT_EQ(list.defaultRoaming, 1);
    ASSERT_EQ(list.acquisitions.size(), 3u);
    EXPECT_EQ(list.acquisitions[0].type, AcqCellularCdmaStandard);
    EXPECT_EQ(list.acquisitions[0].system, 0);
    EXPECT_EQ(list.acquisitions[0].primarySecondary, 3);
    EXPECT_EQ(list.acquisitions[1].blocks, (std::vector<uint8_t>{0, 2}));
    EXPECT_EQ(list.acquisitions[2].channels, (std::vector<PrlChannel>{{0, 25}}));
    ASSERT_EQ(list.systems.size(), 2u);
    const PrlSystem& home = list.systems[0];
    EXPECT_EQ(home.sid, 4139);
    EXPECT_EQ(home.nid, 1);
    EXPECT_TRUE(home.preferred);
    EXPECT_FALSE(home.sameRegion);
    EXPECT_TRUE(home.morePreferred);
    EXPECT_EQ(home.acquisitionIndex, 1);
    EXPECT_EQ(home.roamingIndicator, 1);
    const PrlSystem& barred = list.systems[1];
    EXPECT_EQ(barred.sid, 22);
    EXPECT_EQ(barred.nid, 65535) << "no NID: any";
    EXPECT_FALSE(barred.preferred);
    EXPECT_TRUE(barred.sameRegion);
    EXPECT_FALSE(barred.roamingIndicator) << "a negative system has no roaming indicator";

    // A handset's own list reads to its last bit.
    const PrlDecoding handset = DecodePrl(Handset);
    EXPECT_EQ(handset.problem, "");
    EXPECT_EQ(handset.list->acquisitions.size(), 9u);
    EXPECT_EQ(handset.list->systems.size(), 3u);
}

TEST(PrlTest, ExtendedListIsReadWithItsGenericRecordsAndUnknownTypeKept)
{
    const PrlDecoding decoding = DecodePrl(Extended);
    ASSERT_EQ(decoding.problem, "");
    const Prl& list = *decoding.list;
    EXPECT_EQ(list.layout, PrlLayout::Extended);
    EXPECT_EQ(list.listId, 3000);
    EXPECT_EQ(list.ssprRevision, 3);
    EXPECT_FALSE(list.preferredOnly);
    ASSERT_EQ(list.acquisitions.size(), 3u);
    EXPECT_EQ(list.acquisitions[0].type, AcqGeneric1x);
    EXPECT_EQ(list.acquisitions[0].channels, (std::vector<PrlChannel>{{1, 25}, {0, 283}}));
    EXPECT_EQ(list.acquisitions[1].channels, (std::vector<PrlChannel>{{1, 500}}));
    EXPECT_EQ(list.acquisitions[2].type, 13);
    EXPECT_EQ(list.acquisitions[2].unknown, Hex("abcd")) << "kept as it is, never guessed";
    EXPECT_EQ(PrlAcquisitionTypeName(13), "Unknown type 13");
    ASSERT_EQ(list.systems.size(), 2u);
    EXPECT_EQ(list.systems[0].sid, 4139);
    EXPECT_EQ(list.systems[0].nid, 7);
    EXPECT_EQ(list.systems[0].roamingIndicator, 0);
    EXPECT_EQ(list.systems[0].associationTag, 5);
    EXPECT_TRUE(list.systems[0].pnAssociation);
    EXPECT_EQ(list.systems[1].type, SysHrpd);
    EXPECT_EQ(list.systems[1].subnet, Hex("beef"));
    EXPECT_EQ(list.systems[1].acquisitionIndex, 1);
    EXPECT_FALSE(list.systems[1].roamingIndicator);
    EXPECT_TRUE(list.systems[1].dataAssociation);
}

TEST(PrlTest, ValidListsAreEncodedBackByteForByte)
{
    for (const QByteArray& bytes : {Standard, Extended, Handset})
        EXPECT_EQ(EncodePrl(*DecodePrl(bytes).list).toHex().toStdString(), bytes.toHex().toStdString());
}

TEST(PrlTest, EditedListGetsItsNewSizeAndCrc)
{
    for (const QByteArray& bytes : {Standard, Extended}) {
        Prl list = *DecodePrl(bytes).list;
        PrlSystem added;
        added.sid = 31092;
        added.nidIncluded = NidIncluded;
        added.nid = 65;
        added.sameRegion = true;
        added.roamingIndicator = 2;
        list.systems.push_back(added);
        // A channel more for the first record that lists channels.
        for (PrlAcquisition& record : list.acquisitions)
            if (!record.channels.empty()) {
                record.channels.push_back({uint8_t(record.channels[0].band), 1000});
                break;
            }
        list.listId = 4321;
        const QByteArray encoded = EncodePrl(list);
        const PrlDecoding again = DecodePrl(encoded);
        EXPECT_EQ(again.problem.toStdString(), "");
        EXPECT_EQ(again.sizeField, encoded.size());
        ASSERT_TRUE(again.list);
        EXPECT_EQ(*again.list, list);
    }
}

TEST(PrlTest, DamagedListsAreRefusedSayingWhy)
{
    EXPECT_TRUE(DecodePrl(Standard.first(9)).problem.contains("too short")) << "less than a header and CRC";
    EXPECT_FALSE(DecodePrl(Standard.first(9)).list);

    const PrlDecoding cut = DecodePrl(Standard.chopped(1));
    EXPECT_TRUE(cut.problem.contains("size field says 26 bytes, but the list is 25 bytes")) << qPrintable(cut.problem);
    EXPECT_FALSE(cut.list);
    EXPECT_TRUE(DecodePrl(Standard + '\0').problem.contains("size field"));

    // One bit changed in a SID: the list still reads, for a technician to
    // see, but its CRC tells it damaged.
    QByteArray damaged = Standard;
    damaged[12] = char(damaged[12] ^ 0x10);
    const PrlDecoding crc = DecodePrl(damaged);
    EXPECT_EQ(crc.problem, "The list's CRC is B73E, but its bytes give " + QString::number(crc.crc, 16).toUpper()
                               + ": the list is damaged.");
    EXPECT_TRUE(crc.list && crc.complete);

    // A list whose tables end before their counts say, with a right CRC.
    QByteArray counted = Standard.chopped(2);
    counted[7] = char(3); // NUM_SYS_RECS 3
    EXPECT_TRUE(DecodePrl(WithCrc(counted)).problem.contains("run past the end"));
}

TEST(PrlTest, UnknownAcquisitionTypeOfStandardListIsShownAndStopsTheRead)
{
    QByteArray body = Standard.chopped(2);
    body[9] = char(0xF4); // the second record's type: 1111
    const PrlDecoding decoding = DecodePrl(WithCrc(body));
    EXPECT_FALSE(decoding.complete);
    ASSERT_TRUE(decoding.list);
    ASSERT_EQ(decoding.list->acquisitions.size(), 2u);
    EXPECT_EQ(decoding.list->acquisitions[1].type, 15);
    EXPECT_TRUE(decoding.list->systems.empty());
    EXPECT_TRUE(decoding.problem.contains("Acquisition record 1 is of type 15, which the standard does not define"))
        << qPrintable(decoding.problem);
    EXPECT_TRUE(decoding.problem.contains("1 acquisition records after it and the 2 system records cannot be read"));
    // The generic records belong to the extended list alone.
    body[9] = char(0xA4);
    EXPECT_TRUE(DecodePrl(WithCrc(body)).problem.contains("type 10"));
}
