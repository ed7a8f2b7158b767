#include "kenterprisecentertriggercommand.h"

#include <vexlite/krtauth.h>

KEnterpriseCenterTriggerCommand::KEnterpriseCenterTriggerCommand(QObject* parent, QObject* host)
    : KTriggerCommand(parent, host)
{
    setText(tr("Enterprise Center"));
}

KCommand* KEnterpriseCenterTriggerCommand::clone(QObject* parent, QObject* host)
{
    auto* command = new KEnterpriseCenterTriggerCommand(parent, host);
    command->copyProperties(this);
    return command;
}

void KEnterpriseCenterTriggerCommand::onTriggered()
{
    krt::auth::prehook(QStringLiteral("OpenEnterpriseCenter"), false, nullptr);
}
