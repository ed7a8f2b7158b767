#include "kxwebdlg.h"

#include "kxopenexternalurl.h"
#include "kxwebbridgeorigins.h"
#include "kxwebdlgbridge.h"
#include "kxwebdlgengine.h"
#include "kxwebmimetypes.h"
#include "weblogging.h"

#include <deskhive/nimboclient.h>
#include <kdeskhivelib.h>
#include <knimboclientinstance.h>
#include <kxopenurl.h>
#include <qcommjson.h>

#include <vex/kxsettings.h>
#include <vex/kzentostyle.h>
#include <vexlite/kdcinfoc.h>
#include <vexlite/khksoftwaresettings.h>
#include <vexlite/kqtcompat.h>
#include <vexlite/krtauth.h>
#include <vexlite/krti18n.h>
#include <vexlite/krtinfo.h>
#include <vexlite/krtinfocollect.h>

#include <QCloseEvent>
#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QRegularExpression>
#include <QScreen>
#include <QTimer>
#include <QUrlQuery>
#include <QVBoxLayout>

#include <memory>

namespace {

const char kBridgeName[] = "zentoctx";
const char kSettingsGroup[] = "ZentoCtx";
const int kLoadWaitMs = 1000;

// Why a page may not use this key path of a settings store; null when it
// may. Keys name a place in the store ("Corvane\\Office\\Web", "a/b"); a
// path that could leave it, or names nothing, is refused.
const char* keyRefusal(const QString& key, const QString& valueName)
{
    if (key.isEmpty())
        return "the key is empty";
    if (valueName.isEmpty())
        return "the value name is empty";
    static const QRegularExpression absolute(QStringLiteral("^([/\\\\]|[A-Za-z]:)"));
    if (absolute.match(key).hasMatch())
        return "it is an absolute path";
    static const QRegularExpression separators(QStringLiteral("[/\\\\]"));
    if (key.split(separators).contains(QStringLiteral("..")))
        return "it has a \"..\" segment";
    return nullptr;
}

// The group of the user's store that keeps web pages' registry-like
// values: a page's key path names a place below it, so no page reaches the
// installation's own keys (the device identifier, the suite's user name).
const char kPageStorePath[] = "WebPages";
// Values a page may keep in the dialog's settings group, and below
// kPageStorePath: a page writing ever new names would fill the user's
// store without end.
const int kMaxStoredValues = 256;

// The group of the user's store below kPageStorePath. On macOS it lives in
// a preference domain of its own; elsewhere in the profile's per-user
// store, never in a file a page names.
std::unique_ptr<QSettings> openPageStore()
{
#ifdef Q_OS_MACOS
    return std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                       QStringLiteral("Corvane"), QLatin1String(kPageStorePath));
#else
    return std::make_unique<KHKSoftwareSettings>(KHKSoftwareSettings::CurrentUser,
                                                 QLatin1String(kPageStorePath));
#endif
}

// The settings a page's key path addresses, or null (with one warning) when
// the path is refused.
std::unique_ptr<QSettings> openPageSettings(const QString& key, const QString& valueName)
{
    if (const char* reason = keyRefusal(key, valueName)) {
        qWarning("Refused the settings key \"%s\" (value \"%s\") of a web page: %s",
                 qUtf8Printable(key), qUtf8Printable(valueName), reason);
        return nullptr;
    }
    std::unique_ptr<QSettings> settings = openPageStore();
    settings->beginGroup(QString(key).replace(QLatin1Char('\\'), QLatin1Char('/')));
    return settings;
}

// Whether a page may write name into settings, where stored values of its
// kind are kept already: always over a value it has, a new one only below
// kMaxStoredValues.
bool roomFor(const QSettings& settings, const QString& name, int stored)
{
    if (stored < kMaxStoredValues || settings.contains(name))
        return true;
    qWarning("Refused to keep \"%s\" for a web page: it keeps %d values already",
             qUtf8Printable(name), kMaxStoredValues);
    return false;
}

void writePageValue(const QString& key, const QString& valueName, const QVariant& value)
{
    const std::unique_ptr<QSettings> settings = openPageSettings(key, valueName);
    if (settings && roomFor(*settings, valueName, openPageStore()->allKeys().size()))
        settings->setValue(valueName, value);
}

