// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The NV Items page: every item the handset holds listed one row each after a
// read, up to every item number; the hex cells edited in place and written by
// NV Write with the care of every write, what the handset held read first;
// identity items and bytes an item cannot hold refused with nothing written.
#include "model/Catalogue.h"
#include "model/FileNvMemory.h"
#include "model/ItemRowText.h"
#include "model/ItemsPage.h"
#include "model/SimulatedHandset.h"
#include "support/PanelFixture.h"

#include <QTemporaryDir>

using namespace tessaly;
using namespace tessaly::model;

namespace {

// A memory that tells what was asked of it, in order, over the simulated
// handset's file.
class WatchedMemory : public NvMemory {
public:
    explicit WatchedMemory(NvMemory& memory)
        : m_memory(memory)
    {
    }
    NvStatus read(NvAddress address, NvData& data) override
    {
        calls << QStringLiteral("read %1").arg(ItemNumberText(address));
        return m_memory.read(address, data);
    }
    NvStatus write(NvAddress address, const NvData& data) override
    {
        calls << QStringLiteral("write %1").arg(ItemNumberText(address));
        return m_memory.write(address, data);
    }
    void commit() override { m_memory.commit(); }
    void readDone() override { calls << QStringLiteral("kept"); }

    QStringList calls;

private:
    NvMemory& m_memory;
};

class NvItemsPageTest : public PanelFixture {
protected:
    void SetUp() override
    {
        PanelFixture::SetUp();
        ASSERT_TRUE(folder.isValid());
        path = folder.filePath(QStringLiteral("nv-memory.json"));
        file = std::make_unique<FileNvMemory>(path, Catalogue::BuiltIn().factory());
        memory = std::make_unique<WatchedMemory>(*file);
        handset = std::make_unique<SimulatedHandset>(*host, *memory);
        number = host->AddTab(QStringLiteral("NV Items"), ItemsPage::Columns);
        page = std::make_unique<ItemsPage>(*host, number);
        handset->setItemsPage(page.get());
        host->SetModelDLL(handset.get());
    }

    MSFlexGrid* items() const { return grid(number); }
    int row(const QString& item) const
    {
        for (int r = 1; r < items()->Rows(); ++r)
            if (items()->TextMatrix(r, ItemsPage::NumberColumn) == item)
                return r;
        ADD_FAILURE() << "no row for item " << qPrintable(item);
        return 1;
    }
    QStringList rowTexts(const QString& item) const
    {
        QStringList texts;
        for (int c = 0; c < ItemsPage::Columns; ++c)
            texts << items()->TextMatrix(row(item), c);
        return texts;
    }
    void editHex(const QString& item, const QString& text)
    {
        items()->setTextMatrix(row(item), ItemsPage::HexColumn, text);
    }
    // The bytes the memory file holds now, as a new start of the host reads them.
    NvData stored(NvAddress address) const
    {
        FileNvMemory again(path, {});
        NvData data{};
        again.read(address, data);
        return data;
    }
    QStringList writes() const { return memory->calls.filter(QStringLiteral("write")); }

    QTemporaryDir folder;
    QString path;
    std::unique_ptr<FileNvMemory> file;
    std::unique_ptr<WatchedMemory> memory;
    std::unique_ptr<SimulatedHandset> handset;
    int16_t number = -1;
    std::unique_ptr<ItemsPage> page;
};

} // namespace

TEST_F(NvItemsPageTest, AReadListsEveryItemOnceWithItsNumberNameStatusBytesAndValue)
{
    handset->NVRead();
    const auto held = Catalogue::BuiltIn().addresses().size();
    EXPECT_EQ(items()->Rows(), int(held) + 1);
    EXPECT_EQ(rowTexts("43:1"), QStringList({"43:1", "NAM Name", "done", "01 54 72 61 76 65 6C", "Travel"}));
    EXPECT_EQ(rowTexts("0"), QStringList({"0", "ESN", "done", "C4 21 3A 8F", "8F3A21C4"}));
    // Rows in the order of their numbers, an indexed item's indexes together.
    EXPECT_LT(row("10:1"), row("20:0"));

    // A second read lists them again, not twice.
    handset->NVRead();
    EXPECT_EQ(items()->Rows(), int(held) + 1);
}

TEST_F(NvItemsPageTest, EveryItemNumberIsCarriedDressedAndItsHexCellsEditedInPlace)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(host.get()));
    std::vector<NvEntry> all(65536);
    for (size_t i = 0; i < all.size(); ++i)
        all[i] = {{uint16_t(i), -1}, i % 7 ? NvStatus::Done : NvStatus::NotValid, NvData{uint8_t(i), uint8_t(i >> 8)}};
    page->fill(all);
    clickNode(QStringLiteral("NV Items"));
    MSFlexGrid* g = items();
    ASSERT_EQ(g->Rows(), 65537);
    EXPECT_EQ(g->TextMatrix(65536, ItemsPage::NumberColumn), "65535");
    EXPECT_EQ(g->TextMatrix(65536, ItemsPage::HexColumn), "FF FF");
    EXPECT_EQ(g->TextMatrix(7 + 1, ItemsPage::StatusColumn), "the item does not exist on this handset");
    // The rows far below the panel's first hundred keep its alternate shading.
    for (int r : {65535, 65536}) {
        g->setRow(r);
        g->setCol(ItemsPage::NameColumn);
        const int like = 1 + (r - 1) % 2;
        const QColor back = g->CellBackColor();
        g->setRow(like);
        EXPECT_EQ(back, g->CellBackColor()) << "row " << r;
        EXPECT_EQ(g->RowHeight(r), g->RowHeight(like)) << "row " << r;
    }

    // A hex cell in the last row opens a text box of 128 bytes' length; the
    // other columns are read-only.
    g->setTopRow(65536);
    g->setRow(65536);
    g->setCol(ItemsPage::HexColumn);
    QTest::keyClick(g, Qt::Key_Return);
    TextBox* box = panel().txtEdit(number);
    ASSERT_TRUE(box->isVisible());
    EXPECT_EQ(box->Text(), "FF FF");
    EXPECT_EQ(box->MaxLength(), ItemHexLength);
    QTest::keyClick(box, Qt::Key_End); // the editor opens with the caret at the start
    QTest::keyClicks(box, QStringLiteral(" 0A"));
    EXPECT_EQ(g->TextMatrix(65536, ItemsPage::HexColumn), "FF FF 0A");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_FALSE(box->isVisible());
    for (int col : {ItemsPage::NameColumn, ItemsPage::StatusColumn, ItemsPage::ValueColumn}) {
        g->setCol(col);
        QTest::keyClick(g, Qt::Key_F2);
        EXPECT_FALSE(box->isVisible()) << "column " << col;
    }
}

