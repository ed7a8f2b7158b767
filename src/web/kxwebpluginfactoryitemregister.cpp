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
    getWebPluginFactoryItems().append(item);
}

KxWebPluginFactoryItemRegister::~KxWebPluginFactoryItemRegister()
{
    getWebPluginFactoryItems().removeOne(m_item);
    delete m_item;
}
