#include "vex/ktriggercommand.h"

#include <QAction>
#include <QToolButton>

KTriggerCommand::KTriggerCommand(QObject* parent, QObject* host)
    : KCommand(parent, host)
{
    connect(action(), SIGNAL(triggered()), this, SLOT(onActionTriggered()));
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
    auto* button = new QToolButton(parent);
    button->setDefaultAction(action());
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
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
