#ifndef KHOSTSIGNINCOMMAND_H
#define KHOSTSIGNINCOMMAND_H

#include <vex/ktriggercommand.h>

// Signs in to the suite's cloud account through the cloud client (on the
// simulator: the demo user). Shown while nobody is signed in; in the
// reference host's title area it stands where the user-centre button will
// appear.
// A command of the host, registered with the command factory by the
// reference host (KHostCommandRegistration).
class KHostSignInCommand : public KTriggerCommand
{
    Q_OBJECT

public:
    KHostSignInCommand(QObject* parent, QObject* host);

    void update() override;
    KCommand* clone(QObject* parent, QObject* host) override;
    QWidget* createPocketWidget(QWidget* parent) override;

protected:
    void onTriggered() override;

private slots:
    void onLoginStatusChange();
};

#endif // KHOSTSIGNINCOMMAND_H
