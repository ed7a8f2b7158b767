#ifndef AUTHPLUGIN_IKXWEBPLUGINFACTORYITEM_H
#define AUTHPLUGIN_IKXWEBPLUGINFACTORYITEM_H

#include "kxauthglobal.h"

#ifdef KXAUTH_WEB_QTWEBKIT
#include <QWebPluginFactory>
#else
#include <QList>
#include <QString>
#include <QStringList>
#endif

class QObject;
class QUrl;

// What a web plug-in item declares: its name, description and mime types.
// Where the library runs on QtWebKit these are QtWebKit's own types, so an
// item written against QWebPluginFactory keeps compiling; on QtWebEngine,
// which has no plug-in factory, they are types of the same shape.
#ifdef KXAUTH_WEB_QTWEBKIT
using KxWebPluginMimeType = QWebPluginFactory::MimeType;
using KxWebPlugin = QWebPluginFactory::Plugin;
#else
struct KxWebPluginMimeType
{
    QString name;
    QString description;
    QStringList fileExtensions;
};

struct KxWebPlugin
{
    QString name;
    QString description;
    QList<KxWebPluginMimeType> mimeTypes;
};
#endif

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
    virtual KxWebPlugin plugin() = 0;

    virtual ~IKxWebPluginFactoryItem() = default;
};

#endif // AUTHPLUGIN_IKXWEBPLUGINFACTORYITEM_H
