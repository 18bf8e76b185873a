// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The forms platform's view of a control: position and size in twips, own
// visibility and enabled state, stacking, focus and immediate repaint, and the
// container it sits in. Mixed into the Qt widget that stands for each control.
#pragma once

#include "platform/RuntimeError.h"

#include <QColor>
#include <QFont>
#include <QWidget>
#include <QtMath>

namespace tessaly {

// All geometry of the panel is in twips; the arithmetic fixes 15 to the pixel.
inline constexpr int TwipsPerPixel = 15;

inline int ToPixels(double twips) { return qRound(twips / TwipsPerPixel); }
inline float ToTwips(int pixels) { return float(pixels * TwipsPerPixel); }

inline QColor RGB(int red, int green, int blue) { return QColor(red, green, blue); }

template <class Widget>
class FormControl : public Widget {
public:
    using Widget::Widget;

    float Left() const { return ToTwips(this->x()); }
    float Top() const { return ToTwips(this->y()); }
    float Width() const { return ToTwips(this->width()); }
    float Height() const { return ToTwips(this->height()); }
    void setLeft(float twips) { this->move(ToPixels(twips), this->y()); }
    void setTop(float twips) { this->move(this->x(), ToPixels(twips)); }
    void setWidth(float twips) { this->resize(ToPixels(twips), this->height()); }
    void setHeight(float twips) { this->resize(this->width(), ToPixels(twips)); }
    void Move(float left, float top) { this->move(ToPixels(left), ToPixels(top)); }
    void Move(float left, float top, float width, float height)
    {
        this->setGeometry(ToPixels(left), ToPixels(top), ToPixels(width), ToPixels(height));
    }

    // The control's own setting, whatever its container shows.
    bool Visible() const { return !this->isHidden(); }
    bool Enabled() const { return !this->testAttribute(Qt::WA_ForceDisabled); }

    // Brings the control to the front of its container.
    void ZOrder() { this->raise(); }

    // Gives the control the keyboard focus, and activates its window if
    // another one is active, as after a modal box has closed; a hidden or
    // disabled control cannot take it.
    void SetFocus()
    {
        if (!this->isVisible() || !this->isEnabled())
            Raise(errInvalidProcedureCall, QStringLiteral("Invalid procedure call or argument"));
        this->setFocus(Qt::OtherFocusReason);
        if (!this->isActiveWindow())
            this->activateWindow();
    }

    // Repaints the control at once, if it is on view.
    void Refresh()
    {
        if (this->isVisible())
            this->repaint();
    }

    // The font's name, size in points and weight, one at a time.
    void setFontName(const QString& name) { QFont f = this->font(); f.setFamily(name); this->setFont(f); }
    void setFontSize(float points) { QFont f = this->font(); f.setPointSizeF(points); this->setFont(f); }
    void setFontBold(bool bold) { QFont f = this->font(); f.setBold(bold); this->setFont(f); }

    // What a loaded array element takes over from its model: its place,
    // font, colours and enabled state.
    void CopyCommon(const FormControl& model)
    {
        this->setGeometry(model.geometry());
        this->setFont(model.font());
        this->setPalette(model.palette());
        this->setAutoFillBackground(model.autoFillBackground());
        this->setEnabled(model.Enabled());
    }

    QWidget* Container() const { return this->parentWidget(); }
    // Moves the control into another container, keeping its Left, Top and
    // its own visibility, now measured in the new container.
    void setContainer(QWidget* container)
    {
        const bool shown = !this->isHidden();
        const QPoint at = this->pos();
        this->setParent(container);
        this->move(at);
        this->setVisible(shown);
    }
};

// Makes a control of kind `Control` in `container`, with its layout name as
// its object name, at its place in twips.
template <class Control>
Control* Place(QWidget* container, const char* name, float left, float top, float width, float height)
{
    auto* control = new Control(container);
    control->setObjectName(QLatin1String(name));
    control->Move(left, top, width, height);
    return control;
}

} // namespace tessaly
