#include "kxwebkitdlgengine.h"

#include "kxauthwebpage.h"
#include "kxauthwebview.h"

#include <QWebFrame>
#include <QWebSecurityOrigin>

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

void KxWebKitDlgEngine::publish(const QString& name, QObject* object)
{
    m_page->mainFrame()->addToJavaScriptWindowObject(name, object);
}

QVariant KxWebKitDlgEngine::evaluate(const QString& script)
{
    return m_page->mainFrame()->evaluateJavaScript(script);
}