// Where the dialog may lie: the available area of the screen that holds
// point, or else of the dialog's own screen.
QRect availableArea(const QWidget* dialog, const QPoint& point)
{
    const QScreen* screen = QGuiApplication::screenAt(point);
    if (!screen)
        screen = dialog->screen();
    return screen ? screen->availableGeometry() : QRect(0, 0, QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
}

// rect moved as little as keeps it inside area; one larger than area keeps
// its top left corner there.
QRect keptInside(QRect rect, const QRect& area)
{
    rect.moveRight(qMin(rect.right(), area.right()));
    rect.moveBottom(qMin(rect.bottom(), area.bottom()));
    rect.moveLeft(qMax(rect.left(), area.left()));
    rect.moveTop(qMax(rect.top(), area.top()));
    return rect;
}

// What a page asks for, kept within what a widget can be.
int bounded(int length)
{
    return qBound(-QWIDGETSIZE_MAX, length, QWIDGETSIZE_MAX);
}

} // namespace

struct KxWebDlg::Private
{
#ifdef AUTH_LAYOUT_PROBE
    // Another private layout, for the package test's library of it.
    char layoutProbe[256] = {};
#endif
    QUrl url;
    QUrl fallbackUrl;
    KxWebDlgEngine* engine = nullptr; // a child of the dialog
    QString expId;
    QString expVar;
    QTimer* loadTimer = nullptr;
    // Starts the modal run once the engine's load signal has returned: a
    // modal run inside it would hold the engine's loader mid-call, and a
    // page the user loads meanwhile frees what that call still uses.
    QTimer* showTimer = nullptr;
    QEventLoop* loadLoop = nullptr;
    bool shown = false;
    QString onCloseCallback;
    QString onEscPressCallback;
    QString onLoginSuccess;
    QPointer<KxWebDlgBridge> bridge;
    // The document the main frame shows now got the bridge.
    bool bridgeDocument = false;
    // A frame of another origin could reach that document's script: its
    // calls might be the frame's, so none runs until the next document.
    bool reachedFromOutside = false;

    // Runs the modal run once, inside the slot that calls it; its result
    // ends exec().
    void startModalRun(KxWebDlg* dialog);
    // Runs a callback expression in the page: true when it answers 1.
    bool callbackAnswersOne(const QString& script);
    // Whether a bridge call may run now. A web engine does not tell which
    // frame calls, so the call runs only while no frame but those of the
    // page's own party could be the caller.
    bool bridgeCallAllowed();
    // From now until the next document, no bridge call runs.
    void refuseFromOutside();
    bool sameParty(const QUrl& page) const
    {
        return KxWebBridgeOrigins::admits(page, url, fallbackUrl);
    }
};

bool KxWebDlg::Private::bridgeCallAllowed()
{
    if (!bridgeDocument)
        return false;
    if (!reachedFromOutside && engine->foreignFrameReachesMainFrame(
                                   [this](const QUrl& origin) { return sameParty(origin); }))
        refuseFromOutside();
    return !reachedFromOutside;
}

void KxWebDlg::Private::refuseFromOutside()
{
    if (reachedFromOutside || !bridgeDocument)
        return;
    reachedFromOutside = true;
    qWarning("Refused the bridge to %s: a frame of another origin can reach its script",
             qUtf8Printable(kxUrlForLog(engine->url())));
}

void KxWebDlg::Private::startModalRun(KxWebDlg* dialog)
{
    if (shown)
        return;
    shown = true;
    loadLoop->exit(dialog->KxNimboCustomFrameDlg::exec());
}

bool KxWebDlg::Private::callbackAnswersOne(const QString& script)
{
    // Callbacks were set through the bridge; a page that has none cannot
    // run them, nor keep the dialog open with them.
    if (!KxWebBridgeOrigins::admits(engine->url(), url, fallbackUrl))
        return false;
    const QVariant answer = engine->evaluate(script);
    return !KQtCompat::isNull(answer) && answer.toInt() == 1;
}

