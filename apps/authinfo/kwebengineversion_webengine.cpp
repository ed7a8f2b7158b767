#include "kwebengineversion.h"

#include <QtWebEngineCore/qtwebenginecoreversion.h>

// QtWebEngine names its own version in the user agent ("QtWebEngine/6.4.2").
QString KWebEngineVersion::userAgentVersion()
{
    return QStringLiteral(QTWEBENGINECORE_VERSION_STR);
}
