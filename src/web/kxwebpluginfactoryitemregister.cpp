#include "kxwebpluginfactoryitemregister.h"

#include "ikxwebpluginfactoryitem.h"

QList<IKxWebPluginFactoryItem*>& getWebPluginFactoryItems()
{
    static QList<IKxWebPluginFactoryItem*> items;
    return items;
}

KxWebPluginFactoryItemRegister::KxWebPluginFactoryItemRegister(IKxWebPluginFactoryItem* item)
    : m_item(item)
{
    // A null item would only make every later plugins() call crash.
    if (item)
        getWebPluginFactoryItems().append(item);
}

KxWebPluginFactoryItemRegister::~KxWebPluginFactoryItemRegister()
{
    if (!m_item)
        return;
    getWebPluginFactoryItems().removeOne(m_item);
    delete m_item;
}
