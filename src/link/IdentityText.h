// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The ESN and the MEID as they are written, from their NV items' data: the
// first 4 and 7 bytes, stored little-endian, in upper-case hexadecimal.
#pragma once

#include "model/NvMemory.h"

#include <QString>

namespace tessaly::link {

QString EsnHex(const model::NvData& data);
// The ESN as a handset's ESN reply gives it, written the same way.
QString EsnHex(uint32_t esn);
QString MeidHex(const model::NvData& data);

} // namespace tessaly::link
