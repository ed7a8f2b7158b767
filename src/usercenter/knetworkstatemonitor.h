#ifndef AUTHPLUGIN_KNETWORKSTATEMONITOR_H
#define AUTHPLUGIN_KNETWORKSTATEMONITOR_H

#include "kxauthglobal.h"

#include <QObject>

#include <memory>

// Remembers whether the user was signed in before the latest login-status
// change of the cloud client and whether the network is usable, so that the
// suite can tell a sign-out by the user from one caused by going offline.
// For the suite's other modules; the user-centre button asks the host
// instead.
//
// The network flag is driven from outside: the suite's cloud module calls
// setNetworkAvailable() when it loses or regains the network. A
// login-status change counts as proof that the network answered, and is
// announced as the network coming back when it had gone.
class KXAUTH_EXPORT KNetworkStateMonitor : public QObject
{
    Q_OBJECT

public:
    // The process-wide monitor, created on first use and connected then to
    // the cloud client's "LoginStatusChange()" (when there is a client).
    static KNetworkStateMonitor* instance();

    void setLastLoginStatus(bool logined);
    // Sets the network flag; notifyNetworkStatus() tells of a change.
    void setNetworkAvailable(bool available);

    // Signed in before the latest change, signed out now, and no network.
    bool isLogoutDuetoOffLine();
    // Signed in before the latest change, and no network.
    bool isNimboOffLineMode();
    // True, always: callers take the network as reachable unless the flags
    // say otherwise. It probes nothing and changes no flag.
    bool checkNetworkStatus();

signals:
    void notifyNetworkStatus(bool online);

private slots:
    void onLoginStatusChanged();

private:
    KNetworkStateMonitor();
    ~KNetworkStateMonitor() override;

    // The flags live here, so that they can change without changing the
    // class modules are built against.
    struct Private;
    std::unique_ptr<Private> d;
};

#endif // AUTHPLUGIN_KNETWORKSTATEMONITOR_H
