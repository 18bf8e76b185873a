// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The bench window over a fake sysfs and device folder whose ports lead to
// emulated handsets: handsets plugged in and unplugged while it watches,
// backups of several at once with one of them failing, the keyboard and a
// screen reader's view, and halvane --bench rendering it without a display.
#include "bench/BenchTable.h"
#include "bench/BenchWindow.h"
#include "bench/DeviceWatch.h"
#include "link/Backup.h"
#include "support/FakeSystem.h"
#include "support/Programs.h"
#include "support/PseudoTerminal.h"

#include "link/EmulatorAnnouncement.h"
#include "link/PortList.h"
#include "model/Catalogue.h"

#include <QAccessible>
#include <QApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QImage>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

using namespace halvane;

namespace {

tessaly::link::SerialPortEntry Port(const QString& device)
{
    tessaly::link::SerialPortEntry port;
    port.device = device;
    port.node = device;
    return port;
}

const FakeSystem::Usb Handset{0x05c6, 0x9002, 0, "Qualcomm", "CDMA Handset"};
// Generous: a probe and a backup on a machine under load.
constexpr int Patience = 20000;
constexpr std::chrono::milliseconds ProbeTime{2000};

class BenchWindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        // The test's own machine: its ports, its runtime folder where the
        // emulator announces itself, its data folder for the backups, and no
        // system bus.
        qputenv("TESSALY_SYSTEM_ROOT", system.root().toLocal8Bit());
        qputenv("XDG_RUNTIME_DIR", folder.filePath(QStringLiteral("runtime")).toLocal8Bit());
        QDir(folder.path()).mkpath(QStringLiteral("runtime"));
        QFile::setPermissions(folder.filePath(QStringLiteral("runtime")),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_DATA_HOME", folder.filePath(QStringLiteral("data")).toLocal8Bit());
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", QStringLiteral("unix:path=%1/no-bus").arg(folder.path()).toLocal8Bit());
        options.probeTime = ProbeTime;
    }
    void TearDown() override
    {
        window.reset(); // before the handsets its threads may still talk to
        for (const char* name : {"TESSALY_SYSTEM_ROOT", "XDG_RUNTIME_DIR", "XDG_DATA_HOME", "DBUS_SYSTEM_BUS_ADDRESS"})
            qunsetenv(name);
    }

    // A new emulated handset's terminal: the factory's items with an ESN of
    // its own, and `faults`.
    QString handset(const QStringList& faults = {})
    {
        const uint32_t esn = 0x11111111u * uint32_t(emulators.size() + 1);
        tessaly::model::NvFile items;
        for (auto [address, data] : tessaly::model::Catalogue::BuiltIn().factory()) {
            if (address.item == tessaly::model::EsnItem)
                for (int i = 0; i < 4; ++i)
                    data[size_t(i)] = uint8_t(esn >> (8 * i));
            items.entries.push_back({address, tessaly::model::NvStatus::Done, data});
        }
        auto& emulator = emulators.emplace_back(std::make_unique<Emulator>());
        return emulator->startOn(folder.filePath(QStringLiteral("handset%1.json").arg(emulators.size())), items, faults);
    }

    BenchWindow& open()
    {
        window = std::make_unique<BenchWindow>(options, backups());
        return *window;
    }
    // The window on the ports named, once they are probed.
    BenchWindow& openOn(const QStringList& ports)
    {
        open();
        QSignalSpy searched(window.get(), &BenchWindow::searched);
        window->probe(ports);
        EXPECT_TRUE(searched.wait(Patience)) << "the probe did not end";
        return *window;
    }
    // The window watching the test's machine, once its first search ended.
    BenchWindow& watching()
    {
        open();
        QSignalSpy searched(window.get(), &BenchWindow::searched);
        window->watch([] { return tessaly::link::ListPorts(tessaly::link::SystemRoot(), tessaly::link::KnownDiagInterfaces()); });
        EXPECT_TRUE(searched.wait(Patience)) << "the first search did not end";
        return *window;
    }

    QString backups() const { return folder.filePath(QStringLiteral("data/TessalyTests/backups")); }

