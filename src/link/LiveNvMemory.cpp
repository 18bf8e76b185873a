// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/LiveNvMemory.h"

#include "link/Backup.h"
#include "link/DiagPackets.h"
#include "model/Catalogue.h"
#include "link/IdentityText.h"

#include <tessaly/TessalyError.h>

#include <thread>

namespace tessaly::link {

using model::Describe;
using model::EsnItem;
using model::MeidItem;
using model::NvStatus;

LiveNvMemory::LiveNvMemory(SerialLink& link, std::function<QString()> askSpc)
    : m_link(link)
    , m_askSpc(std::move(askSpc))
{
}

NvItemReply LiveNvMemory::exchange(Command command, model::NvAddress address, const model::NvData& data)
{
    const QByteArray request = NvItemRequest(command, address, data);
    return ParseNvItem(request, m_link.transact(request, address.index >= 0));
}

NvItemReply LiveNvMemory::readAnswer(model::NvAddress address)
{
    NvItemReply reply = exchange(CmdNvRead, address, {});
    for (int again = 0; again < BusyTries && reply.status == uint16_t(NvStatus::Busy); ++again) {
        std::this_thread::sleep_for(BusyWait);
        reply = exchange(CmdNvRead, address, {});
    }
    m_onHandset[address] = reply.data;
    m_statuses[address] = reply.status;
    return reply;
}

NvStatus LiveNvMemory::read(model::NvAddress address, model::NvData& data)
{
    NvItemReply reply = readAnswer(address);
    if (reply.status != 0) {
        reply.data.fill(0);
        if (address.index >= 0)
            reply.data[0] = uint8_t(address.index);
    }
    data = reply.data;
    m_onHandset[address] = data;
    m_statuses[address] = reply.status;
    return NvStatus(reply.status);
}

NvStatus LiveNvMemory::write(model::NvAddress address, const model::NvData& data)
{
    if (!model::Catalogue::BuiltIn().protection(address.item).isEmpty())
        return NvStatus::ReadOnly;
    const auto known = m_onHandset.find(address);
    if (known != m_onHandset.end() && known->second == data && m_statuses[address] == 0)
        return NvStatus::Done; // unchanged: no write
    // Until the read-back tells, the handset may hold the old bytes or the
    // new ones: a write that fails on the way is not taken as unchanged later.
    m_onHandset.erase(address);
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
        return NvStatus(reply.status);
    // Verified: the handset must give back every byte that was written.
    model::NvData back{};
    read(address, back);
    model::NvData expected = data;
    if (address.index >= 0)
        expected[0] = uint8_t(address.index);
    if (back != expected) {
        m_onHandset.erase(address); // neither the old bytes nor the new ones
        throw TessalyError(errWriteUnverified,
                           QStringLiteral("%1 reads back different from what was written").arg(Describe(address)));
    }
    return NvStatus::Done;
}

void LiveNvMemory::readDone()
{
    if (m_backupFolder.isEmpty())
        return;
    Backup backup;
    backup.esn = EsnHex(m_onHandset[{EsnItem, -1}]);
    backup.meid = MeidHex(m_onHandset[{MeidItem, -1}]);
    backup.time = QDateTime::currentDateTime();
    for (const auto& [address, data] : m_onHandset)
        backup.items.push_back({address, NvStatus(m_statuses[address]), data});
    m_lastBackup = backup.save(m_backupFolder);
}

void LiveNvMemory::unlock()
{
    const QString spc = m_askSpc ? m_askSpc() : QString();
    if (spc.isEmpty())
        throw TessalyError(errSpcRefused, QStringLiteral("The handset is locked and no SPC was given"));
    const QByteArray request = SpcRequest(spc);
    if (!ParseSpc(request, m_link.transact(request)))
        throw TessalyError(errSpcRefused, QStringLiteral("The handset refused the SPC"));
}

} // namespace tessaly::link
