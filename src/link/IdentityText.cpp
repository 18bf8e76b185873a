// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/IdentityText.h"

#include <algorithm>

namespace tessaly::link {

namespace {

QString IdentityHex(const model::NvData& data, int bytes)
{
    QByteArray raw(reinterpret_cast<const char*>(data.data()), bytes);
    std::reverse(raw.begin(), raw.end()); // little-endian on the handset
    return QString::fromLatin1(raw.toHex()).toUpper();
}

} // namespace

QString EsnHex(const model::NvData& data)
{
    return IdentityHex(data, 4);
}

QString EsnHex(uint32_t esn)
{
    return QStringLiteral("%1").arg(esn, 8, 16, QLatin1Char('0')).toUpper();
}

QString MeidHex(const model::NvData& data)
{
    return IdentityHex(data, 7);
}

} // namespace tessaly::link
