#include "vexlite/krtconfigs.h"

#include "khostprofile.h"

namespace krt {
namespace configs {

QVariant getValue(const QString& key, unsigned mask)
{
    return KHostProfile::instance().configValue(key, mask);
}

} // namespace configs
} // namespace krt
