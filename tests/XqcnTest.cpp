// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// NV items and the handset's file system in an XQCN file, against bytes
// written out here as the open tools lay it out, their round trip, the
// streams passed over named, and a damaged file of every kind refused whole.
// (The memory file keeps items beyond the catalogue with every byte in the
// full backup's run against the emulator.)
#include "model/Xqcn.h"

#include <QRegularExpression>

#include <algorithm>

#include <gtest/gtest.h>

using namespace tessaly::model;

namespace tessaly::model {

// An entry as a failing test tells it.
void PrintTo(const EfsEntry& entry, std::ostream* out)
{
    *out << '{' << qPrintable(entry.path) << " mode 0" << std::oct << entry.mode << std::dec << " time " << entry.mtime
         << " bytes " << entry.data.first(std::min<qsizetype>(entry.data.size(), 16)).toHex().constData()
         << " target " << qPrintable(entry.target) << '}';
}

} // namespace tessaly::model

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

// A stream and a storage as qfenix writes them.
QByteArray Stream(const char* name, const QByteArray& bytes)
{
    return "<Stream Length='" + QByteArray::number(bytes.size()) + "' Name='" + name + "' Value='"
        + bytes.toHex(' ').toUpper() + "'/>\n";
}

QByteArray Storage(const char* name, const QByteArray& inside)
{
    return "<Storage Name='" + QByteArray(name) + "'>\n" + inside + "</Storage>\n";
}

// A path stream's bytes: the path ended by a NUL, after `header`.
QByteArray Path(const char* path, const char* header = "")
{
    return QByteArray::fromHex(header) + QByteArray(path) + '\0';
}

// An XQCN file of item 1 and `numbered` in NV_NUMBERED_ITEMS, and `beside` it
// in the storage "default".
QByteArray XqcnOf(const QByteArray& beside, const QByteArray& numbered = {})
{
    const QByteArray item = QByteArray::fromHex("8800010001000000") + QByteArray(128, 0);
    return "<?xml version=\"1.0\" encoding=\"Windows-1252\" ?>\n"
        + Storage("backup.xqcn",
                  Storage("00000000",
                          Storage("default", Storage("NV_NUMBERED_ITEMS", Stream("NV_ITEM_ARRAY", item) + numbered)
                                                 + beside))
                      + Stream("File_Version", QByteArray::fromHex("020000000000")));
}

// A storage of files: the path streams in EFS_Dir, the data in EFS_Data.
QByteArray Files(const char* storage, const QByteArray& paths, const QByteArray& data)
{
    return Storage(storage, Storage("EFS_Dir", paths) + Storage("EFS_Data", data));
}

// Entries of the handset's file system of every kind, in each storage of
// files, with times and modes of their own.
std::vector<EfsEntry> EdgeFiles()
{
    return {
        {"/nv", 0040755, 1700000000, {}, {}},
        {"/nv/item_files/modem/mmode/sms_domain_pref", 0160644, 1700000001, QByteArray::fromHex("01"), {}},
        {"/nv/item_files/rfnv/00020000", 0100755, -5, QByteArray::fromHex("007E7D00"), {}},
        {"/rfc/rfc_dsda_control_table.dat", 0100600, 0, QByteArray(3000, '\xA5'), {}},
        {"/nv/empty folder", 0040700, 2, {}, {}},
        {"/data/empty caf\u00e9", 0100644, 3, {}, {}},
        {"/nv/mode", 0120777, 4, {}, QStringLiteral("item_files/modem/mmode")},
    };
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
    XqcnContents contents;
    const QByteArray other = XqcnWith(Record("8800010034120000", 0x55) + ' ' + Record("8800010002010000"));
    ASSERT_EQ(ReadXqcn(other, {}, contents), "");
    const std::vector<NvEntry>& read = contents.entries;
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(std::tuple(read[0].address, read[0].data[127], read[1].address),
              std::tuple(NvAddress{0x1234, -1}, 0x55, NvAddress{0x0102, -1}));
}

