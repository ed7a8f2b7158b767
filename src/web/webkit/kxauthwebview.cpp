#include "kxauthwebview.h"

#include "kxwebpluginfactory.h"

#include <QWebSettings>

KxAuthWebView::KxAuthWebView(QWidget* parent)
    : QWebView(parent)
{
    page()->settings()->setAttribute(QWebSettings::PluginsEnabled, true);
    page()->setPluginFactory(new KxWebPluginFactory(this));
}
