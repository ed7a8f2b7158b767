#include "kxpopupwebpage.h"

#include "kxopenexternalurl.h"

#include <QNetworkRequest>

KxPopupWebPage::KxPopupWebPage(QObject* parent)
    : QWebPage(parent)
{
    // window.close() from its opener.
    connect(this, &QWebPage::windowCloseRequested, this, &QObject::deleteLater);
}

bool KxPopupWebPage::acceptNavigationRequest(QWebFrame* /*frame*/, const QNetworkRequest& request,
                                             QWebPage::NavigationType type)
{
    // window.open() without an address starts at about:blank: the address
    // script gives the window afterwards is the one that counts.
    const QUrl url = request.url();
    if (m_navigated || url.isEmpty() || url == QUrl(QStringLiteral("about:blank")))
        return false;
    m_navigated = true;
    if (type == QWebPage::NavigationTypeOther || type == QWebPage::NavigationTypeLinkClicked)
        kxOpenExternalUrl(url);
    // Not at once: WebKit is still inside the call that made the window.
    deleteLater();
    return false;
}
