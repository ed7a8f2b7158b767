#include "kxauthwebpage.h"

#include "kxpopupwebpage.h"

#include <QWebSettings>

KxAuthWebPage::KxAuthWebPage(QObject* parent)
    : QWebPage(parent)
{
    // WebKit refuses window.open from script unless told otherwise; the
    // dialog's bridge tells pages that they may (isSupportWindowOpen).
    settings()->setAttribute(QWebSettings::JavascriptCanOpenWindows, true);
}

QWebPage* KxAuthWebPage::createWindow(QWebPage::WebWindowType /*type*/)
{
    auto* popup = new KxPopupWebPage(nullptr);
    // WebKit does not own the pages it asks for; nobody else would free it.
    connect(this, &QObject::destroyed, popup, [popup] { delete popup; });
    return popup;
}
