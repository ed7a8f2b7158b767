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

// The user interface language in one of these formats (the host keeps it
// as "zh_CN"):
//   0  the host's own code, language and country joined by "_": "zh_CN"
//   1  as web pages and their addresses expect it, joined by "-": "zh-CN"
//   2  the language alone, lower case: "zh"
// Any other format gives format 0.
VEXLITE_EXPORT QString language(int format = 0);

// The copy of fileName for a user interface language: dir holds one folder
// per language code ("zh_CN", "en_US") and a "default" folder. Looks in the
// folder of the language (the interface language when language is empty),
// then of the language alone ("zh"), then in "default"; the first file that
// exists wins. dir may be a resource path (":/...") and may use "\" or "/",
// with or without a separator at its end; the answer keeps dir as given and
// joins with dir's separator. Empty when no folder has the file.
VEXLITE_EXPORT QString getMuiFile(const QString& dir, const QString& fileName,
                                  const QString& language = QString());

} // namespace i18n
} // namespace krt

#endif // VEXLITE_KRTI18N_H
