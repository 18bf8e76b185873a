// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The layout is drawn in Tahoma and in the Korean face "굴림", neither of
// which a Linux system has. The first panel of a process maps them onto
// faces from Debian's packages: the Tahoma-metric face of fonts-wine, which
// fontconfig does not index and which is loaded for the application, and
// NanumGothic of fonts-nanum (or UnDotum of fonts-unfonts-core) for "굴림".
// Without them the panel draws in the default font and says so once.
#pragma once

#include <QString>

namespace tessaly {

inline const QString Tahoma = QStringLiteral("Tahoma");
inline const QString Gulim = QStringLiteral("굴림");

void LoadLayoutFonts();

} // namespace tessaly