TEST(Xqcn, FilesOfAnotherToolComeBackWholeAndWhatIsNotUnderstoodIsNamed)
{
    // As qfenix writes them: an RF calibration item in EFS_Backup, whose path
    // stream starts with 01 00 01 01 and the mode (0100755); a file of /rfc/
    // both there and in NV_Items; a provisioning file, without a mode.
    const QByteArray table("rfc table");
    const QByteArray file = XqcnOf(
        Files("EFS_Backup",
              Stream("00000000", Path("/nv/item_files/rfnv/00020000", "01000101ED810000"))
                  + Stream("00000001", Path("/rfc/rfc_dsda_control_table.dat", "01000101A4810000")),
              Stream("00000000", QByteArray::fromHex("7E00FF10")) + Stream("00000001", table))
            + Files("Provisioning_Item_Files", Stream("00000000", Path("/nv/item_files/modem/mmode/sms_domain_pref")),
                    Stream("00000000", QByteArray::fromHex("01")))
            + Files("NV_Items", Stream("00000000", Path("/rfc/rfc_dsda_control_table.dat")), Stream("00000000", table))
            // The handset's model and the tool that wrote the file: magic
            // 0xDEADD00D, 4 reserved bytes, then two texts each after its
            // 16-bit length.
            + Stream("Mobile_Property_Info", QByteArray::fromHex("0DD0ADDE00000000030053383004000000") + "Tool")
            + Storage("EFS_Backup", Stream("Extra", "x")),
        // The other subscriptions: one item in the first, the second empty.
        Stream("NV_ITEM_ARRAY_SIM_1", QByteArray::fromHex("8800010002000000") + QByteArray(128, 0))
            + Stream("NV_ITEM_ARRAY_SIM_2", {}));

    XqcnContents contents;
    ASSERT_EQ(ReadXqcn(file, {}, contents), "");
    ASSERT_EQ(contents.entries.size(), 1u);
    const std::vector<EfsEntry> files{
        {"/nv/item_files/rfnv/00020000", 0100755, 0, QByteArray::fromHex("7E00FF10"), {}},
        {"/rfc/rfc_dsda_control_table.dat", 0100644, 0, table, {}},
        {"/nv/item_files/modem/mmode/sms_domain_pref", 0100644, 0, QByteArray::fromHex("01"), {}},
    };
    EXPECT_EQ(contents.files, files);
    EXPECT_EQ(contents.passedOver,
              QStringList({"00000000/default/NV_NUMBERED_ITEMS/NV_ITEM_ARRAY_SIM_1",
                           "00000000/default/Mobile_Property_Info", "00000000/default/EFS_Backup/Extra"}))
        << "neither File_Version nor an empty stream";
}

TEST(Xqcn, FilesAreLaidOutInTheStreamsOtherToolsRead)
{
    QString text = QString::fromLatin1(WriteXqcn({}, EdgeFiles()));
    const QString compact = QString(text).remove(QRegularExpression(QStringLiteral("(?<=>)\\s+")));
    // EFS_Backup: the header 01 00 01 01, the mode (0100755) and the path;
    // the bytes in the stream of the same name beside it.
    EXPECT_TRUE(compact.contains(QLatin1String(
        "<Storage Name=\"EFS_Backup\"><Storage Name=\"EFS_Dir\"><Stream Length=\"37\" Name=\"00000000\" "
        "Value=\"01 00 01 01 ED 81 00 00 2F 6E 76 2F 69 74 65 6D 5F 66 69 6C 65 73 2F 72 66 6E 76 2F 30 30 30 32 30 30 "
        "30 30 00\"/>")))
        << qPrintable(text);
    EXPECT_TRUE(compact.contains(QLatin1String(
        "<Storage Name=\"EFS_Data\"><Stream Length=\"4\" Name=\"00000000\" Value=\"00 7E 7D 00\"/>")));
    // The other two: the path alone. A file of /rfc/ is in NV_Items too.
    EXPECT_TRUE(compact.contains(QLatin1String(
        "<Storage Name=\"Provisioning_Item_Files\"><Storage Name=\"EFS_Dir\"><Stream Length=\"43\" Name=\"00000000\" "
        "Value=\"2F 6E 76 2F 69 74 65 6D 5F 66 69 6C 65 73 2F 6D 6F 64 65 6D 2F 6D 6D 6F 64 65 2F 73 6D 73 5F 64 6F 6D "
        "61 69 6E 5F 70 72 65 66 00\"/>")));
    EXPECT_TRUE(compact.contains(QLatin1String(
        "<Storage Name=\"NV_Items\"><Storage Name=\"EFS_Dir\"><Stream Length=\"32\" Name=\"00000000\" "
        "Value=\"2F 72 66 63 2F 72 66 63 5F 64 73 64 61 5F 63 6F 6E 74 72 6F 6C 5F 74 61 62 6C 65 2E 64 61 74 00\"/>")));

    // Read as by a tool that passes halvane's own streams over: the files
    // alone, whole, with the modes of EFS_Backup and a plain file's elsewhere.
    text.remove(QRegularExpression(QStringLiteral("[^\\n]*Halvane_EFS_Entries[^\\n]*\\n")));
    XqcnContents contents;
    ASSERT_EQ(ReadXqcn(text.toLatin1(), {}, contents), "");
    const std::vector<EfsEntry> files{
        {"/nv/item_files/rfnv/00020000", 0100755, 0, QByteArray::fromHex("007E7D00"), {}},
        {"/rfc/rfc_dsda_control_table.dat", 0100600, 0, QByteArray(3000, '\xA5'), {}},
        {"/nv/item_files/modem/mmode/sms_domain_pref", 0100644, 0, QByteArray::fromHex("01"), {}},
        {"/data/empty caf\u00e9", 0100644, 0, {}, {}},
    };
    EXPECT_EQ(contents.files, files);
}

