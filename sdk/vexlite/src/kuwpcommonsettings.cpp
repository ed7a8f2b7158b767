#include "vexlite/kuwpcommonsettings.h"

#include "khostprofile.h"
#include "vexlite/kqtcompat.h"

namespace krt {

QVariant KUWPCommonSettings::value(const QString& key, const QVariant& defaultValue) const
{
    const QString name = KHostProfile::uwpInfoKey(key);
    const QVariant stored = name.isEmpty() ? QVariant() : KHostProfile::instance().infoValue(name);
    return KQtCompat::isNull(stored) ? defaultValue : stored;
}

} // namespace krt
