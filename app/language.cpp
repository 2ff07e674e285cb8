#include "app/language.h"

#include <QLocale>

namespace curvix::app {

QString currentLanguage()
{
    return QLocale::system().language() == QLocale::Swedish ? QStringLiteral("sv") : QStringLiteral("en");
}

} // namespace curvix::app
