#include "vex/ktriggercommand.h"

#include "vex/ktoolbutton.h"

#include <QAction>

KTriggerCommand::KTriggerCommand(QObject* parent, QObject* host)
    : KCommand(parent, host)
{
    connect(action(), &QAction::triggered, this, &KTriggerCommand::onActionTriggered);
}

KTriggerCommand::~KTriggerCommand() = default;

KCommand* KTriggerCommand::clone(QObject* parent, QObject* host)
{
    auto* command = new KTriggerCommand(parent, host);
    command->copyProperties(this);
    return command;
}

QWidget* KTriggerCommand::createPocketWidget(QWidget* parent)
{
    auto* button = new KToolButton(parent);
    button->setDefaultCommand(this);
    return button;
}

void KTriggerCommand::trigger()
{
    action()->trigger();
}

void KTriggerCommand::onTriggered() {}

void KTriggerCommand::onActionTriggered()
{
    // A disabled action still signals when triggered from code.
    if (!isEnabled())
        return;
    onTriggered();
    emit triggered();
}
