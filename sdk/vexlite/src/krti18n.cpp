#include "vexlite/krti18n.h"

#include "khostprofile.h"

namespace krt {

QString kCachedTr(const char* context, const char* sourceText, const char* id, int n)
{
    return KHostProfile::instance().translate(context, sourceText, id, n);
}

namespace i18n {

QLocale uiLocale()
{
    return QLocale(KHostProfile::instance().language());
}

} // namespace i18n

} // namespace krt
