#include "khostsignoutcommand.h"

#include "kdeskhiveclient.h"

#include <deskhive/nimboclient.h>

#include <QWidget>

KHostSignOutCommand::KHostSignOutCommand(QObject* parent, QObject* host)
    : KTriggerCommand(parent, host)
{
    setText(tr("Sign Out"));
    if (INimboClient* client = KDeskhiveClient::client()) {
        // After the client's own handling, as the account button does.
        connect(client, SIGNAL(LoginStatusChange()), this, SLOT(onLoginStatusChange()),
                Qt::QueuedConnection);
    }
    update();
}

void KHostSignOutCommand::update()
{
    setText(tr("Sign Out"));
    INimboClient* client = KDeskhiveClient::client();
    const bool signedIn = client && client->getUserInfo()["IsLogined"].asBool();
    setVisible(client && signedIn);
}

KCommand* KHostSignOutCommand::clone(QObject* parent, QObject* host)
{
    auto* command = new KHostSignOutCommand(parent, host);
    command->copyProperties(this);
    return command;
}

QWidget* KHostSignOutCommand::createPocketWidget(QWidget* parent)
{
    QWidget* button = KTriggerCommand::createPocketWidget(parent);
    button->setAccessibleName(text());
    return button;
}

void KHostSignOutCommand::onLoginStatusChange()
{
    update();
}

void KHostSignOutCommand::onTriggered()
{
    if (INimboClient* client = KDeskhiveClient::client())
        client->logout();
}
