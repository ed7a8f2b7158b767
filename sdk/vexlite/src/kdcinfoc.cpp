#include "vexlite/kdcinfoc.h"

#include "khostprofile.h"
#include "vexlite/krtinfo.h"

QString KDcInfoC::getMC()
{
    return KHostProfile::instance().infoString(QStringLiteral("mc"));
}

QString KDcInfoC::getVersion()
{
    return krt::info::version();
}
