// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "layout/SkinArt.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QHash>
#include <QtDebug>

namespace tessaly {

namespace {

void ClearDecoded();

// Emptied when the application ends: pixmaps must go before the platform. A
// library unloaded before that takes its routine back.
QHash<QString, QPixmap>& Decoded()
{
    struct Store {
        Store() { qAddPostRoutine(ClearDecoded); }
        ~Store() { qRemovePostRoutine(ClearDecoded); }
        QHash<QString, QPixmap> pictures;
    };
    static Store store;
    return store.pictures;
}

void ClearDecoded()
{
    Decoded().clear();
}

} // namespace

QPixmap SkinPicture(const QString& name)
{
    QHash<QString, QPixmap>& decoded = Decoded();
    auto found = decoded.constFind(name);
    if (found != decoded.cend())
        return *found;

    static const bool doubled = qGuiApp->devicePixelRatio() > 1.0;
    QPixmap picture(QStringLiteral(":/tessaly/skin/%1%2.png").arg(name, doubled ? QStringLiteral("@2x") : QString()));
    if (picture.isNull())
        qWarning().noquote() << "Tessaly: the skin has no bitmap" << name;
    picture.setDevicePixelRatio(doubled ? 2.0 : 1.0);
    return *decoded.insert(name, picture);
}

} // namespace tessaly
