#include "kzentoofficehost.h"

#include "ikhostweb.h"
#include "kdeskhiveclient.h"
#include "kdocumentrequest.h"
#include "kzentoofficewindow.h"

#include <deskhive/nimboclient.h>
#include <vex/kmainwindow.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/krti18n.h>
#include <vexlite/krtproduct.h>

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QStatusBar>

namespace {

const QString kJumpUrl = QStringLiteral("JumpUrl");
const QString kPersonalCenterUrl = QStringLiteral("PersonalCenterUrl");
const QString kEnterpriseCenterUrl = QStringLiteral("EnterpriseCenterUrl");

// Documents, or arguments, left out of a request.
QString notOpened(int count)
{
    return KZentoOfficeHost::tr("not opened, beyond %1 documents at once: %2 more")
        .arg(KZentoOfficeHost::kMaxDocumentsAtOnce)
        .arg(count);
}

// The address as the cloud client wraps it for automatic sign-in, plain
// when nobody is signed in or the client cannot wrap it.
QString autoLoginUrl(const QString& url)
{
    QString wrapped;
    INimboClient* client = KDeskhiveClient::client();
    if (client && client->getUserInfo()["IsLogined"].asBool())
        client->getAutoLoginUrl(url, wrapped);
    return wrapped.isEmpty() ? url : wrapped;
}

// Where the unreachable pages are: port 0 of the loopback interface.
// Connections to it fail at once, and no process can listen there (binding
// port 0 picks another), so no page is ever served from this origin, and
// the web dialog's trust in its own address gives nobody anything. A port
// that was free a moment ago would go to whoever bound it next.
const QLatin1String kUnreachableBase("http://127.0.0.1:0");

} // namespace

KZentoOfficeHost::KZentoOfficeHost(QObject* parent)
    : QObject(parent)
    , m_state(KDeskhiveClient::stateFilePath())
{
    // The catalogue lives in a static library, whose resource registration
    // a linker would otherwise drop.
    Q_INIT_RESOURCE(zentooffice_i18n);
    for (const QString& key : {kJumpUrl, kPersonalCenterUrl, kEnterpriseCenterUrl})
        m_profileAddresses.insert(key, krt::product::getString(key));
    installTranslator();
    krt::hostcontrol::setCommandRunner([this](const QString& name) { runCommand(name); });
    krt::hostcontrol::setAccountEntryObserver(
        [this](const krt::hostcontrol::AccountEntryCall& call) {
            emit accountEntered(call.code, call.first, call.second);
        });
}

KZentoOfficeHost::~KZentoOfficeHost()
{
    krt::hostcontrol::setCommandRunner(nullptr);
    krt::hostcontrol::setAccountEntryObserver(nullptr);
    // The windows first: they hold dialogs of the web module.
    const QList<KZentoOfficeWindow*> open = windows();
    qDeleteAll(open);
    if (m_pages != InternetPages) {
        QDesktopServices::unsetUrlHandler(QStringLiteral("http"));
        QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
    }
    if (m_translatorInstalled)
        QCoreApplication::removeTranslator(&m_translator);
}

bool KZentoOfficeHost::loadWebModule(const QString& path)
{
    m_webLibrary.setFileName(path);
    if (!m_webLibrary.load()) {
        m_webError = m_webLibrary.errorString();
        return false;
    }
    const auto entry = reinterpret_cast<GetHostWebFunc>(m_webLibrary.resolve("GetHostWeb"));
    m_web = entry ? entry() : nullptr;
    if (!m_web) {
        m_webError = tr("%1 does not offer GetHostWeb").arg(path);
        m_webLibrary.unload();
        return false;
    }
    m_web->setNetworkAvailable(!m_offline);
    return true;
}

KZentoOfficeWindow* KZentoOfficeHost::newWindow(bool withPanel)
{
    auto* window = new KZentoOfficeWindow(this);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setDeveloperPanelVisible(withPanel);
    return window;
}

KZentoOfficeWindow* KZentoOfficeHost::activeWindow() const
{
    const QList<KZentoOfficeWindow*> open = windows();
    return open.isEmpty() ? nullptr : open.first();
}

QList<KZentoOfficeWindow*> KZentoOfficeHost::windows() const
{
    QList<KZentoOfficeWindow*> open;
    const QList<KMainWindow*> all = KMainWindow::mainWindows();
    for (KMainWindow* window : all) {
        auto* ours = qobject_cast<KZentoOfficeWindow*>(window);
        if (ours && ours->host() == this)
            open << ours;
    }
    return open;
}

void KZentoOfficeHost::openDocuments(const QList<KDocumentRequest>& requests, QStringList notes)
{
    KZentoOfficeWindow* window = activeWindow();
    if (!window) {
        window = newWindow();
        window->show();
    }
    window->openDocuments(requests.mid(0, kMaxDocumentsAtOnce));
    const int left = requests.size() - kMaxDocumentsAtOnce;
    if (left > 0)
        notes << notOpened(left);
    if (!notes.isEmpty())
        window->statusBar()->showMessage(notes.join(QStringLiteral("; ")));
    window->raise();
    window->activateWindow();
}

