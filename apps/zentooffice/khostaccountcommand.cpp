#include "khostaccountcommand.h"

#include "kdeskhiveclient.h"

#include <deskhive/nimboclient.h>

#include <QWidget>

KHostAccountCommand::KHostAccountCommand(Action action, QObject* parent, QObject* host)
    : KTriggerCommand(parent, host)
    , m_action(action)
{
    if (INimboClient* client = KDeskhiveClient::client()) {
        // After the client's own handling, as the account button does.
        connect(client, SIGNAL(LoginStatusChange()), this, SLOT(onLoginStatusChange()),
                Qt::QueuedConnection);
    }
    update();
}

void KHostAccountCommand::update()
{
    setText(m_action == SignIn ? tr("Sign In") : tr("Sign Out"));
    INimboClient* client = KDeskhiveClient::client();
    const bool signedIn = client && client->getUserInfo()["IsLogined"].asBool();
    setVisible(client && signedIn == (m_action == SignOut));
}

KCommand* KHostAccountCommand::clone(QObject* parent, QObject* host)
{
    auto* command = new KHostAccountCommand(m_action, parent, host);
    command->copyProperties(this);
    return command;
}

QWidget* KHostAccountCommand::createPocketWidget(QWidget* parent)
{
    QWidget* button = KTriggerCommand::createPocketWidget(parent);
    button->setAccessibleName(text());
    return button;
}

void KHostAccountCommand::onLoginStatusChange()
{
    update();
}

void KHostAccountCommand::onTriggered()
{
    INimboClient* client = KDeskhiveClient::client();
    if (client && m_action == SignIn)
        client->login(QVariant(QStringLiteral("logintype:select")));
    else if (client)
        client->logout();
}
