// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// In-place editing, each action from input to screen, beside QTableWidget
// doing the same with its own editors: a double click that opens a text
// editor on a cell, a key typed in the phone number cell that rewrites two
// lock codes, and a double click that opens a list of 20 items dropped open.
#include <tessaly/Tessaly.h>

#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

namespace {

void SendLeftButton(QWidget* target, const QPoint& at, std::initializer_list<QEvent::Type> types)
{
    for (QEvent::Type type : types) {
        QMouseEvent event(type, at, target->mapToGlobal(at), Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(target, &event);
    }
}

void DoubleClick(QWidget* target, const QPoint& at)
{
    SendLeftButton(target, at, {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick,
                                QEvent::MouseButtonRelease});
}

void Type(QWidget* target, Qt::Key key, const QString& text)
{
    for (QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QApplication::sendEvent(target, &event);
    }
}

// One key a round into an open editor, a digit and a Backspace by turns, so
// that the text keeps its length; each with the repaint that follows.
void TypeByTurns(benchmark::State& state, QWidget* editor)
{
    int next = 0;
    for (auto _ : state) {
        if (next ^= 1)
            Type(editor, Qt::Key_7, QStringLiteral("7"));
        else
            Type(editor, Qt::Key_Backspace, QStringLiteral("\b"));
        QApplication::processEvents();
    }
}

// Closes every modal box as it opens, as a user pressing OK would.
struct BoxCloser : QObject {
    BoxCloser() { qApp->installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (auto* dialog = qobject_cast<QDialog*>(watched); dialog && event->type() == QEvent::Show)
            QMetaObject::invokeMethod(dialog, [dialog] { dialog->done(QDialog::Accepted); }, Qt::QueuedConnection);
        return false;
    }
};

// A panel on view with its NAM page shown: the phone number, two lock codes,
// two text cells and two lists of 20 items.
struct PanelOnView {
    PanelOnView()
    {
        QStringList items;
        for (int i = 0; i < 20; ++i)
            items << QStringLiteral("Choice %1").arg(i);
        const QString list = items.join(QLatin1Char('|'));
        panel.SetNVFieldItemCount(0, 8);
        const struct { const char* title; const char* value; const char* format; bool number; QString choices; } rows[] = {
            {"Mobile Directory Number (MDN)", "8585550143", "###########", true, {}},
            {"LOCK CODE", "0143", "####", true, {}}, {"LOCK CODE", "0143", "####", true, {}},
            {"Home SID", "4139", "#####", true, {}}, {"Home NID", "65535", "#####", true, {}},
            {"Preferred Mode", "Choice 3", "", false, list}, {"Roaming Preference", "Choice 7", "", false, list},
        };
        for (int32_t row = 1; row <= int32_t(std::size(rows)); ++row) {
            const auto& item = rows[row - 1];
            panel.AddItemToGrid2(0, {}, false, {}, QLatin1String(item.title), row, 0);
            panel.AddItemToGrd(0, QLatin1String(item.format), item.number, false, item.choices,
                               QLatin1String(item.value), row, 1);
        }
        panel.show();
        panel.activateWindow();
        QApplication::processEvents();
        auto* tree = panel.findChild<QTreeWidget*>(QStringLiteral("OrvenTreeView1"));
        const QRect nam = tree->visualItemRect(tree->findItems(QStringLiteral("System NAM1"), Qt::MatchExactly).first());
        SendLeftButton(tree->viewport(), nam.center(), {QEvent::MouseButtonPress, QEvent::MouseButtonRelease});
        QApplication::processEvents();
        grid = panel.findChild<QAbstractScrollArea*>(QStringLiteral("MSFlexGrid1(0)"));
    }

    // The centre of a value cell in column 1, in the grid's viewport; the
    // title row and the items are 20 pixels high, the title column 233 wide.
    static QPoint Cell(int row) { return {233 + 50, 20 * row + 10}; }

    Tessaly panel;
    QAbstractScrollArea* grid = nullptr;
};

void PanelDoubleClickOpensTextEditor(benchmark::State& state)
{
    PanelOnView view;
    int next = 0;
    for (auto _ : state) {
        DoubleClick(view.grid->viewport(), PanelOnView::Cell(4 + next)); // closes the other
        next ^= 1;
        QApplication::processEvents();
    }
}
BENCHMARK(PanelDoubleClickOpensTextEditor)->Unit(benchmark::kMicrosecond);

void PanelKeyInPhoneNumberRewritesLockCodes(benchmark::State& state)
{
    BoxCloser closer; // the notice of the phone number cell
    PanelOnView view;
    DoubleClick(view.grid->viewport(), PanelOnView::Cell(1));
    QApplication::processEvents();
    auto* editor = view.panel.findChild<QLineEdit*>(QStringLiteral("txtEdit(0)"));
    editor->end(false);
    TypeByTurns(state, editor);
}
BENCHMARK(PanelKeyInPhoneNumberRewritesLockCodes)->Unit(benchmark::kMicrosecond);

void PanelDoubleClickOpensListOf20(benchmark::State& state)
{
    PanelOnView view;
    auto* list = view.panel.findChild<QComboBox*>(QStringLiteral("cboEditCell(0)"));
    int next = 0;
    for (auto _ : state) {
        DoubleClick(view.grid->viewport(), PanelOnView::Cell(6 + next));
        next ^= 1;
        QApplication::processEvents();
        state.PauseTiming();
        list->hidePopup();
        QApplication::processEvents();
        state.ResumeTiming();
    }
}
BENCHMARK(PanelDoubleClickOpensListOf20)->Unit(benchmark::kMicrosecond);

// The same page as a QTableWidget: a line editor from the delegate on a
// double click, and a combo box of 20 items for the list rows.
struct ListDelegate : QStyledItemDelegate {
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        if (index.row() < 5)
            return QStyledItemDelegate::createEditor(parent, option, index);
        auto* combo = new QComboBox(parent);
        for (int i = 0; i < 20; ++i)
            combo->addItem(QStringLiteral("Choice %1").arg(i));
        return combo;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override
    {
        auto* combo = qobject_cast<QComboBox*>(editor);
        if (!combo)
            return QStyledItemDelegate::setEditorData(editor, index);
        combo->setCurrentText(index.data().toString());
        combo->showPopup();
    }
};

struct TableOnView {
    TableOnView()
    {
        table.setItemDelegate(&delegate);
        table.setEditTriggers(QAbstractItemView::DoubleClicked);
        table.resize(449, 457);
        for (int row = 0; row < 100; ++row)
            table.setRowHeight(row, 20);
        table.setColumnWidth(0, 233);
        for (int row = 0; row < 8; ++row)
            for (int col = 0; col < 2; ++col)
                table.setItem(row, col, new QTableWidgetItem(QStringLiteral("Choice 3")));
        table.show();
        table.activateWindow();
        QApplication::processEvents();
    }
    QPoint Cell(int row) const { return table.visualItemRect(table.item(row, 1)).center(); }

    QTableWidget table{100, 23};
    ListDelegate delegate;
};

void QTableWidgetDoubleClickOpensTextEditor(benchmark::State& state)
{
    TableOnView view;
    int next = 0;
    for (auto _ : state) {
        DoubleClick(view.table.viewport(), view.Cell(3 + next));
        next ^= 1;
        QApplication::processEvents();
    }
}
BENCHMARK(QTableWidgetDoubleClickOpensTextEditor)->Unit(benchmark::kMicrosecond);

void QTableWidgetKeyInEditorRewritesTwoCells(benchmark::State& state)
{
    TableOnView view;
    DoubleClick(view.table.viewport(), view.Cell(0));
    QApplication::processEvents();
    auto* editor = view.table.viewport()->findChild<QLineEdit*>();
    QObject::connect(editor, &QLineEdit::textEdited, &view.table, [&](const QString& text) {
        view.table.item(0, 1)->setText(text);
        view.table.item(1, 1)->setText(text.right(4));
        view.table.item(2, 1)->setText(text.right(4));
    });
    TypeByTurns(state, editor);
}
BENCHMARK(QTableWidgetKeyInEditorRewritesTwoCells)->Unit(benchmark::kMicrosecond);

void QTableWidgetDoubleClickOpensListOf20(benchmark::State& state)
{
    TableOnView view;
    int next = 0;
    for (auto _ : state) {
        DoubleClick(view.table.viewport(), view.Cell(5 + next));
        next ^= 1;
        QApplication::processEvents();
        state.PauseTiming();
        if (auto* combo = view.table.viewport()->findChild<QComboBox*>())
            combo->hidePopup();
        QApplication::processEvents();
        state.ResumeTiming();
    }
}
BENCHMARK(QTableWidgetDoubleClickOpensListOf20)->Unit(benchmark::kMicrosecond);

} // namespace
