#ifndef KHOSTACCOUNTCOMMAND_H
#define KHOSTACCOUNTCOMMAND_H

#include <vex/ktriggercommand.h>

// Signs in to, or out of, the suite's cloud account through the cloud
// client (on the simulator: the demo user). Signing in is offered while
// nobody is signed in (in the reference host's title area it stands where
// the user-centre button will appear), signing out while someone is (an
// entry of the account menu, below the centres).
// Commands of the host, registered with the command factory by the
// reference host (KHostCommandRegistration) as "KHostSignInCommand" and
// "KHostSignOutCommand".
class KHostAccountCommand : public KTriggerCommand
{
    Q_OBJECT

public:
    enum Action { SignIn, SignOut };

    KHostAccountCommand(Action action, QObject* parent, QObject* host);

    void update() override;
    KCommand* clone(QObject* parent, QObject* host) override;
    QWidget* createPocketWidget(QWidget* parent) override;

protected:
    void onTriggered() override;

private slots:
    void onLoginStatusChange();

private:
    const Action m_action;
};

#endif // KHOSTACCOUNTCOMMAND_H
