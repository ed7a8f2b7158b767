#include "kxwebengineauthpage.h"

#include "kxwebenginepopuppage.h"
#include "weblogging.h"

#include <QWebChannel>
#include <QWebEngineSettings>

#include <algorithm>
#include <utility>

KxWebEngineAuthPage::KxWebEngineAuthPage(QWebEngineProfile* profile, QObject* parent)
    : QWebEnginePage(profile, parent)
{
    setScriptWindowsAllowed(false);
}

// The engine does not own the pages it asks for; nobody else would free
// them.
KxWebEngineAuthPage::~KxWebEngineAuthPage()
{
    for (const QPointer<KxWebEnginePopupPage>& popup : std::as_const(m_popups))
        delete popup.data();
}

void KxWebEngineAuthPage::setBridgeChannel(QWebChannel* channel,
                                           const std::function<bool(const QUrl&)>& trusted)
{
    m_channel = channel;
    m_trusted = trusted;
}

void KxWebEngineAuthPage::setScriptWindowsAllowed(bool allowed)
{
    m_windowsAllowed = allowed;
    // window.open from script outside a click, which the bridge tells pages
    // they may use (isSupportWindowOpen).
    settings()->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, allowed);
}

int KxWebEngineAuthPage::popupCount() const
{
    return int(
        std::count_if(m_popups.cbegin(), m_popups.cend(),
                      [](const QPointer<KxWebEnginePopupPage>& popup) { return !popup.isNull(); }));
}

bool KxWebEngineAuthPage::acceptNavigationRequest(const QUrl& url,
                                                  QWebEnginePage::NavigationType type,
                                                  bool isMainFrame)
{
    if (type == QWebEnginePage::NavigationTypeLinkClicked) {
        emit linkClicked(url);
        return false;
    }
    if (isMainFrame) {
        // Before the document exists: the transport goes into a document
        // as it is created, or not at all.
        const bool bridge = m_channel && m_trusted && m_trusted(url);
        if (bridge != (webChannel() != nullptr))
            setWebChannel(bridge ? m_channel.data() : nullptr);
        // Until the dialog has decided about the new document.
        if (!bridge)
            setScriptWindowsAllowed(false);
    }
    return true;
}

QWebEnginePage* KxWebEngineAuthPage::createWindow(QWebEnginePage::WebWindowType /*type*/)
{
    m_popups.removeAll(nullptr);
    if (!m_windowsAllowed || m_popups.size() >= kMaxPopups)
        return nullptr;
    auto* popup = new KxWebEnginePopupPage(profile(), nullptr);
    m_popups.append(popup);
    return popup;
}

QString KxWebEngineAuthPage::refusalMessage()
{
    return QStringLiteral("zentoctx refused: the document's domain was relaxed");
}

void KxWebEngineAuthPage::javaScriptConsoleMessage(
    QWebEnginePage::JavaScriptConsoleMessageLevel level, const QString& message, int lineNumber,
    const QString& sourceId)
{
    // A page could write the same text: it only refuses itself the bridge.
    if (level == QWebEnginePage::ErrorMessageLevel && message == refusalMessage())
        emit bridgeRefused();
    qCDebug(lcAuthWeb, "console: %s (%s:%d)", qUtf8Printable(message),
            qUtf8Printable(kxUrlForLog(QUrl(sourceId))), lineNumber);
}
