// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/OrvenTreeView.h"

#include "platform/Accessibility.h"
#include "platform/TextInk.h"

#include <QApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QStaticText>
#include <QStyledItemDelegate>
#include <QTreeWidgetItemIterator>

namespace tessaly {

namespace {

// Rows as tall as the ink of the font's letters, ascenders to descenders,
// with a pixel to spare above and below: a face whose stated height is less
// than its ink would otherwise have the selection bar cut its descenders.
// A node's text is laid out once and kept, with where the style puts it in
// its row, where the style lays it out again at every paint: the style draws
// the row without its text, and the kept text goes where the style put it,
// copied from its ink.
class NodeDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyleOptionViewItem item = option;
        initStyleOption(&item, index);
        const QWidget* view = item.widget;
        QStyle* style = view ? view->style() : QApplication::style();
        Node& node = laidOut(item, style);
        if (node.text.size().width() > node.textRect.width()) { // cut: the style elides it
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        const bool selected = item.state & QStyle::State_Selected;
        const QPalette::ColorGroup group = !(item.state & QStyle::State_Enabled) ? QPalette::Disabled
            : (item.state & QStyle::State_Active)                             ? QPalette::Normal
                                                                              : QPalette::Inactive;
        const QColor ink = item.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
        item.text.clear();
        style->drawControl(QStyle::CE_ItemViewItem, &item, painter, view);
        const QRect at = QStyle::alignedRect(item.direction, item.displayAlignment, node.text.size().toSize(),
                                             node.textRect.translated(item.rect.topLeft()));
        const QPoint margin(node.margin, node.margin); // for glyphs that reach past the text's box
        const TextInk::Key key{node.text.text(), item.font, ink.rgba(), 0, at.size() + 2 * QSize(margin.x(), margin.y())};
        node.ink.paint(*painter, at.topLeft() - margin, key, [&](QPainter& text) {
            text.setPen(ink);
            text.drawStaticText(margin, node.text);
        });
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        const QFontMetrics metrics(option.font);
        const int ink = metrics.boundingRect(QStringLiteral("Sybdfghjklpq|()")).height();
        size.setHeight(std::max(size.height(), std::max(ink, metrics.height()) + 3));
        return size;
    }

private:
    // A node's text as laid out, and where in its row the style puts it.
    struct Node {
        QStaticText text;
        QFont font;
        QSize rowSize;
        QRect textRect; // from the row's top left
        int margin = 0;
        TextInk ink;
    };

    Node& laidOut(const QStyleOptionViewItem& item, const QStyle* style) const
    {
        Node& node = m_nodes[item.text];
        if (node.text.text() == item.text && node.font == item.font && node.rowSize == item.rect.size())
            return node;
        const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, item.widget) + 1;
        node.text = QStaticText(item.text);
        node.text.setTextFormat(Qt::PlainText);
        node.text.prepare(QTransform(), item.font);
        node.font = item.font;
        node.margin = QFontMetrics(item.font).height() / 2;
        node.rowSize = item.rect.size();
        node.textRect = style->subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget)
                            .adjusted(margin, 0, -margin, 0)
                            .translated(-item.rect.topLeft());
        return node;
    }

    mutable QHash<QString, Node> m_nodes;
};

} // namespace

OrvenTreeView::OrvenTreeView(QWidget* parent)
    : FormControl(parent)
{
    setHeaderHidden(true);
    setColumnCount(1);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setRootIsDecorated(true);
    setUniformRowHeights(true);
    setItemDelegate(new NodeDelegate(this));
    InstallAccessibleInterfaces();
}

void OrvenTreeView::AddRootNode(const QString& text)
{
    auto* node = new QTreeWidgetItem(this, QStringList(text));
    node->setExpanded(true);
}

void OrvenTreeView::AddChildNode(const QString& text, const QString& parentText)
{
    QTreeWidgetItem* parent = nodeOrRaise(parentText);
    new QTreeWidgetItem(parent, QStringList(text));
    parent->setExpanded(true);
}

void OrvenTreeView::RemoveNode(const QString& text)
{
    delete FindNode(text);
}

void OrvenTreeView::SelectNode(const QString& text)
{
    QTreeWidgetItem* node = nodeOrRaise(text);
    const QSignalBlocker quiet(this);
    setCurrentItem(node);
}

QString OrvenTreeView::SelectedText() const
{
    const QList<QTreeWidgetItem*> selected = selectedItems();
    return selected.isEmpty() ? QString() : selected.first()->text(0);
}

QTreeWidgetItem* OrvenTreeView::FindNode(const QString& text) const
{
    for (QTreeWidgetItemIterator it(const_cast<OrvenTreeView*>(this)); *it; ++it)
        if ((*it)->text(0) == text)
            return *it;
    return nullptr;
}

QList<QTreeWidgetItem*> OrvenTreeView::ShownNodes() const
{
    QList<QTreeWidgetItem*> nodes;
    for (QTreeWidgetItem* node = topLevelItem(0); node; node = itemBelow(node))
        nodes << node;
    return nodes;
}

void OrvenTreeView::ChooseNode(QTreeWidgetItem* node)
{
    setCurrentItem(node);
    node->setSelected(true);
    emit Click();
}

QTreeWidgetItem* OrvenTreeView::nodeOrRaise(const QString& text) const
{
    QTreeWidgetItem* node = FindNode(text);
    if (!node)
        Raise(errInvalidProcedureCall, QStringLiteral("Node '%1' not found").arg(text));
    return node;
}

// A click on a node selects it and raises Click, also when it was selected
// already; a click beside the nodes raises nothing.
void OrvenTreeView::mouseReleaseEvent(QMouseEvent* event)
{
    QTreeWidget::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton)
        return;
    QTreeWidgetItem* node = itemAt(event->position().toPoint());
    if (node && node == currentItem() && node->isSelected())
        emit Click();
}

void OrvenTreeView::keyPressEvent(QKeyEvent* event)
{
    QTreeWidgetItem* before = currentItem();
    QTreeWidget::keyPressEvent(event);
    if (currentItem() && currentItem() != before) {
        currentItem()->setSelected(true);
        emit Click();
    }
}

// The view's own telling of the current node and the selection counts a
// hidden header as a row, which readers would take for a node: the tree tells
// them itself, by the node's place among the shown nodes. The two rows
// repaint across the viewport, as the view would repaint them.
void OrvenTreeView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QAbstractItemView::currentChanged(current, previous);
    for (const QModelIndex& index : {previous, current}) {
        if (const QRect row = visualRect(index); row.isValid())
            viewport()->update(0, row.top(), viewport()->width(), row.height());
    }
    if (hasFocus())
        tellReaders(QAccessible::Focus, current);
}

void OrvenTreeView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QAbstractItemView::selectionChanged(selected, deselected);
    tellReaders(QAccessible::SelectionAdd, selected.indexes().value(0));
    tellReaders(QAccessible::SelectionRemove, deselected.indexes().value(0));
}

void OrvenTreeView::tellReaders(QAccessible::Event event, const QModelIndex& index)
{
    if (!QAccessible::isActive())
        return;
    const int row = ShownNodes().indexOf(itemFromIndex(index));
    if (row < 0)
        return;
    QAccessibleEvent told(this, event);
    told.setChild(row);
    QAccessible::updateAccessibility(&told);
}

} // namespace tessaly
