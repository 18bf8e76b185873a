// The factory of the platform's accessible interfaces, and those of the
// picture controls and frames; the grid's table is in FlexGridAccessible.cpp.
#include "platform/Accessibility.h"

#include "platform/Controls.h"
#include "platform/MSFlexGrid.h"
#include "platform/Pictures.h"

#include <QAccessibleValueInterface>
#include <QAccessibleWidget>

#include <algorithm>

namespace tessaly {

namespace {

// A picture that acts as a button: pressing it raises its Click.
class AccessibleButton : public QAccessibleWidget {
public:
    explicit AccessibleButton(QWidget* control)
        : QAccessibleWidget(control, QAccessible::Button)
    {
    }

    QStringList actionNames() const override { return QAccessibleWidget::actionNames() << pressAction(); }

    void doAction(const QString& action) override
    {
        if (action != pressAction())
            QAccessibleWidget::doAction(action);
        else if (widget()->isEnabled())
            QMetaObject::invokeMethod(widget(), "Click", Qt::DirectConnection);
    }
};

class AccessibleProgress : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleProgress(PictureBox* bar)
        : QAccessibleWidget(bar, QAccessible::ProgressBar)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text t) const override
    {
        if (t == QAccessible::Value)
            return QStringLiteral("%1 %").arg(bar()->ProgressValue());
        return QAccessibleWidget::text(t);
    }

    QVariant currentValue() const override { return bar()->ProgressValue(); }
    void setCurrentValue(const QVariant&) override {} // shown, never set by the user
    QVariant maximumValue() const override { return 100; }
    QVariant minimumValue() const override { return 0; }
    QVariant minimumStepSize() const override { return 1; }

private:
    PictureBox* bar() const { return static_cast<PictureBox*>(widget()); }
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
    if (className == QLatin1String("tessaly::Frame"))
        return new AccessibleFrame(static_cast<QWidget*>(object));
    if (className == QLatin1String("tessaly::PictureBox")) {
        auto* box = static_cast<PictureBox*>(object);
        if (box->Role() == PictureRole::Button)
            return new AccessibleButton(box);
        if (box->Role() == PictureRole::ProgressBar)
            return new AccessibleProgress(box);
    }
    if (className == QLatin1String("tessaly::Image") && static_cast<Image*>(object)->Role() == PictureRole::Button)
        return new AccessibleButton(static_cast<QWidget*>(object));
    return nullptr;
}

} // namespace

void InstallAccessibleInterfaces()
{
    static const bool installed = [] {
        QAccessible::installFactory(Factory);
        return true;
    }();
    (void)installed;
}

} // namespace tessaly
