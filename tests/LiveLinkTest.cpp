// The live handset's link end to end: the model over the serial link to the
// emulator on a real pseudo-terminal, and the faults of handsets and lines
// with what the user is told.
#include "link/Backup.h"
#include "link/LiveNvMemory.h"
#include "model/SimulatedHandset.h"
#include "support/PanelFixture.h"

#include <QProcess>
#include <QTemporaryDir>

using namespace tessaly;
using namespace std::chrono_literals;

namespace {

class LiveLinkTest : public PanelFixture {
protected:
    void TearDown() override
    {
        emulator.kill();
        emulator.waitForFinished();
        PanelFixture::TearDown();
    }

    // Starts the emulator with `faults` and gives its terminal's path.
    QString start(const QStringList& faults = {})
    {
        emulator.start(QStringLiteral(TESSALY_EMU), QStringList{"--state", folder.filePath("handset.json")} + faults);
        EXPECT_TRUE(emulator.waitForReadyRead(5000));
        return QString::fromLocal8Bit(emulator.readLine()).trimmed();
    }

    // The description of the failure of `call`, or an empty string.
    static QString failureOf(const std::function<void()>& call)
    {
        try {
            call();
        } catch (const TessalyError& error) {
            return error.description();
        }
        return {};
    }

    QString mdn() { return host->GetItemFromGrd(0, 1, 0); }

    QProcess emulator;
    QTemporaryDir folder;
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
        EXPECT_EQ(host->GetItemFromGrd(20, 1, 0), "6195550172");
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

TEST_F(LiveLinkTest, FaultsOfHandsetAndLineAreToldPlainly)
{
    EXPECT_TRUE(failureOf([] { link::SerialLink line(QStringLiteral("/dev/no-such-port")); })
                    .contains(QLatin1String("There is no port /dev/no-such-port")));

    // A locked handset: a wrong SPC writes nothing, the right one unlocks it.
    QString port = start({"--spc", "123456"});
    {
        link::SerialLink line(port, 1s);
        QString spc = QStringLiteral("000000");
        link::LiveNvMemory memory(line, [&] { return spc; });
        model::SimulatedHandset handset(*host, memory);
        handset.NVRead();
        host->AddItemToGrd(0, {}, true, false, {}, QStringLiteral("8585550177"), 1, 1);
        EXPECT_TRUE(failureOf([&] { handset.NVWrite(); }).contains(QLatin1String("refused the SPC")));
        spc = QStringLiteral("123456");
        EXPECT_EQ(failureOf([&] { handset.NVWrite(); }), QString());
    }
    emulator.kill();
    emulator.waitForFinished();

    // A slow handset is waited for, within the reply time.
    port = start({"--slow", "150"});
    {
        link::SerialLink slowLine(port, 1s);
        EXPECT_EQ(link::ParseEsn(link::EsnRequest(), slowLine.transact(link::EsnRequest())), 0x8F3A21C4u);
    }
    emulator.kill();
    emulator.waitForFinished();

    // A reply with a broken CRC is asked for again; a line that goes dead is told.
    port = start({"--bad-crc", "2", "--dead-after", "4"});
    link::SerialLink line(port, 300ms);
    EXPECT_EQ(link::ParseEsn(link::EsnRequest(), line.transact(link::EsnRequest())), 0x8F3A21C4u);
    EXPECT_EQ(link::ParseEsn(link::EsnRequest(), line.transact(link::EsnRequest())), 0x8F3A21C4u);
    EXPECT_TRUE(failureOf([&] { line.transact(link::EsnRequest()); }).contains(QLatin1String("does not answer")));
}

TEST_F(LiveLinkTest, EveryReadKeepsABackupThatRestoresOnlyItsOwnHandset)
{
    const QString port = start();
    link::SerialLink line(port, 1s);
    link::LiveNvMemory memory(line, {});
    memory.setBackupFolder(folder.filePath("backups"));
    model::SimulatedHandset handset(*host, memory);
    handset.NVRead();
    const QString first = memory.lastBackup();
    handset.NVRead();
    EXPECT_NE(memory.lastBackup(), first) << "never written over";
    link::Backup backup = link::Backup::Load(first);
    EXPECT_EQ(backup.esn, "8F3A21C4");

    host->AddItemToGrd(0, {}, true, false, {}, QStringLiteral("8585550123"), 1, 1);
    handset.NVWrite();
    const QStringList outcomes = link::RestoreBackup(backup, memory);
    EXPECT_TRUE(outcomes.contains(QStringLiteral("NV item 178 (index 0): restored"))) << qPrintable(outcomes.join('\n'));
    EXPECT_TRUE(outcomes.contains(QStringLiteral("NV item 0: skipped (identity)")));
    handset.NVRead();
    EXPECT_EQ(mdn(), "8585550143");

    backup.esn = QStringLiteral("12345678");
    EXPECT_TRUE(failureOf([&] { link::RestoreBackup(backup, memory); }).contains(QLatin1String("another handset")));
}
