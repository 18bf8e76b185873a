// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The handset's preferred roaming list over its link, whole: read block by
// block until a block says no more follow, and written the same way
// (link/DiagRoamingList.h). The list's own checks (model/Prl.h) are the
// caller's, before a write.
#pragma once

#include "link/SerialLink.h"
#include "model/RoamingListSource.h"

#include <functional>

namespace tessaly::link {

// The roaming list of `nam` as the handset keeps it. Throws TessalyError when
// the handset cannot give it (no such command, an NV fault) or the link fails.
QByteArray ReadRoamingList(SerialLink& link, uint8_t nam = 0);
// Writes `list` as the roaming list of `nam`. A locked handset is unlocked
// with the SPC `askSpc` gives, once; an empty one gives up. Throws
// TessalyError when a block is refused or the handset does not take the
// list at its end.
void WriteRoamingList(SerialLink& link, const QByteArray& list, uint8_t nam, const std::function<QString()>& askSpc);

// The list of a handset on `link` as the source of model::PutRoamingList:
// the list before a write is kept in the backups folder (link/Backup.h) as
// "<ESN>-<time>.prl".
class HandsetRoamingList : public model::RoamingListSource {
public:
    HandsetRoamingList(SerialLink& link, uint8_t nam, std::function<QString()> askSpc);

    QByteArray read() override;
    QString keep(const QByteArray& held) override;
    void write(const QByteArray& list) override;

private:
    SerialLink& m_link;
    uint8_t m_nam;
    std::function<QString()> m_askSpc;
};

} // namespace tessaly::link
