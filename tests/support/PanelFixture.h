// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// A panel on screen, as a host shows it, with its controls by their layout
// names.
#pragma once

#include "panel/Panel.h"
#include "support/DialogAnswerer.h"

#include <tessaly/Tessaly.h>

#include <QTest>

#include <gtest/gtest.h>

#include <memory>

class PanelFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        host = std::make_unique<Tessaly>();
        host->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(host.get()));
    }
    void TearDown() override { host.reset(); }

    // The panel's controls, as the user sees them.
    const tessaly::PanelControls& panel() { return PanelOf(*host).Controls(); }

    template <class Control = QWidget>
    Control* control(const QString& name) const
    {
        return host->findChild<Control*>(name);
    }
    tessaly::MSFlexGrid* grid(int page) const
    {
        return control<tessaly::MSFlexGrid>(QStringLiteral("MSFlexGrid1(%1)").arg(page));
    }
    tessaly::Frame* frame(int page) const
    {
        return control<tessaly::Frame>(QStringLiteral("fraFlexGrid(%1)").arg(page));
    }

    // An item of a page: its title, and its value in column 1.
    void item(int16_t page, int32_t row, const char* title, const QString& value, const QString& format = {},
              bool number = false, bool readOnly = false, const QString& choices = {})
    {
        host->AddItemToGrid2(page, {}, readOnly, {}, QLatin1String(title), row, 0);
        host->AddItemToGrd(page, format, number, readOnly, choices, value, row, 1);
    }

    // A cell's rectangle in its grid's pixels, from the grid's Cell... properties.
    static QRect cellRect(tessaly::MSFlexGrid* g, int row, int col)
    {
        const int oldRow = g->Row(), oldCol = g->Col();
        const QSignalBlocker quiet(g);
        g->setRow(row);
        g->setCol(col);
        const QRect rect(tessaly::ToPixels(g->CellLeft()), tessaly::ToPixels(g->CellTop()),
                         tessaly::ToPixels(g->CellWidth()), tessaly::ToPixels(g->CellHeight()));
        g->setRow(oldRow);
        g->setCol(oldCol);
        return rect;
    }
    // Clicks a cell with the mouse, or double-clicks it.
    static void clickCell(tessaly::MSFlexGrid* g, int row, int col, bool twice = false)
    {
        const QPoint at = cellRect(g, row, col).center() - g->viewport()->pos();
        if (twice)
            QTest::mouseDClick(g->viewport(), Qt::LeftButton, {}, at);
        else
            QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, at);
    }
    // Clicks a button of the command bar: 0 NV Read, 1 NV Write, 2 Exit, 3 Restore.
    void clickCommand(int index) { QTest::mouseClick(panel().picCommand(index), Qt::LeftButton, {}, QPoint(20, 10)); }

    // Clicks a node of the page tree with the mouse.
    void clickNode(const QString& text)
    {
        auto* tree = panel().OrvenTreeView1;
        QTreeWidgetItem* node = tree->FindNode(text);
        ASSERT_NE(node, nullptr) << qPrintable(text);
        tree->scrollToItem(node);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(node).center());
    }

    // The pages whose frames are on view.
    QList<int> shownPages() const
    {
        QList<int> shown;
        for (int page = 0; page <= 20; ++page)
            if (frame(page)->isVisible())
                shown << page;
        return shown;
    }

    std::unique_ptr<Tessaly> host;
};
