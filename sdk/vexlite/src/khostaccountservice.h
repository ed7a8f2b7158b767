#ifndef VEXLITE_KHOSTACCOUNTSERVICE_H
#define VEXLITE_KHOSTACCOUNTSERVICE_H

#include "vexlite/ikaccountservice.h"

// The suite account of the stand-in host: its state is the host profile's
// "shell"/"account" section (or what the control API set), and every entry
// call is recorded for krt::hostcontrol::accountEntryCalls().
class KHostAccountService final : public IKAccountService
{
public:
    static KHostAccountService* instance();

    KZentoUserInfo getUserInfo() override;
    bool isLogoutDuetoOffLine() override;
    void entry(int code, const QString& first, const QString& second) override;

private:
    KHostAccountService() = default;
};

#endif // VEXLITE_KHOSTACCOUNTSERVICE_H
