// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The roaming list pages: the handset's list shown one row per system and per
// acquisition record after a read; the cells edited and written by NV Write
// as a new list with its size and CRC, the handset's list kept first and the
// new one read back; a value its field cannot hold refused with nothing
// written; an acquisition record of an unknown type shown as such, never
// edited.
#include "model/Catalogue.h"
#include "model/FileNvMemory.h"
#include "model/RoamingListCells.h"
#include "model/RoamingListPages.h"
#include "model/RoamingListSource.h"
#include "model/SimulatedHandset.h"
#include "support/PanelFixture.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace tessaly;
using namespace tessaly::model;

namespace {

using Pages = RoamingListPages;

// An IS-683-A list of two acquisition records and two systems, field by
// field (C.S0016 3.5.5): PR_LIST_SIZE 23, PR_LIST_ID 7, PREF_ONLY 0,
// DEF_ROAM_IND 0, NUM_ACQ_RECS 2, NUM_SYS_RECS 2;
// record 0: ACQ_TYPE 5 (PCS blocks), NUM_BLOCKS 2, blocks A and B;
// record 1: ACQ_TYPE 2 (cellular standard), A_B 0 (system A), PRI_SEC 3;
// system 0: SID 4139, NID_INCL 0, PREF_NEG 1, GEO 0, PRI 1, ACQ_INDEX 0, ROAM_IND 1;
// system 1: SID 22, NID_INCL 1, NID 12, PREF_NEG 0, GEO 1, ACQ_INDEX 1;
// then the PR_LIST_CRC over all before it.
QByteArray SmallList()
{
    QByteArray list = QByteArray::fromHex("0017 0007 00008002 54 0919 02b2 8000 400b 2001 8804");
    const uint16_t crc = PrlCrc(list);
    list.append(char(crc >> 8));
    list.append(char(crc & 0xFF));
    return list;
}

QByteArray Contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class RoamingListPagesTest : public PanelFixture {
protected:
    void SetUp() override
    {
        PanelFixture::SetUp();
        ASSERT_TRUE(folder.isValid());
        memoryPath = folder.filePath(QStringLiteral("nv-memory.json"));
        listPath = memoryPath + QStringLiteral(".prl");
        memory = std::make_unique<FileNvMemory>(memoryPath, Catalogue::BuiltIn().factory());
        handset = std::make_unique<SimulatedHandset>(*host, *memory);
        source = std::make_unique<FileRoamingList>(listPath);
        const int16_t systems = host->AddTab(QStringLiteral("Roaming List"), Pages::SystemColumns);
        const int16_t acquisitions = host->AddTab(QStringLiteral("Acquisition Table"), Pages::AcquisitionColumns);
        pages = std::make_unique<Pages>(*host, systems, acquisitions);
        handset->setRoamingListPages(pages.get(), source.get());
        host->SetModelDLL(handset.get());
    }

    void hold(const QByteArray& list) { ASSERT_TRUE(WriteWhole(listPath, list).isEmpty()); }
    MSFlexGrid* systems() const { return grid(pages->systemsPage()); }
    MSFlexGrid* acquisitions() const { return grid(pages->acquisitionsPage()); }
    static QStringList row(MSFlexGrid* g, int r)
    {
        QStringList texts;
        for (int c = 0; c < g->Cols(); ++c)
            texts << g->TextMatrix(r, c);
        return texts;
    }
    // Writes and tells what the user was told.
    QStringList write()
    {
        DialogAnswerer answerer;
        handset->NVWrite();
        return answerer.texts();
    }
    // Whether the cell of the page opens its text box or its list on F2.
    bool editable(int16_t page, int r, int c)
    {
        MSFlexGrid* g = grid(page);
        g->setRow(r);
        g->setCol(c);
        QTest::keyClick(g, Qt::Key_F2);
        TextBox* box = panel().txtEdit(page);
        ComboBox* list = panel().cboEditCell(page);
        const bool opened = box->isVisible() || list->isVisible();
        box->setVisible(false);
        list->setVisible(false);
        return opened;
    }

    QTemporaryDir folder;
    QString memoryPath;
    QString listPath;
    std::unique_ptr<FileNvMemory> memory;
    std::unique_ptr<SimulatedHandset> handset;
    std::unique_ptr<FileRoamingList> source;
    std::unique_ptr<Pages> pages;
};

} // namespace

