#ifndef VEXLITE_KRTPRODUCT_H
#define VEXLITE_KRTPRODUCT_H

#include "vexlite_global.h"

#include <QString>

namespace krt {
namespace product {

// A product-level string (addresses, names); empty when not configured.
VEXLITE_EXPORT QString getString(const QString& key);
// Whether this is the international edition of the suite.
VEXLITE_EXPORT bool isOverseasVersion();
// Whether the product has the named feature switched on.
VEXLITE_EXPORT bool isSupported(const QString& feature);

} // namespace product
} // namespace krt

#endif // VEXLITE_KRTPRODUCT_H
