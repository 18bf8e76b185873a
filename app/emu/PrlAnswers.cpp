// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "PrlAnswers.h"

#include "model/FactoryPrl.h"

#include "link/DiagPackets.h"
#include "link/DiagRoamingList.h"
#include "model/NvFile.h"
#include "model/NvMemory.h"

#include <QFile>

#include <cstdio>

namespace emu {

using namespace tessaly;
using link::PrlBlockSize;

namespace {

constexpr uint8_t FirstNam = 0;

} // namespace

PrlAnswers::PrlAnswers()
    : m_list(model::EncodePrl(model::FactoryPrl()))
{
}

QString PrlAnswers::keepIn(const QString& path)
{
    m_path = path;
    QFile file(path);
    if (!file.exists())
        return model::WriteWhole(path, m_list);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("%1 cannot be read: %2").arg(path, file.errorString());
    // Kept as it is, as a handset keeps what it was given: a damaged list
    // there is read back damaged.
    m_list = file.readAll();
    return {};
}

QByteArray PrlAnswers::read(const QByteArray& request) const
{
    link::PrlBlock asked;
    if (!link::ReadPrlReadRequest(request, asked))
        return link::ErrorReply(link::CmdBadLength, request);
    link::PrlReadReply reply;
    reply.block.sequence = asked.sequence;
    if (asked.nam != FirstNam) {
        reply.status = link::PrlReadNvFault;
        reply.nvStatus = uint16_t(model::NvStatus::Inactive);
        return link::EncodePrlReadReply(reply);
    }
    const qsizetype start = qsizetype(asked.sequence) * PrlBlockSize;
    reply.block.data = m_list.mid(start, PrlBlockSize);
    reply.block.more = start + PrlBlockSize < m_list.size();
    return link::EncodePrlReadReply(reply);
}

QByteArray PrlAnswers::write(const QByteArray& request)
{
    link::PrlBlock block;
    if (!link::ReadPrlWriteRequest(request, block))
        return link::ErrorReply(link::CmdBadLength, request);
    if (block.nam != FirstNam)
        return link::ErrorReply(link::CmdBadParameter, request);
    link::PrlWriteReply reply;
    if (block.sequence == 0) {
        m_incoming.clear();
        m_nextBlock = 0;
    }
    if (block.sequence != m_nextBlock) {
        m_nextBlock = -1;
        reply.status = link::PrlWriteOutOfSequence;
        return link::EncodePrlWriteReply(reply);
    }
    m_incoming.append(block.data);
    if (m_incoming.size() > Room) {
        m_nextBlock = -1;
        reply.status = link::PrlWriteOverflow;
        return link::EncodePrlWriteReply(reply);
    }
    ++m_nextBlock;
    if (block.more)
        return link::EncodePrlWriteReply(reply);

    m_nextBlock = -1;
    reply.status = link::PrlWriteDone;
    if (!model::PrlProblem(m_incoming).isEmpty()) {
        reply.nvStatus = uint16_t(model::NvStatus::BadParameter);
        return link::EncodePrlWriteReply(reply);
    }
    // Kept before the reply goes out, so that what the client was told is
    // what a restart finds.
    if (!m_path.isEmpty()) {
        if (const QString unsaved = model::WriteWhole(m_path, m_incoming); !unsaved.isEmpty()) {
            std::fprintf(stderr, "tessaly-emu: the roaming list could not be saved to %s: %s\n",
                         qPrintable(m_path), qPrintable(unsaved));
            reply.nvStatus = uint16_t(model::NvStatus::Failed);
            return link::EncodePrlWriteReply(reply);
        }
    }
    m_list = m_incoming;
    return link::EncodePrlWriteReply(reply);
}

} // namespace emu