TEST_F(RoamingListPagesTest, TheHandsetsListIsShownOneRowPerSystemAndPerAcquisitionRecord)
{
    ASSERT_TRUE(PrlProblem(SmallList()).isEmpty()) << qPrintable(PrlProblem(SmallList()));
    hold(SmallList());
    handset->NVRead();
    ASSERT_TRUE(handset->succeeded());
    ASSERT_EQ(systems()->Rows(), 3);
    EXPECT_EQ(row(systems(), 0), QStringList({"#", "SID", "NID", "Kind", "Region", "Priority", "Acq", "Roaming"}));
    EXPECT_EQ(row(systems(), 1), QStringList({"0", "4139", "any", "preferred", "1", "more", "0", "1 (home)"}));
    EXPECT_EQ(row(systems(), 2), QStringList({"1", "22", "12", "negative", "1", "-", "1", "-"}));
    ASSERT_EQ(acquisitions()->Rows(), 3);
    EXPECT_EQ(row(acquisitions(), 1), QStringList({"0", "PCS CDMA, blocks", "", "", "A, B", ""}));
    EXPECT_EQ(row(acquisitions(), 2), QStringList({"1", "Cellular CDMA, standard channels", "A", "both", "", ""}));

    // Without a list of its own, the handset holds the factory list.
    QFile::remove(listPath);
    handset->NVRead();
    EXPECT_GT(systems()->Rows(), 30);
    EXPECT_EQ(systems()->TextMatrix(1, Pages::SidColumn), "4139");
}

TEST_F(RoamingListPagesTest, EditedCellsAreWrittenAsANewListKeptFirstAndReadBack)
{
    hold(SmallList());
    handset->NVRead();
    systems()->setTextMatrix(1, Pages::SidColumn, QStringLiteral("4150"));
    systems()->setTextMatrix(2, Pages::KindColumn, QStringLiteral("preferred"));
    systems()->setTextMatrix(2, Pages::RegionColumn, QStringLiteral("2"));
    acquisitions()->setTextMatrix(1, Pages::BlocksColumn, QStringLiteral("a, f, any"));
    const QStringList told = write();
    EXPECT_TRUE(told.isEmpty()) << qPrintable(told.join(u'\n'));
    ASSERT_TRUE(handset->succeeded());

    EXPECT_EQ(Contents(listPath + QStringLiteral(".bak")), SmallList()) << "the handset's list, kept before the write";
    const QByteArray written = Contents(listPath);
    const PrlDecoding decoding = DecodePrl(written);
    ASSERT_TRUE(decoding.problem.isEmpty()) << qPrintable(decoding.problem);
    EXPECT_EQ(decoding.sizeField, written.size());
    Prl expected = *DecodePrl(SmallList()).list;
    expected.systems[0].sid = 4150;
    expected.systems[1].preferred = true;
    expected.systems[1].sameRegion = false;
    expected.systems[1].roamingIndicator = 0; // the list's default roaming indicator
    expected.acquisitions[0].blocks = {0, 5, 7};
    EXPECT_EQ(*decoding.list, expected);
    // The pages show the list as read back.
    EXPECT_EQ(row(systems(), 2), QStringList({"1", "22", "12", "preferred", "2", "same", "1", "0 (roaming)"}));
    EXPECT_EQ(acquisitions()->TextMatrix(1, Pages::BlocksColumn), "A, F, any");

    // Nothing changed since: the next write leaves the list alone.
    QFile::remove(listPath + QStringLiteral(".bak"));
    EXPECT_TRUE(write().isEmpty());
    EXPECT_FALSE(QFileInfo::exists(listPath + QStringLiteral(".bak")));
}

TEST_F(RoamingListPagesTest, AValueItsFieldCannotHoldIsRefusedWithNothingWritten)
{
    hold(SmallList());
    struct Case {
        bool system;
        int row;
        int column;
        const char* text;
        const char* told;
    };
    const Case cases[] = {
        {true, 1, Pages::SidColumn, "40000", "\"40000\" of SID on the page Roaming List (system 0) is not a SID"},
        {true, 2, Pages::AcquisitionColumn, "2", "is not the index of an acquisition record: 0 to 1"},
        {true, 2, Pages::RegionColumn, "3", "neither the region of the system before it (1) nor the next (2)"},
        {true, 1, Pages::NidColumn, "65536", "is not a NID"},
        {true, 1, Pages::RoamingColumn, "256", "is not a roaming indicator"},
        {false, 1, Pages::BlocksColumn, "A, G", "on the page Acquisition Table (record 0) is not a list of PCS blocks"},
    };
    const QByteArray memoryBefore = Contents(memoryPath);
    for (const Case& bad : cases) {
        SCOPED_TRACE(bad.told);
        handset->NVRead();
        (bad.system ? systems() : acquisitions())->setTextMatrix(bad.row, bad.column, QLatin1String(bad.text));
        // A value of the catalogue's pages too: the write must stop before it.
        host->AddItemToGrd(1, {}, false, false, {}, QStringLiteral("Other"), 1, 1);
        const QStringList told = write();
        ASSERT_EQ(told.size(), 1);
        EXPECT_TRUE(told[0].contains(QLatin1String(bad.told))) << qPrintable(told[0]);
        EXPECT_TRUE(told[0].contains(QLatin1String("Nothing was written")));
        EXPECT_FALSE(handset->succeeded());
        EXPECT_EQ(Contents(listPath), SmallList());
        EXPECT_FALSE(QFileInfo::exists(listPath + QStringLiteral(".bak")));
        EXPECT_EQ(Contents(memoryPath), memoryBefore);
    }
}

