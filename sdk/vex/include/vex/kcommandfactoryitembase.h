#ifndef VEX_KCOMMANDFACTORYITEMBASE_H
#define VEX_KCOMMANDFACTORYITEMBASE_H

#include "vex_global.h"

#include <QString>

class KCommand;
class QObject;

// One command class the factory can create, under its class name. Modules
// derive from it and register their items with KCommandFactory, usually
// from static objects, and unregister them before the item goes.
class VEX_EXPORT KCommandFactoryItemBase
{
public:
    explicit KCommandFactoryItemBase(const QString& className);

    QString className() const { return m_className; }

    // A new command for host, which the caller takes over (the item decides
    // which of host and parent becomes its QObject parent); null when host
    // does not suit the command.
    virtual KCommand* createInstance(QObject* host, QObject* parent) = 0;

protected:
    // Items are never deleted through the base.
    ~KCommandFactoryItemBase();
    KCommandFactoryItemBase(const KCommandFactoryItemBase&) = delete;
    KCommandFactoryItemBase& operator=(const KCommandFactoryItemBase&) = delete;

private:
    QString m_className;
};

#endif // VEX_KCOMMANDFACTORYITEMBASE_H
