// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Several requests on the line at once: replies that come in any order are
// matched to their requests by item and index, and requests that a handset
// with a short queue drops are asked again, the scan still complete and in
// order.
#include "link/ItemScan.h"
#include "link/Pipeline.h"
#include "support/Emulator.h"
#include "support/PseudoTerminal.h"

#include <tessaly/TessalyError.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tessaly;
using namespace tessaly::link;
using namespace std::chrono_literals;
using model::NvAddress;

namespace {

// A handset on a pseudo-terminal of the test's own that answers each batch
// of requests backwards: the first request of a batch gets the last reply.
// Each reply's data carries the item's low byte after the index; the read of
// item Guarded is refused.
constexpr char Guarded = 13;

PseudoTerminal::Answer Backwards()
{
    return [decoder = FrameDecoder(), batch = std::vector<QByteArray>()](QByteArrayView received) mutable {
        for (QByteArray& request : decoder.feed(received))
            batch.push_back(std::move(request));
        if (!received.empty())
            return QByteArray();
        QByteArray replies; // the line went quiet: the batch is whole
        for (auto request = batch.rbegin(); request != batch.rend(); ++request) {
            QByteArray reply = *request;
            reply[4] = reply[1]; // the item's low byte after the index
            if (reply[1] == Guarded)
                reply = char(0x47) + *request; // refused for the handset's security
            replies += EncodeFrame(reply);
        }
        batch.clear();
        return replies;
    };
}

// A handset that lets the first `ignored` requests go by without a word, as
// one busy for a moment does, and answers every later one at once with the
// request's own bytes: an NV read of status 0 and zero data.
PseudoTerminal::Answer DeafAtFirst(int ignored)
{
    return [decoder = FrameDecoder(), ignored](QByteArrayView received) mutable {
        QByteArray replies;
        for (const QByteArray& request : decoder.feed(received))
            if (ignored-- <= 0)
                replies += EncodeFrame(request);
        return replies;
    };
}

} // namespace

TEST(Pipeline, RepliesInAnyOrderAreMatchedByItemAndIndex)
{
    PseudoTerminal handset(Backwards());
    SerialLink line(handset.path(), 1s);
    // Both indexes of an indexed item among plain ones, so that an index
    // taken from the wrong reply shows, and an item whose read is refused.
    const std::vector<NvAddress> addresses{{10, -1}, {178, 0}, {178, 1}, {11, -1}, {13, -1}, {43, 1}, {43, 0}, {12, -1}};
    std::vector<NvAddress> taken;
    Pipeline(line, 4, 1s).read(addresses, [&](size_t position, const ItemAnswer& answer) {
        EXPECT_EQ(position, taken.size()) << "given in the order asked";
        const NvAddress address = addresses[position];
        taken.push_back(address);
        if (address.item == Guarded) {
            EXPECT_TRUE(answer.refused.contains(QLatin1String("security mode"))) << qPrintable(answer.refused);
            return;
        }
        EXPECT_EQ(answer.refused, "");
        EXPECT_EQ(std::tuple(answer.reply.item, answer.reply.data[0], answer.reply.data[1]),
                  std::tuple(address.item, address.index < 0 ? 0 : address.index, uint8_t(address.item)));
    });
    EXPECT_EQ(taken, addresses);
}

TEST(Pipeline, RequestsDroppedOrRepliesDamagedAreAskedAgainAndTheScanIsWholeAndInOrder)
{
    QTemporaryDir folder;
    Emulator emulator;
    // Damaged replies and event reports among them too.
    SerialLink line(emulator.startOn(folder.filePath("handset.json"), {},
                                     {"--latency", "2000", "--queue", "2", "--bad-crc", "7", "--events"}),
                    1s);
    ItemScan scan(line, 8, 1s);
    size_t calls = 0;
    bool ordered = true;
    scan.setProgress([&](const ScanProgress& progress) { ordered = ordered && progress.done == ++calls; });
    const Backup backup = scan.run(0, 149);
    EXPECT_GT(scan.resent(), 0) << "8 on the way, 2 taken: requests were dropped";
    EXPECT_TRUE(ordered);
    EXPECT_EQ(calls, ScanAddresses(0, 149).size());
    const ScanCounts& counts = scan.counts();
    EXPECT_EQ(counts.held + counts.lacking + counts.busy + counts.refused, 150u) << "each item number once";
    EXPECT_EQ(counts.entries, backup.items.size());
    EXPECT_TRUE(std::is_sorted(backup.items.begin(), backup.items.end(),
                               [](const auto& a, const auto& b) { return a.address < b.address; }));
    EXPECT_EQ(backup.items.front().address, (NvAddress{0, -1}));
    EXPECT_EQ(backup.esn, "8F3A21C4");
}

TEST(Pipeline, SilentHandsetStopsTheScanNamingTheItem)
{
    QTemporaryDir folder;
    Emulator emulator;
    // A reply time well above a loaded machine's delays: a request asked
    // again too soon would count against the emulator's hundred.
    SerialLink line(emulator.startOn(folder.filePath("handset.json"), {}, {"--dead-after", "100"}), 1000ms);
    ItemScan scan(line, 4, 1000ms);
    try {
        scan.run(0, 999);
        ADD_FAILURE() << "the scan went through a dead line";
    } catch (const TessalyError& error) {
        // 100 answered: the MEID first, as the range leaves it out, then 99 of the range.
        const std::vector<NvAddress> range = ScanAddresses(0, 999);
        EXPECT_TRUE(error.description().startsWith(QStringLiteral("The full backup stopped at %1, with 99 of %2 items "
                                                                  "read")
                                                       .arg(model::Describe(range[99]))
                                                       .arg(range.size())))
            << qPrintable(error.description());
        EXPECT_TRUE(error.description().contains(QLatin1String("does not answer")));
    }
}

TEST(Pipeline, HandsetSilentForOneReplyTimeIsAskedAgainAndTheReadGoesOn)
{
    // The whole first batch goes unanswered: only the silence tells.
    PseudoTerminal handset(DeafAtFirst(4));
    SerialLink line(handset.path(), 200ms);
    const std::vector<NvAddress> addresses{{10, -1}, {11, -1}, {12, -1}, {13, -1}, {14, -1}, {15, -1}};
    size_t taken = 0;
    Pipeline(line, 4, 200ms).read(addresses, [&](size_t position, const ItemAnswer& answer) {
        EXPECT_EQ(position, taken++);
        EXPECT_EQ(answer.reply.item, addresses[position].item);
    });
    EXPECT_EQ(taken, addresses.size());
}
