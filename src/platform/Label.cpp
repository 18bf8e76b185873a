// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/Label.h"

#include "platform/MouseEvents.h"

namespace tessaly {

Label::Label(QWidget* parent)
    : FormControl(parent)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setMouseTracking(true);
}

void Label::mousePressEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }
void Label::mouseMoveEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }
void Label::mouseReleaseEvent(QMouseEvent* event) { RaiseMouseEvent(*this, event); }

} // namespace tessaly
