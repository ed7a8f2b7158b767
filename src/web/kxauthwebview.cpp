#include "kxauthwebview.h"

#include "kxwebpluginfactory.h"

#include <QWebSettings>

QSet<QString> KxAuthWebView::m_mimeTypes;

KxAuthWebView::KxAuthWebView(QWidget* parent)
    : QWebView(parent)
{
    page()->settings()->setAttribute(QWebSettings::PluginsEnabled, true);
    page()->setPluginFactory(new KxWebPluginFactory(this));
}

QStringList KxAuthWebView::availableMimeTypes()
{
    if (m_mimeTypes.isEmpty())
        fillMimeTypes();
    return m_mimeTypes.values();
}

bool KxAuthWebView::isMimeTypeAvailable(const QString& type)
{
    if (m_mimeTypes.isEmpty())
        fillMimeTypes();
    return m_mimeTypes.contains(type.toLower());
}

// With nothing registered the set stays empty, and the next call looks again.
void KxAuthWebView::fillMimeTypes()
{
    const KxWebPluginFactory factory;
    const QList<QWebPluginFactory::Plugin> plugins = factory.plugins();
    for (const QWebPluginFactory::Plugin& plugin : plugins) {
        for (const QWebPluginFactory::MimeType& mimeType : plugin.mimeTypes)
            m_mimeTypes.insert(mimeType.name.toLower());
    }
}
