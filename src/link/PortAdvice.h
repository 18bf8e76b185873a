// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// What the user is told when a port stands in the way: not permitted, or
// held by ModemManager, with the ways to clear it. The same words go to the
// command line and into the window's box.
#pragma once

#include <QString>

namespace tessaly::link {

// Where the udev rule for the handsets' ports is installed.
QString UdevRulePath();

// How to load the udev rule: where it is, and the two udevadm commands.
QString UdevRuleAdvice();

// A port the user may not open: the group that owns it, and the two ways
// out, the udev rule or joining the group.
QString NotPermittedAdvice(const QString& device, const QString& group);

} // namespace tessaly::link
