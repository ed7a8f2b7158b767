#ifndef QCOMMFILETYPES_H
#define QCOMMFILETYPES_H

#include <QString>
#include <QStringList>

// Which application of the suite opens which file-name extension. The lists
// come from the cloud store, where the service may override them, else from
// built-in defaults; entries are kept as stored, empty ones included.
namespace QComm {

// Read once per process, then copies of the first answer.
QStringList getZentoOpenAllSupportTypeList();
QStringList getTabixOpenAllSupportTypeList();
QStringList getSlidexOpenAllSupportTypeList();
// Read anew on every call.
QStringList getPdfOpenAllSupportType();

// The functions below keep their own copies of the lists, taken on their
// first call; later changes of the stored lists do not reach them.

// Note the order: the presentation list comes before the spreadsheet list.
void getZentoSupportList(QStringList& zento, QStringList& slidex, QStringList& tabix,
                         QStringList& pdf);
// "zento", "tabix", "slidex" or "pdf", the first whose list holds the
// suffix (letter case ignored); empty when none does.
QString getAppTypeBySuffix(const QString& suffix);
// Whether application appType opens suffix; "nimbo" stands for any of the
// four. Letter case is ignored in both.
bool checkIsZentoSupport(const QString& appType, const QString& suffix);
bool checkIsVexSupport(const QString& suffix);

} // namespace QComm

#endif // QCOMMFILETYPES_H
