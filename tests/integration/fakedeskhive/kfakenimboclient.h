#ifndef KFAKENIMBOCLIENT_H
#define KFAKENIMBOCLIENT_H

#include <deskhive/nimboclient.h>

// A cloud client that answers whatever the test put in its environment:
// FAKE_NIMBO_USERINFO (JSON text; anything unparsable is a null value) and
// FAKE_NIMBO_AUTOLOGIN (the wrapped address, for every address).
class KFakeNimboClient : public INimboClient
{
    Q_OBJECT

public:
    using INimboClient::INimboClient;

    void login(const QVariant& param) override;
    void getAutoLoginUrl(const QString& url, QString& autoLoginUrl) override;
    void logout() override;
    Json::Value getUserInfo() override;
};

#endif // KFAKENIMBOCLIENT_H
