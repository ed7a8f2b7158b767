#include "kxwebenginedlgengine.h"

#include "kxwebengineauthpage.h"

#include <vexlite/khksoftwaresettings.h>

#include <QChildEvent>
#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QOpenGLContext>
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#include <QQuickWindow>
#endif
#include <QTimer>
#include <QWebChannel>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineView>

#include <memory>

namespace {

// The methods object's meta-object lists, each name once, in order, with
// the fewest and the most arguments it takes and whether it answers
// nothing ([name, least, most, void]).
QJsonArray methodsOf(const QObject* object)
{
    QJsonArray methods;
    QHash<QString, int> at;
    const QMetaObject* meta = object->metaObject();
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.access() != QMetaMethod::Public)
            continue;
        const QString name = QString::fromLatin1(method.name());
        const int count = method.parameterCount();
        if (!at.contains(name)) {
            at.insert(name, int(methods.size()));
            methods.append(QJsonArray{name, count, count, method.returnType() == QMetaType::Void});
            continue;
        }
        QJsonArray known = methods.at(at.value(name)).toArray();
        known[1] = qMin(known.at(1).toInt(), count);
        known[2] = qMax(known.at(2).toInt(), count);
        methods[at.value(name)] = known;
    }
    return methods;
}

// What every main-frame document gets before its own script: QWebChannel's
// client (kept in a scope of its own), and where the library put the
// channel's transport, the lock on document.domain and the stubs of name.
QString bridgeScript(const QString& name, const QObject* object, const QString& stubs,
                     const QString& lock)
{
    QFile client(QStringLiteral(":/qtwebchannel/qwebchannel.js"));
    if (!client.open(QIODevice::ReadOnly))
        return QString();
    const QString arguments =
        QString::fromUtf8(QJsonDocument(QJsonArray{name, methodsOf(object),
                                                   KxWebEngineAuthPage::refusalMessage()})
                              .toJson(QJsonDocument::Compact))
            .mid(1)
            .chopped(1);
    return QStringLiteral("(function () {\n") + QString::fromUtf8(client.readAll()) +
           QStringLiteral("\nif (typeof qt !== \"undefined\" && qt.webChannelTransport) {\n") +
           lock + QStringLiteral("\n}\n") + stubs + QStringLiteral("(") + arguments +
           QStringLiteral(");\n})();\n");
}

} // namespace

// This build's engine.
KxWebDlgEngine* KxWebDlgEngine::create(QWidget* dialog)
{
    return new KxWebEngineDlgEngine(dialog);
}

QWebEngineProfile* KxWebEngineDlgEngine::profile()
{
    // Beside the host profile's per-user store; one profile per directory
    // and process, as QtWebEngine wants one user of each data directory.
    const QString dir =
        QFileInfo(KHKSoftwareSettings::storeFileName(KHKSoftwareSettings::CurrentUser))
            .absolutePath() +
        QStringLiteral("/web");
    static QHash<QString, QPointer<QWebEngineProfile>> profiles;
    QPointer<QWebEngineProfile>& profile = profiles[dir];
    if (!profile) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        // Without an OpenGL context to share (the offscreen platform, a
        // host that did not ask for one) the engine composes in software.
        const QOpenGLContext* shared = QOpenGLContext::globalShareContext();
        if (!shared || !shared->isValid())
            QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
#endif
        const QByteArray key = QCryptographicHash::hash(dir.toUtf8(), QCryptographicHash::Sha1);
        profile = new QWebEngineProfile(QStringLiteral("auth-") + QString::fromLatin1(key.toHex()),
                                        QCoreApplication::instance());
        profile->setPersistentStoragePath(dir);
        profile->setCachePath(dir + QStringLiteral("/cache"));
        profile->setHttpCacheType(QWebEngineProfile::MemoryHttpCache);
        profile->setPersistentCookiesPolicy(QWebEngineProfile::AllowPersistentCookies);
    }
    return profile;
}

KxWebEngineDlgEngine::KxWebEngineDlgEngine(QWidget* dialog)
    : KxWebDlgEngine(dialog)
    , m_profile(profile()) // before any of the engine's objects: it sets the engine up
    , m_view(new QWebEngineView(dialog))
    , m_page(new KxWebEngineAuthPage(m_profile, m_view))
{
    m_view->setPage(m_page);
    m_view->setContextMenuPolicy(Qt::NoContextMenu);
    // Keys go to a child the engine adds to the view.
    m_view->installEventFilter(this);

    connect(m_page, &KxWebEngineAuthPage::linkClicked, this, &KxWebDlgEngine::linkClicked);
    connect(m_page, &QWebEnginePage::titleChanged, this, &KxWebDlgEngine::titleChanged);
    connect(m_page, &QWebEnginePage::loadStarted, this, &KxWebDlgEngine::loadStarted);
    connect(m_page, &QWebEnginePage::loadFinished, this, &KxWebDlgEngine::loadFinished);
    // The engine tells of no new script world; a new address of the main
    // frame is the nearest it tells. The zoom is the page's, reset with it.
    connect(m_page, &QWebEnginePage::urlChanged, this, [this] {
        if (!qFuzzyCompare(m_page->zoomFactor(), m_zoomFactor))
            m_page->setZoomFactor(m_zoomFactor);
        emit scriptWorldCleared();
    });
    connect(m_page, &KxWebEngineAuthPage::bridgeRefused, this, &KxWebDlgEngine::mainFrameReached);
}

