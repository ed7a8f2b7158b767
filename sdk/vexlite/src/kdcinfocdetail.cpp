#include "vexlite/kdcinfocdetail.h"

#include "khostprofile.h"

QString KDcInfoCDetail::getUuid()
{
    return KHostProfile::instance().infoString(QStringLiteral("installUuid"));
}

QString KDcInfoCDetail::getHdid()
{
    return KHostProfile::instance().infoString(QStringLiteral("hdid"));
}
