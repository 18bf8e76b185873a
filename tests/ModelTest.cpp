// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The simulated handset, seen through the panel's public methods and what its
// controls show: a read fills the pages in a coherent run of progress events,
// a write survives a restart, a value that its item cannot hold stops the
// write untouched, restore goes back to the read, items the handset lacks
// stay empty, a fault ends the command with one box, and a damaged memory
// file is kept aside while a new handset follows.
#include "model/Catalogue.h"
#include "model/ErrorNumbers.h"
#include "model/FileNvMemory.h"
#include "model/NvFile.h"
#include "model/SimulatedHandset.h"
#include "support/PanelFixture.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>

using namespace tessaly;
using namespace tessaly::model;
using namespace std::chrono_literals;

namespace {

class ModelTest : public PanelFixture {
protected:
    void SetUp() override
    {
        PanelFixture::SetUp();
        ASSERT_TRUE(folder.isValid());
        path = folder.filePath(QStringLiteral("nv-memory.json"));
        restart();
    }

    // A new start of the host: a new panel, and a new memory on the same file.
    void restart()
    {
        handset.reset();
        host = std::make_unique<Tessaly>();
        memory = std::make_unique<FileNvMemory>(path, Catalogue::BuiltIn().factory());
        handset = std::make_unique<SimulatedHandset>(*host, *memory);
    }

    int row(int page, const QString& title) const
    {
        for (int r = 1; r < grid(page)->Rows(); ++r)
            if (grid(page)->TextMatrix(r, 0) == title)
                return r;
        ADD_FAILURE() << "no row " << qPrintable(title) << " on page " << page;
        return 0;
    }
    QString cell(int page, const QString& title, int col = 1) const
    {
        return grid(page)->TextMatrix(row(page, title), col);
    }
    QString caption(const char* label) const { return control<QLabel>(QLatin1String(label))->text(); }
    // Changes a value as the editor does: in the grid alone.
    void edit(int page, const QString& title, const QString& text, int col = 1)
    {
        grid(page)->setTextMatrix(row(page, title), col, text);
    }

    QTemporaryDir folder;
    QString path;
    std::unique_ptr<FileNvMemory> memory;
    std::unique_ptr<SimulatedHandset> handset;
};

} // namespace

TEST_F(ModelTest, ReadFillsEveryPageInOneRunOfProgress)
{
    host->SetModelDLL(handset.get());
    EXPECT_EQ(caption("lblModelPortInfo"), "Halvane SIM-800  (COM7)");

    // Each sub-process counts exactly the steps that it announced.
    QStringList events;
    int32_t announced = -1;
    int32_t steps = 0;
    QObject::connect(handset.get(), &IBaseModelEvents::GetTotalProgressCount,
                     [&](int32_t total, int32_t) { events << QStringLiteral("total %1").arg(total); });
    QObject::connect(handset.get(), &IBaseModelEvents::GetSubTotalProgressCount,
                     [&](const QString& name, int32_t count, int32_t) {
                         events << name;
                         announced = count;
                         steps = 0;
                     });
    QObject::connect(handset.get(), &IBaseModelEvents::StepIt, [&](int32_t) { ++steps; });
    QObject::connect(handset.get(), &IBaseModelEvents::SetSubProcessStep, [&](int32_t, int32_t status, int32_t) {
        if (status == 2) {
            EXPECT_EQ(steps, announced) << qPrintable(events.last());
        }
    });
    handset->NVRead();
    const auto items = qsizetype(Catalogue::BuiltIn().addresses().size());
    EXPECT_EQ(events, QStringList({QStringLiteral("total %1").arg(items + qsizetype(Catalogue::BuiltIn().sheets().size()) + 2), "Reading NV items", "Filling pages"}));
    EXPECT_EQ(caption("lblPercent"), "Complete");

    // Both NAMs with their own values, the lock code on NAM2 too, multi-column items.
    EXPECT_EQ(cell(0, "Mobile Directory Number (MDN)"), "8585550143");
    EXPECT_EQ(cell(20, "Mobile Directory Number (MDN)"), "6195550172");
    EXPECT_EQ(cell(20, "LOCK CODE"), "0143");
    EXPECT_EQ(cell(0, "Home SID", 3), "4145");
    EXPECT_EQ(cell(13, "Tx Linearizer Master 0", 40), "999");
    EXPECT_EQ(cell(15, "NAI"), "8585550143@ims.halvane.example");
    EXPECT_EQ(host->GetProfileCount(), 2);
    EXPECT_EQ(control<QLineEdit>(QStringLiteral("txtMEID"))->text(), "A0000031F4C2D9");
}

