#include "link/ItemScan.h"

#include "link/Pipeline.h"
#include "model/Catalogue.h"

#include <tessaly/TessalyError.h>

#include <QElapsedTimer>

namespace tessaly::link {

using model::NvAddress;
using model::NvStatus;

namespace {

enum : int32_t { errScanStopped = 2041, errScanStatus = 2042 };

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

    Backup backup;
    backup.full = true;
    model::NvData esn{};
    model::NvData meid{};
    ScanProgress progress{0, addresses.size() - extra, 0, {}};
    m_lacking = 0;
    m_refused.clear();
    Pipeline pipeline(m_link, m_inFlight, m_replyTime);
    size_t done = 0;
    try {
        pipeline.read(addresses, [&](size_t position, const ItemAnswer& answer) {
            const NvAddress address = addresses[position];
            const NvItemReply& reply = answer.reply;
            const bool refused = !answer.refused.isEmpty();
            if (!refused && reply.status != 0 && !model::Lacks(NvStatus(reply.status)))
                throw TessalyError(errScanStatus, QStringLiteral("%1 could not be read: %2.")
                                                      .arg(model::Describe(address), NvStatusText(reply.status)));
            if (address == NvAddress{model::EsnItem, -1} && !refused)
                esn = reply.data;
            if (address == NvAddress{model::MeidItem, -1} && !refused)
                meid = reply.data;
            done = position + 1;
            if (position < extra)
                return;
            if (refused)
                m_refused.emplace_back(address, answer.refused);
            else if (reply.status == 0)
                backup.items.push_back({address, NvStatus::Done, reply.data});
            else
                ++m_lacking;
            progress.done = position + 1 - extra;
            progress.held = backup.items.size();
            progress.elapsed = std::chrono::nanoseconds(clock.nsecsElapsed());
            if (m_progress)
                m_progress(progress);
        });
    } catch (const TessalyError& error) {
        m_resent = pipeline.resent();
        throw TessalyError(errScanStopped, QStringLiteral("The full backup stopped at %1, with %2 of %3 items read: "
                                                          "%4 Nothing was kept.")
                                               .arg(model::Describe(addresses[done]))
                                               .arg(done > extra ? done - extra : 0)
                                               .arg(addresses.size() - extra)
                                               .arg(error.description()));
    }
    m_resent = pipeline.resent();
    backup.esn = EsnHex(esn);
    backup.meid = MeidHex(meid);
    backup.time = QDateTime::currentDateTime();
    return backup;
}

} // namespace tessaly::link
