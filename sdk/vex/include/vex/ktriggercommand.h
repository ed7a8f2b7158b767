#ifndef VEX_KTRIGGERCOMMAND_H
#define VEX_KTRIGGERCOMMAND_H

#include "kcommand.h"

// A command that does something when the user triggers it, from a menu, a
// button (its action) or the host (trigger()). A disabled command does
// nothing.
class VEX_EXPORT KTriggerCommand : public KCommand
{
    Q_OBJECT

public:
    explicit KTriggerCommand(QObject* parent = nullptr, QObject* host = nullptr);
    ~KTriggerCommand() override;

    KCommand* clone(QObject* parent, QObject* host) override;
    // A KToolButton bound to the command.
    QWidget* createPocketWidget(QWidget* parent) override;

public slots:
    void trigger();

signals:
    // After onTriggered() has run.
    void triggered();

protected:
    // What the command does; a plain trigger command does nothing.
    virtual void onTriggered();

private slots:
    void onActionTriggered();
};

#endif // VEX_KTRIGGERCOMMAND_H