TEST_F(RoamingListPagesTest, AnUnknownAcquisitionTypeIsShownAsSuchAndNeverEdited)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(host.get()));
    Prl list;
    list.layout = PrlLayout::Extended;
    PrlAcquisition unknown;
    unknown.type = 20;
    unknown.unknown = QByteArray::fromHex("0102");
    PrlAcquisition cellular;
    cellular.type = AcqCellularAnalog;
    cellular.system = 1;
    list.acquisitions = {unknown, cellular};
    PrlSystem system;
    system.sid = 4139;
    system.acquisitionIndex = 1;
    system.roamingIndicator = 1;
    list.systems = {system};
    hold(EncodePrl(list));
    handset->NVRead();
    ASSERT_TRUE(handset->succeeded());
    EXPECT_EQ(row(acquisitions(), 1), QStringList({"0", "unknown (type 20)", "", "", "", "01 02"}));
    EXPECT_EQ(row(acquisitions(), 2), QStringList({"1", "Cellular analog", "B", "", "", ""}));

    clickNode(QStringLiteral("Acquisition Table"));
    for (int col = Pages::TypeColumn; col < Pages::AcquisitionColumns; ++col)
        EXPECT_FALSE(editable(pages->acquisitionsPage(), 1, col)) << "column " << col;
    EXPECT_TRUE(editable(pages->acquisitionsPage(), 2, Pages::CellularColumn)) << "a known record's field is edited";
}

// The cells' values at the edges of their fields' widths (C.S0016 3.5.5).
TEST(RoamingListCells, ValuesAreReadUpToTheWidthsOfTheirFields)
{
    PrlSystem system;
    EXPECT_TRUE(ReadPrlSid(QStringLiteral("32767"), system).isEmpty());
    EXPECT_EQ(system.sid, 32767);
    EXPECT_FALSE(ReadPrlSid(QStringLiteral("32768"), system).isEmpty());
    EXPECT_FALSE(ReadPrlSid(QStringLiteral("-1"), system).isEmpty());
    EXPECT_EQ(system.sid, 32767) << "a refused text leaves the field";

    EXPECT_TRUE(ReadPrlNid(QStringLiteral("public"), system).isEmpty());
    EXPECT_EQ(PrlNidText(system), "public");
    EXPECT_TRUE(ReadPrlNid(QStringLiteral("65535"), system).isEmpty());
    EXPECT_EQ(system.nidIncluded, NidIncluded) << "65535 written out is a NID, not the wildcard";
    EXPECT_TRUE(ReadPrlNid(QStringLiteral("any"), system).isEmpty());
    EXPECT_EQ(system.nidIncluded, NidWildcard);

    std::optional<uint8_t> indicator;
    EXPECT_TRUE(ReadPrlRoaming(QStringLiteral("2 (flashing)"), indicator).isEmpty());
    EXPECT_EQ(indicator, 2);
    EXPECT_TRUE(ReadPrlRoaming(QStringLiteral("255"), indicator).isEmpty());
    EXPECT_FALSE(ReadPrlRoaming(QStringLiteral("256"), indicator).isEmpty());

    std::vector<uint8_t> blocks;
    EXPECT_FALSE(ReadPrlBlocks(QStringLiteral("A, B, C, D, E, F, any, A"), blocks).isEmpty()) << "NUM_BLOCKS is 3 bits";
    EXPECT_FALSE(ReadPrlBlocks(QString(), blocks).isEmpty());

    PrlAcquisition custom;
    custom.type = AcqPcsCdmaChannels;
    EXPECT_TRUE(ReadPrlChannels(QStringLiteral("0, 2047"), custom).isEmpty());
    EXPECT_EQ(PrlChannelsText(custom), "0, 2047");
    EXPECT_FALSE(ReadPrlChannels(QStringLiteral("2048"), custom).isEmpty());
    EXPECT_FALSE(ReadPrlChannels(QStringLiteral("1/25"), custom).isEmpty()) << "no band in a PCS record";
    PrlAcquisition generic;
    generic.type = AcqGeneric1x;
    EXPECT_TRUE(ReadPrlChannels(QStringLiteral("1/25, 31/2047"), generic).isEmpty());
    EXPECT_EQ(PrlChannelsText(generic), "1/25, 31/2047");
    EXPECT_FALSE(ReadPrlChannels(QStringLiteral("32/25"), generic).isEmpty());
    EXPECT_FALSE(ReadPrlChannels(QStringLiteral("25"), generic).isEmpty());
}