KxWebDlg::KxWebDlg(const QUrl& url, QWidget* parent, const QUrl& fallbackUrl)
    : KxNimboCustomFrameDlg(parent)
    , d(std::make_unique<Private>())
{
    d->url = url;
    d->fallbackUrl = fallbackUrl;
    setTitleIcon(QPixmap(QStringLiteral("res:/images/logo.png")));
    setTitleColor(QColor(QStringLiteral("#6C7079")));

    d->engine = KxWebDlgEngine::create(this);
    // Pages are written for 100 %: at the host's display scale they grow
    // with the frame around them.
    d->engine->setZoomFactor(KZentoStyle::dpiScale());
    d->loadTimer = new QTimer(this);
    d->showTimer = new QTimer(this);
    d->showTimer->setSingleShot(true);
    d->showTimer->setInterval(0);
    d->loadLoop = new QEventLoop(this);

    auto* layout = new QVBoxLayout;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(d->engine->view());
    setLayout(layout);

    QUrlQuery query(d->url);
    query.addQueryItem(QStringLiteral("distsrc"), KDcInfoC::getMC());
    query.addQueryItem(QStringLiteral("lang"), krt::i18n::language(1));
    query.addQueryItem(QStringLiteral("version"), KDcInfoC::getVersion());
    query.addQueryItem(QStringLiteral("hId"), krt::info::installHdId());
    d->url.setQuery(query);

    resize(600, 300);

    d->bridge = KxWebDlgBridge::create(this, [this] { return d->bridgeCallAllowed(); });
    d->engine->setBridge(QLatin1String(kBridgeName), d->bridge,
                         [this](const QUrl& page) { return d->sameParty(page); });

    connect(d->engine, &KxWebDlgEngine::linkClicked, this, &KxWebDlg::on_linkClicked);
    connect(d->engine, &KxWebDlgEngine::scriptWorldCleared, this,
            &KxWebDlg::populateJavaScriptWindowObject);
    // The dialog's title follows the page's.
    connect(d->engine, &KxWebDlgEngine::titleChanged, this, &QWidget::setWindowTitle);
    connect(d->engine, &KxWebDlgEngine::loadFinished, this, &KxWebDlg::on_loadFinished);
    connect(d->engine, &KxWebDlgEngine::mainFrameReached, this, [this] { d->refuseFromOutside(); });
    connect(d->loadTimer, &QTimer::timeout, this, &KxWebDlg::on_loadTimedOut);
    connect(d->showTimer, &QTimer::timeout, this, [this] { d->startModalRun(this); });
}

// The view may still report on a load while the widgets go, after the
// private part: nothing of the engine reaches the dialog from here on.
KxWebDlg::~KxWebDlg()
{
    disconnect(d->engine, nullptr, this, nullptr);
}

int KxWebDlg::exec()
{
    // Every exec() shows the dialog once; without this a second call would
    // wait for ever.
    d->shown = false;
    d->showTimer->stop();
    qCDebug(lcAuthWeb, "loading %s", qUtf8Printable(kxUrlForLog(d->url)));
    d->engine->load(d->url);
    d->loadTimer->setSingleShot(true);
    d->loadTimer->start(kLoadWaitMs);
    return d->loadLoop->exec(QEventLoop::ExcludeUserInputEvents);
}

void KxWebDlg::resize(int contentWidth, int contentHeight)
{
    // Never larger than the screen: a page asking for 30000 x 30000 would
    // otherwise get a window buffer of gigabytes.
    const QRect old = geometry();
    const QRect area = availableArea(this, old.center());
    const QMargins margins = contentsMargins();
    const int horizontal = margins.left() + margins.right();
    const int vertical = margins.top() + margins.bottom();
    // The page's pixels, at the host's display scale.
    const qreal scale = KZentoStyle::dpiScale();
    const QSize content(qBound(0, qRound(qBound(0, contentWidth, QWIDGETSIZE_MAX) * scale),
                               area.width() - horizontal),
                        qBound(0, qRound(qBound(0, contentHeight, QWIDGETSIZE_MAX) * scale),
                               area.height() - vertical));
    const int width = content.width() + horizontal;
    const int height = content.height() + vertical;
    // A hidden dialog lays nothing out, so the page would load at the
    // view's first size and be laid out again when the dialog shows: give
    // the page the size it will have.
    if (!isVisible())
        d->engine->setViewportSize(content);
    // Not placed yet: the window system centres it when it shows.
    if (old.topLeft() == QPoint(0, 0)) {
        setFixedSize(width, height);
        return;
    }
    const QRect centred(old.x() - (width - old.width()) / 2, old.y() - (height - old.height()) / 2,
                        width, height);
    setGeometry(keptInside(centred, area));
    setFixedSize(width, height);
}

