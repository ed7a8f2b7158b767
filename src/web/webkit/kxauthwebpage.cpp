#include "kxauthwebpage.h"

#include "kxpopupwebpage.h"

#include <QWebFrame>
#include <QWebSecurityOrigin>
#include <QWebSettings>

#include <algorithm>

KxAuthWebPage::KxAuthWebPage(QObject* parent)
    : QWebPage(parent)
{
    setScriptWindowsAllowed(false);
}

// WebKit does not own the pages it asks for; nobody else would free them.
KxAuthWebPage::~KxAuthWebPage()
{
    for (const QPointer<KxPopupWebPage>& popup : qAsConst(m_popups))
        delete popup.data();
}

void KxAuthWebPage::setScriptWindowsAllowed(bool allowed)
{
    m_windowsAllowed = allowed;
    // WebKit refuses window.open from script outside a click unless told
    // otherwise; the bridge tells pages that they may (isSupportWindowOpen).
    settings()->setAttribute(QWebSettings::JavascriptCanOpenWindows, allowed);
}

int KxAuthWebPage::popupCount() const
{
    return int(
        std::count_if(m_popups.cbegin(), m_popups.cend(),
                      [](const QPointer<KxPopupWebPage>& popup) { return !popup.isNull(); }));
}

QList<QWebFrame*> KxAuthWebPage::framesOfOtherOrigins() const
{
    QList<QWebFrame*> found;
    const QWebSecurityOrigin main = mainFrame()->securityOrigin();
    QList<QWebFrame*> frames = mainFrame()->childFrames();
    while (!frames.isEmpty()) {
        QWebFrame* frame = frames.takeLast();
        frames += frame->childFrames();
        const QWebSecurityOrigin origin = frame->securityOrigin();
        if (origin.scheme() != main.scheme() || origin.host() != main.host() ||
            origin.port() != main.port())
            found += frame;
    }
    return found;
}

QWebPage* KxAuthWebPage::createWindow(QWebPage::WebWindowType /*type*/)
{
    m_popups.removeAll(nullptr);
    // WebKit does not say which frame asks: a frame of another origin, which
    // gets no bridge, could be the one.
    if (!m_windowsAllowed || m_popups.size() >= kMaxPopups || !framesOfOtherOrigins().isEmpty())
        return nullptr;
    auto* popup = new KxPopupWebPage(nullptr);
    m_popups.append(popup);
    return popup;
}
