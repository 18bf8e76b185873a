// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/DiagControl.h"

#include "link/DiagPackets.h"
#include "link/PacketBytes.h"

#include <tessaly/TessalyError.h>

namespace tessaly::link {

// A mode change is the code and the mode (16 bits), as libqcdm's
// DMCmdControl lays it out; the handset answers with the same bytes.
QByteArray ControlRequest(ControlMode mode)
{
    QByteArray request(1, char(CmdControl));
    AppendLittle16(request, uint16_t(mode));
    return request;
}

std::optional<uint16_t> ControlModeOf(QByteArrayView request)
{
    if (request.size() != 3)
        return {};
    return Little16(request, 1);
}

void ParseControl(QByteArrayView request, QByteArrayView reply)
{
    CheckReply(request, reply, 3);
    if (reply.first(3) != request.first(3))
        throw TessalyError(errWrongReply, QStringLiteral("The handset answered a mode change with another mode."));
}

// The password request is the code and 8 bytes; the reply the code and one
// byte, 1 when the password was right (the OpenPST tools' QcdmPassword
// request and response).
QByteArray PasswordRequest(const QString& password)
{
    const QByteArray digits = password.toLatin1();
    const QByteArray bytes = QByteArray::fromHex(digits);
    if (digits.size() != 16 || bytes.size() != 8 || bytes.toHex().compare(digits, Qt::CaseInsensitive) != 0)
        throw TessalyError(errBadSpc, QStringLiteral("The security password is 16 hexadecimal digits."));
    return QByteArray(1, char(CmdPassword)) + bytes;
}

QByteArray EncodePasswordReply(bool accepted)
{
    return QByteArray(1, char(CmdPassword)) + char(accepted ? 1 : 0);
}

bool ParsePassword(QByteArrayView request, QByteArrayView reply)
{
    CheckReply(request, reply, 2);
    return reply[1] == 1;
}

} // namespace tessaly::link
