#include "ksimnimboclient.h"

#include "kdeskhivestatefile.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QUrl>

KSimNimboClient::KSimNimboClient(KDeskhiveStateFile* stateFile, QObject* parent)
    : INimboClient(parent)
    , m_stateFile(stateFile)
{
    if (m_stateFile) {
        m_state = m_stateFile->state();
        connect(m_stateFile, SIGNAL(reloaded()), this, SIGNAL(stateFileRead()));
    }
}

void KSimNimboClient::login(const QVariant& param)
{
    Q_UNUSED(param);
    switchAccount(KDeskhiveState::demoUser(demoAvatarPath()));
}

void KSimNimboClient::logout()
{
    switchAccount(KDeskhiveState());
}

void KSimNimboClient::getAutoLoginUrl(const QString& url, QString& autoLoginUrl)
{
    autoLoginUrl.clear();
    if (!m_state.logined || url.isEmpty())
        return;
    // Recognisable at a glance: the account service's address, a token that
    // differs per user, and the original address in full.
    const QByteArray token = QCryptographicHash::hash("deskhive-simulator:" + m_state.id.toUtf8(),
                                                      QCryptographicHash::Sha256)
                                 .toHex()
                                 .left(16);
    autoLoginUrl =
        QStringLiteral("https://account.zentooffice.example/autologin?token=%1&target=%2")
            .arg(QString::fromLatin1(token), QString::fromLatin1(QUrl::toPercentEncoding(url)));
}

Json::Value KSimNimboClient::getUserInfo()
{
    return m_state.userInfo();
}

void KSimNimboClient::setState(const KDeskhiveState& state)
{
    const bool loginChanged = state.logined != m_state.logined;
    const bool infoChanged = state != m_state;
    m_state = state;
    if (loginChanged)
        emit LoginStatusChange();
    if (infoChanged)
        emit UserInfoChange();
}

QString KSimNimboClient::demoAvatarPath()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/addons/deskhive/avatar.png");
}

void KSimNimboClient::switchAccount(const KDeskhiveState& state)
{
    // The file first: its change then reads back as nothing new.
    if (m_stateFile)
        m_stateFile->write(state);
    setState(state);
}
