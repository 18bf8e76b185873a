#include "layout/LayoutFonts.h"

#include <QFile>
#include <QFontDatabase>
#include <QStringList>

namespace tessaly {

void LoadLayoutFonts()
{
    static const bool loaded = [] {
        if (QFontDatabase::hasFamily(QStringLiteral("Tahoma")))
            return true;
        for (const char* file : {"/usr/share/wine/fonts/tahoma.ttf", "/usr/share/wine/fonts/tahomabd.ttf"})
            if (QFile::exists(QLatin1String(file)))
                QFontDatabase::addApplicationFont(QLatin1String(file));
        return true;
    }();
    (void)loaded;
}

} // namespace tessaly
