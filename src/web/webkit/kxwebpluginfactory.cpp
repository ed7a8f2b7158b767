#include "kxwebpluginfactory.h"

#include "ikxwebpluginfactoryitem.h"
#include "kxwebpluginfactoryitemregister.h"

KxWebPluginFactory::KxWebPluginFactory(QObject* parent)
    : QWebPluginFactory(parent)
{}

QList<QWebPluginFactory::Plugin> KxWebPluginFactory::plugins() const
{
    QList<QWebPluginFactory::Plugin> plugins;
    const QList<IKxWebPluginFactoryItem*> items = getWebPluginFactoryItems();
    for (IKxWebPluginFactoryItem* item : items)
        plugins.append(item->plugin());
    return plugins;
}

QObject* KxWebPluginFactory::create(const QString& mimeType, const QUrl& url,
                                    const QStringList& argumentNames,
                                    const QStringList& argumentValues) const
{
    // A copy: an item may register or unregister others while it creates.
    const QList<IKxWebPluginFactoryItem*> items = getWebPluginFactoryItems();
    for (IKxWebPluginFactoryItem* item : items) {
        const QList<QWebPluginFactory::MimeType> mimeTypes = item->plugin().mimeTypes;
        for (const QWebPluginFactory::MimeType& declared : mimeTypes) {
            if (declared.name.compare(mimeType, Qt::CaseInsensitive) == 0)
                return item->create(mimeType, url, argumentNames, argumentValues);
        }
    }
    return nullptr;
}
