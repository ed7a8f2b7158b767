#ifndef KSIMNIMBOCLIENT_H
#define KSIMNIMBOCLIENT_H

#include "kdeskhivestate.h"

#include <deskhive/nimboclient.h>

#include <QPointer>

class KDeskhiveStateFile;

// The simulated cloud client: its account is the state file's. Sign-in and
// sign-out through the client are written back to the file, so the file
// always tells what the client answers.
class KSimNimboClient : public INimboClient
{
    Q_OBJECT

public:
    explicit KSimNimboClient(KDeskhiveStateFile* stateFile, QObject* parent = nullptr);

    // Signs in the demo user; the simulator has no accounts, so the login
    // options are not looked at.
    void login(const QVariant& param) override;
    void getAutoLoginUrl(const QString& url, QString& autoLoginUrl) override;
    void logout() override;
    Json::Value getUserInfo() override;

    // Takes state as the account, signalling what changed: LoginStatusChange()
    // when the signed-in flag flips, then UserInfoChange() when the user
    // information differs.
    void setState(const KDeskhiveState& state);

    // The avatar of the demo user, shipped beside the library.
    static QString demoAvatarPath();

signals:
    // After each look at the state file, whether or not it changed; lets a
    // watcher know its edit has been seen.
    void stateFileRead();

private:
    void switchAccount(const KDeskhiveState& state);

    KDeskhiveState m_state;
    QPointer<KDeskhiveStateFile> m_stateFile;
};

#endif // KSIMNIMBOCLIENT_H
