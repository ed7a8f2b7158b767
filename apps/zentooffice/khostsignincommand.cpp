#include "khostsignincommand.h"

#include "kdeskhiveclient.h"

#include <deskhive/nimboclient.h>

#include <QWidget>

KHostSignInCommand::KHostSignInCommand(QObject* parent, QObject* host)
    : KTriggerCommand(parent, host)
{
    setText(tr("Sign In"));
    if (INimboClient* client = KDeskhiveClient::client()) {
        // After the client's own handling, as the account button does.
        connect(client, SIGNAL(LoginStatusChange()), this, SLOT(onLoginStatusChange()),
                Qt::QueuedConnection);
    }
    update();
}

void KHostSignInCommand::update()
{
    setText(tr("Sign In"));
    INimboClient* client = KDeskhiveClient::client();
    const bool signedIn = client && client->getUserInfo()["IsLogined"].asBool();
    setVisible(client && !signedIn);
}

KCommand* KHostSignInCommand::clone(QObject* parent, QObject* host)
{
    auto* command = new KHostSignInCommand(parent, host);
    command->copyProperties(this);
    return command;
}

QWidget* KHostSignInCommand::createPocketWidget(QWidget* parent)
{
    QWidget* button = KTriggerCommand::createPocketWidget(parent);
    button->setAccessibleName(text());
    return button;
}

void KHostSignInCommand::onLoginStatusChange()
{
    update();
}

void KHostSignInCommand::onTriggered()
{
    if (INimboClient* client = KDeskhiveClient::client())
        client->login(QVariant(QStringLiteral("logintype:select")));
}
