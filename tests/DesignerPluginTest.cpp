// Qt Designer's view of the panel: the plugin loads, names the widget and its
// header, and makes a working panel.
#include "support/PanelFixture.h"

#include <QPluginLoader>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

TEST(DesignerPlugin, LoadsAndMakesAPanelForAForm)
{
    QPluginLoader loader(QStringLiteral(TESSALY_DESIGNER_PLUGIN));
    ASSERT_TRUE(loader.load()) << qPrintable(loader.errorString());
    auto* plugin = qobject_cast<QDesignerCustomWidgetInterface*>(loader.instance());
    ASSERT_NE(plugin, nullptr);
    EXPECT_EQ(plugin->name(), "Tessaly");
    EXPECT_EQ(plugin->includeFile(), "tessaly/Tessaly.h");
    EXPECT_TRUE(plugin->domXml().contains(QStringLiteral("class=\"Tessaly\"")));
    EXPECT_FALSE(plugin->icon().isNull());
    QWidget form;
    auto* panel = qobject_cast<Tessaly*>(plugin->createWidget(&form));
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(panel->parentWidget(), &form);
    panel->AddItemToGrd(2, {}, false, false, {}, QStringLiteral("#777"), 1, 1);
    EXPECT_EQ(panel->GetItemFromGrd(2, 1, 0), "#777");
}
