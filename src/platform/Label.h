// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Label: the forms platform's caption.
#pragma once

#include "platform/ControlColors.h"
#include "platform/FormControl.h"
#include "platform/TextInk.h"

#include <QLabel>

namespace tessaly {

// A caption; transparent over its container unless given a back colour.
// A caption is never cut by the label's edges: one line wider than the label
// is drawn in a smaller size until it fits, and a wrapped caption taller than
// the label shows the whole lines that fit, the last one ending in an
// ellipsis where text was left out. A caption is plain text, as the forms
// platform's are; it is drawn once and copied at every later paint.
class Label : public FormControl<QLabel> {
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Caption WRITE setCaption)
public:
    explicit Label(QWidget* parent = nullptr);
    QString Caption() const { return text(); }
    void setCaption(const QString& caption) { setText(caption); }
    void setForeColor(const QColor& color) { SetControlColors(*this, {}, color); }

signals:
    void MouseDown(int Button, int Shift, float X, float Y);
    void MouseMove(int Button, int Shift, float X, float Y);
    void MouseUp(int Button, int Shift, float X, float Y);
    void Click();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    TextInk m_ink; // the caption as last drawn
};

} // namespace tessaly