TEST_F(NvItemsPageTest, AnEditedItemIsReadAndKeptFirstThenWrittenAndShownOnEveryPage)
{
    handset->NVRead();
    memory->calls.clear();
    // The banner, lower case and without spaces: "Halvane" made "Halvane!"
    editHex("71", QStringLiteral("48616c76616e6521"));
    DialogAnswerer answerer;
    handset->NVWrite();
    EXPECT_TRUE(answerer.texts().isEmpty()) << qPrintable(answerer.texts().join(u'\n'));
    ASSERT_TRUE(handset->succeeded());

    const QStringList calls = memory->calls;
    ASSERT_TRUE(calls.contains("write 71"));
    EXPECT_EQ(calls.mid(0, 2), QStringList({"read 71", "kept"})) << "what the handset held, kept before any write";
    const NvData banner = stored({71, -1});
    EXPECT_EQ(QByteArray(reinterpret_cast<const char*>(banner.data()), 9), QByteArray("Halvane!\0", 9));
    EXPECT_EQ(rowTexts("71").mid(3), QStringList({"48 61 6C 76 61 6E 65 21", "Halvane!"}));
    EXPECT_EQ(host->GetItemFromGrd(1, 1, 0), "Halvane!") << "the General page shows the new banner";

    // Written once: the next write finds nothing changed on the page.
    memory->calls.clear();
    handset->NVWrite();
    EXPECT_FALSE(memory->calls.contains("read 71"));
}

TEST_F(NvItemsPageTest, IdentityItemsAndBytesAnItemCannotHoldAreRefusedWithNothingWritten)
{
    handset->NVRead();
    const NvData esn = stored({0, -1});
    struct Case {
        const char* item;
        const char* hex;
        const char* told;
    };
    static const QByteArray tooLong = QByteArray("00 ").repeated(129);
    const Case cases[] = {
        {"0", "01 02 03 04", "NV item 0, edited on the page NV Items, is never written: the catalogue marks it as identity"},
        {"55", "00", "marks it as counter"},
        {"71", "48 6G", "\"G\" is not a digit"},
        {"71", "48 6", "a byte of one digit"},
        {"71", "", "holds no byte"},
        {"71", tooLong.constData(), "longer than the item's 128 bytes"},
        {"43:1", "00 41", "does not begin with the item's index 01"},
    };
    for (const Case& bad : cases) {
        SCOPED_TRACE(bad.told);
        handset->NVRead(); // every row as the handset holds it again
        editHex(QLatin1String(bad.item), QLatin1String(bad.hex));
        // The catalogue's pages are edited too: the write must stop before them.
        host->AddItemToGrd(1, {}, false, false, {}, QStringLiteral("Other"), 1, 1);
        memory->calls.clear();
        DialogAnswerer answerer;
        handset->NVWrite();
        ASSERT_EQ(answerer.texts().size(), 1);
        EXPECT_TRUE(answerer.texts()[0].contains(QLatin1String(bad.told))) << qPrintable(answerer.texts()[0]);
        EXPECT_TRUE(answerer.texts()[0].contains(QLatin1String("Nothing was written")));
        EXPECT_TRUE(writes().isEmpty()) << qPrintable(writes().join(u' '));
        EXPECT_FALSE(handset->succeeded());
    }
    EXPECT_EQ(stored({0, -1}), esn);
}

TEST(ItemRowText, HexShowsTheBytesUpToTheLastThatIsNotZeroAndReadsBackPadded)
{
    NvData data{};
    EXPECT_EQ(ItemHexText(data), "00");
    data[0] = 0xAB;
    data[2] = 0x01;
    EXPECT_EQ(ItemHexText(data), "AB 00 01");
    data[127] = 0xFF;
    EXPECT_EQ(ItemHexText(data).size(), ItemHexLength);

    NvData read{};
    read.fill(0x55);
    ASSERT_EQ(ReadItemHex(QStringLiteral("ab0001"), {10, -1}, read), "");
    NvData expected{};
    expected[0] = 0xAB;
    expected[2] = 0x01;
    EXPECT_EQ(read, expected) << "padded with zeros, whatever the data held";
    EXPECT_EQ(ItemNumberText({10, 1}), "10:1");
    EXPECT_EQ(ItemNumberText({65535, -1}), "65535");
}
