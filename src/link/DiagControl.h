// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Changing the handset's mode (0x29) and unlocking its secure operations with
// the 16-digit security password (0x46).
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <cstdint>
#include <optional>

namespace tessaly::link {

// The modes of a mode change, numbered as the OpenPST tools number them.
enum class ControlMode : uint16_t {
    OfflineAnalog = 0,
    OfflineDigital = 1,
    Reset = 2,
    FactoryTest = 3,
    Online = 4,
    LowPower = 5,
    PowerOff = 6,
};

QByteArray ControlRequest(ControlMode mode);
// The mode a mode change asks for; nothing for a packet of the wrong size.
std::optional<uint16_t> ControlModeOf(QByteArrayView request);
// Checks that the handset took the mode change: it echoes the request.
// Throws TessalyError for a refusal (locked, wrong mode, unknown mode).
void ParseControl(QByteArrayView request, QByteArrayView reply);

// The security password: 16 hexadecimal digits, sent as 8 bytes of two
// digits each. Throws TessalyError for anything else.
QByteArray PasswordRequest(const QString& password);
inline constexpr qsizetype PasswordRequestSize = 9;
QByteArray EncodePasswordReply(bool accepted);
// Whether the handset took the password.
bool ParsePassword(QByteArrayView request, QByteArrayView reply);

} // namespace tessaly::link
