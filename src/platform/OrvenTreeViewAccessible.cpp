// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The page tree as a screen reader expects a tree: its children are its
// nodes, in the order they show, and nothing else (the view's hidden header
// is no node). Each node tells whether it is selected, focused, expanded or
// collapsed, and has the action Press, which chooses it as a click does, so
// that the page's handlers run; a node with children also has Expand or
// Collapse. The tree is a table of one column for the reader's selection:
// selecting a row chooses that node the same way.
//
// A node is known by its text, which is its key in the tree, so a node's
// interface outlives any rebuilding of the items behind it.
#include "platform/Accessibility.h"

#include "platform/OrvenTreeView.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <QTreeWidgetItem>

#include <utility>
#include <vector>

namespace tessaly {

namespace {

const QString& expandAction()
{
    static const QString name = QStringLiteral("Expand");
    return name;
}

const QString& collapseAction()
{
    static const QString name = QStringLiteral("Collapse");
    return name;
}

// Chooses the node from the event loop: the page's handlers may open a modal
// box, which must not run inside the reader's request.
void ChooseLater(OrvenTreeView* tree, const QString& text)
{
    QMetaObject::invokeMethod(
        tree,
        [tree = QPointer<OrvenTreeView>(tree), text] {
            if (QTreeWidgetItem* node = tree ? tree->FindNode(text) : nullptr)
                tree->ChooseNode(node);
        },
        Qt::QueuedConnection);
}

class AccessibleNode : public QAccessibleInterface,
                       public QAccessibleActionInterface,
                       public QAccessibleTableCellInterface {
public:
    AccessibleNode(OrvenTreeView* tree, QString text)
        : m_tree(tree)
        , m_text(std::move(text))
    {
    }

    const QString& key() const { return m_text; }

    bool isValid() const override { return node() != nullptr; }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_tree ? m_tree->window()->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(m_tree); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* focusChild() const override { return nullptr; }
    QAccessible::Role role() const override { return QAccessible::TreeItem; }
    QString text(QAccessible::Text t) const override { return t == QAccessible::Name && node() ? m_text : QString(); }
    void setText(QAccessible::Text, const QString&) override {}

    QRect rect() const override
    {
        QTreeWidgetItem* item = node();
        if (!item)
            return {};
        const QRect shown = m_tree->visualItemRect(item);
        return QRect(m_tree->viewport()->mapToGlobal(shown.topLeft()), shown.size());
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        QTreeWidgetItem* item = node();
        if (!item) {
            state.invalid = true;
            return state;
        }
        state.selectable = state.focusable = true;
        state.selected = item->isSelected();
        state.focused = m_tree->hasFocus() && m_tree->currentItem() == item;
        state.disabled = !m_tree->isEnabled();
        state.invisible = !m_tree->isVisible();
        state.offscreen = !m_tree->viewport()->rect().intersects(m_tree->visualItemRect(item));
        if (item->childCount() > 0) {
            state.expandable = true;
            state.expanded = item->isExpanded();
            state.collapsed = !item->isExpanded();
        }
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ActionInterface)
            return static_cast<QAccessibleActionInterface*>(this);
        if (type == QAccessible::TableCellInterface)
            return static_cast<QAccessibleTableCellInterface*>(this);
        return nullptr;
    }

    QStringList actionNames() const override
    {
        QTreeWidgetItem* item = node();
        if (!item || !m_tree->isEnabled())
            return {};
        QStringList names{pressAction()};
        if (item->childCount() > 0)
            names << (item->isExpanded() ? collapseAction() : expandAction());
        return names;
    }

    QString localizedActionName(const QString& action) const override { return action; }

    QString localizedActionDescription(const QString& action) const override
    {
        if (action == pressAction())
            return QStringLiteral("Shows the node's page");
        return action == expandAction() ? QStringLiteral("Shows the nodes under it")
                                        : QStringLiteral("Hides the nodes under it");
    }

    void doAction(const QString& action) override
    {
        if (!actionNames().contains(action))
            return;
        if (action == pressAction())
            ChooseLater(m_tree, m_text);
        else
            node()->setExpanded(action == expandAction());
    }

    QStringList keyBindingsForAction(const QString&) const override { return {}; }

    bool isSelected() const override { return node() && node()->isSelected(); }
    int columnExtent() const override { return 1; }
    QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
    int columnIndex() const override { return 0; }
    int rowExtent() const override { return 1; }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int rowIndex() const override { return m_tree ? int(m_tree->ShownNodes().indexOf(node())) : -1; }
    QAccessibleInterface* table() const override { return parent(); }

private:
    QTreeWidgetItem* node() const { return m_tree ? m_tree->FindNode(m_text) : nullptr; }

