// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The port listing over a fake sysfs and /proc: what each port is, who
// holds it, whether it may be opened, and how the listing tells it; the list
// of known diagnostic interfaces and the udev rule made from it.
#include "link/DiagInterfaces.h"
#include "link/PortAdvice.h"
#include "link/PortList.h"
#include "link/PortReport.h"

#include "support/FakeSystem.h"

#include <QFile>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace tessaly::link;

namespace {

// As a user outside the node's owner and group: only the bits for others.
bool OthersMayOpen(const QString& node)
{
    struct stat status {};
    return ::stat(QFile::encodeName(node).constData(), &status) == 0 && (status.st_mode & 006) == 006;
}

const SerialPortEntry& Named(const std::vector<SerialPortEntry>& ports, const QString& device)
{
    for (const SerialPortEntry& port : ports)
        if (port.device == device)
            return port;
    throw std::runtime_error("not listed: " + device.toStdString());
}

class PortListTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        system.addUsbPort("ttyUSB0", {0x05c6, 0x9002, 0, "Qualcomm", "CDMA Handset"});
        system.addUsbPort("ttyACM0", {0x1546, 0x01a8, 2, "u-blox", "GNSS", 0x0a});
        system.addBuiltInPort("ttyS0", 4);
        system.addBuiltInPort("ttyS1", 0);
        system.addVirtualTty("tty0");
        for (const char* node : {"/dev/ttyUSB0", "/dev/ttyACM0", "/dev/ttyS0"})
            QFile::setPermissions(system.path(QLatin1String(node)),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::WriteGroup
                                      | QFile::ReadOther | QFile::WriteOther);
    }

    std::vector<SerialPortEntry> list() const { return ListPorts(system.root(), KnownDiagInterfaces(), OthersMayOpen); }

    FakeSystem system;
};

TEST_F(PortListTest, ListsUsbAndBuiltInPortsWithWhatSysfsTellsAndLeavesOutTheRest)
{
    const std::vector<SerialPortEntry> ports = list();
    ASSERT_EQ(ports.size(), 3u); // no absent ttyS1, no virtual console
    EXPECT_EQ(QStringList({ports[0].device, ports[1].device, ports[2].device}),
              QStringList({"/dev/ttyACM0", "/dev/ttyS0", "/dev/ttyUSB0"}));

    const SerialPortEntry& handset = Named(ports, "/dev/ttyUSB0");
    ASSERT_TRUE(handset.usb);
    EXPECT_EQ(std::tuple(handset.usb->vendorId, handset.usb->productId, handset.usb->interfaceNumber,
                         handset.usb->interfaceClass, handset.usb->manufacturer),
              std::tuple(0x05c6, 0x9002, 0, 0xff, QStringLiteral("Qualcomm")));
    ASSERT_NE(handset.usb->diagnostic, nullptr);
    EXPECT_EQ(handset.usb->device, system.usbDevice("ttyUSB0"));
    EXPECT_EQ(handset.node, system.path("/dev/ttyUSB0"));

    // The interface is found on a port straight on its interface too; a
    // known vendor on another interface is no diagnostic port.
    const SerialPortEntry& acm = Named(ports, "/dev/ttyACM0");
    ASSERT_TRUE(acm.usb);
    EXPECT_EQ(std::tuple(acm.usb->interfaceNumber, acm.usb->interfaceClass), std::tuple(2, 0x0a));
    EXPECT_EQ(acm.usb->diagnostic, nullptr);
    EXPECT_FALSE(Named(ports, "/dev/ttyS0").usb);
    EXPECT_EQ(PortLine({Named(ports, "/dev/ttyS0"), std::nullopt}), "/dev/ttyS0  serial8250  permitted");
}

TEST_F(PortListTest, ProgramsHoldingAPortAreNamedFromProc)
{
    system.hold(812, "ModemManager", "/dev/ttyUSB0");
    system.hold(900, "minicom", "/dev/ttyS0");
    system.hold(901, "bash", "/dev/pts/3");
    const std::vector<SerialPortEntry> ports = list();

    const SerialPortEntry& handset = Named(ports, "/dev/ttyUSB0");
    ASSERT_EQ(handset.holders.size(), 1u);
    EXPECT_TRUE(handset.heldBy(u"ModemManager"));
    EXPECT_EQ(WhyNotProbed(handset), "held by ModemManager (pid 812)");
    EXPECT_TRUE(Named(ports, "/dev/ttyACM0").holders.empty());

    const QJsonObject json = PortsJson({{handset, std::nullopt}})[0].toObject();
    EXPECT_EQ(json[QStringLiteral("heldBy")][0][QStringLiteral("program")].toString(), "ModemManager");
    EXPECT_EQ(json[QStringLiteral("usb")][QStringLiteral("vendorId")].toString(), "05c6");
    EXPECT_TRUE(json[QStringLiteral("usb")][QStringLiteral("handsetDiagnosticPort")].toBool());
    EXPECT_TRUE(json[QStringLiteral("probe")].isNull());

    system.release(812);
    EXPECT_TRUE(HoldersOf(system.root(), "/dev/ttyUSB0").empty());
}

