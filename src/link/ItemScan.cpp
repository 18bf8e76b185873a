// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/ItemScan.h"

#include "link/Pipeline.h"
#include "model/Catalogue.h"
#include "link/IdentityText.h"

#include <tessaly/TessalyError.h>

#include <QElapsedTimer>

#include <optional>
#include <thread>

namespace tessaly::link {

using model::NvAddress;
using model::NvStatus;

namespace {

enum class Outcome { Lacking, Held, Refused, Busy }; // by rising weight in the counts

Outcome OutcomeOf(const ItemAnswer& answer)
{
    if (!answer.refused.isEmpty())
        return Outcome::Refused;
    switch (NvStatus(answer.reply.status)) {
    case NvStatus::Done:
    case NvStatus::ReadOnly:
        return Outcome::Held;
    case NvStatus::Inactive:
    case NvStatus::BadParameter:
        return Outcome::Lacking;
    case NvStatus::Busy:
        return Outcome::Busy;
    default:
        return Outcome::Refused;
    }
}

// What befell an address that is not plainly kept or lacking, for the person
// who took the backup; empty for one that is.
QString GapOf(const ItemAnswer& answer)
{
    if (!answer.refused.isEmpty())
        return QStringLiteral("not kept: %1").arg(answer.refused);
    const uint16_t status = answer.reply.status;
    if (status > model::LastNvStatus)
        return QStringLiteral("not kept: the handset answered the unknown status %1").arg(status);
    switch (OutcomeOf(answer)) {
    case Outcome::Busy:
        return QStringLiteral("kept as busy: the handset stayed busy; read it again later");
    case Outcome::Refused:
        return QStringLiteral("kept with the status: %1").arg(NvStatusText(status));
    default:
        return {};
    }
}

} // namespace

std::vector<NvAddress> ScanAddresses(uint16_t first, uint16_t last)
{
    std::map<uint16_t, std::vector<int16_t>> indexes;
    for (const NvAddress& address : model::Catalogue::BuiltIn().addresses())
        if (address.index >= 0)
            indexes[address.item].push_back(address.index);
    std::vector<NvAddress> addresses;
    addresses.reserve(size_t(last - first) + 1);
    for (uint32_t item = first; item <= last; ++item) {
        const auto indexed = indexes.find(uint16_t(item));
        if (indexed == indexes.end()) {
            addresses.push_back({uint16_t(item), -1});
            continue;
        }
        std::vector<int16_t> sorted = indexed->second;
        std::sort(sorted.begin(), sorted.end());
        for (int16_t index : sorted)
            addresses.push_back({uint16_t(item), index});
    }
    return addresses;
}

ItemScan::ItemScan(SerialLink& link, int inFlight, std::chrono::milliseconds replyTime)
    : m_link(link)
    , m_inFlight(inFlight)
    , m_replyTime(replyTime)
{
}

Backup ItemScan::run(uint16_t first, uint16_t last)
{
    QElapsedTimer clock;
    clock.start();
    // The identity goes with every backup, to check a restore's handset.
    std::vector<NvAddress> addresses;
    for (uint16_t identity : {model::EsnItem, model::MeidItem})
        if (identity < first || identity > last)
            addresses.push_back({identity, -1});
    const size_t extra = addresses.size();
    for (const NvAddress& address : ScanAddresses(first, last))
        addresses.push_back(address);

    std::vector<ItemAnswer> answers(addresses.size());
    ScanProgress progress{0, addresses.size() - extra, 0, {}};
    Pipeline pipeline(m_link, m_inFlight, m_replyTime);
    size_t waited = 0; // the position the scan waits for
    size_t read = 0;   // addresses of the range read
    try {
        pipeline.read(addresses, [&](size_t position, const ItemAnswer& answer) {
            answers[position] = answer;
            waited = position + 1;
            if (position < extra)
                return;
            read = progress.done = position + 1 - extra;
            const Outcome outcome = OutcomeOf(answer);
            progress.kept += outcome != Outcome::Lacking && answer.refused.isEmpty();
            progress.elapsed = std::chrono::nanoseconds(clock.nsecsElapsed());
            if (m_progress)
                m_progress(progress);
        });
        for (int round = 0; round < BusyTries; ++round) {
            std::vector<size_t> busy;
            for (size_t position = 0; position < answers.size(); ++position)
                if (OutcomeOf(answers[position]) == Outcome::Busy)
                    busy.push_back(position);
            if (busy.empty())
                break;
            std::this_thread::sleep_for(BusyWait);
            std::vector<NvAddress> again;
            for (size_t position : busy)
                again.push_back(addresses[position]);
            waited = busy.front();
            pipeline.read(again, [&](size_t at, const ItemAnswer& answer) {
                answers[busy[at]] = answer;
                waited = at + 1 < busy.size() ? busy[at + 1] : waited;
            });
        }
    } catch (const TessalyError& error) {
        m_resent = pipeline.resent();
        throw TessalyError(errScanStopped, QStringLiteral("The full backup stopped at %1, with %2 of %3 items read: "
                                                          "%4 Nothing was kept.")
                                               .arg(model::Describe(addresses[std::min(waited, addresses.size() - 1)]))
                                               .arg(read)
                                               .arg(addresses.size() - extra)
                                               .arg(error.description()));
    }
    m_resent = pipeline.resent();

    Backup backup;
    backup.full = true;
    m_counts = {};
    m_gaps.clear();
    std::optional<Outcome> number; // the outcome of the item number counted last
    const auto count = [&] {
        size_t* counts[] = {&m_counts.lacking, &m_counts.held, &m_counts.refused, &m_counts.busy};
        if (number)
            ++*counts[int(*number)];
    };
    for (size_t position = 0; position < addresses.size(); ++position) {
        const NvAddress address = addresses[position];
        const ItemAnswer& answer = answers[position];
        const uint16_t status = answer.reply.status;
        if (answer.refused.isEmpty() && status == 0 && address.index < 0) {
            if (address.item == model::EsnItem)
                backup.esn = EsnHex(answer.reply.data);
            if (address.item == model::MeidItem)
                backup.meid = MeidHex(answer.reply.data);
        }
        if (position < extra)
            continue;
        const Outcome outcome = OutcomeOf(answer);
        if (const QString gap = GapOf(answer); !gap.isEmpty())
            m_gaps.emplace_back(address, gap);
        if (answer.refused.isEmpty() && status <= model::LastNvStatus && outcome != Outcome::Lacking)
            backup.items.push_back({address, NvStatus(status), answer.reply.data});
        if (position == extra || address.item != addresses[position - 1].item) {
            count();
            number = outcome;
        } else {
            number = std::max(*number, outcome);
        }
    }
    count();
    m_counts.entries = backup.items.size();
    backup.time = QDateTime::currentDateTime();
    return backup;
}

} // namespace tessaly::link
