// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The colours a control paints with, set through its palette.
#pragma once

#include <QColor>

class QWidget;

namespace tessaly {

// Sets the colours a control paints with; an invalid colour leaves that role.
void SetControlColors(QWidget& control, const QColor& back, const QColor& fore);

} // namespace tessaly
