// NV items on disk beyond the catalogue: the XQCN file, against bytes written
// out here as the open tools lay it out, its round trip, and a damaged file
// of every kind refused whole. (The memory file keeps such items with every
// byte in the full backup's run against the emulator.)
#include "model/Xqcn.h"

#include <gtest/gtest.h>

using namespace tessaly::model;

namespace {

// Items at both ends of the numbering, data ending in zero bytes and in a
// non-zero byte, an indexed item and an item the handset lacks.
std::vector<NvEntry> EdgeItems()
{
    std::vector<NvEntry> items;
    NvEntry first{{0, -1}, NvStatus::Done, {}};
    first.data = {0xC4, 0x21, 0x3A, 0x8F}; // then zeros to the end
    NvEntry indexed{{178, 1}, NvStatus::Done, {}};
    indexed.data = {1, '8', '5', '8'};
    NvEntry last{{65535, -1}, NvStatus::Done, {}};
    last.data.fill(0x7E); // the frame flag, in every byte
    last.data[127] = 0x01;
    NvEntry lacking{{65534, -1}, NvStatus::NotValid, {}};
    items = {first, indexed, lacking, last};
    return items;
}

// An XQCN file with one NV_ITEM_ARRAY stream of `value`, as qfenix writes
// them: single quotes, the Windows-1252 declaration, hex bytes upper case.
QByteArray XqcnWith(const QByteArray& value, qsizetype length = -1)
{
    const qsizetype bytes = length >= 0 ? length : (value.size() + 1) / 3;
    return "<?xml version=\"1.0\" encoding=\"Windows-1252\" ?>\n<Storage Name='backup.xqcn'>\n"
           "  <Storage Name='00000000'>\n    <Storage Name='default'>\n      <Storage Name='NV_NUMBERED_ITEMS'>\n"
           "        <Stream Length='"
        + QByteArray::number(bytes) + "' Name='NV_ITEM_ARRAY' Value='" + value
        + "'/>\n      </Storage>\n    </Storage>\n  </Storage>\n</Storage>\n";
}

// One record: size 136, 1, the item as 32 bits, then 128 bytes of `fill`.
QByteArray Record(const char* head, char fill = 0)
{
    return (QByteArray::fromHex(head) + QByteArray(128, fill)).toHex(' ').toUpper();
}

} // namespace

TEST(Xqcn, RecordsAreLaidOutAsOtherToolsReadThem)
{
    const QByteArray text = WriteXqcn(EdgeItems());
    // Item 0 first, then item 178 with its index in the first data byte.
    EXPECT_TRUE(text.contains("Name=\"NV_ITEM_ARRAY\" Value=\"88 00 01 00 00 00 00 00 C4 21 3A 8F 00"));
    EXPECT_TRUE(text.contains("88 00 01 00 B2 00 00 00 01 38 35 38 00"));
    EXPECT_TRUE(text.contains("88 00 01 00 FF FF 00 00 7E 7E"));
    EXPECT_TRUE(text.contains("Length=\"408\"")) << "three records held; the lacking item is not among them";

    // A file of another tool: two records, item 0x1234 and item 0x0102.
    std::vector<NvEntry> read;
    const QByteArray other = XqcnWith(Record("8800010034120000", 0x55) + ' ' + Record("8800010002010000"));
    ASSERT_EQ(ReadXqcn(other, {}, read), "");
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(std::tuple(read[0].address, read[0].data[127], read[1].address),
              std::tuple(NvAddress{0x1234, -1}, 0x55, NvAddress{0x0102, -1}));
}

TEST(Xqcn, RoundTripKeepsItemsBytesAndStatuses)
{
    std::vector<NvEntry> read;
    ASSERT_EQ(ReadXqcn(WriteXqcn(EdgeItems()), {178}, read), "");
    ASSERT_EQ(read.size(), EdgeItems().size());
    std::map<NvAddress, NvEntry> byAddress;
    for (const NvEntry& entry : read)
        byAddress[entry.address] = entry;
    for (const NvEntry& entry : EdgeItems()) {
        ASSERT_TRUE(byAddress.count(entry.address)) << qPrintable(Describe(entry.address));
        EXPECT_EQ(byAddress[entry.address].status, entry.status);
        EXPECT_EQ(byAddress[entry.address].data, entry.data) << qPrintable(Describe(entry.address));
    }
}

TEST(Xqcn, DamagedFileIsRefusedWholeNamingWhatAndWhere)
{
    const QByteArray good = Record("8800010001000000");
    struct Case {
        QByteArray file;
        const char* told;
    };
    const Case cases[] = {
        {XqcnWith(good).chopped(20), "not well-formed XML"},
        {XqcnWith(good).replace("NV_NUMBERED_ITEMS", "NV_ITEMS"), "no numbered-items stream"},
        {XqcnWith(good + ' ' + Record("8700010002000000")), "record 2 (byte 136) says it is 135 bytes"},
        {XqcnWith(good + " 00"), "137 bytes, not a whole number of 136-byte records"},
        {XqcnWith(good, 130), "holds 136 bytes where its Length says \"130\""},
        {XqcnWith(good.left(30) + "G0" + good.mid(32)), "holds \"G0\" at byte 10"},
        // One digit or three are no byte, though the count of bytes agrees.
        {XqcnWith(good.left(30) + "0" + good.mid(32), 136), "holds \"0\" at byte 10"},
        {XqcnWith(good.left(30) + "100" + good.mid(32), 136), "holds \"100\" at byte 10"},
        {XqcnWith(good + ' ' + good), "lists NV item 1 twice"},
    };
    for (const Case& c : cases) {
        std::vector<NvEntry> read{NvEntry{}};
        const QString problem = ReadXqcn(c.file, {}, read);
        EXPECT_TRUE(problem.contains(QLatin1String(c.told))) << qPrintable(problem) << " for " << c.told;
        EXPECT_EQ(read.size(), 1u) << "nothing taken from a refused file";
    }
    std::vector<NvEntry> read;
    EXPECT_TRUE(ReadXqcn(XqcnWith(good), {}, read).isEmpty()) << "the good record alone is taken";
}
