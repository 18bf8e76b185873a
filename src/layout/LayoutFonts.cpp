#include "layout/LayoutFonts.h"

#include <QFile>
#include <QFont>
#include <QFontDatabase>
#include <QStringList>
#include <QtDebug>

namespace tessaly {

namespace {

bool LoadTahoma()
{
    if (QFontDatabase::hasFamily(Tahoma))
        return true;
    bool loaded = false;
    for (const char* file : {"/usr/share/wine/fonts/tahoma.ttf", "/usr/share/wine/fonts/tahomabd.ttf"})
        if (QFile::exists(QLatin1String(file)))
            loaded = QFontDatabase::addApplicationFont(QLatin1String(file)) >= 0 || loaded;
    return loaded;
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
            missing << QStringLiteral("a Korean face for \u00ab%1\u00bb (fonts-nanum)").arg(Gulim);
        if (!missing.isEmpty())
            qWarning().noquote() << "Tessaly: no font for" << missing.join(QStringLiteral(" or "))
                                 << "- the panel draws in the default font";
        return missing.isEmpty();
    }();
    (void)loaded;
}

} // namespace tessaly
