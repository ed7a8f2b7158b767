#ifndef AUTHCOMMON_QCOMMPROCESS_H
#define AUTHCOMMON_QCOMMPROCESS_H

#include "authcommon_export.h"

#include <QString>

// The suite's cloud service process, the registry of active cloud clients,
// and opening web addresses.
namespace QComm {

// "<application dir>/../SharedSupport/zentocloudsvr.app", ".." kept.
AUTHCOMMON_EXPORT QString zentocloudsvrPath();
// Only the suite's main application starts the service; the call returns at
// once and the start happens on Qt's global thread pool. extraArgs goes at
// the end of the one quoted argument text the service receives.
AUTHCOMMON_EXPORT void launchZentocloudsvr(const QString& extraArgs);
// Does nothing on this platform.
AUTHCOMMON_EXPORT void launchZentocloudsvr(const QString& extraArgs, const QString& more);

// Starts nothing on this platform: false, always.
AUTHCOMMON_EXPORT bool createProcess(const QString& program, const QString& arguments,
                                     const QString& workingDir);
AUTHCOMMON_EXPORT bool isSurroundWith(const QString& s, const QString& mark);

AUTHCOMMON_EXPORT int getClientCount();
// Does nothing on this platform.
AUTHCOMMON_EXPORT void setClientActive(unsigned int clientId, bool active);

// Opens url (parsed tolerantly) with the desktop's handler for its scheme.
AUTHCOMMON_EXPORT bool openUrl(const QString& url);
// Opens url in Safari; true whenever Safari is there and the url is not
// empty, whatever became of the command.
AUTHCOMMON_EXPORT bool openUrlBySafari(const QString& url);

} // namespace QComm

#endif // AUTHCOMMON_QCOMMPROCESS_H
