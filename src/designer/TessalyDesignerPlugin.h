// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Puts the panel into Qt Designer's widget box, so that a host's .ui form can
// hold it; uic then writes `new Tessaly(parent)` with <tessaly/Tessaly.h>.
#pragma once

#include <QtUiPlugin/QDesignerCustomWidgetInterface>

class TessalyDesignerPlugin : public QObject, public QDesignerCustomWidgetInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetInterface")
    Q_INTERFACES(QDesignerCustomWidgetInterface)
public:
    using QObject::QObject;

    QString name() const override { return QStringLiteral("Tessaly"); }
    QString group() const override { return QStringLiteral("Phone Service"); }
    QString toolTip() const override { return QStringLiteral("Settings panel for CDMA handsets"); }
    QString whatsThis() const override;
    QString includeFile() const override { return QStringLiteral("tessaly/Tessaly.h"); }
    QIcon icon() const override;
    bool isContainer() const override { return false; }
    QString domXml() const override;
    QWidget* createWidget(QWidget* parent) override;
};
