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
