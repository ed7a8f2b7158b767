#ifndef VEX_KCOMMANDFACTORY_H
#define VEX_KCOMMANDFACTORY_H

#include "vex_global.h"

#include <QString>
#include <QStringList>

class KCommand;
class KCommandFactoryItemBase;
class QObject;

// The host's registry of command classes by class name. Modules register
// their items when they load and unregister them when they unload; the
// host creates commands by class name for a host object (a main window).
// Where two registered items share a class name the later one is used
// until it is unregistered.
class VEX_EXPORT KCommandFactory
{
public:
    // False for a null item or one already registered.
    static bool registerCommand(KCommandFactoryItemBase* item);
    // False for an item that is not registered.
    static bool unregisterCommand(KCommandFactoryItemBase* item);

    // The item used for className; null when none is registered.
    static KCommandFactoryItemBase* lookup(const QString& className);
    // A new command of the class for host, owned by the caller; null when
    // the class is unknown or host does not suit it. A command that names
    // itself nothing is named after its class.
    static KCommand* createCommand(const QString& className, QObject* host, QObject* parent);

    // Class names of the registered items in registration order; the list
    // stays valid after the modules that registered them are unloaded.
    static QStringList registeredClasses();

    // Every registration and unregistration since the last clear, in order:
    // "register <class>" and "unregister <class>". For hosts' diagnostics
    // and tests.
    static QStringList registrationLog();
    static void clearRegistrationLog();
};

#endif // VEX_KCOMMANDFACTORY_H
