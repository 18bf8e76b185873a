// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "model/NvMemory.h"

#include <iterator>

namespace tessaly::model {

QString NvStatusText(uint16_t status)
{
    static const char* const Meanings[] = {
        "done", "the handset is busy", "the handset did not know the request", "the NV memory is full",
        "the NV memory failed", "the item is inactive: never written", "a parameter was out of range",
        "the item is read-only", "the item does not exist on this handset", "the handset is out of memory",
        "the item is not allocated",
    };
    return status < std::size(Meanings) ? QLatin1String(Meanings[status])
                                        : QStringLiteral("unknown status %1").arg(status);
}

} // namespace tessaly::model