void KxWebDlg::moveTo(int x, int y)
{
    // On a screen, all of it where it fits: a modal dialog off screen could
    // be neither seen nor closed.
    const QRect wanted(QPoint(bounded(x), bounded(y)), size());
    move(keptInside(wanted, availableArea(this, wanted.center())).topLeft());
}

void KxWebDlg::accept()
{
    KxNimboCustomFrameDlg::accept();
}

void KxWebDlg::reject()
{
    KxNimboCustomFrameDlg::reject();
}

QString KxWebDlg::get(const QString& key)
{
    KxSettings settings;
    settings.beginGroup(QLatin1String(kSettingsGroup));
    return settings.value(key).toString();
}

void KxWebDlg::set(const QString& key, const QString& value)
{
    KxSettings settings;
    settings.beginGroup(QLatin1String(kSettingsGroup));
    if (roomFor(settings, key, settings.allKeys().size()))
        settings.setValue(key, value);
}

void KxWebDlg::experiment(const QString& expId, const QString& expVar)
{
    d->expId = expId;
    d->expVar = expVar;
}

void KxWebDlg::postEvent(const QString& eventName, const QString& eventCategory,
                         const QString& eventLable, int eventValue, const QString& viewName)
{
    krt::infocollect::collectExpEvent(d->expId, d->expVar, eventName, eventCategory, eventLable,
                                      eventValue, viewName);
}

void KxWebDlg::postPageView(const QString& viewName, const QString& viewCategory)
{
    krt::infocollect::collectExpView(d->expId, d->expVar, viewName, viewCategory);
}

QString KxWebDlg::distSrc()
{
    return KDcInfoC::getMC();
}

QString KxWebDlg::lang()
{
    return krt::i18n::language(1);
}

QString KxWebDlg::version()
{
    return KDcInfoC::getVersion();
}

QString KxWebDlg::hdid()
{
    return krt::info::installHdId();
}

void KxWebDlg::setVisible(bool visible)
{
    KxNimboCustomFrameDlg::setVisible(visible);
}

QString KxWebDlg::readStrReg(const QString& key, const QString& valueName)
{
    const std::unique_ptr<QSettings> settings = openPageSettings(key, valueName);
    return settings ? settings->value(valueName, QString()).toString() : QString();
}

int KxWebDlg::readIntReg(const QString& key, const QString& valueName)
{
    const std::unique_ptr<QSettings> settings = openPageSettings(key, valueName);
    return settings ? settings->value(valueName, 0).toInt() : 0;
}

void KxWebDlg::writeStrReg(const QString& key, const QString& valueName, const QString& value)
{
    writePageValue(key, valueName, value);
}

void KxWebDlg::writeIntReg(const QString& key, const QString& valueName, int value)
{
    writePageValue(key, valueName, value);
}

QString KxWebDlg::readProductConfig(const QString& key)
{
    return krt::auth::getStringInfo(key);
}

bool KxWebDlg::isFileExist(const QString& file)
{
    return QFile(file).exists();
}

void KxWebDlg::login(const QString& onSuccess)
{
    d->onLoginSuccess = onSuccess;
    INimboClient* client = KDeskhiveLib::instance()->nimboClientInstance();
    if (!client)
        return;
    // Connected before the login starts: a client that changes its state at
    // once would otherwise announce it to nobody.
    connect(client, SIGNAL(LoginStatusChange()), this, SLOT(on_LoginStatusChange()),
            Qt::UniqueConnection);
    client->login(QVariant(QStringLiteral("logintype:select")));
}