// The page hears of the user's clicks and keys, which tell link clicks
// from script's navigations. The engine passes no key back to the dialog:
// Escape, the dialog's own
// key, goes to the dialog too, as it does on QtWebKit where the page leaves
// it alone.
bool KxWebEngineDlgEngine::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ChildAdded) {
        QObject* child = static_cast<QChildEvent*>(event)->child();
        if (watched == m_view && child->isWidgetType())
            child->installEventFilter(this);
    } else if (event->type() == QEvent::MouseButtonRelease && watched != m_view) {
        m_page->noteUserInput();
    } else if (event->type() == QEvent::KeyPress && watched != m_view) {
        m_page->noteUserInput();
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Escape && m_view && m_view->parentWidget()) {
            QKeyEvent copy(QEvent::KeyPress, key->key(), key->modifiers(), key->text());
            QCoreApplication::sendEvent(m_view->parentWidget(), &copy);
        }
    }
    return false;
}

// The page goes before its profile and the channel, which it uses.
KxWebEngineDlgEngine::~KxWebEngineDlgEngine()
{
    delete m_view.data();
}

QWidget* KxWebEngineDlgEngine::view() const
{
    return m_view;
}

void KxWebEngineDlgEngine::load(const QUrl& url)
{
    m_page->load(url);
}

QUrl KxWebEngineDlgEngine::url() const
{
    const QUrl requested = m_page->requestedUrl();
    const QUrl shown = m_page->url();
    return shown.isEmpty() ? requested : shown;
}

QUrl KxWebEngineDlgEngine::documentUrl() const
{
    return m_page->url();
}

void KxWebEngineDlgEngine::setViewportSize(const QSize& size)
{
    m_view->resize(size);
}

void KxWebEngineDlgEngine::setZoomFactor(qreal factor)
{
    m_zoomFactor = factor;
    m_page->setZoomFactor(factor);
}

void KxWebEngineDlgEngine::setBridge(const QString& name, QObject* object,
                                     const std::function<bool(const QUrl& page)>& trusted)
{
    delete m_channel;
    m_channel = new QWebChannel(this);
    m_channel->registerObject(name, object);
    m_page->setBridgeChannel(m_channel, trusted);

    QWebEngineScript stubs;
    stubs.setName(QStringLiteral("auth-bridge"));
    stubs.setInjectionPoint(QWebEngineScript::DocumentCreation);
    stubs.setWorldId(QWebEngineScript::MainWorld);
    stubs.setRunsOnSubFrames(false);
    stubs.setSourceCode(bridgeScript(name, object, script(QStringLiteral("bridgestubs.js")),
                                     script(QStringLiteral("lockdocumentdomain.js"))));
    m_page->scripts().insert(stubs);
}

// The channel and the stubs are there from the document's start, where the
// page decided at the navigation (KxWebEngineAuthPage).
void KxWebEngineDlgEngine::publishBridge() {}

// A frame of another origin cannot reach the main frame's script on
// QtWebEngine while the main frame keeps its domain: the same-origin rule
// holds between frames (in processes of their own where the sites differ).
// Where the domain was relaxed anyway, the stubs see it at the next call
// and say so (mainFrameReached).
bool KxWebEngineDlgEngine::foreignFrameReachesMainFrame(
    const std::function<bool(const QUrl& origin)>& /*sameParty*/)
{
    return false;
}

void KxWebEngineDlgEngine::setScriptWindowsAllowed(bool allowed)
{
    m_page->setScriptWindowsAllowed(allowed);
}

QVariant KxWebEngineDlgEngine::evaluate(const QString& script)
{
    struct Answer
    {
        QVariant value;
        bool given = false;
        QEventLoop loop;
    };
    const auto answer = std::make_shared<Answer>();
    const std::weak_ptr<Answer> waiting = answer;
    m_page->runJavaScript(script, [waiting](const QVariant& value) {
        if (const std::shared_ptr<Answer> open = waiting.lock()) {
            open->value = value;
            open->given = true;
            open->loop.quit();
        }
    });
    if (!answer->given) {
        QTimer::singleShot(kEvaluateWaitMs, &answer->loop, &QEventLoop::quit);
        answer->loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    return answer->value;
}
