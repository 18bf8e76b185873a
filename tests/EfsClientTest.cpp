// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The file system's client with several requests on the line, against
// tessaly-emu on a line that damages replies and sends event reports among
// them: the whole tree and a file written in pieces come out as they do one
// request at a time, no reply taken for another request's.
#include "link/EfsTreeRead.h"
#include "support/Emulator.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tessaly;
using namespace tessaly::link;
using namespace std::chrono_literals;

namespace {

class EfsClientTest : public ::testing::Test {
protected:
    // The factory tree of an emulator started with `faults`, read with
    // `inFlight` requests on the way; the link's resends in `resent`.
    EfsTree readTree(const QStringList& faults, int inFlight, int& resent)
    {
        Emulator emulator;
        SerialLink line(emulator.startOn(folder.filePath(QStringLiteral("handset%1.json").arg(++m_handsets)), {},
                                         faults),
                        500ms);
        EfsClient client(line, inFlight, 500ms);
        client.hello();
        EfsTree tree = ReadEfsTree(client);
        resent = client.resent();
        return tree;
    }

    QTemporaryDir folder;

private:
    int m_handsets = 0;
};

} // namespace

TEST_F(EfsClientTest, TreeReadWithFourOnTheWayThroughDamageAndEventsIsTheTreeReadOneAtATime)
{
    int resent = 0;
    const EfsTree plain = readTree({}, 1, resent);
    EXPECT_EQ(resent, 0);
    EXPECT_GE(plain.files(), 300u);
    const EfsTree faulty = readTree({"--latency", "1000", "--bad-crc", "11", "--events"}, 4, resent);
    EXPECT_GT(resent, 0) << "damaged replies: requests asked again";
    EXPECT_TRUE(faulty.entries == plain.entries);
    EXPECT_EQ(faulty.gaps, plain.gaps) << "the locked file and folder, told the same";
}

TEST_F(EfsClientTest, FileWrittenInPiecesThroughDamageReadsBackWhole)
{
    Emulator emulator;
    SerialLink line(emulator.startOn(folder.filePath(QStringLiteral("handset.json")), {},
                                     {"--latency", "1000", "--bad-crc", "3"}),
                    500ms);
    EfsClient client(line, 4, 500ms);
    client.hello();
    QByteArray bytes(10000, '\0');
    for (qsizetype i = 0; i < bytes.size(); ++i)
        bytes[i] = char(i * 7 % 251);
    client.makeFolders(QStringLiteral("/data/new/deep"));
    client.write(QStringLiteral("/data/new/deep/file"), bytes, 0644);
    EXPECT_EQ(client.read(QStringLiteral("/data/new/deep/file")), bytes);
    EXPECT_GT(client.resent(), 0);
}
