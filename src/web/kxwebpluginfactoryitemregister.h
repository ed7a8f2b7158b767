#ifndef AUTHPLUGIN_KXWEBPLUGINFACTORYITEMREGISTER_H
#define AUTHPLUGIN_KXWEBPLUGINFACTORYITEMREGISTER_H

#include "kxauthglobal.h"

#include <QList>

class IKxWebPluginFactoryItem;

// The process-wide list of web plug-in items, in the order they were
// registered; created on first use, destroyed at process exit. Not locked:
// items register during static initialisation, before any page exists.
KXAUTH_EXPORT QList<IKxWebPluginFactoryItem*>& getWebPluginFactoryItems();

// Registers one item for as long as it lives: meant to be a static object
// beside the item's definition. Destroying it takes that one entry out of
// the list (the first occurrence, should the item be there twice) and
// deletes the item. A register of no item (null) registers nothing.
// Exported: the suite's modules register items of their own this way.
class KXAUTH_EXPORT KxWebPluginFactoryItemRegister
{
public:
    explicit KxWebPluginFactoryItemRegister(IKxWebPluginFactoryItem* item);
    ~KxWebPluginFactoryItemRegister();

    KxWebPluginFactoryItemRegister(const KxWebPluginFactoryItemRegister&) = delete;
    KxWebPluginFactoryItemRegister& operator=(const KxWebPluginFactoryItemRegister&) = delete;

private:
    IKxWebPluginFactoryItem* m_item;
};

#endif // AUTHPLUGIN_KXWEBPLUGINFACTORYITEMREGISTER_H
