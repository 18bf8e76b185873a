// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "TessalyDesignerPlugin.h"

#include <tessaly/Tessaly.h>

#include <QIcon>

QString TessalyDesignerPlugin::whatsThis() const
{
    return QStringLiteral("The Tessaly panel: a page tree, NV items edited in place, NV Read, NV Write and "
                          "Restore on the model bound with SetModelDLL. It has a fixed size of 720 by 562 pixels.");
}

QIcon TessalyDesignerPlugin::icon() const
{
    return QIcon(QStringLiteral(":/tessaly/skin/imageReadIdle.png"));
}

QString TessalyDesignerPlugin::domXml() const
{
    return QStringLiteral("<ui language=\"c++\"><widget class=\"Tessaly\" name=\"tessaly\"/></ui>");
}

QWidget* TessalyDesignerPlugin::createWidget(QWidget* parent)
{
    return new Tessaly(parent);
}
