#include "kxwebenginepopuppage.h"

#include "kxopenexternalurl.h"

KxWebEnginePopupPage::KxWebEnginePopupPage(QWebEngineProfile* profile, QObject* parent)
    : QWebEnginePage(profile, parent)
{
    // window.close() from its opener.
    connect(this, &QWebEnginePage::windowCloseRequested, this, &QObject::deleteLater);
}

bool KxWebEnginePopupPage::acceptNavigationRequest(const QUrl& url,
                                                   QWebEnginePage::NavigationType type,
                                                   bool /*isMainFrame*/)
{
    // window.open() without an address starts at about:blank: the address
    // script gives the window afterwards is the one that counts.
    if (m_navigated || url.isEmpty() || url == QUrl(QStringLiteral("about:blank")))
        return false;
    m_navigated = true;
    if (type == QWebEnginePage::NavigationTypeLinkClicked ||
        type == QWebEnginePage::NavigationTypeTyped || type == QWebEnginePage::NavigationTypeOther)
        kxOpenExternalUrl(url);
    // Not at once: the engine is still inside the call that asks.
    deleteLater();
    return false;
}
