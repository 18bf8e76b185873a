// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "frame/ImageButtonLook.h"

#include "platform/FormControl.h"
#include "platform/MouseCapture.h"

namespace tessaly {

void ImageButtonLook::MouseMove(float X, float Y, bool live)
{
    const bool inside = X > 0 && Y > 0 && X < ToTwips(m_button->width()) && Y < ToTwips(m_button->height());
    if (inside && GetCapture() == m_button)
        return;
    if (inside) {
        SetCapture(m_button);
        if (live)
            ShowHover();
    } else {
        ReleaseCapture();
        if (live)
            ShowRest();
    }
}

} // namespace tessaly
