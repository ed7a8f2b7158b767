#include "kxwebdlg.h"

#include "kxauthwebview.h"
#include "kxopenexternalurl.h"
#include "kxwebbridgeorigins.h"
#include "kxwebdlgbridge.h"
#include "kxwebdlgengine.h"
#include "weblogging.h"

#include <deskhive/nimboclient.h>
#include <kdeskhivelib.h>
#include <knimboclientinstance.h>
#include <kxopenurl.h>
#include <qcommjson.h>

#include <vex/kxsettings.h>
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
#include <QKeyEvent>
#include <QPointer>
#include <QRegularExpression>
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

// The settings a page's key path addresses, or null (with one warning) when
// the path is refused. On macOS native settings are the user's preference
// domains; elsewhere they would be files named by the page, so the path
// becomes a key of the profile's per-user store instead.
std::unique_ptr<QSettings> openPageSettings(const QString& key, const QString& valueName)
{
    if (const char* reason = keyRefusal(key, valueName)) {
        qWarning("Refused the settings key \"%s\" (value \"%s\") of a web page: %s",
                 qUtf8Printable(key), qUtf8Printable(valueName), reason);
        return nullptr;
    }
#ifdef Q_OS_MACOS
    return std::make_unique<QSettings>(key, QSettings::NativeFormat);
#else
    return std::make_unique<KHKSoftwareSettings>(KHKSoftwareSettings::CurrentUser, key);
#endif
}

// A size the page asks for, kept within what a widget can be.
int boundedLength(int length, int margins)
{
    return qBound(0, length, QWIDGETSIZE_MAX - margins);
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
    QEventLoop* loadLoop = nullptr;
    bool shown = false;
    int result = 0; // of the last modal run
    QString onCloseCallback;
    QString onEscPressCallback;
    QString onLoginSuccess;
    QPointer<KxWebDlgBridge> bridge;

    // Runs the modal run once, inside the slot that calls it; its result
    // ends exec().
    void startModalRun(KxWebDlg* dialog);
    // Runs a callback expression in the page: true when it answers 1.
    bool callbackAnswersOne(const QString& script);
};

void KxWebDlg::Private::startModalRun(KxWebDlg* dialog)
{
    if (shown)
        return;
    shown = true;
    result = dialog->KxNimboCustomFrameDlg::exec();
    loadLoop->exit(result);
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
    d->loadTimer = new QTimer(this);
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

    connect(d->engine, &KxWebDlgEngine::linkClicked, this, &KxWebDlg::on_linkClicked);
    connect(d->engine, &KxWebDlgEngine::scriptWorldCleared, this,
            &KxWebDlg::populateJavaScriptWindowObject);
    // The dialog's title follows the page's.
    connect(d->engine, &KxWebDlgEngine::titleChanged, this, &QWidget::setWindowTitle);
    connect(d->engine, &KxWebDlgEngine::loadFinished, this, &KxWebDlg::on_loadFinished);
    connect(d->loadTimer, &QTimer::timeout, this, &KxWebDlg::on_loadTimedOut);
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
    qCDebug(lcAuthWeb, "loading %s", qUtf8Printable(d->url.toDisplayString()));
    d->engine->load(d->url);
    // Some addresses (an empty one) finish within the load: the modal run
    // has already happened, before the waiting loop could run.
    if (d->shown)
        return d->result;
    d->loadTimer->setSingleShot(true);
    d->loadTimer->start(kLoadWaitMs);
    return d->loadLoop->exec(QEventLoop::ExcludeUserInputEvents);
}

void KxWebDlg::resize(int contentWidth, int contentHeight)
{
    const QMargins margins = contentsMargins();
    const int horizontal = margins.left() + margins.right();
    const int vertical = margins.top() + margins.bottom();
    const QSize content(boundedLength(contentWidth, horizontal),
                        boundedLength(contentHeight, vertical));
    const int width = content.width() + horizontal;
    const int height = content.height() + vertical;
    // A hidden dialog lays nothing out, so the page would load at the
    // view's first size and be laid out again when the dialog shows: give
    // the page the size it will have.
    if (!isVisible())
        d->engine->setViewportSize(content);
    const QRect old = geometry();
    // Not placed yet: the window system centres it when it shows.
    if (old.topLeft() == QPoint(0, 0)) {
        setFixedSize(width, height);
        return;
    }
    setGeometry(old.x() - (width - old.width()) / 2, old.y() - (height - old.height()) / 2, width,
                height);
    setFixedSize(width, height);
}

void KxWebDlg::moveTo(int x, int y)
{
    move(qBound(-QWIDGETSIZE_MAX, x, QWIDGETSIZE_MAX),
         qBound(-QWIDGETSIZE_MAX, y, QWIDGETSIZE_MAX));
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
    if (const std::unique_ptr<QSettings> settings = openPageSettings(key, valueName))
        settings->setValue(valueName, value);
}

void KxWebDlg::writeIntReg(const QString& key, const QString& valueName, int value)
{
    if (const std::unique_ptr<QSettings> settings = openPageSettings(key, valueName))
        settings->setValue(valueName, value);
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
    return KxAuthWebView::isMimeTypeAvailable(type);
}

QString KxWebDlg::availableMimeTypes()
{
    return KxAuthWebView::availableMimeTypes().join(QLatin1Char(','));
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
    if (page.isEmpty() || !KxWebBridgeOrigins::admits(page, d->url, d->fallbackUrl)) {
        qCDebug(lcAuthWeb, "no bridge for %s", qUtf8Printable(d->engine->url().toDisplayString()));
        return;
    }
    if (!d->bridge)
        d->bridge = new KxWebDlgBridge(this);
    d->engine->publish(QLatin1String(kBridgeName), d->bridge);
}

void KxWebDlg::on_loadFinished(bool ok)
{
    if (!ok && !d->fallbackUrl.isEmpty() && d->engine->url() != d->fallbackUrl) {
        qCDebug(lcAuthWeb, "%s failed, loading %s",
                qUtf8Printable(d->engine->url().toDisplayString()),
                qUtf8Printable(d->fallbackUrl.toDisplayString()));
        d->engine->load(d->fallbackUrl);
        return;
    }
    d->loadTimer->stop();
    d->startModalRun(this);
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
