// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "layout/LayoutFonts.h"

#include <QFile>
#include <QFont>
#include <QFontDatabase>
#include <QStringList>
#include <QtDebug>

namespace tessaly {

namespace {

// Only the regular face is loaded: Wine's bold one draws barely heavier than
// the regular at the layout's sizes, so bold captions would not read as bold.
// Without it the bold weight is the regular face emboldened, which keeps
// Tahoma's narrow metrics and plainly reads as bold.
bool LoadTahoma()
{
    if (QFontDatabase::hasFamily(Tahoma))
        return true;
    const QString file = QStringLiteral("/usr/share/wine/fonts/tahoma.ttf");
    return QFile::exists(file) && QFontDatabase::addApplicationFont(file) >= 0;
}

bool MapGulim()
{
    if (QFontDatabase::hasFamily(Gulim))
        return true;
    for (const QString& face : {QStringLiteral("NanumGothic"), QStringLiteral("UnDotum")}) {
        if (QFontDatabase::hasFamily(face)) {
            QFont::insertSubstitution(Gulim, face);
            QFont::insertSubstitution(QStringLiteral("Gulim"), face);
            return true;
        }
    }
    return false;
}

} // namespace

void LoadLayoutFonts()
{
    static const bool loaded = [] {
        QStringList missing;
        if (!LoadTahoma())
            missing << QStringLiteral("Tahoma (fonts-wine)");
        if (!MapGulim())
            missing << QStringLiteral("a Korean face for %1 (fonts-nanum)").arg(Gulim);
        if (!missing.isEmpty())
            qWarning().noquote() << "Tessaly: no font for" << missing.join(QStringLiteral(" or "))
                                 << "- the panel draws in the default font";
        return missing.isEmpty();
    }();
    (void)loaded;
}

} // namespace tessaly
