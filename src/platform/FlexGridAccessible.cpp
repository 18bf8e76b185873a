// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The grid as screen readers see it: a table whose children are all its
// cells, row after row. The title row gives the columns' titles and column 0
// the rows' (item) titles; the table proper is the value cells from row 1 and
// column 1. A cell whose text the column cuts shows its whole text in a
// tooltip, and is read whole.
#include "platform/Accessibility.h"
#include "platform/MSFlexGrid.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QFontMetrics>
#include <QHash>
#include <QHelpEvent>
#include <QToolTip>

namespace tessaly {

QString MSFlexGrid::CellName(int row, int col) const
{
    const QString item = TextMatrix(row, 0);
    const QString column = TextMatrix(0, col);
    return m_cols > 2 && !column.isEmpty() ? item + QStringLiteral(", ") + column : item;
}

bool MSFlexGrid::CellTextCut(int row, int col) const
{
    const QString text = TextMatrix(row, col);
    const int room = m_colWidth[size_t(col)] - (m_gridLines != 0 ? 1 : 0) - 2 * TextMargin;
    return !text.isEmpty() && QFontMetrics(cellFont(row, col)).horizontalAdvance(text) > room;
}

bool MSFlexGrid::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int row = rowAt(help->pos().y());
    const int col = colAt(help->pos().x());
    if (row >= 0 && col >= 0 && CellTextCut(row, col))
        QToolTip::showText(help->globalPos(), TextMatrix(row, col), viewport(), cellRect(row, col));
    else
        QToolTip::hideText();
    return true;
}

class FlexGridCellAccessible : public QAccessibleInterface, public QAccessibleTableCellInterface {
public:
    FlexGridCellAccessible(MSFlexGrid* grid, int row, int col)
        : m_grid(grid)
        , m_row(row)
        , m_col(col)
    {
    }

    bool isValid() const override { return m_grid && m_row < m_grid->Rows() && m_col < m_grid->Cols(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_grid ? m_grid->window()->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(m_grid); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    void setText(QAccessible::Text, const QString&) override {}

    QString text(QAccessible::Text t) const override
    {
        if (!isValid() || (t != QAccessible::Name && t != QAccessible::Value))
            return {};
        return m_grid->TextMatrix(m_row, m_col);
    }

    QAccessible::Role role() const override
    {
        return m_row == 0 ? QAccessible::ColumnHeader : m_col == 0 ? QAccessible::RowHeader : QAccessible::Cell;
    }

    QRect rect() const override
    {
        if (!isValid())
            return {};
        const QRect cell = m_grid->cellRect(m_row, m_col);
        return QRect(m_grid->viewport()->mapToGlobal(cell.topLeft()), cell.size());
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        if (!isValid())
            return state;
        const QRect cell = m_grid->cellRect(m_row, m_col);
        if (!m_grid->isVisible() || !m_grid->viewport()->rect().intersects(cell)
            || (m_row >= 1 && m_row < m_grid->TopRow()) || m_col < m_grid->LeftCol())
            state.invisible = state.offscreen = true;
        if (role() == QAccessible::Cell) {
            state.selectable = true;
            state.selected = isSelected();
            state.focused = state.selected && m_grid->hasFocus();
        }
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TableCellInterface && role() == QAccessible::Cell
            ? static_cast<QAccessibleTableCellInterface*>(this)
            : nullptr;
    }

    const MSFlexGrid* grid() const { return m_grid; }
    int row() const { return m_row; }
    int col() const { return m_col; }

    bool isSelected() const override { return isValid() && m_grid->Row() == m_row && m_grid->Col() == m_col; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    int columnIndex() const override { return m_col - 1; }
    int rowIndex() const override { return m_row - 1; }
    QList<QAccessibleInterface*> columnHeaderCells() const override { return {sibling(0, m_col)}; }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {sibling(m_row, 0)}; }
    QAccessibleInterface* table() const override { return parent(); }

private:
    QAccessibleInterface* sibling(int row, int col) const
    {
        QAccessibleInterface* grid = parent();
        return grid && isValid() ? grid->child(row * m_grid->Cols() + col) : nullptr;
    }

    QPointer<MSFlexGrid> m_grid;
    int m_row;
    int m_col;
};

class FlexGridAccessible : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit FlexGridAccessible(MSFlexGrid* grid)
        : QAccessibleWidget(grid, QAccessible::Table)
    {
    }
    ~FlexGridAccessible() override
    {
        for (QAccessible::Id id : std::as_const(m_cells))
            QAccessible::deleteAccessibleInterface(id);
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TableInterface)
            return static_cast<QAccessibleTableInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    int childCount() const override { return grid()->Rows() * grid()->Cols(); }
    QAccessibleInterface* child(int index) const override
    {
        const int cols = grid()->Cols();
        return index >= 0 && index < childCount() ? cell(index / cols, index % cols) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        const auto* cell = dynamic_cast<const FlexGridCellAccessible*>(child);
        return cell && cell->grid() == grid() && cell->isValid() ? cell->row() * grid()->Cols() + cell->col() : -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override
    {
        const QPoint at = grid()->viewport()->mapFromGlobal(QPoint(x, y));
        const int row = grid()->rowAt(at.y());
        const int col = grid()->colAt(at.x());
        return grid()->viewport()->rect().contains(at) && row >= 0 && col >= 0 ? cell(row, col) : nullptr;
    }
    QAccessibleInterface* focusChild() const override
    {
        return grid()->hasFocus() && grid()->Row() >= 1 ? cell(grid()->Row(), grid()->Col()) : nullptr;
    }

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    int rowCount() const override { return grid()->Rows() - 1; }
    int columnCount() const override { return grid()->Cols() - 1; }
    QAccessibleInterface* cellAt(int row, int column) const override
    {
        return row >= 0 && row < rowCount() && column >= 0 && column < columnCount() ? cell(row + 1, column + 1) : nullptr;
    }
    QString rowDescription(int row) const override { return grid()->TextMatrix(row + 1, 0); }
    QString columnDescription(int column) const override { return grid()->TextMatrix(0, column + 1); }
    // The current value cell is the one selected; rows and columns are not.
    int selectedCellCount() const override { return grid()->Row() >= 1 && grid()->Col() >= 1 ? 1 : 0; }
    QList<QAccessibleInterface*> selectedCells() const override
    {
        return selectedCellCount() ? QList{cell(grid()->Row(), grid()->Col())} : QList<QAccessibleInterface*>{};
    }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return 0; }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override { return {}; }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int) const override { return false; }
    bool selectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {}

private:
    MSFlexGrid* grid() const { return static_cast<MSFlexGrid*>(widget()); }

    // Each cell's interface is made on first asking and kept, so that it
    // keeps one identity for the assistive technology.
    QAccessibleInterface* cell(int row, int col) const
    {
        const auto found = m_cells.constFind({row, col});
        if (found != m_cells.cend())
            return QAccessible::accessibleInterface(*found);
        auto* cell = new FlexGridCellAccessible(grid(), row, col);
        m_cells.insert({row, col}, QAccessible::registerAccessibleInterface(cell));
        return cell;
    }

    mutable QHash<std::pair<int, int>, QAccessible::Id> m_cells;
};

QAccessibleInterface* FlexGridAccessibleInterface(MSFlexGrid* grid)
{
    return new FlexGridAccessible(grid);
}

void TellCurrentCell(MSFlexGrid& grid, int cell)
{
    if (!QAccessible::isActive() || !grid.hasFocus())
        return;
    QAccessibleEvent event(&grid, QAccessible::Focus);
    event.setChild(cell);
    QAccessible::updateAccessibility(&event);
}

} // namespace tessaly
