#include "vexlite/krtinfo.h"

#include "khostprofile.h"

namespace krt {
namespace info {

QString version()
{
    const QString version = KHostProfile::instance().infoString(QStringLiteral("version"));
    return version.isEmpty() ? QStringLiteral("0.0.0.0") : version;
}

QString installHdId()
{
    return KHostProfile::instance().infoString(QStringLiteral("hdid"));
}

} // namespace info
} // namespace krt
