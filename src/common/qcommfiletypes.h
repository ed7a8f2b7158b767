#ifndef AUTHCOMMON_QCOMMFILETYPES_H
#define AUTHCOMMON_QCOMMFILETYPES_H

#include "authcommon_export.h"

#include <QString>
#include <QStringList>

// Which application of the suite opens which file-name extension. The lists
// come from the cloud store, where the service may override them, else from
// built-in defaults; entries are kept as stored, empty ones included.
namespace QComm {

// Read once per process, then copies of the first answer.
AUTHCOMMON_EXPORT QStringList getZentoOpenAllSupportTypeList();
AUTHCOMMON_EXPORT QStringList getTabixOpenAllSupportTypeList();
AUTHCOMMON_EXPORT QStringList getSlidexOpenAllSupportTypeList();
// Read anew on every call.
AUTHCOMMON_EXPORT QStringList getPdfOpenAllSupportType();

// The functions below keep their own copies of the lists, taken on their
// first call; later changes of the stored lists do not reach them.

// Note the order: the presentation list comes before the spreadsheet list.
AUTHCOMMON_EXPORT void getZentoSupportList(QStringList& zento, QStringList& slidex,
                                           QStringList& tabix, QStringList& pdf);
// "zento", "tabix", "slidex" or "pdf", the first whose list holds the
// suffix (letter case ignored); empty when none does.
AUTHCOMMON_EXPORT QString getAppTypeBySuffix(const QString& suffix);
// Whether application appType opens suffix; "nimbo" stands for any of the
// four. Letter case is ignored in both.
AUTHCOMMON_EXPORT bool checkIsZentoSupport(const QString& appType, const QString& suffix);
AUTHCOMMON_EXPORT bool checkIsVexSupport(const QString& suffix);

} // namespace QComm

#endif // AUTHCOMMON_QCOMMFILETYPES_H
