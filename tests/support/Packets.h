// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Packets a test writes out byte by byte from the protocol's descriptions,
// and the number of the error a parse of one raises.
#pragma once

#include "support/RuntimeErrors.h"

#include <tessaly/TessalyError.h>

#include <QByteArray>

inline QByteArray Hex(const char* hex)
{
    return QByteArray::fromHex(hex);
}

inline const auto ErrorOf = [](auto&& parse) { return ErrorNumberOf<TessalyError>(parse); };
