#include "khostaccountservice.h"

#include "khostprofile.h"

KHostAccountService* KHostAccountService::instance()
{
    static KHostAccountService service;
    return &service;
}

KZentoUserInfo KHostAccountService::getUserInfo()
{
    KHostProfile& host = KHostProfile::instance();
    return KZentoUserInfo(host.accountLogined(), host.accountUserName());
}

bool KHostAccountService::isLogoutDuetoOffLine()
{
    return KHostProfile::instance().logoutDuetoOffLine();
}

void KHostAccountService::entry(int code, const QString& first, const QString& second)
{
    KHostProfile::instance().recordAccountEntry(code, first, second);
}
