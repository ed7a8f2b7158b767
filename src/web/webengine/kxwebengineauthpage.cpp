#include "kxwebengineauthpage.h"

#include "kxopenexternalurl.h"
#include "kxwebenginepopuppage.h"
#include "weblogging.h"

#include <vexlite/kqtcompat.h>

#include <QWebChannel>
#include <QWebEngineSettings>

#include <algorithm>
#include <utility>

namespace {

// True where the page holds a frame, at any depth, of another origin than
// its own; the page's own script cannot change the answer (window.origin
// read with the getter the page started with is not its to fake, and a
// frame of another origin is out of its reach).
const char kForeignFrames[] = R"((function () {
    var originOf = Object.getOwnPropertyDescriptor(window, "origin").get;
    var own = originOf.call(window);
    var foreign = function (parent) {
        for (var i = 0; i < parent.length; ++i) {
            try {
                if (originOf.call(parent[i]) !== own || foreign(parent[i]))
                    return true;
            } catch (e) {
                return true;
            }
        }
        return false;
    };
    return foreign(window);
})())";

// How soon after the user's click or key press a link navigation counts as
// the user's.
const qint64 kClickMs = 1000;

bool loadsItself(const QUrl& url)
{
    static const QStringList schemes{QStringLiteral("http"),  QStringLiteral("https"),
                                     QStringLiteral("file"),  QStringLiteral("qrc"),
                                     QStringLiteral("about"), QStringLiteral("data"),
                                     QStringLiteral("blob")};
    return schemes.contains(url.scheme());
}

} // namespace

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
    // they may use (isSupportWindowOpen). Set only when it changes: the
    // engine hands every change to the page.
    if (settings()->testAttribute(QWebEngineSettings::JavascriptCanOpenWindows) != allowed)
        settings()->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, allowed);
}

void KxWebEngineAuthPage::noteUserInput()
{
    m_userInput.start();
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
    if (type == QWebEnginePage::NavigationTypeLinkClicked && m_userInput.isValid() &&
        m_userInput.elapsed() < kClickMs) {
        emit linkClicked(url);
        return false;
    }
    // The engine would hand an address it cannot load itself to the
    // desktop, past the rules of kxOpenExternalUrl: only a click does that.
    if (!loadsItself(url))
        return false;
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
    // The engine does not tell which frame opens the window: a frame of
    // another origin, which gets no bridge, could be the one, and then the
    // address goes nowhere (as where such a frame is in the page when the
    // window opens, on QtWebKit). Asked once the script that opened it has
    // ended, as the next script starts after it; the pop-up is freed only
    // then, so one script cannot open windows without end, one after the
    // other, while the engine makes them.
    connect(popup, &KxWebEnginePopupPage::handed, this,
            [this, popup = QPointer<KxWebEnginePopupPage>(popup)](const QUrl& url) {
                runJavaScript(QLatin1String(kForeignFrames), [popup, url](const QVariant& found) {
                    if (!url.isEmpty() && found.canConvert<bool>() && !KQtCompat::isNull(found) &&
                        !found.toBool())
                        kxOpenExternalUrl(url);
                    delete popup.data();
                });
            });
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
