// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane over a fake sysfs and /proc whose ports lead to emulated handsets
// and dead lines: --list-ports, --port auto with none, one and two handsets,
// and ModemManager asked to let go of a port, on a bus of the test's own.
#include "support/FakeSystem.h"
#include "support/Programs.h"
#include "support/PseudoTerminal.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QDeadlineTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace {

const FakeSystem::Usb Handset{0x05c6, 0x9002, 0, "Qualcomm", "CDMA Handset"};
const FakeSystem::Usb Converter{0x0403, 0x6001, 0, "FTDI", "FT232R"};
// Where a handset must answer, the probe waits long enough for a machine
// under load; where none does, it keeps halvane's own time.
const QString HandsetProbeTime = QStringLiteral("2000");

class PortChoiceTest : public ::testing::Test {
protected:
    void TearDown() override
    {
        for (QProcess* process : {&bus, &modemManager})
            if (process->state() != QProcess::NotRunning) {
                process->kill();
                process->waitForFinished();
            }
    }

    // A new emulated handset's terminal.
    QString handset()
    {
        auto& emulator = emulators.emplace_back(std::make_unique<Emulator>());
        return emulator->startOn(folder.filePath(QStringLiteral("handset%1.json").arg(emulators.size())));
    }

    // A message bus of the test's own, which halvane takes for the system's.
    void startBus()
    {
        bus.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        ASSERT_TRUE(bus.waitForReadyRead(10000)) << "dbus-daemon did not start";
        busAddress = QString::fromLocal8Bit(bus.readLine()).trimmed();
    }

    void startModemManager(const QStringList& arguments)
    {
        modemManager.start(QStringLiteral(MOCK_MODEMMANAGER), QStringList{"--bus", busAddress} + arguments);
        ASSERT_TRUE(modemManager.waitForReadyRead(10000)) << qPrintable(modemManager.readAllStandardError());
    }

    Outcome halvane(const QStringList& arguments)
    {
        QProcessEnvironment environment;
        environment.insert("TESSALY_SYSTEM_ROOT", system.root());
        if (!busAddress.isEmpty())
            environment.insert("DBUS_SYSTEM_BUS_ADDRESS", busAddress);
        return RunHalvane(folder.path(), arguments, environment);
    }

    QTemporaryDir folder;
    FakeSystem system;
    std::vector<std::unique_ptr<Emulator>> emulators;
    PseudoTerminal silent;
    PseudoTerminal noisy{PseudoTerminal::Behaviour::Garbage};
    QProcess bus;
    QProcess modemManager;
    QString busAddress;
};

TEST_F(PortChoiceTest, ListingTellsEachPortAndAutoTakesTheOneWhereAHandsetAnswers)
{
    system.addUsbPort("ttyUSB0", Handset, handset());
    system.addUsbPort("ttyUSB1", Converter, noisy.path());
    system.addBuiltInPort("ttyS0", 4, silent.path());

    const Outcome listed = halvane({"--list-ports"});
    EXPECT_EQ(listed.status, 0);
    EXPECT_TRUE(listed.out.contains(QLatin1String("/dev/ttyUSB0  05c6:9002 \"Qualcomm CDMA Handset\" interface 0 class ff  "
                                                  "handset diagnostic port  permitted")))
        << qPrintable(listed.out);

    const Outcome probed = halvane({"--list-ports", "--probe", "--json", "--probe-time", HandsetProbeTime});
    EXPECT_EQ(probed.status, 0);
    const QJsonArray ports = QJsonDocument::fromJson(probed.out.toUtf8()).array();
    ASSERT_EQ(ports.size(), 3) << qPrintable(probed.out);
    EXPECT_EQ(ports[0][QStringLiteral("device")].toString(), "/dev/ttyS0");
    EXPECT_EQ(ports[0][QStringLiteral("probe")][QStringLiteral("failure")].toString(), "no answer");
    EXPECT_EQ(ports[1][QStringLiteral("probe")][QStringLiteral("model")].toString(), "Halvane SIM-800");
    EXPECT_FALSE(ports[1][QStringLiteral("probe")][QStringLiteral("esn")].toString().isEmpty());
    EXPECT_FALSE(ports[2][QStringLiteral("probe")][QStringLiteral("answered")].toBool());

    const Outcome read = halvane({"--port", "auto", "--read", "--probe-time", HandsetProbeTime});
    EXPECT_EQ(read.status, 0) << qPrintable(read.err);
    EXPECT_TRUE(read.out.trimmed().endsWith(QLatin1String(".json"))) << qPrintable(read.out);
}

TEST_F(PortChoiceTest, AutoWithNoHandsetTellsEachPortTriedAndWhyItWasPassedOver)
{
    system.addUsbPort("ttyUSB1", Converter, noisy.path());
    system.addBuiltInPort("ttyS0", 4, silent.path());
    // A handset another program holds is not asked at all.
    system.addUsbPort("ttyUSB2", Handset, handset());
    system.hold(4242, "minicom", "/dev/ttyUSB2");

    const Outcome outcome = halvane({"--port", "auto", "--read"});
    EXPECT_EQ(outcome.status, 1);
    for (const char* told : {"No handset answered within 300 ms", "/dev/ttyS0: no answer",
                             "/dev/ttyUSB1: answered, but not as a handset does",
                             "/dev/ttyUSB2: held by minicom (pid 4242)"})
        EXPECT_TRUE(outcome.err.contains(QLatin1String(told))) << told << " in " << qPrintable(outcome.err);
    EXPECT_TRUE(outcome.out.isEmpty());
}

