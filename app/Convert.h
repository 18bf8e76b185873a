// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane --convert IN OUT: an NV file (.json) to an XQCN file (.xqcn) or back.
#pragma once

#include <QString>

namespace halvane {

// Converts `from` into `to`, which must not be there yet, by their
// extensions, items and files alike. A file refused, or any fault, is told on
// standard error and nothing is written. The streams of an XQCN file that
// halvane passes over are named there, the rest converted, and the exit
// status is 1. Gives the exit status.
int Convert(const QString& from, const QString& to);

} // namespace halvane
