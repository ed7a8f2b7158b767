#include "vex/kcommandfactory.h"

#include "vex/kcommand.h"
#include "vex/kcommandfactoryitembase.h"

#include <QList>
#include <QLoggingCategory>
#include <QMutex>
#include <QMutexLocker>

namespace {

Q_LOGGING_CATEGORY(lcCommands, "vex.commands")

struct Registry
{
    QMutex lock;
    QList<KCommandFactoryItemBase*> items;
    QStringList log;
};

// Never destroyed: modules unregister from their static destructors, which
// may run after this library's own at process exit.
Registry& registry()
{
    static Registry* instance = new Registry;
    return *instance;
}

} // namespace

bool KCommandFactory::registerCommand(KCommandFactoryItemBase* item)
{
    Registry& r = registry();
    const QMutexLocker lock(&r.lock);
    if (!item || r.items.contains(item))
        return false;
    r.items.append(item);
    r.log.append(QStringLiteral("register ") + item->className());
    return true;
}

bool KCommandFactory::unregisterCommand(KCommandFactoryItemBase* item)
{
    Registry& r = registry();
    const QMutexLocker lock(&r.lock);
    if (!item || !r.items.removeOne(item))
        return false;
    r.log.append(QStringLiteral("unregister ") + item->className());
    return true;
}

KCommandFactoryItemBase* KCommandFactory::lookup(const QString& className)
{
    Registry& r = registry();
    const QMutexLocker lock(&r.lock);
    for (auto it = r.items.crbegin(); it != r.items.crend(); ++it) {
        if ((*it)->className() == className)
            return *it;
    }
    return nullptr;
}

KCommand* KCommandFactory::createCommand(const QString& className, QObject* host, QObject* parent)
{
    // Not under the lock: a command's constructor may ask the factory.
    KCommandFactoryItemBase* item = lookup(className);
    if (!item) {
        qCDebug(lcCommands, "no command class %s is registered", qPrintable(className));
        return nullptr;
    }
    KCommand* command = item->createInstance(host, parent);
    if (command && command->name().isEmpty())
        command->setName(className);
    return command;
}

QStringList KCommandFactory::registeredClasses()
{
    Registry& r = registry();
    const QMutexLocker lock(&r.lock);
    QStringList names;
    // Copies: a name may be a literal of a module that is unloaded while
    // the caller still holds the list.
    for (const KCommandFactoryItemBase* item : qAsConst(r.items))
        names.append(QString(item->className().constData(), item->className().size()));
    return names;
}

QStringList KCommandFactory::registrationLog()
{
    Registry& r = registry();
    const QMutexLocker lock(&r.lock);
    return r.log;
}

void KCommandFactory::clearRegistrationLog()
{
    Registry& r = registry();
    const QMutexLocker lock(&r.lock);
    r.log.clear();
}
