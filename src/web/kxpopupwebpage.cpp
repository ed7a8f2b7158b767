#include "kxpopupwebpage.h"

#include "kxopenexternalurl.h"

#include <QNetworkRequest>

KxPopupWebPage::KxPopupWebPage(QObject* parent)
    : QWebPage(parent)
{}

bool KxPopupWebPage::acceptNavigationRequest(QWebFrame* frame, const QNetworkRequest& request,
                                             QWebPage::NavigationType type)
{
    if (type == QWebPage::NavigationTypeOther) {
        kxOpenExternalUrl(request.url());
        return false;
    }
    return QWebPage::acceptNavigationRequest(frame, request, type);
}
