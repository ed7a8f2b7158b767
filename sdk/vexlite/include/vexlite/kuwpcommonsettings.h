#ifndef VEXLITE_KUWPCOMMONSETTINGS_H
#define VEXLITE_KUWPCOMMONSETTINGS_H

#include "vexlite_global.h"

#include <QString>
#include <QVariant>

namespace krt {

// Settings the host shares between the suite's store-packaged and desktop
// installations (the installation GUID "infoGUID" among them). Read-only.
class VEXLITE_EXPORT KUWPCommonSettings
{
public:
    // The value of key, or defaultValue when the host has no such value.
    QVariant value(const QString& key, const QVariant& defaultValue = QVariant()) const;
};

} // namespace krt

#endif // VEXLITE_KUWPCOMMONSETTINGS_H
