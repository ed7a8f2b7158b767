#include "knetworkstatemonitor.h"
#include "kxactiveaccount.h"

#include "kdeskhivelib.h"

#include <deskhive/nimboclient.h>
#include <vexlite/ikaccountservice.h>
#include <vexlite/kshellapplicaitons.h>
#include <vexlite/kshellapplication.h>

KNetworkStateMonitor* KNetworkStateMonitor::instance()
{
    static KNetworkStateMonitor monitor;
    return &monitor;
}

KNetworkStateMonitor::KNetworkStateMonitor()
{
    if (INimboClient* client = KDeskhiveLib::instance()->nimboClientInstance())
        connect(client, SIGNAL(LoginStatusChange()), this, SLOT(onLoginStatusChanged()));
}

KNetworkStateMonitor::~KNetworkStateMonitor() = default;

void KNetworkStateMonitor::setLastLoginStatus(bool logined)
{
    lastLoginStatus = logined;
}

void KNetworkStateMonitor::setNetworkAvailable(bool available)
{
    if (available == networkAvailable)
        return;
    networkAvailable = available;
    emit notifyNetworkStatus(available);
}

bool KNetworkStateMonitor::isLogoutDuetoOffLine()
{
    return lastLoginStatus && !currentLoginStatus && !networkAvailable;
}

bool KNetworkStateMonitor::isNimboOffLineMode()
{
    return lastLoginStatus && !networkAvailable;
}

bool KNetworkStateMonitor::checkNetworkStatus()
{
    return true;
}

void KNetworkStateMonitor::onLoginStatusChanged()
{
    lastLoginStatus = currentLoginStatus;
    IKAccountService* account = kxActiveAccountService();
    currentLoginStatus = account && account->getUserInfo().logined();
    networkAvailable = true;
}
