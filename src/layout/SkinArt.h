// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The skin's bitmaps. The build draws them from the art sources in art/ and
// embeds them into the library, each at its own size and at twice that size.
// A process decodes each bitmap once, at the first panel that shows it, in
// the resolution its screens want (the double one where a screen has a device
// pixel ratio above 1), and every panel shares it.
#pragma once

#include <QPixmap>
#include <QString>

namespace tessaly {

// The bitmap of that name, or a null pixmap when the skin has none.
QPixmap SkinPicture(const QString& name);

} // namespace tessaly
