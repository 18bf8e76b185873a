// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/HandsetIdentity.h"

#include "link/Backup.h"
#include "link/DiagPackets.h"
#include "link/SerialLink.h"
#include "link/IdentityText.h"

namespace tessaly::link {

HandsetIdentity IdentityOf(const VersionInfo& version, const std::optional<ExtendedBuildId>& build)
{
    HandsetIdentity identity;
    const QString directory = version.versionDirectory;
    identity.model = directory.isEmpty() ? QStringLiteral("Model %1").arg(version.modelNumber)
                                         : QStringLiteral("%1 (model %2)").arg(directory).arg(version.modelNumber);
    identity.softwareVersion = QStringLiteral("%1 rev %2").arg(directory).arg(version.firmwareRevision).trimmed();
    if (build && !build->model.isEmpty())
        identity.model = build->model;
    if (build && !build->software.isEmpty())
        identity.softwareVersion = build->software;
    identity.compiled = QStringLiteral("%1 %2").arg(version.compileDate, version.compileTime).trimmed();
    identity.released = QStringLiteral("%1 %2").arg(version.releaseDate, version.releaseTime).trimmed();
    return identity;
}

HandsetIdentity QueryIdentity(SerialLink& link)
{
    const QByteArray versionRequest = BareRequest(CmdVersion);
    const VersionInfo version = ParseVersion(versionRequest, link.transact(versionRequest));
    std::optional<ExtendedBuildId> build;
    const QByteArray buildRequest = BareRequest(CmdExtBuildId);
    if (const QByteArray reply = link.transact(buildRequest); !IsBadCommand(reply))
        build = ParseExtendedBuildId(buildRequest, reply);

    HandsetIdentity identity = IdentityOf(version, build);
    const QByteArray esnRequest = EsnRequest();
    identity.esn = ParseEsn(esnRequest, link.transact(esnRequest));
    const QByteArray meidRequest = NvItemRequest(CmdNvRead, model::MeidItem, {});
    if (const NvItemReply meid = ParseNvItem(meidRequest, link.transact(meidRequest)); meid.status == 0)
        identity.meid = MeidHex(meid.data);
    return identity;
}

} // namespace tessaly::link
