// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// tessaly-emu serving a bench of handsets (--count), each with its own
// terminal, identity and state file, and announcing them in the runtime
// folder; halvane finding them there with --list-ports and --port auto, and
// passing over announcements whose emulator or terminal is gone.
#include "link/DiagPackets.h"
#include "link/EmulatedPorts.h"
#include "link/IdentityText.h"
#include "link/PortReport.h"
#include "link/SerialLink.h"
#include "model/Catalogue.h"
#include "model/NvFile.h"
#include "support/FakeSystem.h"
#include "support/Packets.h"
#include "support/Programs.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tessaly;
using namespace tessaly::link;
using namespace std::chrono_literals;

namespace {

// What one handset says of itself: "ESN MEID".
std::string IdentityOn(SerialLink& line)
{
    const QByteArray esn = EsnRequest();
    const QByteArray meid = NvItemRequest(CmdNvRead, model::MeidItem, {});
    return QStringLiteral("%1 %2")
        .arg(ParseEsn(esn, line.transact(esn)), 8, 16, QLatin1Char('0'))
        .arg(MeidHex(ParseNvItem(meid, line.transact(meid)).data))
        .toUpper()
        .toStdString();
}

QByteArray Contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The announcements in `folder`, by file name.
std::map<QString, EmulatorAnnouncement> Announced(const QString& folder)
{
    std::map<QString, EmulatorAnnouncement> found;
    const QDir dir(folder);
    for (const QString& name : dir.entryList(QDir::Files))
        if (const auto announcement = ParseAnnouncement(Contents(dir.filePath(name))))
            found[name] = *announcement;
    return found;
}

class EmulatorBenchTest : public ::testing::Test {
protected:
    QString path(const char* name) const { return folder.filePath(QLatin1String(name)); }
    QString announcements() const { return runtime.filePath(QStringLiteral("tessaly-emu")); }

    QTemporaryDir folder;
    QTemporaryDir runtime; // the emulator's and halvane's XDG_RUNTIME_DIR, mode 0700
    Emulator emulator{runtime.path()};
};

} // namespace

TEST_F(EmulatorBenchTest, EachHandsetHasItsOwnTerminalIdentityAndStateFile)
{
    // Handset 1's file is there already: it keeps the identity it holds, an
    // ESN of its own and the factory MEID.
    model::NvFile first;
    for (const auto& [address, data] : model::Catalogue::BuiltIn().factory())
        first.entries.push_back({address, model::NvStatus::Done, data});
    for (model::NvEntry& entry : first.entries)
        if (entry.address.item == model::EsnItem)
            entry.data = {0x78, 0x56, 0x34, 0x12};
    ASSERT_EQ(model::WriteNvFile(path("bench-1.json"), first), "");
    const QByteArray firstBefore = Contents(path("bench-1.json"));

    const QStringList terminals = emulator.startBench(path("bench.json"), 3);
    ASSERT_EQ(terminals.size(), 3);
    EXPECT_EQ(QSet<QString>(terminals.begin(), terminals.end()).size(), 3) << qPrintable(terminals.join(' '));
    std::vector<std::unique_ptr<SerialLink>> lines;
    for (const QString& terminal : terminals)
        lines.push_back(std::make_unique<SerialLink>(terminal, 1s));

    // The new ones have the factory identity with the serial number moved on
    // by their number: the maker's code stays.
    EXPECT_EQ(IdentityOn(*lines[0]), "12345678 A0000031F4C2D9");
    EXPECT_EQ(IdentityOn(*lines[1]), "8F3A21C6 A0000031F4C2DB");
    EXPECT_EQ(IdentityOn(*lines[2]), "8F3A21C7 A0000031F4C2DC");

    // A write to handset 2 is kept in its file alone.
    model::NvData lock{};
    lock[0] = '4';
    const QByteArray write = NvItemRequest(CmdNvWrite, 82, lock);
    EXPECT_EQ(ParseNvItem(write, lines[1]->transact(write)).status, 0);
    const QByteArray read = NvItemRequest(CmdNvRead, 82, {});
    EXPECT_EQ(ParseNvItem(read, lines[1]->transact(read)).data[0], '4');
    for (const int other : {0, 2})
        EXPECT_EQ(ParseNvItem(read, lines[size_t(other)]->transact(read)).data[0], '0') << "handset " << other + 1;
    model::NvFile second;
    ASSERT_EQ(model::ReadNvFile(path("bench-2.json"), model::NvFileKind::Memory, second), "");
    EXPECT_TRUE(std::any_of(second.entries.begin(), second.entries.end(), [](const model::NvEntry& entry) {
        return entry.address.item == 82 && entry.data[0] == '4';
    }));
    EXPECT_EQ(Contents(path("bench-1.json")), firstBefore);
    EXPECT_FALSE(QFile::exists(path("bench-3.json")));
    EXPECT_FALSE(QFile::exists(path("bench.json")));
}

