#ifndef KXWEBPLUGINFACTORY_H
#define KXWEBPLUGINFACTORY_H

#include <QWebPluginFactory>

// The plug-in factory of the library's web views: it offers whatever the
// registered items (getWebPluginFactoryItems()) declare, read afresh on
// every call.
class KxWebPluginFactory : public QWebPluginFactory
{
    Q_OBJECT

public:
    explicit KxWebPluginFactory(QObject* parent = nullptr);

    // Each registered item's plugin(), in registration order.
    QList<QWebPluginFactory::Plugin> plugins() const override;
    // The object of the first item, in registration order, that declares
    // mimeType (letter case ignored); the item gets mimeType as given.
    // Null when no item declares it.
    QObject* create(const QString& mimeType, const QUrl& url, const QStringList& argumentNames,
                    const QStringList& argumentValues) const override;
};

#endif // KXWEBPLUGINFACTORY_H
