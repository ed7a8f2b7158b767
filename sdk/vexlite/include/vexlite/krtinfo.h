#ifndef VEXLITE_KRTINFO_H
#define VEXLITE_KRTINFO_H

#include "vexlite_global.h"

#include <QString>

namespace krt {
namespace info {

// The suite's version, four dotted numbers ("0.0.0.0" when unknown).
VEXLITE_EXPORT QString version();
// The hardware identifier recorded at installation; empty when unknown.
VEXLITE_EXPORT QString installHdId();

} // namespace info
} // namespace krt

#endif // VEXLITE_KRTINFO_H
