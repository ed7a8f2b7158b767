#include "knetworkstatemonitor.h"
#include "kxactiveaccount.h"

#include "kdeskhivelib.h"

#include <deskhive/nimboclient.h>
#include <vexlite/ikaccountservice.h>
#include <vexlite/kshellapplicaitons.h>
#include <vexlite/kshellapplication.h>

struct KNetworkStateMonitor::Private
{
#ifdef AUTH_LAYOUT_PROBE
    // Another private layout, for the package test's library of it.
    char layoutProbe[256] = {};
#endif
    bool networkAvailable = true;
    bool lastLoginStatus = false;    // signed in before the latest change
    bool currentLoginStatus = false; // signed in now
};

KNetworkStateMonitor* KNetworkStateMonitor::instance()
{
    static KNetworkStateMonitor monitor;
    return &monitor;
}

KNetworkStateMonitor::KNetworkStateMonitor()
    : d(std::make_unique<Private>())
{
    if (INimboClient* client = KDeskhiveLib::instance()->nimboClientInstance())
        connect(client, SIGNAL(LoginStatusChange()), this, SLOT(onLoginStatusChanged()));
}

KNetworkStateMonitor::~KNetworkStateMonitor() = default;

void KNetworkStateMonitor::setLastLoginStatus(bool logined)
{
    d->lastLoginStatus = logined;
}

void KNetworkStateMonitor::setNetworkAvailable(bool available)
{
    if (available == d->networkAvailable)
        return;
    d->networkAvailable = available;
    emit notifyNetworkStatus(available);
}

bool KNetworkStateMonitor::isLogoutDuetoOffLine()
{
    return d->lastLoginStatus && !d->currentLoginStatus && !d->networkAvailable;
}

bool KNetworkStateMonitor::isNimboOffLineMode()
{
    return d->lastLoginStatus && !d->networkAvailable;
}

bool KNetworkStateMonitor::checkNetworkStatus()
{
    return true;
}

void KNetworkStateMonitor::onLoginStatusChanged()
{
    d->lastLoginStatus = d->currentLoginStatus;
    IKAccountService* account = kxActiveAccountService();
    d->currentLoginStatus = account && account->getUserInfo().logined();
    // The client reached its service, so the network is there; listeners
    // hear of its return as they heard of its loss.
    setNetworkAvailable(true);
}
