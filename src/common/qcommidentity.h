#ifndef QCOMMIDENTITY_H
#define QCOMMIDENTITY_H

#include <QString>
#include <QVariant>

// Who and what this installation is: identifiers, language, versions, the
// user level, the operating-system label and the user agents the cloud
// client's web traffic carries.
namespace QComm {

// "UUID-" and an upper-case UUID, made once and kept in the per-user store
// for every later process.
QString deviceID();
// A fresh random UUID as 32 lower-case hexadecimal digits.
QString createUuid();

// A Windows-style language identifier; 2052 when nothing is configured.
int langID();
// A value of the setup file cfgs/setup.cfg beside the application.
QVariant getNimboCfgsValue(const QString& key, const QVariant& defaultValue);

QString zentoUUID();
QString zentoHDID();
QString zentoGUID();
// The suite's version; an unknown one ("0.0.0.0") reads as "8.1.0.X".
QString zentoVersion();
QString nimboVersion();
QString zentoDistSrc();
QString zentoInstallPath();

QString userLevel();
void setUserLevel(const QString& level);

// "macOS <version>" on macOS, "Linux <distribution version>" on Linux.
QString getOperationVersion();

// Built by the first call and returned by every later one, whatever the
// later arguments are.
QString getWebKitUserAgent(bool nimboPrefix, const QString& language, const QString& webKitVersion);
// The host's user agent, fetched once it has one; the argument is unused.
QString getUserAgent(const QString& unused = QString());

// Not available on this platform: each logs a warning and returns "".
QString userComputerName();
QString vexlaunchPath();
QString photolaunchPath();
QString zentoCenterPath();

} // namespace QComm

#endif // QCOMMIDENTITY_H