TEST_F(ModelTest, WrittenValuesSurviveARestartAndReadOnlyOnesAreNotWritten)
{
    handset->NVRead();
    edit(20, "Mobile Directory Number (MDN)", "6195550199");
    edit(0, "Home SID", "4150", 4);
    edit(16, "NAI", "user@example.net");
    edit(20, "LOCK CODE", "9999"); // shown on NAM2, kept by NAM1
    host->SetProfileCount(3);
    host->SetActiveProfileIndex(2);
    handset->NVWrite();
    ASSERT_TRUE(QFileInfo::exists(path));

    restart();
    handset->NVRead();
    EXPECT_EQ(cell(20, "Mobile Directory Number (MDN)"), "6195550199");
    EXPECT_EQ(cell(0, "Mobile Directory Number (MDN)"), "8585550143");
    EXPECT_EQ(cell(0, "Home SID", 4), "4150");
    EXPECT_EQ(cell(16, "NAI"), "user@example.net");
    EXPECT_EQ(cell(20, "LOCK CODE"), "0143");
    EXPECT_EQ(host->GetProfileCount(), 3);
    EXPECT_EQ(host->GetActiveProfileIndex(), 2);
}

TEST_F(ModelTest, ValueThatItsItemCannotHoldStopsTheWriteUntouched)
{
    struct Case {
        int page;
        const char* title;
        int col;
        const char* text;
        const char* told;
    };
    const Case cases[] = {
        {20, "Home SID", 2, "41a0",
         "the value \"41a0\" of \"Home SID\", column 2, on the page System NAM2 is not a whole number"},
        {13, "Rx Compensation vs Frequency", 16, "300", "is larger than 255"},
        {17, "Home Address", 1, "10.0.0", "on the page MIP Profile 3"},
    };
    for (const Case& bad : cases) {
        handset->NVRead();
        edit(0, "Mobile Directory Number (MDN)", "8585550100");
        edit(bad.page, QLatin1String(bad.title), QLatin1String(bad.text), bad.col);
        DialogAnswerer answerer; // the handset tells the user and the command ends
        handset->NVWrite();
        ASSERT_EQ(answerer.texts().size(), 1) << bad.title << " was written";
        EXPECT_TRUE(answerer.texts()[0].contains(QLatin1String(bad.told))) << qPrintable(answerer.texts()[0]);
    }
    // Not even the good value before it reached the handset.
    EXPECT_FALSE(QFileInfo::exists(path));
    restart();
    handset->NVRead();
    EXPECT_EQ(cell(0, "Mobile Directory Number (MDN)"), "8585550143");
}

TEST_F(ModelTest, RestorePutsBackTheLastReadInThePanelAndTheMemory)
{
    {
        DialogAnswerer answerer;
        handset->NVRestore();
        EXPECT_EQ(answerer.texts(), QStringList{"Restore failed, on COM7: Restore needs the values of an NV Read first"});
    }
    handset->NVRead();
    edit(0, "Mobile Directory Number (MDN)", "8585550111");
    handset->NVWrite();
    edit(0, "Mobile Directory Number (MDN)", "8585550122");
    handset->NVRestore();
    EXPECT_EQ(cell(0, "Mobile Directory Number (MDN)"), "8585550143");

    restart();
    handset->NVRead();
    EXPECT_EQ(cell(0, "Mobile Directory Number (MDN)"), "8585550143");
}

TEST_F(ModelTest, ItemsTheHandsetLacksStayEmptyAreToldOnceAndNeverWritten)
{
    NvFile file{NvFileKind::Memory, {}, {}};
    for (const auto& [address, data] : Catalogue::BuiltIn().factory()) {
        const bool lacked = address == NvAddress{MeidItem, -1}, readOnly = address == NvAddress{43, 1};
        file.entries.push_back({address, lacked ? NvStatus::NotValid : readOnly ? NvStatus::ReadOnly : NvStatus::Done, data});
    }
    ASSERT_EQ(WriteNvFile(path, file), "");
    restart();
    {
        DialogAnswerer answerer;
        handset->NVRead();
        ASSERT_EQ(answerer.texts().size(), 1);
        EXPECT_TRUE(answerer.texts()[0].contains(QLatin1String("NV item 1943, \"MEID\" on the page Basic Information")));
    }
    EXPECT_TRUE(handset->succeeded());
    EXPECT_EQ(control<QLineEdit>(QStringLiteral("txtMEID"))->text(), "");
    EXPECT_EQ(cell(20, "NAM Name"), "");
    EXPECT_EQ(cell(0, "NAM Name"), "Home");
    edit(20, "NAM Name", "Away");
    edit(0, "NAM Name", "Base");
    handset->NVWrite();
    handset->NVRestore();

    NvFile after;
    ASSERT_EQ(ReadNvFile(path, NvFileKind::Memory, after), "");
    for (const NvEntry& entry : after.entries) {
        if (entry.address == NvAddress{43, 1}) {
            EXPECT_EQ(entry.status, NvStatus::ReadOnly) << "never written";
        }
    }
}

