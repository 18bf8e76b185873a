// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// What a user does to the panel, done by halvane for a screenshot, and the
// rendering of what the screen then shows.
#include "UserActions.h"

#include <tessaly/Tessaly.h>

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace halvane {

namespace {

QTreeWidget* TreeOf(Tessaly& panel)
{
    return panel.findChild<QTreeWidget*>(QStringLiteral("OrvenTreeView1"));
}

// The left button's events at `at` in `target`, as a user's hand makes them;
// the button is held between a press or double click and its release.
void SendLeftButton(QWidget* target, QPointF at, std::initializer_list<QEvent::Type> types)
{
    for (QEvent::Type type : types) {
        QMouseEvent event(type, at, target->mapToGlobal(at), Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(target, &event);
    }
}

} // namespace

QStringList PageNodes(Tessaly& panel)
{
    QStringList nodes;
    if (QTreeWidget* tree = TreeOf(panel))
        for (QTreeWidgetItemIterator node(tree); *node; ++node)
            nodes << (*node)->text(0);
    return nodes;
}

bool ClickTreeNode(Tessaly& panel, const QString& text)
{
    if (!PageNodes(panel).contains(text))
        return false;
    QTreeWidget* tree = TreeOf(panel);
    const QList<QTreeWidgetItem*> found = tree ? tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive) : QList<QTreeWidgetItem*>();
    if (found.isEmpty())
        return false;
    SendLeftButton(tree->viewport(), tree->visualItemRect(found.first()).center(),
                   {QEvent::MouseButtonPress, QEvent::MouseButtonRelease});
    return true;
}

void ClickCommand(Tessaly& panel, int index)
{
    auto* button = panel.findChild<QWidget*>(QStringLiteral("picCommand(%1)").arg(index));
    SendLeftButton(button, QPointF(button->width() / 2.0, button->height() / 2.0),
                   {QEvent::MouseButtonPress, QEvent::MouseButtonRelease});
}

bool OpenCellEditor(Tessaly& panel, const QString& cell)
{
    const QStringList parts = cell.split(QLatin1Char(','));
    bool rowOk = false, colOk = false;
    const int row = parts.value(0).toInt(&rowOk), col = parts.value(1).toInt(&colOk);
    QAbstractScrollArea* grid = nullptr;
    for (auto* candidate : panel.findChildren<QAbstractScrollArea*>())
        if (candidate->objectName().startsWith(QLatin1String("MSFlexGrid1(")) && candidate->isVisible())
            grid = candidate;
    if (!grid || parts.size() != 2 || !rowOk || !colOk || row < 1 || col < 1
        || row >= grid->property("Rows").toInt() || col >= grid->property("Cols").toInt())
        return false;
    // Where the cell is, as a screen reader is told it.
    QAccessibleInterface* table = QAccessible::queryAccessibleInterface(grid);
    QAccessibleInterface* target = table && table->tableInterface() ? table->tableInterface()->cellAt(row - 1, col - 1)
                                                                     : nullptr;
    if (!target)
        return false;
    const QPoint centre = grid->viewport()->mapFromGlobal(target->rect().center());
    SendLeftButton(grid->viewport(), centre,
                   {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick,
                    QEvent::MouseButtonRelease});
    return true;
}

QImage RenderWithPopups(Tessaly& panel, const std::vector<UnattendedDialogs::Seen>& dialogs)
{
    QImage image = panel.grab().toImage();
    QPainter painter(&image);
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->windowType() == Qt::Popup)
            painter.drawPixmap(panel.mapFromGlobal(window->pos()), window->grab());
    for (const UnattendedDialogs::Seen& dialog : dialogs)
        painter.drawPixmap(panel.mapFromGlobal(dialog.at), dialog.picture);
    return image;
}

QImage RenderShaped(QWidget& window)
{
    const qreal ratio = window.devicePixelRatioF();
    QImage image(window.size() * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    window.render(&image, QPoint(), window.mask().isEmpty() ? QRegion(window.rect()) : window.mask());
    return image;
}

} // namespace halvane
