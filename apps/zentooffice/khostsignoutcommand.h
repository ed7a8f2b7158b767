#ifndef KHOSTSIGNOUTCOMMAND_H
#define KHOSTSIGNOUTCOMMAND_H

#include <vex/ktriggercommand.h>

// Signs out of the suite's cloud account through the cloud client. Shown
// while someone is signed in; in the reference host it is an entry of the
// account menu, below the centres.
// A command of the host, registered with the command factory by the
// reference host (KHostCommandRegistration).
class KHostSignOutCommand : public KTriggerCommand
{
    Q_OBJECT

public:
    KHostSignOutCommand(QObject* parent, QObject* host);

    void update() override;
    KCommand* clone(QObject* parent, QObject* host) override;
    QWidget* createPocketWidget(QWidget* parent) override;

protected:
    void onTriggered() override;

private slots:
    void onLoginStatusChange();
};

#endif // KHOSTSIGNOUTCOMMAND_H
