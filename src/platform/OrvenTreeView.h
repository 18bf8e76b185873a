// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The page tree: root nodes with child nodes, each known by its text alone,
// which is its key and its caption. Click is raised when the user selects a
// node, by mouse, keyboard or a screen reader's action; selecting by code
// raises nothing. Screen readers see a tree whose children are its nodes, in
// the order they show (OrvenTreeViewAccessible.cpp).
#pragma once

#include "platform/FormControl.h"

#include <QAccessible>
#include <QTreeWidget>

namespace tessaly {

class OrvenTreeView : public FormControl<QTreeWidget> {
    Q_OBJECT
    Q_PROPERTY(QString SelectedText READ SelectedText)
public:
    explicit OrvenTreeView(QWidget* parent = nullptr);

    // Adds a root node behind the existing ones.
    Q_INVOKABLE void AddRootNode(const QString& text);
    // Adds a node behind the other children of the node `parentText`; a parent
    // that no node has is refused with a run-time error.
    Q_INVOKABLE void AddChildNode(const QString& text, const QString& parentText);
    // Removes the node with that text and its children; no such node: nothing.
    Q_INVOKABLE void RemoveNode(const QString& text);
    // Makes the node the selected one; no such node: a run-time error.
    Q_INVOKABLE void SelectNode(const QString& text);
    // The text of the selected node, empty when none is.
    QString SelectedText() const;

    QTreeWidgetItem* FindNode(const QString& text) const;
    // The nodes a reader can reach, top to bottom: those under a collapsed
    // node are left out.
    QList<QTreeWidgetItem*> ShownNodes() const;
    // Selects the node and raises Click, as a click on it does.
    void ChooseNode(QTreeWidgetItem* node);

signals:
    void Click();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    QTreeWidgetItem* nodeOrRaise(const QString& text) const;
    void tellReaders(QAccessible::Event event, const QModelIndex& index);
};

} // namespace tessaly
