// The two picture controls of the forms platform. A picture box is a drawing
// surface that takes the focus and raises mouse events; an image only shows
// its picture, transparent wherever the picture does not reach. Both draw
// their picture at their top left corner, uncut and unscaled.
#pragma once

#include "platform/FormControl.h"

#include <QPixmap>

namespace tessaly {

// Drawing goes onto the surface and stays there until Refresh wipes it back
// to the picture. Drawing shows at once, as on the screen itself, even while
// no event loop runs; a container that paints draws the box with it.
class PictureBox : public FormControl<QWidget> {
    Q_OBJECT
    Q_PROPERTY(QPixmap Picture READ Picture WRITE setPicture)
public:
    explicit PictureBox(QWidget* parent = nullptr);

    const QPixmap& Picture() const { return m_picture; }
    void setPicture(const QPixmap& picture);
    const QPixmap& Surface() const { return m_surface; }
    void Refresh();

    // Copies `width` by `height` pixels of `source`'s surface from (sourceX,
    // sourceY) onto this surface at (x, y), as a blit between device contexts.
    void BitBlt(int x, int y, int width, int height, const PictureBox& source, int sourceX, int sourceY);

    // While a container paints, a drawing on a box waits for that paint.
    class ContainerPainting {
    public:
        ContainerPainting() { ++s_containersPainting; }
        ~ContainerPainting() { --s_containersPainting; }
        ContainerPainting(const ContainerPainting&) = delete;
        ContainerPainting& operator=(const ContainerPainting&) = delete;
    };

signals:
    void MouseDown(int Button, int Shift, float X, float Y);
    void MouseMove(int Button, int Shift, float X, float Y);
    void MouseUp(int Button, int Shift, float X, float Y);
    void Click();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void showSurface();

    static inline int s_containersPainting = 0;
    QPixmap m_picture;
    QPixmap m_surface;
};

class Image : public FormControl<QWidget> {
    Q_OBJECT
    Q_PROPERTY(QPixmap Picture READ Picture WRITE setPicture)
public:
    explicit Image(QWidget* parent = nullptr);

    const QPixmap& Picture() const { return m_picture; }
    void setPicture(const QPixmap& picture);

signals:
    void MouseDown(int Button, int Shift, float X, float Y);
    void MouseMove(int Button, int Shift, float X, float Y);
    void MouseUp(int Button, int Shift, float X, float Y);
    void Click();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QPixmap m_picture;
};

} // namespace tessaly
