#include "kwebengineversion.h"

QString KWebEngineVersion::userAgentVersion()
{
    return QString();
}
