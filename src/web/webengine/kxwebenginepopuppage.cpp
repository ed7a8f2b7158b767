#include "kxwebenginepopuppage.h"

#include <QWebEngineSettings>

KxWebEnginePopupPage::KxWebEnginePopupPage(QWebEngineProfile* profile, QObject* parent)
    : QWebEnginePage(profile, parent)
{
    // The engine hands no address to the desktop by itself.
    settings()->setUnknownUrlSchemePolicy(QWebEngineSettings::DisallowUnknownUrlSchemes);
    // window.close() from its opener.
    connect(this, &QWebEnginePage::windowCloseRequested, this, [this] { hand(QUrl(), {}); });
    // An address of a scheme the engine does not load never comes as a
    // navigation request; it shows as the page's address.
    connect(this, &QWebEnginePage::urlChanged, this,
            [this](const QUrl& url) { hand(url, QWebEnginePage::NavigationTypeOther); });
}

bool KxWebEnginePopupPage::acceptNavigationRequest(const QUrl& url,
                                                   QWebEnginePage::NavigationType type,
                                                   bool /*isMainFrame*/)
{
    hand(url, type);
    return false;
}

// An empty address is the window closing before it had one.
void KxWebEnginePopupPage::hand(const QUrl& url, QWebEnginePage::NavigationType type)
{
    // window.open() without an address starts at about:blank: the address
    // script gives the window afterwards is the one that counts.
    if (m_navigated || url == QUrl(QStringLiteral("about:blank")))
        return;
    m_navigated = true;
    // A form sent into the window goes nowhere.
    const bool followed = type == QWebEnginePage::NavigationTypeLinkClicked ||
                          type == QWebEnginePage::NavigationTypeTyped ||
                          type == QWebEnginePage::NavigationTypeOther;
    emit handed(followed ? url : QUrl());
}
