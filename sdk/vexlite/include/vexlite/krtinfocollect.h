#ifndef VEXLITE_KRTINFOCOLLECT_H
#define VEXLITE_KRTINFOCOLLECT_H

#include "vexlite_global.h"

#include <QString>

// The host's usage collection. Events are kept per user, one JSON object a
// line, in the host profile's user data (krt::hostcontrol::infoCollectFile()),
// each with the time it was collected; the experiment identifier and variant
// tie it to the experiment the page or feature takes part in.
namespace krt {
namespace infocollect {

VEXLITE_EXPORT void collectExpEvent(const QString& expId, const QString& expVar,
                                    const QString& eventName, const QString& eventCategory,
                                    const QString& eventLable, int eventValue,
                                    const QString& viewName);
VEXLITE_EXPORT void collectExpView(const QString& expId, const QString& expVar,
                                   const QString& viewName, const QString& viewCategory);

} // namespace infocollect
} // namespace krt

#endif // VEXLITE_KRTINFOCOLLECT_H
