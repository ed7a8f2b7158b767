#ifndef VEXLITE_HOSTCONTROL_H
#define VEXLITE_HOSTCONTROL_H

#include "vexlite_global.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

#include <functional>

class IKAuthorizationHandler;

// Control of the stand-in host, for host applications and tests. Plug-in
// code never includes this header: it sees the host only through krt::*.
//
// The host reads its state from a profile directory holding "host.json":
//   { "product": { "overseas": false, "strings": {..}, "features": {..} },
//     "configs": { "builtin": {..}, "machine": {..}, "user": {..},
//                  "server": {..}, "policy": {..} },
//     "info":    { "version": "12.1.0.17890", "installUuid": "..", "hdid": "..",
//                  "mc": "..", "userAgent": "..", "uwpInfoGUID": ".." },
//     "i18n":    { "language": "en_US" },
//     "shell":   { "activeApp": "zento",
//                  "account": { "logined": true, "userName": "..",
//                               "logoutDuetoOffLine": false } },
//     "display": { "scale": 1.5 },
//     "commands": { "TitleBar": [ .. ] } }
// The directory is named by the environment variable ZENTO_HOST_PROFILE,
// else it is "profile" beside the application. It is read on first use.
namespace krt {
namespace hostcontrol {

enum ConfigLayer : unsigned {
    BuiltinLayer = 0x01,
    MachineLayer = 0x02,
    UserLayer = 0x04,
    ServerLayer = 0x08,
    PolicyLayer = 0x10,
    AllLayers = 0x1f,
};

VEXLITE_EXPORT const char* profileEnvironmentVariable();

// Replaces the host's state with the profile in dir. On failure the state is
// empty, and error (if given) says why in one line.
VEXLITE_EXPORT bool loadProfile(const QString& dir, QString* error = nullptr);
// Empties the host's state; profileDir() becomes dir, which need not exist.
VEXLITE_EXPORT void resetProfile(const QString& dir = QString());
// Writes the current state as host.json into dir (created if missing).
VEXLITE_EXPORT bool saveProfile(const QString& dir, QString* error = nullptr);
VEXLITE_EXPORT QString profileDir();

VEXLITE_EXPORT void setHandler(IKAuthorizationHandler* handler);
VEXLITE_EXPORT IKAuthorizationHandler* handler();

VEXLITE_EXPORT void setProductString(const QString& key, const QString& value);
VEXLITE_EXPORT void setFeatureSupported(const QString& feature, bool supported);
VEXLITE_EXPORT void setOverseasVersion(bool overseas);
// A null value removes the key from the layer.
VEXLITE_EXPORT void setConfigValue(ConfigLayer layer, const QString& key, const QVariant& value);
VEXLITE_EXPORT void setLanguage(const QString& language);
VEXLITE_EXPORT QString language();
VEXLITE_EXPORT void setVersion(const QString& version);

// The installation's identity and the host's user agent.
VEXLITE_EXPORT void setInstallUuid(const QString& uuid);
VEXLITE_EXPORT void setHardwareId(const QString& hdid);
VEXLITE_EXPORT void setDistributionChannel(const QString& channel);
VEXLITE_EXPORT void setUserAgent(const QString& userAgent);
// A value of krt::KUWPCommonSettings; a null value removes it.
VEXLITE_EXPORT void setUwpCommonValue(const QString& key, const QVariant& value);

// The display scale the host's style (KZentoStyle) works with, for example
// 1.5 for 150 %, instead of the one the screen suggests. 0, a negative value,
// one above 8 or NaN switches the override off. displayScale() is 0 when the
// screen decides.
VEXLITE_EXPORT void setDisplayScale(qreal scale);
VEXLITE_EXPORT qreal displayScale();

// Command trees the host builds its windows' commands from, by the id of
// the tree's root ("TitleBar": a main window's title area), as the
// profile's "commands" section holds them. An entry is a class name for the
// command factory, or an object { "class": "..", "name": "..", "children":
// [ entries ] } (name and children optional; children go below a list
// command). Empty for an id without a tree.
VEXLITE_EXPORT QVariantList commandTree(const QString& id);
// An empty tree removes the id.
VEXLITE_EXPORT void setCommandTree(const QString& id, const QVariantList& tree);

// Named commands the host went on to run after the handler let them pass.
VEXLITE_EXPORT QStringList executedCommands();
VEXLITE_EXPORT void clearExecutedCommands();
// The host application's own handling of the named commands the handler let
// go on, called with each once it is recorded, on the thread that passed it.
// An empty function leaves them recorded only.
VEXLITE_EXPORT void setCommandRunner(std::function<void(const QString& name)> runner);

// The shell's active application (KShellApplicaitons::getActiveApp()) by
// name; an empty name leaves the shell without an active application.
VEXLITE_EXPORT void setActiveApp(const QString& name);
// The suite account every application's account service reports. A
// signed-out account has no user name.
VEXLITE_EXPORT void setAccountLogined(bool logined, const QString& userName = QString());
VEXLITE_EXPORT void setLogoutDuetoOffLine(bool offline);

// One call of the account service's entry operation.
struct AccountEntryCall
{
    int code = 0;
    QString first;
    QString second;
};
VEXLITE_EXPORT QList<AccountEntryCall> accountEntryCalls();
VEXLITE_EXPORT void clearAccountEntryCalls();
// Told of each call once it is recorded, on the caller's thread; an empty
// function tells nobody.
VEXLITE_EXPORT void
setAccountEntryObserver(std::function<void(const AccountEntryCall& call)> observer);

// The suite's user name (the author name documents are saved with), kept in
// the profile's per-user store; vex_GetUserInformation reads and writes it.
VEXLITE_EXPORT QString suiteUserName();
VEXLITE_EXPORT void setSuiteUserName(const QString& name);

// Failures the suite's user-information object can be made to show.
enum UserInformationFault {
    NoUserInformationFault,
    UserInformationUnavailable, // vex_GetUserInformation fails and gives no object
    UserNameUnreadable,         // reading the user name fails
    UserNameWriteThrows,        // writing the user name throws std::runtime_error
};
VEXLITE_EXPORT void setUserInformationFault(UserInformationFault fault);
VEXLITE_EXPORT UserInformationFault userInformationFault();

// Usage events recorded by krt::infocollect, oldest first: each the JSON
// object of one line of infoCollectFile() ("kind" is "event" or "view",
// "time" an ISO date in UTC, the other members the arguments by name).
// Lines that are not JSON objects are skipped.
VEXLITE_EXPORT QString infoCollectFile();
VEXLITE_EXPORT QList<QVariantMap> recordedEvents();
VEXLITE_EXPORT void clearRecordedEvents();

} // namespace hostcontrol
} // namespace krt

#endif // VEXLITE_HOSTCONTROL_H
