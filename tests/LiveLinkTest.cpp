// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The live handset's link end to end: the model over the serial link to the
// emulator on a real pseudo-terminal, and the faults of handsets and lines
// with what the user is told.
#include "link/HandsetIdentity.h"
#include "link/LiveNvMemory.h"
#include "model/Catalogue.h"
#include "model/SimulatedHandset.h"
#include "support/Emulator.h"
#include "support/PanelFixture.h"

#include <QTemporaryDir>
#include <QTimer>

using namespace tessaly;
using namespace std::chrono_literals;

namespace {

class LiveLinkTest : public PanelFixture {
protected:
    // Starts the emulator with `faults` and gives its terminal's path.
    QString start(const QStringList& faults = {})
    {
        return emulator.startOn(folder.filePath("handset.json"), {}, faults);
    }

    QString mdn() { return host->GetItemFromGrd(0, 1, 0); }

    QTemporaryDir folder;
    Emulator emulator;
};

} // namespace

TEST_F(LiveLinkTest, ReadWriteAndRestoreGoOverTheLineAndLast)
{
    const QString port = start({"--events"}); // event reports before every reply are skipped
    {
        link::SerialLink line(port, 1s);
        link::LiveNvMemory memory(line, {});
        model::SimulatedHandset handset(*host, memory);
        handset.NVRead();
        EXPECT_EQ(mdn(), "8585550143");
        host->AddItemToGrd(0, {}, true, false, {}, QStringLiteral("8585550199"), 1, 1);
        handset.NVWrite();
    }
    // A new session reads what was written; Restore puts back that read.
    link::SerialLink again(port, 1s);
    link::LiveNvMemory memory(again, {});
    model::SimulatedHandset handset(*host, memory);
    host->AddItemToGrd(0, {}, true, false, {}, QString(), 1, 1);
    handset.NVRead();
    EXPECT_EQ(mdn(), "8585550199");
    host->AddItemToGrd(0, {}, true, false, {}, QStringLiteral("8585550111"), 1, 1);
    handset.NVRestore();
    EXPECT_EQ(mdn(), "8585550199");
}

TEST_F(LiveLinkTest, LineDyingMidWriteTellsWhatWasWrittenAndTheBarComesBack)
{
    // The line lasts for the read and one item written and read back.
    const auto reads = qsizetype(model::Catalogue::BuiltIn().addresses().size());
    link::SerialLink line(start({"--dead-after", QString::number(reads + 2)}), 200ms);
    link::LiveNvMemory memory(line, {});
    model::SimulatedHandset handset(*host, memory);
    handset.setIdentity(QStringLiteral("TESSALY-EMU"), line.portName());
    host->SetModelDLL(&handset);
    clickCommand(0);
    host->AddItemToGrd(0, {}, true, false, {}, QStringLiteral("8585550177"), 1, 1);
    host->AddItemToGrd(1, {}, false, false, {}, QStringLiteral("Mine"), 1, 1);
    DialogAnswerer answerer;
    clickCommand(1);
    ASSERT_EQ(answerer.texts().size(), 1);
    const QString told = answerer.texts()[0];
    EXPECT_TRUE(told.contains(QStringLiteral("NV Write failed at NV item 178 (index 0), \"Mobile Directory Number "
                                             "(MDN)\" on the page System NAM1, on %1")
                                  .arg(line.portName())))
        << qPrintable(told);
    EXPECT_TRUE(told.contains(QLatin1String("Written and verified before it: NV item 71.")));
    EXPECT_TRUE(told.contains(QLatin1String("Not written: NV item 178 (index 0).")));
    EXPECT_TRUE(panel().picCommand(1)->isEnabled()) << "the command bar is back at rest";
}

// The line lasts for one read only: a write that went out would find it
// dead. An item the catalogue protects is refused here, whoever asks.
TEST_F(LiveLinkTest, ProtectedItemIsNeverSentToTheHandset)
{
    link::SerialLink line(start({"--dead-after", "1"}), 100ms);
    link::LiveNvMemory memory(line, {});
    const model::NvAddress lifeTime{55, -1}; // a counter
    model::NvData counter{};
    ASSERT_EQ(memory.read(lifeTime, counter), model::NvStatus::Done);
    ++counter[0];
    EXPECT_EQ(memory.write(lifeTime, counter), model::NvStatus::ReadOnly);
}

TEST_F(LiveLinkTest, WindowKeepsPaintingWhileALiveCommandWaits)
{
    link::SerialLink line(start(), 1s);
    link::LiveNvMemory memory(line, {});
    model::SimulatedHandset handset(*host, memory);
    bool served = false;
    bool servedDuringRead = false;
    QTimer::singleShot(0, [&] { served = true; });
    QObject::connect(&handset, &IBaseModelEvents::SetSubProcessStep, [&](int32_t number, int32_t status, int32_t) {
        if (number == 1 && status == 2)
            servedDuringRead = served;
    });
    handset.NVRead();
    EXPECT_TRUE(servedDuringRead);
}

// An older handset without a build id, named from its version reply's
// fields, and without an MEID.
TEST_F(LiveLinkTest, LabelAndBasicInformationNameTheHandsetAsItSaysItself)
{
    link::SerialLink line(start({"--model", "SIM-300"}), 1s);
    const link::HandsetIdentity identity = link::QueryIdentity(line);
    EXPECT_TRUE(identity.meid.isEmpty());
    link::LiveNvMemory memory(line, {});
    model::SimulatedHandset handset(*host, memory);
    handset.setIdentity(identity.model, QStringLiteral("7"));
    handset.setSoftwareVersion(identity.softwareVersion);
    host->SetModelDLL(&handset);
    DialogAnswerer answerer; // it tells that it lacks the MEID
    clickCommand(0);
    EXPECT_EQ(panel().lblModelPortInfo->Caption(), "HV300 (model 30)  (COM7)");
    EXPECT_EQ(panel().txtPhoneSWVer->Text(), "HV300 rev 112");
    EXPECT_EQ(panel().txtMEID->Text(), "");
    host->SetModelDLL(nullptr);
}
