#ifndef VEXLITE_KRTCONFIGS_H
#define VEXLITE_KRTCONFIGS_H

#include "vexlite_global.h"

#include <QString>
#include <QVariant>

namespace krt {
namespace configs {

// Configuration comes from layered sources; each bit of the mask admits one
// layer (see krt::hostcontrol::ConfigLayer). Where several admitted layers
// hold the key, policy wins over server, server over user, user over
// machine and machine over the built-in defaults. Null when none holds it.
VEXLITE_EXPORT QVariant getValue(const QString& key, unsigned mask);

} // namespace configs
} // namespace krt

#endif // VEXLITE_KRTCONFIGS_H
