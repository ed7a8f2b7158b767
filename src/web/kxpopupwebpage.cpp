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
    if (m_navigated)
        return false;
    m_navigated = true;
    if (type == QWebPage::NavigationTypeOther || type == QWebPage::NavigationTypeLinkClicked)
        kxOpenExternalUrl(request.url());
    // Not at once: WebKit is still inside the call that made the window.
    deleteLater();
    return false;
}
