// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Frame: the forms platform's container of other controls.
#pragma once

#include "platform/FormControl.h"

#include <QFrame>

namespace tessaly {

// A container of other controls, without border or caption. Its back colour
// is its own and does not pass to the controls inside it.
class Frame : public FormControl<QFrame> {
    Q_OBJECT
public:
    explicit Frame(QWidget* parent = nullptr);
    void CopyFrom(const Frame& model);
    QColor BackColor() const { return m_backColor; }
    void setBackColor(const QColor& color);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_backColor;
};

} // namespace tessaly
