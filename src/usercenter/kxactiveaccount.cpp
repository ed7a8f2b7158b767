#include "kxactiveaccount.h"

#include <vexlite/ikaccountservice.h>
#include <vexlite/kshellapplicaitons.h>
#include <vexlite/kshellapplication.h>

IKAccountService* kxActiveAccountService()
{
    KShellApplication* app = KShellApplicaitons::instance()->getActiveApp();
    return app ? app->accountService() : nullptr;
}

bool isLogoutDuetoOffLine()
{
    IKAccountService* account = kxActiveAccountService();
    return account && account->isLogoutDuetoOffLine();
}
