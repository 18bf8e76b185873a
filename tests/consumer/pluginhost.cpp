// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Qt Designer's way to the panel: it looks for custom widget plugins in the
// folder "designer" of every Qt plugin path, QT_PLUGIN_PATH's among them, and
// makes the widget that a form holds.
#include <QApplication>
#include <QDir>
#include <QPluginLoader>
#include <QWidget>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    for (const QString& path : QCoreApplication::libraryPaths()) {
        const QDir folder(path + QStringLiteral("/designer"));
        for (const QString& file : folder.entryList(QDir::Files)) {
            QPluginLoader loader(folder.filePath(file));
            auto* plugin = qobject_cast<QDesignerCustomWidgetInterface*>(loader.instance());
            if (!plugin) {
                std::fprintf(stderr, "%s: %s\n", qPrintable(file), qPrintable(loader.errorString()));
                continue;
            }
            if (plugin->name() != QLatin1String("Tessaly"))
                continue; // another library's widget
            if (plugin->includeFile() != QLatin1String("tessaly/Tessaly.h")
                || !plugin->domXml().contains(QLatin1String("class=\"Tessaly\"")) || plugin->icon().isNull())
                return 2;
            QWidget form;
            QWidget* panel = plugin->createWidget(&form);
            QString value;
            QMetaObject::invokeMethod(panel, "AddItemToGrd", Q_ARG(int, 2), Q_ARG(QString, QString()),
                                      Q_ARG(bool, false), Q_ARG(bool, false), Q_ARG(QString, QString()),
                                      Q_ARG(QString, QStringLiteral("#777")), Q_ARG(int, 1), Q_ARG(int, 1));
            QMetaObject::invokeMethod(panel, "GetItemFromGrd", Q_RETURN_ARG(QString, value), Q_ARG(int, 2),
                                      Q_ARG(int, 1), Q_ARG(int, 0));
            return panel->inherits("Tessaly") && panel->parentWidget() == &form && value == QLatin1String("#777") ? 0 : 3;
        }
    }
    std::fprintf(stderr, "no Tessaly plugin in the Designer plugin folders\n");
    return 1;
}
