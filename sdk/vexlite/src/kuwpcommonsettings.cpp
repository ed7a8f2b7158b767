#include "vexlite/kuwpcommonsettings.h"

#include "khostprofile.h"

namespace krt {

QVariant KUWPCommonSettings::value(const QString& key, const QVariant& defaultValue) const
{
    const QString name = KHostProfile::uwpInfoKey(key);
    const QVariant stored = name.isEmpty() ? QVariant() : KHostProfile::instance().infoValue(name);
    return stored.isNull() ? defaultValue : stored;
}

} // namespace krt
