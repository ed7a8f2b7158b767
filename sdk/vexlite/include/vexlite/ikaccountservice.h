#ifndef VEXLITE_IKACCOUNTSERVICE_H
#define VEXLITE_IKACCOUNTSERVICE_H

#include "kzentouserinfo.h"

#include <QString>

// The suite account as an application of the suite offers it. The host owns
// the object; callers never delete it.
class IKAccountService
{
public:
    virtual KZentoUserInfo getUserInfo() = 0;
    // True when the last sign-out happened because the network went away,
    // not because the user asked for it.
    virtual bool isLogoutDuetoOffLine() = 0;
    // Opens one of the account's entry points (sign-in, account centre,
    // ...), chosen by code; what the two texts mean depends on the code.
    virtual void entry(int code, const QString& first, const QString& second) = 0;

protected:
    IKAccountService() = default;
    ~IKAccountService() = default;
    IKAccountService(const IKAccountService&) = default;
    IKAccountService& operator=(const IKAccountService&) = default;
};

#endif // VEXLITE_IKACCOUNTSERVICE_H
