// The two picture controls of the forms platform. A picture box is a drawing
// surface that takes the focus and raises mouse events; an image only shows
// its picture, transparent wherever the picture does not reach. Both draw
// their picture at their top left corner, uncut and unscaled.
#pragma once

#include "platform/FormControl.h"

#include <QPixmap>

namespace tessaly {

// What a picture control stands for beyond its picture. A button takes the
// focus by Tab, shows it with a dotted outline, and Space or Return on it
// raises the same Click as the mouse, so every rule of the Click handler
// holds; screen readers see a button with a press action. A progress bar
// gives its value to screen readers.
enum class PictureRole { Picture, Button, ProgressBar };

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

    PictureRole Role() const { return m_role; }
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
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void showSurface();

    static inline int s_containersPainting = 0;
    QPixmap m_picture;
    QPixmap m_surface;
    PictureRole m_role = PictureRole::Picture;
    int m_progress = 0;
    bool m_focusShown = false;
};

class Image : public FormControl<QWidget> {
    Q_OBJECT
    Q_PROPERTY(QPixmap Picture READ Picture WRITE setPicture)
public:
    explicit Image(QWidget* parent = nullptr);

    const QPixmap& Picture() const { return m_picture; }
    void setPicture(const QPixmap& picture);

    // An image may only be a picture or a button.
    PictureRole Role() const { return m_role; }
    void setRole(PictureRole role);

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
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    QPixmap m_picture;
    PictureRole m_role = PictureRole::Picture;
    bool m_focusShown = false;
};

} // namespace tessaly