TEST(Xqcn, RoundTripKeepsItemsStatusesAndEveryFileEntry)
{
    XqcnContents contents;
    ASSERT_EQ(ReadXqcn(WriteXqcn(EdgeItems(), EdgeFiles()), {178}, contents), "");
    const std::vector<NvEntry>& read = contents.entries;
    ASSERT_EQ(read.size(), EdgeItems().size());
    std::map<NvAddress, NvEntry> byAddress;
    for (const NvEntry& entry : read)
        byAddress[entry.address] = entry;
    for (const NvEntry& entry : EdgeItems()) {
        ASSERT_TRUE(byAddress.count(entry.address)) << qPrintable(Describe(entry.address));
        EXPECT_EQ(byAddress[entry.address].status, entry.status);
        EXPECT_EQ(byAddress[entry.address].data, entry.data) << qPrintable(Describe(entry.address));
    }
    EXPECT_EQ(contents.files, EdgeFiles()) << "paths, kinds, modes, times, bytes, targets, in their order";
    EXPECT_EQ(contents.passedOver, QStringList()) << "halvane knows every stream it writes";
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
        XqcnContents read{{NvEntry{}}, {}, {}};
        const QString problem = ReadXqcn(c.file, {}, read);
        EXPECT_TRUE(problem.contains(QLatin1String(c.told))) << qPrintable(problem) << " for " << c.told;
        EXPECT_EQ(read.entries.size(), 1u) << "nothing taken from a refused file";
    }
    XqcnContents read;
    EXPECT_TRUE(ReadXqcn(XqcnWith(good), {}, read).isEmpty()) << "the good record alone is taken";
}

TEST(Xqcn, DamagedFileStreamIsRefusedWholeNamingIt)
{
    const QByteArray path = Stream("00000000", Path("/rfc/a", "01000101A4810000"));
    const QByteArray data = Stream("00000000", "abc");
    // Halvane's entries: mode and time, then the path and the target.
    const auto entries = [](const QByteArray& records) { return Stream("Halvane_EFS_Entries", records); };
    struct Case {
        QByteArray beside;
        const char* told;
    };
    const Case cases[] = {
        {Files("EFS_Backup", Stream("00000000", QByteArray::fromHex("0100010100")), data),
         "the stream 00000000/default/EFS_Backup/EFS_Dir/00000000 (line 10) is cut short: 5 bytes"},
        {Files("EFS_Backup", path, data).replace("Length='3'", "Length='4'"),
         "EFS_Backup/EFS_Data/00000000 (line 13) holds 3 bytes where its Length says \"4\""},
        {Files("EFS_Backup", path + Stream("00000001", Path("/rfc/b", "01000101A4810000")), data),
         "EFS_Backup/EFS_Dir/00000001 (line 11) has no stream of its name in EFS_Data"},
        {Files("NV_Items", Stream("00000000", Path("/rfc/a")), data + Stream("00000001", "d")),
         "NV_Items/EFS_Data/00000001 (line 14) has no stream of its name in EFS_Dir"},
        {Files("NV_Items", Stream("00000000", Path("rfc/a")), data),
         "EFS_Dir/00000000 (line 10) holds no absolute path"},
        {Files("NV_Items", Stream("00000000", Path("/rfc/../a")), data), "holds no absolute path"},
        {Files("NV_Items", Stream("00000000", "/rfc/a"), data),
         "holds no absolute path of printable characters ended by a NUL"},
        {Files("NV_Items", path, data + Stream("00000000", "d")), "has the name of another stream of its storage"},
        {Files("EFS_Backup", path, data)
             + Files("NV_Items", Stream("00000000", Path("/rfc/a")), Stream("00000000", "abd")),
         "EFS_Backup/EFS_Dir/00000000 (line 10) and the stream 00000000/default/NV_Items/EFS_Dir/00000000 (line 18) "
         "hold /rfc/a with other bytes"},
        {entries(QByteArray::fromHex("ED41000000000000") + Path("/nv") + '\0' + QByteArray::fromHex("A481")),
         "Halvane_EFS_Entries (line 8): its record 2 (byte 13) is cut short"},
        {entries(QByteArray::fromHex("A481000000000000") + Path("/rfc/a") + '\0'),
         "Halvane_EFS_Entries (line 8) lists the file /rfc/a, which no stream holds"},
        {entries(QByteArray::fromHex("A4C1000000000000") + Path("/nv") + '\0'),
         "Halvane_EFS_Entries (line 8): its record 1 (byte 0) is not an entry of a known kind"},
        {entries(QByteArray::fromHex("FFA1000000000000") + Path("/nv/link") + '\0'), "its record 1 (byte 0) is not"},
        {entries(QByteArray::fromHex("ED41000000000000") + Path("/nv") + Path("x")), "its record 1 (byte 0) is not"},
        {entries(QByteArray::fromHex("ED41000000000000") + Path("/nv") + '\0').repeated(2), "lists /nv twice"},
    };
    for (const Case& c : cases) {
        XqcnContents read{{}, {EfsEntry{}}, {}};
        const QString problem = ReadXqcn(XqcnOf(c.beside), {}, read);
        EXPECT_TRUE(problem.contains(QLatin1String(c.told))) << qPrintable(problem) << " for " << c.told;
        EXPECT_EQ(std::tuple(read.entries.size(), read.files.size()), std::tuple(0u, 1u)) << "nothing taken";
    }
    XqcnContents read;
    EXPECT_EQ(ReadXqcn(XqcnOf(Files("EFS_Backup", path, data)), {}, read), "") << "the good streams alone are taken";
}
