#ifndef KENTERPRISECENTERTRIGGERCOMMAND_H
#define KENTERPRISECENTERTRIGGERCOMMAND_H

#include <vex/ktriggercommand.h>

// The account menu's entry for the company's enterprise centre. It raises
// the host command "OpenEnterpriseCenter"; the host (not this plug-in's
// pre-hook) opens the centre. Its visibility is the host's default.
class KEnterpriseCenterTriggerCommand : public KTriggerCommand
{
    Q_OBJECT

public:
    KEnterpriseCenterTriggerCommand(QObject* parent, QObject* host);

    KCommand* clone(QObject* parent, QObject* host) override;

protected:
    void onTriggered() override;
};

#endif // KENTERPRISECENTERTRIGGERCOMMAND_H
