// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The probe against the emulator beside a silent line and one that answers
// noise: who answered, why the others did not, all within the probe time,
// and each line left as it was found.
#include "link/PortProbe.h"

#include "support/Emulator.h"
#include "support/PseudoTerminal.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/ioctl.h>
#include <termios.h>

using namespace tessaly::link;
using namespace std::chrono_literals;

namespace {

class PortProbeTest : public ::testing::Test {
protected:
    // A handset of the emulator's `model` on a line of its own.
    QString startEmulator(int which, const QString& model)
    {
        return emulators[which].startOn(folder.filePath(QStringLiteral("handset%1.json").arg(which)), {}, {"--model", model});
    }

    QTemporaryDir folder;
    Emulator emulators[2];
};

TEST_F(PortProbeTest, OnlyTheHandsetAnswersAndTheWholeProbeKeepsToItsTime)
{
    const QString handset = startEmulator(0, "SIM-800");
    // An older handset answers the build id "bad command": its name comes
    // from the version reply's fields.
    const QString older = startEmulator(1, "SIM-300");
    PseudoTerminal silent;
    PseudoTerminal noisy(PseudoTerminal::Behaviour::Garbage);
    // The silent line as some other program left it: 9600 baud, canonical.
    termios before{};
    tcgetattr(silent.nearEnd(), &before);
    before.c_lflag |= ICANON | ECHO;
    cfsetspeed(&before, B9600);
    tcsetattr(silent.nearEnd(), TCSANOW, &before);
    tcgetattr(silent.nearEnd(), &before);

    // Probed one after another, the two lines that never answer would take
    // twice the probe time.
    constexpr auto within = 1500ms;
    QElapsedTimer clock;
    clock.start();
    const std::vector<ProbeResult> results
        = ProbePorts({silent.path(), handset, noisy.path(), QStringLiteral("/dev/no-such-port"), older}, within);
    EXPECT_LT(clock.elapsed(), (within + 1000ms).count());

    ASSERT_EQ(results.size(), 5u);
    EXPECT_FALSE(results[0].handset);
    EXPECT_EQ(results[0].failure, "no answer");
    ASSERT_TRUE(results[1].handset) << qPrintable(results[1].failure);
    EXPECT_TRUE(results[1].esn);
    EXPECT_FALSE(results[2].handset);
    EXPECT_EQ(results[2].failure, "answered, but not as a handset does");
    EXPECT_TRUE(results[3].failure.startsWith(QLatin1String("cannot be opened"))) << qPrintable(results[3].failure);
    ASSERT_TRUE(results[4].handset) << qPrintable(results[4].failure);
    EXPECT_EQ(results[4].handset->model, "HV300 (model 30)") << "named from the version reply";
    EXPECT_TRUE(results[4].esn);

    termios after{};
    tcgetattr(silent.nearEnd(), &after);
    EXPECT_EQ(std::tuple(after.c_lflag, after.c_cflag, cfgetispeed(&after)),
              std::tuple(before.c_lflag, before.c_cflag, speed_t(B9600)));
    // The noise that came in is not left for the next program to read.
    int pending = -1;
    ASSERT_EQ(ioctl(noisy.nearEnd(), FIONREAD, &pending), 0);
    EXPECT_EQ(pending, 0);
}

} // namespace
