// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/RoamingList.h"

#include "link/DiagPackets.h"
#include "link/Backup.h"
#include "link/DiagRoamingList.h"
#include "model/ErrorNumbers.h"
#include "model/NvFile.h"

#include <tessaly/TessalyError.h>

#include <QDateTime>
#include <QDir>

namespace tessaly::link {

namespace {

// A list has 256 blocks at most: their sequence numbers are one byte.
constexpr int MaxBlocks = 256;

QString WriteStatusText(uint8_t status)
{
    switch (status) {
    case PrlWriteOutOfSequence: return QStringLiteral("it took a block as out of sequence");
    case PrlWriteOverflow: return QStringLiteral("the list is bigger than it has room for");
    default: return QStringLiteral("it answered with status %1").arg(status);
    }
}

} // namespace

QByteArray ReadRoamingList(SerialLink& link, uint8_t nam)
{
    QByteArray list;
    for (int sequence = 0; sequence < MaxBlocks; ++sequence) {
        const QByteArray request = PrlReadRequest(uint8_t(sequence), nam);
        const PrlReadReply reply = ParsePrlReadReply(request, link.transact(request));
        if (reply.status == PrlReadNvFault || reply.status == PrlReadNvFaultStandard || reply.nvStatus != 0)
            throw TessalyError(errRoamingListRefused,
                               QStringLiteral("The handset could not read its roaming list of NAM %1 (NV status %2, "
                                              "%3): it may hold none.")
                                   .arg(nam + 1)
                                   .arg(reply.nvStatus)
                                   .arg(NvStatusText(reply.nvStatus)));
        list.append(reply.block.data);
        if (!reply.block.more)
            return list;
    }
    throw TessalyError(errRoamingListRefused,
                       QStringLiteral("The handset's roaming list goes on past %1 blocks.").arg(MaxBlocks));
}

void WriteRoamingList(SerialLink& link, const QByteArray& list, uint8_t nam, const std::function<QString()>& askSpc)
{
    const std::vector<PrlBlock> blocks = PrlBlocks(list, nam);
    if (blocks.size() > size_t(MaxBlocks))
        throw TessalyError(errRoamingListRefused, QStringLiteral("The list of %1 bytes is too big to send: %2 blocks "
                                                                 "of %3 bytes at most.")
                                                      .arg(list.size())
                                                      .arg(MaxBlocks)
                                                      .arg(PrlBlockSize));
    bool unlocked = false;
    for (size_t i = 0; i < blocks.size(); ++i) {
        const QByteArray request = PrlWriteRequest(blocks[i]);
        PrlWriteReply reply;
        try {
            reply = ParsePrlWriteReply(request, link.transact(request));
        } catch (const TessalyError& error) {
            if (error.number() != errSpcLocked || unlocked)
                throw;
            const QString spc = askSpc ? askSpc() : QString();
            if (spc.isEmpty())
                throw TessalyError(errSpcRefused, QStringLiteral("The handset is locked and no SPC was given"));
            const QByteArray unlock = SpcRequest(spc);
            if (!ParseSpc(unlock, link.transact(unlock)))
                throw TessalyError(errSpcRefused, QStringLiteral("The handset refused the SPC"));
            unlocked = true;
            reply = ParsePrlWriteReply(request, link.transact(request));
        }
        const uint8_t expected = blocks[i].more ? PrlWriteOk : PrlWriteDone;
        if (reply.status != expected || reply.nvStatus != 0)
            throw TessalyError(errRoamingListRefused,
                               QStringLiteral("The handset refused block %1 of %2 of the roaming list: %3%4.")
                                   .arg(i + 1)
                                   .arg(blocks.size())
                                   .arg(reply.status == expected ? QStringLiteral("it did not take the list")
                                                                 : WriteStatusText(reply.status))
                                   .arg(reply.nvStatus ? QStringLiteral(" (NV status %1, %2)")
                                                             .arg(reply.nvStatus)
                                                             .arg(NvStatusText(reply.nvStatus))
                                                       : QString()));
    }
}

HandsetRoamingList::HandsetRoamingList(SerialLink& link, uint8_t nam, std::function<QString()> askSpc)
    : m_link(link)
    , m_nam(nam)
    , m_askSpc(std::move(askSpc))
{
}

QByteArray HandsetRoamingList::read()
{
    return ReadRoamingList(m_link, m_nam);
}

QString HandsetRoamingList::keep(const QByteArray& held)
{
    const QByteArray request = EsnRequest();
    const QString esn = QStringLiteral("%1").arg(ParseEsn(request, m_link.transact(request)), 8, 16, QLatin1Char('0'));
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("-yyyyMMdd-HHmmss-zzz"));
    const QString path = QDir(BackupFolder()).filePath(esn.toUpper() + time + QStringLiteral(".prl"));
    QDir().mkpath(BackupFolder());
    if (const QString problem = model::WriteWhole(path, held); !problem.isEmpty())
        throw TessalyError(model::errMemoryNotSaved,
                           QStringLiteral("the handset's roaming list could not be kept in %1: %2. Nothing was written")
                               .arg(path, problem));
    return path;
}

void HandsetRoamingList::write(const QByteArray& list)
{
    WriteRoamingList(m_link, list, m_nam, m_askSpc);
}

} // namespace tessaly::link
