#ifndef AUTHCOMMON_QCOMMIDENTITY_H
#define AUTHCOMMON_QCOMMIDENTITY_H

#include "authcommon_export.h"

#include <QString>
#include <QVariant>

// Who and what this installation is: identifiers, language, versions, the
// user level, the operating-system label and the user agents the cloud
// client's web traffic carries.
namespace QComm {

// "UUID-" and an upper-case UUID, made once and kept in the per-user store
// for every later process.
AUTHCOMMON_EXPORT QString deviceID();
// A fresh random UUID as 32 lower-case hexadecimal digits.
AUTHCOMMON_EXPORT QString createUuid();

// A Windows-style language identifier; 2052 when nothing is configured.
AUTHCOMMON_EXPORT int langID();
// A value of the setup file cfgs/setup.cfg beside the application.
AUTHCOMMON_EXPORT QVariant getNimboCfgsValue(const QString& key, const QVariant& defaultValue);

AUTHCOMMON_EXPORT QString zentoUUID();
AUTHCOMMON_EXPORT QString zentoHDID();
AUTHCOMMON_EXPORT QString zentoGUID();
// The suite's version; an unknown one ("0.0.0.0") reads as "8.1.0.X".
AUTHCOMMON_EXPORT QString zentoVersion();
AUTHCOMMON_EXPORT QString nimboVersion();
AUTHCOMMON_EXPORT QString zentoDistSrc();
AUTHCOMMON_EXPORT QString zentoInstallPath();

AUTHCOMMON_EXPORT QString userLevel();
AUTHCOMMON_EXPORT void setUserLevel(const QString& level);

// "macOS <version>" on macOS, "Linux <distribution version>" on Linux.
AUTHCOMMON_EXPORT QString getOperationVersion();

// Built by the first call and returned by every later one, whatever the
// later arguments are.
AUTHCOMMON_EXPORT QString getWebKitUserAgent(bool nimboPrefix, const QString& language,
                                             const QString& webKitVersion);
// The host's user agent, fetched once it has one; the argument is unused.
AUTHCOMMON_EXPORT QString getUserAgent(const QString& unused = QString());

// Not available on this platform: each logs a warning and returns "".
AUTHCOMMON_EXPORT QString userComputerName();
AUTHCOMMON_EXPORT QString vexlaunchPath();
AUTHCOMMON_EXPORT QString photolaunchPath();
AUTHCOMMON_EXPORT QString zentoCenterPath();

} // namespace QComm

#endif // AUTHCOMMON_QCOMMIDENTITY_H
