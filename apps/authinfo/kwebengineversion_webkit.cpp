#include "kwebengineversion.h"

#include <QtWebKit/qwebkitglobal.h>

QString KWebEngineVersion::userAgentVersion()
{
    return qWebKitVersion();
}