TEST_F(ModelTest, FailedSaveIsToldOnceAndNotComplete)
{
    // A memory file that cannot be saved: its folder is a plain file.
    QFile plain(folder.filePath(QStringLiteral("plain")));
    ASSERT_TRUE(plain.open(QIODevice::WriteOnly));
    path = folder.filePath(QStringLiteral("plain/nv-memory.json"));
    restart();
    host->SetModelDLL(handset.get());
    handset->NVRead();
    edit(0, "Mobile Directory Number (MDN)", "8585550100");
    DialogAnswerer answerer;
    handset->NVWrite();
    ASSERT_EQ(answerer.texts().size(), 1);
    EXPECT_TRUE(answerer.texts()[0].contains(QLatin1String("could not be saved"))) << qPrintable(answerer.texts()[0]);
    EXPECT_NE(caption("lblPercent"), "Complete");

    // The host may end the panel while the box is open.
    answerer.answer = [&](QDialog&) { host.reset(); };
    handset->NVWrite();
    EXPECT_FALSE(handset->succeeded());
    handset->NVRead();
    EXPECT_FALSE(handset->succeeded());
}

TEST_F(ModelTest, DamagedFileIsKeptAsideAndANewHandsetFollows)
{
    const QByteArray damaged[] = {
        "{\"format\": \"Halvane NV memory\", \"version\": 1, \"items\": [",
        "{\"format\": \"Halvane NV memory\", \"version\": 1, \"items\": [{\"item\": 178, \"status\": 0, \"data\": "
        "\"0g\"}]}",
    };
    for (const QByteArray& content : damaged) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();

        restart();
        EXPECT_TRUE(memory->lastProblem().contains(path)) << qPrintable(memory->lastProblem());
        handset->NVRead();
        EXPECT_EQ(cell(0, "Mobile Directory Number (MDN)"), "8585550143");
        edit(0, "Mobile Directory Number (MDN)", "8585550155");
        handset->NVWrite();
    }
    // Each damaged file kept whole under a name of its own, and the new handset saved beside them.
    const QStringList aside = QDir(folder.path()).entryList({"nv-memory.json.damaged-*"}, QDir::Files, QDir::Name);
    ASSERT_EQ(aside.size(), 2);
    QList<QByteArray> kept;
    for (const QString& name : aside) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        kept << file.readAll();
    }
    EXPECT_TRUE(kept.contains(damaged[0]) && kept.contains(damaged[1]));
    restart();
    EXPECT_TRUE(memory->lastProblem().isEmpty());
    handset->NVRead();
    EXPECT_EQ(cell(0, "Mobile Directory Number (MDN)"), "8585550155");
}

TEST(FieldCoding, ValuesGoIntoTheirBytesAndBackOrAreRefusedWithoutATrace)
{
    struct Case {
        Encoding encoding;
        int width;
        const char* text;
        const char* refusal; // nullptr: the text comes back as it went
    };
    const Case cases[] = {
        {Encoding::Digits, 4, "0143", nullptr},
        {Encoding::Digits, 4, "01a3", "has characters other than digits"},
        {Encoding::Digits, 4, "01434", "is longer than 4 digits"},
        {Encoding::Number, 2, "65535", nullptr},
        {Encoding::Number, 2, "65536", "is larger than 65535"},
        {Encoding::Number, 8, "99999999999999999999", "is larger than 18446744073709551615"},
        {Encoding::Number, 1, "", "is not a whole number"},
        {Encoding::Hex, 7, "A0000031F4C2D9", nullptr},
        {Encoding::Hex, 4, "8F3A21C4F", "is not a hexadecimal number"},
        {Encoding::CountedText, 5, "#777", nullptr},
        {Encoding::CountedText, 5, "#7777", "is longer than 4 characters"},
        {Encoding::Text, 8, "Halvane", nullptr},
        {Encoding::Text, 8, "Hal\u20acvane", "cannot keep"},
        {Encoding::Choice, 1, "Yes", nullptr},
        {Encoding::Choice, 1, "7", nullptr},
        {Encoding::Choice, 1, "Maybe", "is not one of No, Yes"},
        {Encoding::Address, 4, "192.0.2.1", nullptr},
        {Encoding::Address, 4, "192.0.2.256", "is not an address"},
    };
    for (const Case& test : cases) {
        const Field field{300, true, 3, test.width, test.encoding, {QStringLiteral("No"), QStringLiteral("Yes")}};
        NvData data;
        data.fill(0xEE);
        const NvData before = data;
        const QString problem = Encode(field, QString::fromUtf8(test.text), data);
        if (test.refusal) {
            EXPECT_TRUE(problem.contains(QLatin1String(test.refusal))) << test.text << ": " << qPrintable(problem);
            EXPECT_EQ(data, before) << test.text;
            continue;
        }
        EXPECT_EQ(problem, "") << test.text;
        EXPECT_EQ(Decode(field, data), QString::fromUtf8(test.text));
        // The bytes around the field stay as they were.
        EXPECT_EQ(data[2], 0xEE);
        EXPECT_EQ(data[size_t(3 + test.width)], 0xEE) << test.text;
    }
}