    BenchTable& table() const { return window->table(); }
    QString cell(int row, BenchTable::Column column) const
    {
        return table().data(table().index(row, column), Qt::DisplayRole).toString();
    }
    // Waits, as the table changes, until `done` holds.
    template <typename Predicate> bool waitUntil(Predicate done)
    {
        QSignalSpy changes(&table(), &QAbstractItemModel::dataChanged);
        const QDeadlineTimer deadline(Patience);
        while (!done()) {
            if (deadline.hasExpired())
                return false;
            changes.wait(int(std::max<qint64>(1, deadline.remainingTime())));
        }
        return true;
    }
    void choose(const std::vector<int>& rows)
    {
        window->view().clearSelection();
        for (int row : rows)
            window->view().selectionModel()->select(table().index(row, 0),
                                                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }

    QTemporaryDir folder;
    FakeSystem system;
    Options options;
    std::vector<std::unique_ptr<Emulator>> emulators;
    std::unique_ptr<BenchWindow> window;
};

} // namespace

TEST_F(BenchWindowTest, AHandsetPluggedInBecomesARowAndOneUnpluggedIsMarkedGone)
{
    const QString first = handset();
    system.addUsbPort("ttyUSB0", Handset, first);
    PseudoTerminal silent; // a port with no handset behind it is no row
    system.addUsbPort("ttyUSB1", Handset, silent.path());
    watching();
    ASSERT_EQ(table().rowCount(), 1);
    EXPECT_EQ(cell(0, BenchTable::Port), "/dev/ttyUSB0");
    EXPECT_EQ(cell(0, BenchTable::Model), "Halvane SIM-800");
    EXPECT_EQ(cell(0, BenchTable::State), "idle");

    QSignalSpy inserted(&table(), &QAbstractItemModel::rowsInserted);
    system.addUsbPort("ttyUSB2", Handset, handset());
    ASSERT_TRUE(inserted.wait(Patience)) << "the plugged handset did not come";
    ASSERT_EQ(table().rowCount(), 2);
    EXPECT_EQ(cell(1, BenchTable::Port), "/dev/ttyUSB2");
    EXPECT_EQ(cell(1, BenchTable::State), "idle");

    system.unplug("ttyUSB0");
    ASSERT_TRUE(waitUntil([&] { return cell(0, BenchTable::State) == "gone"; }));
    choose({0});
    EXPECT_FALSE(window->backUpButton().isEnabled());
    EXPECT_FALSE(window->openButton().isEnabled());
    choose({0, 1});
    EXPECT_TRUE(window->backUpButton().isEnabled()); // the handset still there

    // Plugged in again, its row comes back to life rather than a second one.
    system.addUsbPort("ttyUSB0", Handset, first);
    ASSERT_TRUE(waitUntil([&] { return cell(0, BenchTable::State) == "idle"; }));
    EXPECT_EQ(table().rowCount(), 2);
}

TEST_F(BenchWindowTest, TheEmulatorsAnnouncementFolderIsWatchedEvenWhenItIsMadeLater)
{
    // The listing the watch is given stands for the emulated ports the
    // announcements lead to.
    std::vector<tessaly::link::SerialPortEntry> listed;
    DeviceWatch watch([&] { return listed; });
    EXPECT_FALSE(watch.usesUdev()); // the test's machine runs no udev
    QSignalSpy changed(&watch, &DeviceWatch::changed);

    ASSERT_TRUE(QDir().mkpath(tessaly::link::EmulatorAnnouncementFolder()));
    listed.push_back(Port(QStringLiteral("/dev/pts/41")));
    ASSERT_TRUE(changed.wait(Patience)) << "the folder's making was not seen";
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][0].value<std::vector<tessaly::link::SerialPortEntry>>().at(0).device, "/dev/pts/41");

    // The announcement itself, in the folder now watched, and its going.
    listed.push_back(Port(QStringLiteral("/dev/pts/42")));
    QFile announced(tessaly::link::EmulatorAnnouncementFolder() + QStringLiteral("/42"));
    ASSERT_TRUE(announced.open(QIODevice::WriteOnly));
    announced.close();
    ASSERT_TRUE(changed.wait(Patience)) << "the announcement was not seen";
    listed.erase(listed.begin());
    announced.remove();
    ASSERT_TRUE(changed.wait(Patience)) << "the announcement's end was not seen";
    EXPECT_EQ(changed.last()[1].toStringList(), QStringList{"/dev/pts/41"});
}

