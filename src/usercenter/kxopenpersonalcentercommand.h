#ifndef KXOPENPERSONALCENTERCOMMAND_H
#define KXOPENPERSONALCENTERCOMMAND_H

#include <vex/ktriggercommand.h>

// The account menu's entry for the signed-in user's personal centre. It
// opens nothing itself: it raises the host command "OpenUserCenter", which
// the handler's pre-hook turns into the centre's address, opened signed in.
//
// The host's factory builds it on the main window and its parent argument,
// in that order: the window becomes its QObject parent.
class KxOpenPersonalCenterCommand : public KTriggerCommand
{
    Q_OBJECT

public:
    KxOpenPersonalCenterCommand(QObject* parent, QObject* host);

    // Shown only to a signed-in user of a product with a personal centre
    // (a company account, or the simplified user centre; never in an
    // intranet build), and never in an embedded window.
    void update() override;
    KCommand* clone(QObject* parent, QObject* host) override;

protected:
    void onTriggered() override;
};

#endif // KXOPENPERSONALCENTERCOMMAND_H