void KxWebDlg::openAutoLoginUrl(const QString& url)
{
    // The cloud client wraps the address; what it wraps must be one the
    // system may open.
    if (kxCheckExternalUrl(QUrl(url, QUrl::TolerantMode)))
        kxOpenAutoLoginUrl(url);
}

bool KxWebDlg::isLogined()
{
    return KNimboClientInstance::isLogined();
}

QString KxWebDlg::loginedUserId()
{
    const Json::Value info = KNimboClientInstance::userInfo();
    if (!info.isObject() || !info.isMember("Id"))
        return QString();
    const std::string id = QComm::jsonValue2StdString(info["Id"]);
    return QString::fromLatin1(id.data(), static_cast<int>(id.size()));
}

bool KxWebDlg::isMimeTypeAvailable(const QString& type)
{
    return KxWebMimeTypes::isAvailable(type);
}

QString KxWebDlg::availableMimeTypes()
{
    return KxWebMimeTypes::available().join(QLatin1Char(','));
}

bool KxWebDlg::openUrl(const QString& url)
{
    return kxOpenExternalUrl(QUrl(url, QUrl::TolerantMode));
}

bool KxWebDlg::isSupportWindowOpen()
{
    return true;
}

void KxWebDlg::setOnCloseCallback(const QString& callback)
{
    if (!callback.isNull())
        d->onCloseCallback = callback;
}

void KxWebDlg::setOnEscPressCallback(const QString& callback)
{
    if (!callback.isNull())
        d->onEscPressCallback = callback;
}

void KxWebDlg::on_linkClicked(const QUrl& url)
{
    kxOpenExternalUrl(url);
}

void KxWebDlg::populateJavaScriptWindowObject()
{
    const QUrl page = d->engine->documentUrl();
    d->bridgeDocument = !page.isEmpty() && d->sameParty(page);
    d->reachedFromOutside = false;
    // Pages without the bridge open no windows, not even on a click.
    d->engine->setScriptWindowsAllowed(d->bridgeDocument);
    if (!d->bridgeDocument) {
        qCDebug(lcAuthWeb, "no bridge for %s", qUtf8Printable(kxUrlForLog(d->engine->url())));
        return;
    }
    d->engine->publishBridge();
}

void KxWebDlg::on_loadFinished(bool ok)
{
    if (!ok && !d->fallbackUrl.isEmpty() && d->engine->url() != d->fallbackUrl) {
        qCDebug(lcAuthWeb, "%s failed, loading %s", qUtf8Printable(kxUrlForLog(d->engine->url())),
                qUtf8Printable(kxUrlForLog(d->fallbackUrl)));
        d->engine->load(d->fallbackUrl);
        return;
    }
    d->loadTimer->stop();
    d->showTimer->start();
}

void KxWebDlg::on_loadTimedOut()
{
    qCDebug(lcAuthWeb, "still loading after %d ms, showing the dialog", kLoadWaitMs);
    d->startModalRun(this);
}

void KxWebDlg::on_LoginStatusChange()
{
    if (!d->onLoginSuccess.isEmpty() && isLogined())
        d->callbackAnswersOne(QStringLiteral("(") + d->onLoginSuccess + QStringLiteral(")()"));
}

void KxWebDlg::closeEvent(QCloseEvent* event)
{
    if (!d->onCloseCallback.isEmpty() &&
        d->callbackAnswersOne(QStringLiteral("(") + d->onCloseCallback + QStringLiteral(")()"))) {
        event->ignore();
        return;
    }
    KxNimboCustomFrameDlg::closeEvent(event);
}

void KxWebDlg::keyPressEvent(QKeyEvent* event)
{
    if (event->modifiers() != Qt::NoModifier || event->key() != Qt::Key_Escape) {
        KxNimboCustomFrameDlg::keyPressEvent(event);
        return;
    }
    // No parentheses around the callback here, unlike the close callback:
    // pages name a function ("onEsc"), and they rely on this form.
    if (!d->onEscPressCallback.isEmpty() &&
        d->callbackAnswersOne(d->onEscPressCallback + QStringLiteral("()"))) {
        event->ignore();
        return;
    }
    reject();
}