TEST_F(PortChoiceTest, AutoWithTwoHandsetsListsThemAndTakesNeither)
{
    system.addUsbPort("ttyUSB0", Handset, handset());
    system.addUsbPort("ttyUSB1", Handset, handset());

    const Outcome outcome = halvane({"--port", "auto", "--read", "--probe-time", HandsetProbeTime});
    EXPECT_NE(outcome.status, 0);
    for (const char* told : {"more than one port", "/dev/ttyUSB0  05c6:9002", "/dev/ttyUSB1  05c6:9002",
                             "answers: Halvane SIM-800", "--port DEVICE"})
        EXPECT_TRUE(outcome.err.contains(QLatin1String(told))) << told << " in " << qPrintable(outcome.err);
    EXPECT_TRUE(outcome.out.isEmpty());
}

class ModemManagerTest : public PortChoiceTest {
protected:
    void SetUp() override
    {
        system.addUsbPort("ttyUSB0", Handset, handset());
        system.hold(812, "ModemManager", "/dev/ttyUSB0");
        startBus();
    }

    QString holding() const { return system.path("/proc/812/fd/7"); }

    // Whether the stand-in says `line` within five seconds.
    bool modemManagerSays(const QByteArray& line)
    {
        const QDeadlineTimer deadline(5000);
        while (true) {
            while (modemManager.canReadLine())
                if (modemManager.readLine().trimmed() == line)
                    return true;
            if (deadline.hasExpired())
                return false;
            modemManager.waitForReadyRead(int(std::max<qint64>(1, deadline.remainingTime())));
        }
    }
};

TEST_F(ModemManagerTest, LetsGoOfTheHandsetsPortWhenAskedForANamedPortOrAuto)
{
    startModemManager({"--uid", system.usbDevice("ttyUSB0"), "--holding", holding()});
    const Outcome named = halvane({"--port", "/dev/ttyUSB0", "--read"});
    EXPECT_EQ(named.status, 0) << qPrintable(named.err);
    EXPECT_TRUE(named.err.contains(QLatin1String("ModemManager let go of /dev/ttyUSB0 for as long as halvane runs.")))
        << qPrintable(named.err);

    // The device is left alone for as long as halvane is on the bus, and
    // taken back when it leaves.
    EXPECT_TRUE(modemManagerSays("taken back"));
    const Outcome automatic = halvane({"--port", "auto", "--read", "--probe-time", HandsetProbeTime});
    EXPECT_EQ(automatic.status, 0) << qPrintable(automatic.err);
    EXPECT_TRUE(automatic.err.contains(QLatin1String("ModemManager let go of /dev/ttyUSB0"))) << qPrintable(automatic.err);
}

// To a user who is not root, /proc hides ModemManager's descriptors: its
// modems' ports and devices come from ModemManager itself.
TEST_F(ModemManagerTest, APortOnlyModemManagerTellsOfIsListedAndReleasedByItsOwnDeviceName)
{
    system.release(812);
    startModemManager({"--uid", "modem-device-1", "--modem-port", "ttyUSB0"});
    const Outcome listed = halvane({"--list-ports"});
    EXPECT_TRUE(listed.out.contains(QStringLiteral("held by ModemManager (pid %1)").arg(modemManager.processId())))
        << qPrintable(listed.out);

    const Outcome read = halvane({"--port", "/dev/ttyUSB0", "--read"});
    EXPECT_EQ(read.status, 0) << qPrintable(read.err);
    EXPECT_TRUE(read.err.contains(QLatin1String("ModemManager let go of /dev/ttyUSB0"))) << qPrintable(read.err);
}

TEST_F(ModemManagerTest, RefusalOrAnUnknownDeviceNamesTheUdevRuleAndHowToLoadIt)
{
    const struct {
        QStringList arguments;
        const char* told;
    } cases[] = {
        {{"--refuse"}, "refused to let go of it (Not authorized to inhibit devices)"},
        {{"--deny"}, "refused to let go of it (Rejected send message"},
        {{"--uid", "/sys/devices/elsewhere"}, "does not know its device"},
    };
    for (const auto& each : cases) {
        startModemManager(each.arguments + QStringList{"--holding", holding()});
        const Outcome outcome = halvane({"--port", "/dev/ttyUSB0", "--read"});
        EXPECT_EQ(outcome.status, 1);
        for (const char* told : {each.told, "60-tessaly-handsets.rules", "sudo udevadm control --reload",
                                 "sudo udevadm trigger"})
            EXPECT_TRUE(outcome.err.contains(QLatin1String(told))) << told << " in " << qPrintable(outcome.err);
        EXPECT_TRUE(outcome.out.isEmpty());
        modemManager.kill();
        modemManager.waitForFinished();
    }
}

TEST_F(ModemManagerTest, NothingIsAskedWhenModemManagerIsNotOnTheBus)
{
    // The port's holder goes by that name, but no ModemManager answers: the
    // port is opened as it is.
    const Outcome outcome = halvane({"--port", "/dev/ttyUSB0", "--read"});
    EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
    EXPECT_FALSE(outcome.err.contains(QLatin1String("ModemManager"))) << qPrintable(outcome.err);
}

} // namespace
