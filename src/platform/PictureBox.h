// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// A picture box: a drawing surface that takes the focus and raises mouse
// events. Drawing goes onto the surface and stays there until Refresh wipes it
// back to the picture. Drawing shows at once, as on the screen itself, even
// while no event loop runs; a container that paints draws the box with it.
#pragma once

#include "platform/PictureControl.h"

namespace tessaly {

class PictureBox : public PictureControl {
    Q_OBJECT
    Q_PROPERTY(QPixmap Picture READ Picture WRITE setPicture)
public:
    explicit PictureBox(QWidget* parent = nullptr);

    void setPicture(const QPixmap& picture);
    const QPixmap& Surface() const { return m_surface; }
    void Refresh();

    // Copies `width` by `height` pixels of `source`'s surface from (sourceX,
    // sourceY) onto this surface at (x, y), as a blit between device contexts.
    void BitBlt(int x, int y, int width, int height, const PictureBox& source, int sourceX, int sourceY);

    void setRole(PictureRole role);
    // The percentage a progress bar shows; Refresh, which wipes the bar,
    // brings it back to 0.
    int ProgressValue() const { return m_progress; }
    void setProgressValue(int percent);

    // While a container paints, a drawing on a box waits for that paint.
    class ContainerPainting {
    public:
        ContainerPainting() { ++s_containersPainting; }
        ~ContainerPainting() { --s_containersPainting; }
        ContainerPainting(const ContainerPainting&) = delete;
        ContainerPainting& operator=(const ContainerPainting&) = delete;
    };

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void showSurface();

    static inline int s_containersPainting = 0;
    QPixmap m_surface;
    int m_progress = 0;
};

} // namespace tessaly