    QPointer<OrvenTreeView> m_tree;
    QString m_text;
};

class AccessibleTree : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit AccessibleTree(OrvenTreeView* tree)
        : QAccessibleWidget(tree, QAccessible::Tree)
    {
    }

    ~AccessibleTree() override { forgetNodes(); }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TableInterface)
            return static_cast<QAccessibleTableInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    int childCount() const override { return int(tree()->ShownNodes().size()); }

    QAccessibleInterface* child(int index) const override
    {
        const QList<QTreeWidgetItem*> nodes = tree()->ShownNodes();
        return index >= 0 && index < nodes.size() ? nodeInterface(nodes[index]) : nullptr;
    }

    int indexOfChild(const QAccessibleInterface* child) const override
    {
        const auto* node = dynamic_cast<const AccessibleNode*>(child);
        return node ? int(tree()->ShownNodes().indexOf(tree()->FindNode(node->key()))) : -1;
    }

    QAccessibleInterface* childAt(int x, int y) const override
    {
        QTreeWidgetItem* item = tree()->itemAt(tree()->viewport()->mapFromGlobal(QPoint(x, y)));
        return item ? nodeInterface(item) : nullptr;
    }

    QAccessibleInterface* focusChild() const override
    {
        QTreeWidgetItem* current = tree()->currentItem();
        return tree()->hasFocus() && current ? nodeInterface(current) : nullptr;
    }

    // A reader that moves its focus here brings the window forward, as a
    // click into the tree does.
    void doAction(const QString& action) override
    {
        if (action == setFocusAction() && tree()->isEnabled())
            tree()->activateWindow();
        QAccessibleWidget::doAction(action);
    }

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QString columnDescription(int) const override { return {}; }
    QString rowDescription(int) const override { return {}; }
    int columnCount() const override { return 1; }
    int rowCount() const override { return childCount(); }
    QAccessibleInterface* cellAt(int row, int column) const override { return column == 0 ? child(row) : nullptr; }

    int selectedCellCount() const override { return int(selectedRows().size()); }
    QList<QAccessibleInterface*> selectedCells() const override
    {
        QList<QAccessibleInterface*> cells;
        for (int row : selectedRows())
            cells << child(row);
        return cells;
    }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return int(selectedRows().size()); }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override
    {
        QList<int> rows;
        const QList<QTreeWidgetItem*> nodes = tree()->ShownNodes();
        for (int row = 0; row < nodes.size(); ++row)
            if (nodes[row]->isSelected())
                rows << row;
        return rows;
    }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override
    {
        const QList<QTreeWidgetItem*> nodes = tree()->ShownNodes();
        return row >= 0 && row < nodes.size() && nodes[row]->isSelected();
    }

    // Selecting a node chooses its page, as a click does.
    bool selectRow(int row) override
    {
        const QList<QTreeWidgetItem*> nodes = tree()->ShownNodes();
        if (row < 0 || row >= nodes.size() || !tree()->isEnabled())
            return false;
        ChooseLater(tree(), nodes[row]->text(0));
        return true;
    }
    // One page is always chosen: a node is left only by choosing another.
    bool unselectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectColumn(int) override { return false; }

    void modelChange(QAccessibleTableModelChangeEvent*) override { forgetRemovedNodes(); }

private:
    OrvenTreeView* tree() const { return static_cast<OrvenTreeView*>(widget()); }

    // Each node's interface is made once and registered with Qt, which owns
    // it from then on; a node removed has its interface deleted.
    QAccessibleInterface* nodeInterface(QTreeWidgetItem* item) const
    {
        const QString text = item->text(0);
        for (const auto& [key, id] : m_nodes)
            if (key == text)
                return QAccessible::accessibleInterface(id);
        auto* node = new AccessibleNode(tree(), text);
        m_nodes.emplace_back(text, QAccessible::registerAccessibleInterface(node));
        return node;
    }

    void forgetRemovedNodes()
    {
        std::erase_if(m_nodes, [this](const std::pair<QString, QAccessible::Id>& node) {
            if (tree()->FindNode(node.first))
                return false;
            QAccessible::deleteAccessibleInterface(node.second);
            return true;
        });
    }

    void forgetNodes()
    {
        for (const auto& [key, id] : std::exchange(m_nodes, {}))
            QAccessible::deleteAccessibleInterface(id);
    }

    mutable std::vector<std::pair<QString, QAccessible::Id>> m_nodes;
};

} // namespace

QAccessibleInterface* OrvenTreeViewAccessibleInterface(OrvenTreeView* tree)
{
    return new AccessibleTree(tree);
}

} // namespace tessaly
