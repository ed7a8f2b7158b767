#ifndef QCOMMPROCESS_H
#define QCOMMPROCESS_H

#include <QString>

// The suite's cloud service process, the registry of active cloud clients,
// and opening web addresses.
namespace QComm {

// "<application dir>/../SharedSupport/zentocloudsvr.app", ".." kept.
QString zentocloudsvrPath();
// Only the suite's main application starts the service; the call returns at
// once and the start happens on Qt's global thread pool. extraArgs goes at
// the end of the one quoted argument text the service receives.
void launchZentocloudsvr(const QString& extraArgs);
// Does nothing on this platform.
void launchZentocloudsvr(const QString& extraArgs, const QString& more);

// Starts nothing on this platform: false, always.
bool createProcess(const QString& program, const QString& arguments, const QString& workingDir);
bool isSurroundWith(const QString& s, const QString& mark);

int getClientCount();
// Does nothing on this platform.
void setClientActive(unsigned int clientId, bool active);

// Opens url (parsed tolerantly) with the desktop's handler for its scheme.
bool openUrl(const QString& url);
// Opens url in Safari; true whenever Safari is there and the url is not
// empty, whatever became of the command.
bool openUrlBySafari(const QString& url);

} // namespace QComm

#endif // QCOMMPROCESS_H
