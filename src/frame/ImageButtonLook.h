// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The look of an image button: its bitmap at rest, under the pointer, pressed
// and dimmed, one shown at a time, and the hover rule that every image button
// of the panel follows. The pointer is inside only strictly within the
// button, so its top row and left column of twips count as outside. Coming
// inside, the button takes the mouse capture, through which it still sees the
// moves beyond its edge and so sees the pointer leave; going outside, it lets
// the capture go.
#pragma once

#include "layout/ButtonLooks.h"

#include <QPixmap>

#include <functional>
#include <utility>

class QWidget;

namespace tessaly {

class ImageButtonLook {
public:
    // `Button` is a picture control: it shows what its setPicture gets.
    template <class Button>
    ImageButtonLook(Button* button, ButtonLooks looks)
        : m_button(button)
        , m_show([button](const QPixmap& picture) { button->setPicture(picture); })
        , m_looks(std::move(looks))
    {
    }

    // The hover rule for a move to (X, Y) twips in the button. A button that
    // is not `live` takes and gives back the capture all the same, but its
    // bitmap stays. Inside with the capture already held, nothing changes.
    void MouseMove(float X, float Y, bool live = true);

    void ShowRest() { m_show(m_looks.rest); }
    void ShowHover() { m_show(Or(m_looks.hover)); }
    void ShowPressed() { m_show(Or(m_looks.pressed)); }
    void ShowDimmed() { m_show(Or(m_looks.dimmed)); }
    // At rest, as a live button or as one that is not available.
    void ShowAtRest(bool live) { live ? ShowRest() : ShowDimmed(); }

private:
    const QPixmap& Or(const QPixmap& look) const { return look.isNull() ? m_looks.rest : look; }

    QWidget* m_button;
    std::function<void(const QPixmap&)> m_show;
    ButtonLooks m_looks;
};

} // namespace tessaly
