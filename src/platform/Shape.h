// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Shape: the forms platform's filled rectangle.
#pragma once

#include "platform/ControlColors.h"
#include "platform/FormControl.h"

#include <QFrame>

namespace tessaly {

// A filled rectangle of the layout; it does nothing.
class Shape : public FormControl<QFrame> {
    Q_OBJECT
public:
    explicit Shape(QWidget* parent = nullptr)
        : FormControl(parent)
    {
        setFrameShape(QFrame::NoFrame);
    }
    void setFillColor(const QColor& color) { SetControlColors(*this, color, {}); }
};

} // namespace tessaly