TEST_F(BenchWindowTest, NewestBackupIsTheLatestOfThatHandsetByItsName)
{
    QDir().mkpath(backups());
    for (const char* name : {"8F3A21C4-20240501-091200.json", "8F3A21C4-20240502-080000-full.json",
                             "8F3A21C4-20240502-080000-full-2.json", "8F3A21C4-20240430-235959.json",
                             "11111111-20250101-000000.json", "8F3A21C4-notes.json", "8F3A21C4-20260101-000000.txt"}) {
        QFile file(QDir(backups()).filePath(QLatin1String(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    const std::vector<tessaly::link::KeptBackup> kept = tessaly::link::KeptBackups(backups(), QStringLiteral("8F3A21C4"));
    ASSERT_FALSE(kept.empty());
    EXPECT_EQ(QFileInfo(kept.front().path).fileName(), "8F3A21C4-20240502-080000-full-2.json");
    EXPECT_EQ(kept.front().time, QDateTime(QDate(2024, 5, 2), QTime(8, 0)));
    EXPECT_TRUE(tessaly::link::KeptBackups(backups(), QStringLiteral("22222222")).empty());
}

TEST_F(BenchWindowTest, KeyboardReachesEveryRowAndButtonAndEnterOpensTheCurrentHandset)
{
    const QString first = handset();
    const QString second = handset();
    openOn({first, second});
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    ASSERT_EQ(table().rowCount(), 2);

    QTableView& view = window->view();
    view.setFocus();
    QList<QWidget*> reached;
    for (int i = 0; i < 4; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        reached << QApplication::focusWidget();
    }
    EXPECT_EQ(reached, (QList<QWidget*>{&window->backUpButton(), &window->openButton(), &window->lookAgainButton(),
                                        &view}));

    // The arrows move between rows; Shift chooses several.
    view.setCurrentIndex(table().index(0, 0));
    QTest::keyClick(&view, Qt::Key_Down);
    EXPECT_EQ(view.currentIndex().row(), 1);
    QSignalSpy opened(window.get(), &BenchWindow::openRequested);
    QTest::keyClick(&view, Qt::Key_Return);
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened[0][0].toString(), second);
    QTest::keyClick(&view, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(view.selectionModel()->selectedRows().size(), 2);
    EXPECT_TRUE(window->backUpButton().isEnabled());
    EXPECT_FALSE(window->openButton().isEnabled()); // one handset at a time

    // The buttons' mnemonics.
    choose({0});
    view.selectionModel()->setCurrentIndex(table().index(0, 0), QItemSelectionModel::NoUpdate);
    ASSERT_TRUE(window->openButton().isEnabled());
    QTest::keyClick(&view, Qt::Key_O, Qt::AltModifier);
    ASSERT_TRUE(opened.wait(Patience)); // a mnemonic's click is animated, its signal a moment later
    ASSERT_EQ(opened.size(), 2);
    EXPECT_EQ(opened[1][0].toString(), first);
}

TEST_F(BenchWindowTest, AScreenReaderReadsTheTableTheCellsAndAFailuresReason)
{
    const QString live = handset();
    PseudoTerminal silent;
    openOn({live, silent.path()});
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));

    QAccessibleInterface* view = QAccessible::queryAccessibleInterface(&window->view());
    ASSERT_TRUE(view && view->tableInterface());
    EXPECT_EQ(view->text(QAccessible::Name), "Handsets on the bench");
    EXPECT_FALSE(view->text(QAccessible::Description).isEmpty());
    EXPECT_EQ(view->tableInterface()->rowCount(), 2);
    QAccessibleInterface* model = view->tableInterface()->cellAt(0, BenchTable::Model);
    ASSERT_TRUE(model);
    EXPECT_EQ(model->text(QAccessible::Name), "Halvane SIM-800");
    QAccessibleInterface* state = view->tableInterface()->cellAt(1, BenchTable::State);
    ASSERT_TRUE(state);
    EXPECT_EQ(state->text(QAccessible::Name), "failed: no answer");
    EXPECT_EQ(table().data(table().index(1, BenchTable::State), Qt::ToolTipRole).toString(), "no answer");

    for (QPushButton* button : {&window->backUpButton(), &window->openButton(), &window->lookAgainButton()}) {
        QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(button);
        EXPECT_FALSE(reader->text(QAccessible::Name).isEmpty()) << qPrintable(button->objectName());
        EXPECT_FALSE(reader->text(QAccessible::Description).isEmpty()) << qPrintable(button->objectName());
    }
}

TEST_F(BenchWindowTest, HalvaneRendersTheBenchWithoutADisplay)
{
    const QString first = handset();
    const QString second = handset({"--model", "SIM-300"});
    const QString picture = folder.filePath(QStringLiteral("bench.png"));
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("TESSALY_SYSTEM_ROOT"), system.root());
    const Outcome outcome = RunHalvane(folder.path(),
                                       {"--bench", "--port", first + "," + second, "--screenshot", picture,
                                        "--probe-time", QString::number(ProbeTime.count())},
                                       environment);
    EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
    EXPECT_EQ(outcome.out.trimmed(), picture);
    const QImage image(picture);
    ASSERT_FALSE(image.isNull());
    EXPECT_GE(image.width(), 720);
}

TEST_F(BenchWindowTest, BackUpTakesTheChosenHandsetsAtOnceAndAFaultOnOneCostsTheOtherNothing)
{
    // A short range of items and no files: the bench's part, not the scan's.
    options.lastItem = 300;
    options.noFiles = true;
    const QString first = handset();
    const QString second = handset();
    const QString dying = handset({"--dead-after", "20"});
    openOn({first, second, dying});
    ASSERT_EQ(table().rowCount(), 3);
    EXPECT_EQ(cell(0, BenchTable::LastBackup), "none");

    choose({0, 1, 2});
    window->backUpButton().click();
    for (int row = 0; row < 3; ++row)
        EXPECT_EQ(cell(row, BenchTable::State), "reading");
    // Rows being read are not backed up again, nor opened, until they end.
    EXPECT_FALSE(window->backUpButton().isEnabled());
    EXPECT_TRUE(window->working());

    ASSERT_TRUE(waitUntil([&] {
        return table().at(0).state != BenchState::Reading && table().at(1).state != BenchState::Reading
            && table().at(2).state != BenchState::Reading;
    }));
    for (int row = 0; row < 2; ++row) {
        EXPECT_EQ(cell(row, BenchTable::State), "done");
        const QString kept = table().at(row).backupPath;
        EXPECT_TRUE(QFileInfo(kept).isFile()) << qPrintable(kept);
        EXPECT_TRUE(cell(row, BenchTable::LastBackup).endsWith(QFileInfo(kept).fileName()))
            << qPrintable(cell(row, BenchTable::LastBackup));
        EXPECT_EQ(table().at(row).percent, 100);
    }
    EXPECT_TRUE(QFileInfo(table().at(0).backupPath).fileName().startsWith(QLatin1String("11111111-")));
    EXPECT_TRUE(QFileInfo(table().at(1).backupPath).fileName().startsWith(QLatin1String("22222222-")));
    EXPECT_EQ(table().at(2).state, BenchState::Failed);
    EXPECT_TRUE(cell(2, BenchTable::State).startsWith(QLatin1String("failed: "))) << qPrintable(cell(2, BenchTable::State));
    EXPECT_TRUE(cell(2, BenchTable::State).contains(QLatin1String("does not answer")))
        << qPrintable(cell(2, BenchTable::State));
    EXPECT_EQ(table().data(table().index(2, BenchTable::State), Qt::ToolTipRole).toString(), table().at(2).reason);
    EXPECT_EQ(cell(2, BenchTable::LastBackup), "none");

    // Once ended, they may be backed up again.
    EXPECT_FALSE(window->working());
    EXPECT_TRUE(window->backUpButton().isEnabled());
}
