#ifndef KXWEBPLUGINFACTORYITEMREGISTER_H
#define KXWEBPLUGINFACTORYITEMREGISTER_H

#include <QList>

class IKxWebPluginFactoryItem;

// The process-wide list of web plug-in items, in the order they were
// registered; created on first use, destroyed at process exit. Not locked:
// items register during static initialisation, before any page exists.
QList<IKxWebPluginFactoryItem*>& getWebPluginFactoryItems();

// Registers one item for as long as it lives: meant to be a static object
// beside the item's definition. Destroying it takes that one entry out of
// the list (the first occurrence, should the item be there twice) and
// deletes the item. A register of no item (null) registers nothing.
class KxWebPluginFactoryItemRegister
{
public:
    explicit KxWebPluginFactoryItemRegister(IKxWebPluginFactoryItem* item);
    ~KxWebPluginFactoryItemRegister();

    KxWebPluginFactoryItemRegister(const KxWebPluginFactoryItemRegister&) = delete;
    KxWebPluginFactoryItemRegister& operator=(const KxWebPluginFactoryItemRegister&) = delete;

private:
    IKxWebPluginFactoryItem* m_item;
};

#endif // KXWEBPLUGINFACTORYITEMREGISTER_H
