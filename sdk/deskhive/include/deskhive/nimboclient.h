#ifndef DESKHIVE_NIMBOCLIENT_H
#define DESKHIVE_NIMBOCLIENT_H

#include "deskhive_global.h"

#include <QObject>
#include <QString>
#include <QVariant>

#include <json/value.h>

// The cloud client object the Deskhive library hands out from
// NimboClientInstance(). It owns the signed-in account; callers keep no
// account state of their own and ask it again when it signals a change.
//
// The order of the virtual operations is part of the library's binary
// interface: do not reorder or insert.
class DESKHIVE_EXPORT INimboClient : public QObject
{
    Q_OBJECT

public:
    explicit INimboClient(QObject* parent = nullptr);
    ~INimboClient() override;

    // Starts a sign-in; param carries the caller's login options (may be null).
    virtual void login(const QVariant& param) = 0;
    // Writes into autoLoginUrl an address that opens url with the current
    // user already signed in; leaves it empty when it cannot make one.
    virtual void getAutoLoginUrl(const QString& url, QString& autoLoginUrl) = 0;
    virtual void logout() = 0;
    // An object with "IsLogined" (bool), "IsCompanyAccount" (bool),
    // "UserAvatarImagePath" (local image file), "Name" and "Id" (strings).
    virtual Json::Value getUserInfo() = 0;

signals:
    void LoginStatusChange();
    void UserInfoChange();
    void failedToLaunchCloudsvrProcess();
    void cloudsvrExitWithErrors(const QString& message);
};

#endif // DESKHIVE_NIMBOCLIENT_H
