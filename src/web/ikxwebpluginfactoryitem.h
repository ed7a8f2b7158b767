#ifndef AUTHPLUGIN_IKXWEBPLUGINFACTORYITEM_H
#define AUTHPLUGIN_IKXWEBPLUGINFACTORYITEM_H

#include "kxauthglobal.h"

#include <QWebPluginFactory>

class QObject;
class QUrl;

// One kind of native object a page can embed by mime type (<object
// type="...">), registered with a KxWebPluginFactoryItemRegister. The two
// operations keep their slot order; the register deletes the item through
// this interface, so the destructor is virtual and comes after them.
class KXAUTH_EXPORT IKxWebPluginFactoryItem
{
public:
    // The object for an embedded element of one of the mime types plugin()
    // declares; mimeType is spelt as the page wrote it.
    virtual QObject* create(const QString& mimeType, const QUrl& url,
                            const QStringList& argumentNames,
                            const QStringList& argumentValues) = 0;
    // Name, description and the mime types this item makes objects for.
    virtual QWebPluginFactory::Plugin plugin() = 0;

    virtual ~IKxWebPluginFactoryItem() = default;
};

#endif // AUTHPLUGIN_IKXWEBPLUGINFACTORYITEM_H
