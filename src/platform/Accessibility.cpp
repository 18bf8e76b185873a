// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The factory of the platform's accessible interfaces, and those of the
// picture controls and frames; the grid's table is in FlexGridAccessible.cpp,
// the page tree's in OrvenTreeViewAccessible.cpp.
#include "platform/Accessibility.h"

#include "platform/Controls.h"
#include "platform/MSFlexGrid.h"
#include "platform/OrvenTreeView.h"
#include "platform/Pictures.h"

#include <QAccessibleValueInterface>
#include <QAccessibleWidget>

#include <algorithm>
#include <type_traits>

namespace tessaly {

namespace {

// A picture control as what its role makes it: a button with a press action
// that raises its Click, a progress bar with a value, or a plain picture. The
// role is read at each question, so an interface made before the role was
// given never keeps a stale one.
template <class Control>
class AccessiblePicture : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessiblePicture(Control* control)
        : QAccessibleWidget(control, QAccessible::Graphic)
    {
    }

    QAccessible::Role role() const override
    {
        switch (control()->Role()) {
        case PictureRole::Button: return QAccessible::Button;
        case PictureRole::ProgressBar: return QAccessible::ProgressBar;
        default: return QAccessible::Graphic;
        }
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface && control()->Role() == PictureRole::ProgressBar)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (control()->Role() == PictureRole::Button)
            names << pressAction();
        return names;
    }

    void doAction(const QString& action) override
    {
        if (action != pressAction())
            QAccessibleWidget::doAction(action);
        else if (control()->Role() == PictureRole::Button && control()->isEnabled())
            emit control()->Click();
    }

    QString text(QAccessible::Text t) const override
    {
        if (t == QAccessible::Value && control()->Role() == PictureRole::ProgressBar)
            return QStringLiteral("%1 %").arg(currentValue().toInt());
        return QAccessibleWidget::text(t);
    }

    QVariant currentValue() const override
    {
        if constexpr (std::is_same_v<Control, PictureBox>)
            return control()->ProgressValue();
        return 0;
    }
    void setCurrentValue(const QVariant&) override {} // shown, never set by the user
    QVariant maximumValue() const override { return 100; }
    QVariant minimumValue() const override { return 0; }
    QVariant minimumStepSize() const override { return 1; }

private:
    Control* control() const { return static_cast<Control*>(widget()); }
};

// A frame gives its controls in the order a reader takes them in: by their
// top edge, then their left edge.
class AccessibleFrame : public QAccessibleWidget {
public:
    explicit AccessibleFrame(QWidget* frame)
        : QAccessibleWidget(frame, QAccessible::Grouping)
    {
    }

    int childCount() const override { return int(inReadingOrder().size()); }
    QAccessibleInterface* child(int index) const override
    {
        const QList<QWidget*> controls = inReadingOrder();
        return index >= 0 && index < controls.size() ? QAccessible::queryAccessibleInterface(controls[index]) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        return child ? int(inReadingOrder().indexOf(qobject_cast<QWidget*>(child->object()))) : -1;
    }

private:
    QList<QWidget*> inReadingOrder() const
    {
        QList<QWidget*> controls = widget()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
        controls.removeIf([](const QWidget* control) { return control->isWindow(); });
        std::stable_sort(controls.begin(), controls.end(), [](const QWidget* a, const QWidget* b) {
            return std::pair(a->y(), a->x()) < std::pair(b->y(), b->x());
        });
        return controls;
    }
};

QAccessibleInterface* Factory(const QString& className, QObject* object)
{
    if (className == QLatin1String("tessaly::MSFlexGrid"))
        return FlexGridAccessibleInterface(static_cast<MSFlexGrid*>(object));
    if (className == QLatin1String("tessaly::OrvenTreeView"))
        return OrvenTreeViewAccessibleInterface(static_cast<OrvenTreeView*>(object));
    if (className == QLatin1String("tessaly::Frame"))
        return new AccessibleFrame(static_cast<QWidget*>(object));
    if (className == QLatin1String("tessaly::PictureBox"))
        return new AccessiblePicture<PictureBox>(static_cast<PictureBox*>(object));
    if (className == QLatin1String("tessaly::Image"))
        return new AccessiblePicture<Image>(static_cast<Image*>(object));
    return nullptr;
}

} // namespace

void InstallAccessibleInterfaces()
{
    // Once a process; a library unloaded before the end takes its factory back.
    struct Installed {
        Installed() { QAccessible::installFactory(Factory); }
        ~Installed() { QAccessible::removeFactory(Factory); }
    };
    static const Installed installed;
}

} // namespace tessaly
