#ifndef VEXLITE_KRTI18N_H
#define VEXLITE_KRTI18N_H

#include "vexlite_global.h"

#include <QLocale>
#include <QString>

namespace krt {

// Looks a text up in the host's translation catalogue for the current user
// interface language and keeps the answer. The id names the text for the
// cache; the source text is returned where the catalogue has no entry.
VEXLITE_EXPORT QString kCachedTr(const char* context, const char* sourceText, const char* id,
                                 int n = -1);

namespace i18n {

// The user interface language as a locale, for choosing a module's own
// translation catalogue (QTranslator::load(QLocale, ...)). It can change
// while the host runs.
VEXLITE_EXPORT QLocale uiLocale();

} // namespace i18n

} // namespace krt

#endif // VEXLITE_KRTI18N_H