TEST_F(EmulatorBenchTest, FaultOptionsApplyToEveryHandset)
{
    const QStringList terminals = emulator.startBench(path("bench.json"), 2, {"--dead-after", "1"});
    ASSERT_EQ(terminals.size(), 2);
    for (const QString& terminal : terminals) {
        SerialLink line(terminal, 300ms);
        EXPECT_EQ(ErrorOf([&] { line.transact(EsnRequest()); }), 0) << qPrintable(terminal);
        EXPECT_NE(ErrorOf([&] { line.transact(EsnRequest()); }), 0) << qPrintable(terminal) << " stays silent";
    }
}

TEST_F(EmulatorBenchTest, TerminalsAreAnnouncedWhileItServesAndTakenBackWhenItIsStopped)
{
    const QStringList terminals = emulator.startBench(path("bench.json"), 2, {"--model", "SIM-300"});
    ASSERT_EQ(terminals.size(), 2);
    const std::map<QString, EmulatorAnnouncement> announced = Announced(announcements());
    ASSERT_EQ(announced.size(), 2u);
    int k = 0;
    for (const auto& [name, announcement] : announced) {
        ++k;
        EXPECT_EQ(name, QStringLiteral("%1-%2.json").arg(emulator.processId()).arg(k));
        EXPECT_EQ(announcement.terminal, terminals[k - 1]);
        EXPECT_EQ(announcement.pid, emulator.processId());
        EXPECT_EQ(announcement.model, "HV300 (model 30)") << "as halvane names it";
        EXPECT_EQ(announcement.esn, k == 1 ? "8F3A21C5" : "8F3A21C6");
        EXPECT_EQ(announcement.meid, "") << "this model has none";
    }

    emulator.terminate();
    ASSERT_TRUE(emulator.waitForFinished(5000));
    EXPECT_EQ(emulator.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(emulator.exitCode(), 0);
    EXPECT_TRUE(QDir(announcements()).isEmpty()) << qPrintable(QDir(announcements()).entryList().join(' '));
}

TEST_F(EmulatorBenchTest, ACountThatIsNotAWholeNumberOfOneOrMoreIsBadUsage)
{
    for (const char* count : {"0", "x"}) {
        emulator.start(QStringLiteral(TESSALY_EMU), {"--state", path("bench.json"), "--count", count});
        ASSERT_TRUE(emulator.waitForFinished(5000));
        EXPECT_EQ(emulator.exitCode(), 2) << count;
        EXPECT_TRUE(emulator.readAllStandardError().contains(
            QStringLiteral("--count wants a whole number of 1 or more, not \"%1\"").arg(count).toUtf8()));
        EXPECT_TRUE(emulator.readAllStandardOutput().isEmpty());
    }
}

// Announcements written out by the test: terminals are plain files, and
// which processes run is the test's say.
TEST(EmulatedPortsTest, LiveAnnouncementsBecomePortsInTerminalOrderAndStaleOnesArePassedOver)
{
    QTemporaryDir folder;
    const QDir dir(folder.path());
    ASSERT_TRUE(dir.mkpath(QStringLiteral("pts")));
    for (const char* terminal : {"pts/9", "pts/10", "pts/11"})
        QFile(dir.filePath(QLatin1String(terminal))).open(QIODevice::WriteOnly);
    const auto announce = [&](const char* name, const QByteArray& bytes) {
        QFile file(dir.filePath(QLatin1String(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    };
    const QByteArray pts = QFile::encodeName(dir.filePath(QStringLiteral("pts/")));
    announce("100-2.json", R"({"terminal": ")" + pts + R"(10", "pid": 100, "handset": 2, "model": "Halvane SIM-800",
                                "esn": "8F3A21C6", "meid": "A0000031F4C2DB"})");
    announce("100-1.json", R"({"terminal": ")" + pts + R"(9", "pid": 100, "handset": 1, "esn": "8F3A21C5"})");
    announce("200-1.json", R"({"terminal": ")" + pts + R"(11", "pid": 200, "esn": "8F3A21C5"})"); // no longer runs
    announce("100-3.json", R"({"terminal": ")" + pts + R"(12", "pid": 100, "esn": "8F3A21C7"})"); // terminal gone
    announce("100-4.json", "{\"terminal\": \"");                                                 // cut short
    announce("100-5.json", R"({"pid": 100})");                                                   // no terminal

    const std::vector<SerialPortEntry> ports
        = EmulatedPorts(folder.path(), [](qint64 pid) { return pid == 100; }, [](const QString&) { return true; });
    ASSERT_EQ(ports.size(), 2u);
    EXPECT_EQ(ports[0].device, dir.filePath(QStringLiteral("pts/9")));
    EXPECT_EQ(ports[1].device, dir.filePath(QStringLiteral("pts/10")));
    EXPECT_EQ(ports[1].node, ports[1].device);
    EXPECT_EQ(WhyNotProbed(ports[1]), "") << "the emulator's own hold on its terminal is no reason to pass it over";

    EXPECT_EQ(PortLine({ports[1], std::nullopt}),
              ports[1].device + "  emulated handset (tessaly-emu, pid 100, ESN 8F3A21C6)  permitted");
    const QJsonArray json = PortsJson({{ports[0], std::nullopt}, {ports[1], std::nullopt}});
    EXPECT_EQ(json[1][QStringLiteral("emulated")][QStringLiteral("meid")].toString(), "A0000031F4C2DB");
    EXPECT_EQ(json[1][QStringLiteral("emulated")][QStringLiteral("handset")].toInt(), 2);
    EXPECT_TRUE(json[0][QStringLiteral("emulated")][QStringLiteral("meid")].isNull());
    EXPECT_TRUE(json[0][QStringLiteral("usb")].isNull());

    // This test's own process runs, but it is no emulator.
    EXPECT_FALSE(EmulatorRuns(QCoreApplication::applicationPid()));
}

// halvane over a machine with no serial port of its own, as a newcomer runs
// it beside the emulator.
class EmulatedPortChoiceTest : public EmulatorBenchTest {
protected:
    Outcome halvane(const QStringList& arguments)
    {
        QProcessEnvironment environment;
        environment.insert("TESSALY_SYSTEM_ROOT", system.root());
        environment.insert("XDG_RUNTIME_DIR", runtime.path());
        return RunHalvane(folder.path(), arguments, environment);
    }

    FakeSystem system;
};

TEST_F(EmulatedPortChoiceTest, ListingShowsEmulatedHandsetsAndAutoTakesTheOneThereIs)
{
    // A stale announcement beside the live one: its emulator was killed and
    // its pid is one no emulator has.
    ASSERT_TRUE(QDir().mkpath(announcements()));
    EmulatorAnnouncement stale{QStringLiteral("/dev/null"), QCoreApplication::applicationPid(), 1, {}, "8F3A21C4", {}};
    QFile file(announcements() + QLatin1Char('/') + AnnouncementFileName(stale));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(EncodeAnnouncement(stale));
    file.close();

    const QString terminal = emulator.startOn(path("handset.json"));
    const Outcome listed = halvane({"--list-ports"});
    EXPECT_EQ(listed.status, 0);
    EXPECT_EQ(listed.out, QStringLiteral("%1  emulated handset (tessaly-emu, pid %2, ESN 8F3A21C4)  permitted\n")
                              .arg(terminal)
                              .arg(emulator.processId()));

    const Outcome probed = halvane({"--list-ports", "--probe", "--json", "--probe-time", "2000"});
    const QJsonArray ports = QJsonDocument::fromJson(probed.out.toUtf8()).array();
    ASSERT_EQ(ports.size(), 1) << qPrintable(probed.out);
    EXPECT_EQ(ports[0][QStringLiteral("emulated")][QStringLiteral("pid")].toInteger(), emulator.processId());
    EXPECT_EQ(ports[0][QStringLiteral("probe")][QStringLiteral("model")].toString(), "Halvane SIM-800");

    const Outcome info = halvane({"--port", "auto", "--info", "--probe-time", "2000"});
    EXPECT_EQ(info.status, 0) << qPrintable(info.err);
    EXPECT_TRUE(info.out.contains(QLatin1String("ESN: 8F3A21C4\nMEID: A0000031F4C2D9\n"))) << qPrintable(info.out);
}
