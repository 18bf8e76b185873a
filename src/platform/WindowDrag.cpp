// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/WindowDrag.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

namespace tessaly {

namespace {

// Moves its window by the pointer's travel since the grab. It watches the
// whole application, since the pointer may leave the window while it drags,
// and ends itself when the left button goes up.
class PointerFollower : public QObject {
public:
    PointerFollower(QWidget* window, const QPointF& globalGrab)
        : QObject(window)
        , m_window(window)
        , m_grab(globalGrab)
        , m_origin(window->pos())
    {
        setObjectName(QStringLiteral("WindowDrag"));
        QCoreApplication::instance()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::MouseMove) {
            auto* mouse = static_cast<QMouseEvent*>(event);
            if (mouse->buttons() & Qt::LeftButton)
                m_window->move(m_origin + (mouse->globalPosition() - m_grab).toPoint());
            else
                finish();
        } else if (event->type() == QEvent::MouseButtonRelease
                   && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
            finish();
        }
        return false;
    }

private:
    void finish()
    {
        QCoreApplication::instance()->removeEventFilter(this);
        setObjectName(QString());
        deleteLater();
    }

    QWidget* m_window;
    QPointF m_grab;
    QPoint m_origin;
};

} // namespace

void BeginWindowDrag(QWidget* window, const QPointF& globalGrab)
{
    if (!window || window->findChild<PointerFollower*>(QStringLiteral("WindowDrag"), Qt::FindDirectChildrenOnly))
        return;
    if (window->isWindow() && window->windowHandle() && window->windowHandle()->startSystemMove())
        return;
    new PointerFollower(window, globalGrab);
}

} // namespace tessaly
