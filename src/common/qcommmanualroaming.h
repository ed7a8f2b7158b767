#ifndef AUTHCOMMON_QCOMMMANUALROAMING_H
#define AUTHCOMMON_QCOMMMANUALROAMING_H

#include "authcommon_export.h"

#include <QLatin1String>
#include <QString>
#include <QStringList>

// The files a user marked for roaming by hand, kept per directory in the
// INI file MANUAL_ROAMING_CONFIG_FILE there. Each entry of its "file" group
// maps the Base64 of a path's UTF-8 bytes (any path is then a valid key) to
// the time of marking in seconds since the epoch. An empty dir means no
// list: nothing is read or written.
namespace QComm {

inline const QLatin1String MANUAL_ROAMING_CONFIG_FILE("manualroaming.ini");

// The marked paths, each once; keys that do not decode to UTF-8 text are
// skipped. Edits keep every key but those a damaged file left behind.
AUTHCOMMON_EXPORT QStringList getManualRoamingFiles(const QString& dir);
// Marks file now; marking it again renews the time.
AUTHCOMMON_EXPORT void addManualRoamingFiles(const QString& dir, const QString& file);
AUTHCOMMON_EXPORT void delManualRoamingFiles(const QString& dir, const QString& file);

} // namespace QComm

#endif // AUTHCOMMON_QCOMMMANUALROAMING_H
