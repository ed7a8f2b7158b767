#include "kxwebkitdlgengine.h"

#include "kxauthwebpage.h"
#include "kxauthwebview.h"

#include <QWebFrame>
#include <QWebSecurityOrigin>

#include <algorithm>

namespace {

// True where the frame's script can read the main frame's document, and so
// call whatever that offers. `top` and `document` are not configurable: the
// frame's own script cannot fake the answer.
const char kReachesTop[] =
    "(function () { try { return !!top.document; } catch (e) { return false; } })()";

QUrl originUrl(const QWebSecurityOrigin& origin)
{
    QUrl url;
    url.setScheme(origin.scheme());
    url.setHost(origin.host());
    if (origin.port() > 0)
        url.setPort(origin.port());
    return url;
}

} // namespace

// This build's engine.
KxWebDlgEngine* KxWebDlgEngine::create(QWidget* dialog)
{
    return new KxWebKitDlgEngine(dialog);
}

KxWebKitDlgEngine::KxWebKitDlgEngine(QWidget* dialog)
    : KxWebDlgEngine(dialog)
    , m_view(new KxAuthWebView(dialog))
    , m_page(new KxAuthWebPage(m_view))
{
    m_view->setPage(m_page);
    m_view->setContextMenuPolicy(Qt::NoContextMenu);
    m_page->setLinkDelegationPolicy(QWebPage::DelegateAllLinks);

    connect(m_view, &QWebView::linkClicked, this, &KxWebDlgEngine::linkClicked);
    connect(m_view, &QWebView::titleChanged, this, &KxWebDlgEngine::titleChanged);
    connect(m_view, &QWebView::loadStarted, this, &KxWebDlgEngine::loadStarted);
    connect(m_view, &QWebView::loadFinished, this, &KxWebDlgEngine::loadFinished);
    connect(m_page->mainFrame(), &QWebFrame::javaScriptWindowObjectCleared, this,
            &KxWebDlgEngine::scriptWorldCleared);
}

QWidget* KxWebKitDlgEngine::view() const
{
    return m_view;
}

void KxWebKitDlgEngine::load(const QUrl& url)
{
    m_view->setUrl(url);
}

QUrl KxWebKitDlgEngine::url() const
{
    return m_view->url();
}

QUrl KxWebKitDlgEngine::documentUrl() const
{
    // While a new load replaces the old document, the frame already names
    // the new address but still holds the old document, of another origin.
    const QWebFrame* frame = m_page->mainFrame();
    const QUrl address = frame->url();
    const QWebSecurityOrigin origin = frame->securityOrigin();
    if (origin.scheme() != address.scheme() || origin.host() != address.host())
        return QUrl();
    return address;
}

void KxWebKitDlgEngine::setViewportSize(const QSize& size)
{
    m_page->setViewportSize(size);
}

void KxWebKitDlgEngine::setZoomFactor(qreal factor)
{
    m_view->setZoomFactor(factor);
}

// WebKit tells of every new document before its script runs
// (scriptWorldCleared), where the dialog decides: nothing to decide here.
void KxWebKitDlgEngine::setBridge(const QString& name, QObject* object,
                                  const std::function<bool(const QUrl& page)>& /*trusted*/)
{
    m_bridgeName = name;
    m_bridge = object;
}

void KxWebKitDlgEngine::publishBridge()
{
    if (!m_bridge)
        return;
    m_page->mainFrame()->addToJavaScriptWindowObject(m_bridgeName, m_bridge);
    static const QString lock = script(QStringLiteral("lockdocumentdomain.js"));
    m_page->mainFrame()->evaluateJavaScript(lock);
}

bool KxWebKitDlgEngine::foreignFrameReachesMainFrame(
    const std::function<bool(const QUrl& origin)>& sameParty)
{
    const QList<QWebFrame*> frames = m_page->framesOfOtherOrigins();
    return std::any_of(frames.cbegin(), frames.cend(), [&](QWebFrame* frame) {
        return !sameParty(originUrl(frame->securityOrigin())) &&
               frame->evaluateJavaScript(QLatin1String(kReachesTop)).toBool();
    });
}

void KxWebKitDlgEngine::setScriptWindowsAllowed(bool allowed)
{
    m_page->setScriptWindowsAllowed(allowed);
}

QVariant KxWebKitDlgEngine::evaluate(const QString& script)
{
    return m_page->mainFrame()->evaluateJavaScript(script);
}
