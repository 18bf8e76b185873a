#include "link/LiveNvMemory.h"

#include "link/Backup.h"
#include "link/DiagPackets.h"

#include <tessaly/TessalyError.h>

namespace tessaly::link {

using model::Describe;
using model::EsnItem;
using model::MeidItem;

namespace {

enum : int32_t { errItemStatus = 2020, errWriteUnverified = 2021, errSpcRefused = 2022 };

} // namespace

LiveNvMemory::LiveNvMemory(SerialLink& link, std::function<QString()> askSpc)
    : m_link(link)
    , m_askSpc(std::move(askSpc))
{
}

NvItemReply LiveNvMemory::exchange(Command command, model::NvAddress address, const model::NvData& data)
{
    model::NvData sent = data;
    if (address.index >= 0)
        sent[0] = uint8_t(address.index);
    const QByteArray request = NvItemRequest(command, address.item, sent);
    return ParseNvItem(request, m_link.transact(request));
}

model::NvStatus LiveNvMemory::read(model::NvAddress address, model::NvData& data)
{
    const NvItemReply reply = exchange(CmdNvRead, address, {});
    if (reply.status != 0 && reply.status != uint16_t(model::NvStatus::Inactive))
        throw TessalyError(errItemStatus, QStringLiteral("%1 could not be read: %2.")
                                              .arg(Describe(address), NvStatusText(reply.status)));
    data = reply.data;
    m_onHandset[address] = data;
    m_statuses[address] = reply.status;
    return model::NvStatus(reply.status);
}

model::NvStatus LiveNvMemory::write(model::NvAddress address, const model::NvData& data)
{
    const auto known = m_onHandset.find(address);
    if (address.item == EsnItem || address.item == MeidItem || (known != m_onHandset.end() && known->second == data))
        return model::NvStatus::Done; // identity items are never written; unchanged ones need no write
    NvItemReply reply;
    try {
        reply = exchange(CmdNvWrite, address, data);
    } catch (const TessalyError& error) {
        if (error.number() != errSpcLocked)
            throw;
        unlock();
        reply = exchange(CmdNvWrite, address, data);
    }
    if (reply.status != 0)
        throw TessalyError(errItemStatus, QStringLiteral("%1 could not be written: %2. The items before it were "
                                                         "written.")
                                              .arg(Describe(address), NvStatusText(reply.status)));
    // Verified: the handset must give back every byte that was written.
    model::NvData back{};
    read(address, back);
    model::NvData expected = data;
    if (address.index >= 0)
        expected[0] = uint8_t(address.index);
    if (back != expected)
        throw TessalyError(errWriteUnverified,
                           QStringLiteral("%1 reads back different from what was written; the write stops there.")
                               .arg(Describe(address)));
    return model::NvStatus::Done;
}

void LiveNvMemory::readDone()
{
    if (m_backupFolder.isEmpty())
        return;
    Backup backup;
    backup.esn = IdentityHex(m_onHandset[{EsnItem, -1}], 4);
    backup.meid = IdentityHex(m_onHandset[{MeidItem, -1}], 7);
    backup.time = QDateTime::currentDateTime();
    for (const auto& [address, data] : m_onHandset)
        backup.items.push_back({address, data, m_statuses[address]});
    m_lastBackup = backup.save(m_backupFolder);
}

void LiveNvMemory::unlock()
{
    const QString spc = m_askSpc ? m_askSpc() : QString();
    if (spc.isEmpty())
        throw TessalyError(errSpcRefused, QStringLiteral("The handset is locked and no SPC was given: nothing was "
                                                         "written."));
    const QByteArray request = SpcRequest(spc);
    if (!ParseSpc(request, m_link.transact(request)))
        throw TessalyError(errSpcRefused, QStringLiteral("The handset refused the SPC: nothing was written."));
}

} // namespace tessaly::link