TEST_F(PortListTest, APortNotPermittedNamesItsGroupAndBothWaysOut)
{
    QFile::setPermissions(system.path("/dev/ttyUSB0"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::WriteGroup);
    const std::vector<SerialPortEntry> ports = list();
    const SerialPortEntry& port = Named(ports, "/dev/ttyUSB0");
    EXPECT_FALSE(port.permitted);
    EXPECT_EQ(port.mode, 0660u);
    EXPECT_FALSE(port.group.isEmpty());
    EXPECT_EQ(WhyNotProbed(port), QStringLiteral("not permitted (group %1)").arg(port.group));
    EXPECT_TRUE(PortLine({port, std::nullopt}).contains(QStringLiteral("not permitted (group %1, mode 0660)").arg(port.group)));

    const QString advice = NotPermittedAdvice(port.device, "dialout");
    for (const char* part : {"/dev/ttyUSB0", "group dialout", "sudo usermod -aG dialout $USER", "log in again",
                             "60-tessaly-handsets.rules", "udevadm control --reload", "udevadm trigger"})
        EXPECT_TRUE(advice.contains(QLatin1String(part))) << part << " in " << qPrintable(advice);

    const QJsonObject json = PortsJson({{port, std::nullopt}})[0].toObject();
    EXPECT_FALSE(json[QStringLiteral("permitted")].toBool());
    EXPECT_EQ(json[QStringLiteral("mode")].toString(), "0660");
}

TEST(DiagInterfacesTest, ListEntriesParseAndAMalformedLineIsRefused)
{
    const auto parsed = ParseDiagInterfaces(u"# a comment\n\n05C6 9002 00 Some handset  # trailing note\n1410 a001 01 Other\n");
    ASSERT_EQ(parsed.size(), 2u);
    EXPECT_EQ(parsed[0].vendorId, 0x05c6);
    EXPECT_EQ(parsed[0].name, "Some handset");
    EXPECT_EQ(parsed[1].interfaceNumber, 1);
    EXPECT_NE(FindDiagInterface(parsed, 0x1410, 0xa001, 1), nullptr);
    EXPECT_EQ(FindDiagInterface(parsed, 0x1410, 0xa001, 0), nullptr);
    EXPECT_THROW(ParseDiagInterfaces(u"05c6 9002 Some handset\n"), std::invalid_argument);
    EXPECT_FALSE(KnownDiagInterfaces().empty());
}

// The rule the build made: every line a comment, a label or a list of
// well-formed keys, every GOTO to a label of the file, and for each known
// interface a line that matches it and sets both properties. udevadm
// checks it too where it can.
TEST(UdevRuleTest, RuleIsWellFormedAndCoversEveryKnownInterface)
{
    QFile file(QStringLiteral(TESSALY_UDEV_RULE));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    static const QRegularExpression key(QStringLiteral(
        R"re(^([A-Z_]+(\{[A-Za-z_.]+\})?)\s*(==|!=|=|\+=|-=|:=)\s*"([^"]*)"$)re"));
    QStringList labels;
    QStringList gotos;
    QStringList rules;
    for (const QString& line : lines) {
        if (line.startsWith(QLatin1Char('#')))
            continue;
        rules << line;
        for (const QString& part : line.split(", ")) {
            const QRegularExpressionMatch match = key.match(part.trimmed());
            ASSERT_TRUE(match.hasMatch()) << "not a udev key: " << qPrintable(part);
            if (match.captured(1) == QLatin1String("LABEL"))
                labels << match.captured(4);
            if (match.captured(1) == QLatin1String("GOTO"))
                gotos << match.captured(4);
        }
    }
    for (const QString& label : gotos)
        EXPECT_TRUE(labels.contains(label)) << qPrintable(label);
    for (const DiagInterface& known : KnownDiagInterfaces()) {
        const QString match = QStringLiteral(R"(ATTRS{idVendor}=="%1", ATTRS{idProduct}=="%2", ENV{.TESSALY_IFNUM}=="%3")")
                                  .arg(known.vendorId, 4, 16, QLatin1Char('0'))
                                  .arg(known.productId, 4, 16, QLatin1Char('0'))
                                  .arg(known.interfaceNumber, 2, 16, QLatin1Char('0'));
        const auto rule = std::find_if(rules.begin(), rules.end(), [&](const QString& r) { return r.contains(match); });
        ASSERT_NE(rule, rules.end()) << qPrintable(match);
        EXPECT_TRUE(rule->contains(QLatin1String(R"(ENV{ID_MM_PORT_IGNORE}="1")")));
        EXPECT_TRUE(rule->contains(QLatin1String(R"(TAG+="uaccess")")));
    }

    const QString udevadm = QStandardPaths::findExecutable("udevadm");
    if (udevadm.isEmpty() || QProcess::execute(udevadm, {"verify", "--help"}) != 0)
        return; // an udev without verify: the parse above is the check
    EXPECT_EQ(QProcess::execute(udevadm, {"verify", QStringLiteral(TESSALY_UDEV_RULE)}), 0);
}

} // namespace