namespace {

// A handset whose list is what was last written to it, except the write
// that `garble` spoils; it tells what was asked of it.
class ToldSource : public RoamingListSource {
public:
    QByteArray read() override
    {
        calls << QStringLiteral("read");
        return held;
    }
    QString keep(const QByteArray& list) override
    {
        calls << QStringLiteral("keep");
        kept = list;
        return QStringLiteral("kept.prl");
    }
    void write(const QByteArray& list) override
    {
        calls << QStringLiteral("write");
        held = garble ? list.chopped(1) : list;
    }
    QByteArray held = SmallList();
    QByteArray kept;
    bool garble = false;
    QStringList calls;
};

} // namespace

TEST(PutRoamingList, TheHandsetsListIsKeptFirstAndTheNewOneComparedWholeAfterTheWrite)
{
    Prl list = *DecodePrl(SmallList()).list;
    list.listId = 8;
    const QByteArray edited = EncodePrl(list);
    ToldSource handset;
    EXPECT_EQ(PutRoamingList(handset, edited), "kept.prl");
    EXPECT_EQ(handset.calls, QStringList({"read", "keep", "write", "read"}));
    EXPECT_EQ(handset.kept, SmallList());
    EXPECT_EQ(handset.held, edited);

    // A list the handset does not give back as written is told.
    handset.garble = true;
    try {
        PutRoamingList(handset, SmallList());
        ADD_FAILURE() << "a list read back different was taken";
    } catch (const TessalyError& error) {
        EXPECT_TRUE(error.description().contains("reads back different")) << qPrintable(error.description());
    }

    // A damaged list: nothing asked of the handset at all.
    handset.calls.clear();
    QByteArray damaged = edited;
    damaged[5] = char(damaged[5] ^ 0x10);
    EXPECT_THROW(PutRoamingList(handset, damaged), TessalyError);
    EXPECT_TRUE(handset.calls.isEmpty()) << qPrintable(handset.calls.join(u' '));
}

// The panel keeps so many cells a page: a longer list shows its first rows,
// and keeps the others when the shown ones are written.
TEST_F(RoamingListPagesTest, ALongListShowsItsFirstRowsAndKeepsTheRestWhenWritten)
{
    Prl list = *DecodePrl(SmallList()).list;
    list.systems.resize(Pages::MaxRows + 100, list.systems[0]);
    for (size_t i = 0; i < list.systems.size(); ++i)
        list.systems[i].sid = uint16_t(1000 + i);
    hold(EncodePrl(list));
    {
        DialogAnswerer answerer;
        handset->NVRead();
        EXPECT_TRUE(answerer.texts().isEmpty()) << qPrintable(answerer.texts().join(u'\n'));
    }
    ASSERT_EQ(systems()->Rows(), Pages::MaxRows + 1);
    EXPECT_EQ(systems()->TextMatrix(Pages::MaxRows, Pages::RoamingColumn), "1 (home)");

    systems()->setTextMatrix(Pages::MaxRows, Pages::SidColumn, QStringLiteral("7"));
    EXPECT_TRUE(write().isEmpty());
    const PrlDecoding written = DecodePrl(Contents(listPath));
    ASSERT_TRUE(written.list && written.problem.isEmpty());
    list.systems[Pages::MaxRows - 1].sid = 7;
    EXPECT_EQ(*written.list, list);
}

TEST_F(RoamingListPagesTest, AListThatCannotBeReadLeavesItsPagesEmptyAndTheReadWhole)
{
    hold(SmallList());
    handset->NVRead();
    ASSERT_TRUE(QFile::remove(listPath) && QDir().mkdir(listPath)); // a folder where the list was
    {
        DialogAnswerer answerer;
        handset->NVRead();
        EXPECT_TRUE(handset->succeeded()) << "the items were read";
        ASSERT_EQ(answerer.texts().size(), 1);
        EXPECT_TRUE(answerer.texts()[0].contains("roaming list could not be read")) << qPrintable(answerer.texts()[0]);
    }
    EXPECT_EQ(row(systems(), 1), QStringList(Pages::SystemColumns, QString()));
    // Nothing shown, nothing to write.
    EXPECT_TRUE(write().isEmpty());
    EXPECT_TRUE(QFileInfo(listPath).isDir());
}