void KZentoOfficeHost::onArgumentsReceived(const QStringList& arguments)
{
    // Only a few refusals are named, and shortened: a message may hold
    // thousands.
    constexpr int kNamedRefusals = 3;
    constexpr int kNamedLength = 200;
    QList<KDocumentRequest> documents;
    QStringList notes;
    int refused = 0;
    int next = 0;
    for (; next < arguments.size() && documents.size() < kMaxDocumentsAtOnce; ++next) {
        const KDocumentRequest request =
            KDocumentRequest::fromArgument(arguments[next], QDir::currentPath());
        if (request.isValid())
            documents << request;
        else if (++refused <= kNamedRefusals)
            notes << tr("%1: %2").arg(arguments[next].left(kNamedLength), request.error());
    }
    if (refused > kNamedRefusals)
        notes << tr("also refused: %1 more").arg(refused - kNamedRefusals);
    if (next < arguments.size())
        notes << notOpened(arguments.size() - next);
    openDocuments(documents, notes);
}

void KZentoOfficeHost::setServicePages(ServicePages pages)
{
    QHash<QString, QString> addresses = m_profileAddresses;
    if (pages == LocalPages && m_server.listen()) {
        addresses[kJumpUrl] = m_server.jumpBase().toString();
        addresses[kPersonalCenterUrl] = m_server.personalCenterUrl().toString();
        addresses[kEnterpriseCenterUrl] = m_server.enterpriseCenterUrl().toString();
    } else if (pages != InternetPages) {
        pages = UnreachablePages;
        addresses[kJumpUrl] = kUnreachableBase + QStringLiteral("/go");
        addresses[kPersonalCenterUrl] = kUnreachableBase + QStringLiteral("/center");
        addresses[kEnterpriseCenterUrl] = kUnreachableBase + QStringLiteral("/admin");
    }
    for (auto it = addresses.cbegin(); it != addresses.cend(); ++it)
        krt::hostcontrol::setProductString(it.key(), it.value());

    if ((pages == InternetPages) != (m_pages == InternetPages)) {
        for (const QString& scheme : {QStringLiteral("http"), QStringLiteral("https")}) {
            if (pages == InternetPages)
                QDesktopServices::unsetUrlHandler(scheme);
            else
                QDesktopServices::setUrlHandler(scheme, this, "catchUrl");
        }
    }
    m_pages = pages;
    emit stateChanged();
}

void KZentoOfficeHost::setLanguage(const QString& language)
{
    krt::hostcontrol::setLanguage(language);
    installTranslator();
    rebuildTitleAreas();
    emit stateChanged();
}

void KZentoOfficeHost::setDisplayScale(qreal scale)
{
    krt::hostcontrol::setDisplayScale(scale);
    rebuildTitleAreas();
    emit stateChanged();
}

void KZentoOfficeHost::setOffline(bool offline)
{
    m_offline = offline;
    krt::hostcontrol::setLogoutDuetoOffLine(offline);
    if (m_web)
        m_web->setNetworkAvailable(!offline);
    updateWindowCommands();
    emit stateChanged();
}

void KZentoOfficeHost::setFeatureSupported(const QString& feature, bool supported)
{
    krt::hostcontrol::setFeatureSupported(feature, supported);
    updateWindowCommands();
    emit stateChanged();
}

QUrl KZentoOfficeHost::bridgePageUrl()
{
    return m_server.listen() ? m_server.bridgePageUrl() : QUrl();
}

void KZentoOfficeHost::updateWindowCommands()
{
    const QList<KZentoOfficeWindow*> open = windows();
    for (KZentoOfficeWindow* window : open) {
        window->updateCommands();
        // The account button draws its veil from the offline flag.
        const QList<QWidget*> widgets = window->titleArea()->findChildren<QWidget*>();
        for (QWidget* widget : widgets)
            widget->update();
    }
}

// The suite opens the enterprise centre itself: the plug-in only lets the
// command go on.
void KZentoOfficeHost::runCommand(const QString& name)
{
    emit commandRun(name);
    if (name == QLatin1String("OpenEnterpriseCenter")) {
        const QString center = autoLoginUrl(krt::product::getString(kEnterpriseCenterUrl));
        QDesktopServices::openUrl(QUrl(center, QUrl::TolerantMode));
    }
}

void KZentoOfficeHost::catchUrl(const QUrl& url)
{
    m_caught << url;
    emit urlCaught(url);
}

void KZentoOfficeHost::installTranslator()
{
    if (m_translatorInstalled)
        QCoreApplication::removeTranslator(&m_translator);
    m_translatorInstalled =
        m_translator.load(krt::i18n::uiLocale(), QStringLiteral("zentooffice"), QStringLiteral("_"),
                          QStringLiteral(":/zentooffice/i18n")) &&
        QCoreApplication::installTranslator(&m_translator);
}

void KZentoOfficeHost::rebuildTitleAreas()
{
    const QList<KZentoOfficeWindow*> open = windows();
    for (KZentoOfficeWindow* window : open)
        window->rebuildTitleCommands();
}
