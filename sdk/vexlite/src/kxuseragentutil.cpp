#include "vexlite/kxuseragentutil.h"

#include "khostprofile.h"

QString KxUserAgentUtil::getUserAgent()
{
    return KHostProfile::instance().infoString(QStringLiteral("userAgent"));
}
