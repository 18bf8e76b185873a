// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/PortAdvice.h"

namespace tessaly::link {

QString UdevRulePath()
{
    return QStringLiteral(TESSALY_UDEV_RULE_PATH);
}

QString UdevRuleAdvice()
{
    const QString path = UdevRulePath();
    const bool inPlace = path.startsWith(QLatin1String("/usr/lib/udev/rules.d/"))
        || path.startsWith(QLatin1String("/lib/udev/rules.d/"));
    return (inPlace ? QStringLiteral("Load the udev rule %1")
                    : QStringLiteral("Copy the udev rule %1 to /etc/udev/rules.d/, load it"))
               .arg(path)
        + QStringLiteral(" with `sudo udevadm control --reload` and `sudo udevadm trigger`, and plug the handset in "
                         "again.");
}

QString NotPermittedAdvice(const QString& device, const QString& group)
{
    return QStringLiteral("You may not open %1: it belongs to the group %2. Either let the user at the seat open "
                          "the handset's port: %3 Or join the group with `sudo usermod -aG %2 $USER` and log in "
                          "again.")
        .arg(device, group, UdevRuleAdvice());
}

} // namespace tessaly::link
