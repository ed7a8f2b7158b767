#include "vexlite/krtproduct.h"

#include "khostprofile.h"

namespace krt {
namespace product {

QString getString(const QString& key)
{
    return KHostProfile::instance().productString(key);
}

bool isOverseasVersion()
{
    return KHostProfile::instance().isOverseas();
}

bool isSupported(const QString& feature)
{
    return KHostProfile::instance().isFeatureSupported(feature);
}

} // namespace product
} // namespace krt
