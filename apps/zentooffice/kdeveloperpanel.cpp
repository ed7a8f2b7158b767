#include "kdeveloperpanel.h"

#include "kdeskhiveclient.h"
#include "klocalserviceserver.h"
#include "ksimulatorstateeditor.h"
#include "kzentoofficehost.h"

#include <deskhive/nimboclient.h>
#include <vex/kmainwindow.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/krtproduct.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QTabWidget>
#include <QUrl>
#include <QVBoxLayout>

namespace {

const char kSignalProperty[] = "deskhiveSignal";
const char kFeatureProperty[] = "productFeature";

// The picture choices; "file" asks for one.
const char* const kAvatars[] = {"demo", "teal", "orange", "file"};
// The scales offered; 0 leaves it to the screen.
const qreal kScales[] = {0, 1, 1.25, 1.5, 2};

// An address as the activity shows it: the sign-in token and the hardware
// identifier in its query are hidden, as they are from every log.
QString withoutSecrets(const QString& address)
{
    static const QRegularExpression secret(QStringLiteral("([?&](token|hId|hdid)=)[^&#]*"),
                                           QRegularExpression::CaseInsensitiveOption);
    return QString(address).replace(secret, QStringLiteral("\\1(hidden)"));
}

QString now()
{
    return QTime::currentTime().toString(QStringLiteral("HH:mm:ss"));
}

// One recorded usage event as a line: what, then where.
QString describeEvent(const QVariantMap& event)
{
    const auto value = [&event](const char* key) {
        return event.value(QLatin1String(key)).toString();
    };
    QStringList parts;
    if (value("kind") == QLatin1String("view")) {
        parts << QStringLiteral("view") << value("viewName") << value("viewCategory");
    } else {
        parts << QStringLiteral("event") << value("eventName") << value("eventCategory")
              << value("eventLable");
        if (event.value(QStringLiteral("eventValue")).toInt() != 0)
            parts << QStringLiteral("= ") + value("eventValue");
    }
    parts.removeAll(QString());
    const QDateTime time = QDateTime::fromString(value("time"), Qt::ISODateWithMs);
    return time.toLocalTime().toString(QStringLiteral("HH:mm:ss  ")) +
           parts.join(QStringLiteral(" \u00b7 "));
}

} // namespace

KDeveloperPanel::KDeveloperPanel(KZentoOfficeHost* host, KMainWindow* window)
    : QDockWidget(window)
    , m_host(host)
    , m_window(window)
    , m_eventTail(krt::hostcontrol::infoCollectFile())
{
    setObjectName(QStringLiteral("DeveloperPanel"));
    setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
    // The switches above, what happened below; the switches scroll when the
    // dock is short.
    m_scroll = new QScrollArea;
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Tab goes to the controls, and the area scrolls to the one in focus.
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->setWidget(createControls());
    m_scroll->widget()->installEventFilter(this);
    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_scroll);
    splitter->addWidget(createLogs());
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    setWidget(splitter);
    retranslateUi();

    if (INimboClient* client = KDeskhiveClient::client()) {
        connect(client, SIGNAL(LoginStatusChange()), this, SLOT(onLoginStatusChange()));
        connect(client, SIGNAL(UserInfoChange()), this, SLOT(onUserInfoChange()));
        connect(client, SIGNAL(failedToLaunchCloudsvrProcess()), this, SLOT(onFailedToLaunch()));
        connect(client, SIGNAL(cloudsvrExitWithErrors(const QString&)), this,
                SLOT(onExitWithErrors(const QString&)));
    }
    if (QObject* cache = KDeskhiveClient::syncCache()) {
        connect(cache, SIGNAL(occurIpcErrorsWhenGetUserInf()), this, SLOT(onIpcError()));
        connect(cache, SIGNAL(occurRpcErrorsWhenGetUserInf()), this, SLOT(onRpcError()));
    }
    connect(m_host, &KZentoOfficeHost::stateChanged, this, &KDeveloperPanel::refreshHost);
    connect(m_host, &KZentoOfficeHost::urlCaught, this, &KDeveloperPanel::onUrlCaught);
    connect(m_host, &KZentoOfficeHost::commandRun, this, &KDeveloperPanel::onCommandRun);
    connect(m_host, &KZentoOfficeHost::accountEntered, this, &KDeveloperPanel::onAccountEntered);
    connect(m_host->serviceServer(), &KLocalServiceServer::requestServed, this,
            &KDeveloperPanel::onRequestServed);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this,
            &KDeveloperPanel::refreshEvents);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &KDeveloperPanel::refreshEvents);

    const QList<QUrl> caught = m_host->caughtUrls();
    for (const QUrl& url : caught)
        onUrlCaught(url);
    refreshAccount();
    refreshHost();
    refreshEvents();
}

KDeveloperPanel::~KDeveloperPanel() = default;

QWidget* KDeveloperPanel::createControls()
{
    auto* contents = new QWidget;
    auto* layout = new QVBoxLayout(contents);
    layout->addWidget(createAccountGroup());
    layout->addWidget(createErrorsGroup());
    layout->addWidget(createHostGroup());
    layout->addWidget(createProductGroup());
    layout->addStretch(1);
    return contents;
}

QGroupBox* KDeveloperPanel::createAccountGroup()
{
    m_accountGroup = new QGroupBox;
    m_signIn = new QPushButton(m_accountGroup);
    m_signIn->setObjectName(QStringLiteral("signIn"));
    m_signOut = new QPushButton(m_accountGroup);
    m_signOut->setObjectName(QStringLiteral("signOut"));
    m_company = new QCheckBox(m_accountGroup);
    m_company->setObjectName(QStringLiteral("companyAccount"));
    m_avatarLabel = new QLabel(m_accountGroup);
    m_avatar = new QComboBox(m_accountGroup);
    m_avatar->setObjectName(QStringLiteral("avatar"));
    for (const char* avatar : kAvatars)
        m_avatar->addItem(QString(), QLatin1String(avatar));
    m_avatarLabel->setBuddy(m_avatar);
    auto* layout = new QGridLayout(m_accountGroup);
    layout->addWidget(m_signIn, 0, 0);
    layout->addWidget(m_signOut, 0, 1);
    layout->addWidget(m_company, 1, 0, 1, 2);
    layout->addWidget(m_avatarLabel, 2, 0);
    layout->addWidget(m_avatar, 2, 1);
    connect(m_signIn, &QPushButton::clicked, this, &KDeveloperPanel::signIn);
    connect(m_signOut, &QPushButton::clicked, this, &KDeveloperPanel::signOut);
    connect(m_company, &QCheckBox::clicked, this, &KDeveloperPanel::setCompanyAccount);
    connect(m_avatar, QOverload<int>::of(&QComboBox::activated), this,
            &KDeveloperPanel::chooseAvatar);
    return m_accountGroup;
}

QGroupBox* KDeveloperPanel::createErrorsGroup()
{
    m_errorsGroup = new QGroupBox;
    const auto errorButton = [this](const char* name, const char* signal) {
        auto* button = new QPushButton(m_errorsGroup);
        button->setObjectName(QLatin1String(name));
        button->setProperty(kSignalProperty, QLatin1String(signal));
        connect(button, &QPushButton::clicked, this, &KDeveloperPanel::raiseError);
        return button;
    };
    m_launchError = errorButton("launchError", "failedToLaunchCloudsvrProcess");
    m_exitError = errorButton("exitError", "cloudsvrExitWithErrors");
    m_exitMessage = new QLineEdit(QStringLiteral("disk full"), m_errorsGroup);
    m_exitMessage->setObjectName(QStringLiteral("exitMessage"));
    m_ipcError = errorButton("ipcError", "occurIpcErrorsWhenGetUserInf");
    m_rpcError = errorButton("rpcError", "occurRpcErrorsWhenGetUserInf");
    auto* layout = new QGridLayout(m_errorsGroup);
    layout->addWidget(m_launchError, 0, 0);
    layout->addWidget(m_ipcError, 0, 1);
    layout->addWidget(m_rpcError, 1, 1);
    layout->addWidget(m_exitError, 1, 0);
    layout->addWidget(m_exitMessage, 2, 0);
    return m_errorsGroup;
}

QGroupBox* KDeveloperPanel::createHostGroup()
{
    m_hostGroup = new QGroupBox;
    m_offline = new QCheckBox(m_hostGroup);
    m_offline->setObjectName(QStringLiteral("offline"));
    connect(m_offline, &QCheckBox::clicked, m_host, &KZentoOfficeHost::setOffline);
    m_language = new QComboBox(m_hostGroup);
    m_language->setObjectName(QStringLiteral("language"));
    // Each language in its own words.
    m_language->addItem(QStringLiteral("English"), QStringLiteral("en_US"));
    m_language->addItem(QStringLiteral("\u4e2d\u6587\uff08\u7b80\u4f53\uff09"),
                        QStringLiteral("zh_CN"));
    m_scale = new QComboBox(m_hostGroup);
    m_scale->setObjectName(QStringLiteral("displayScale"));
    for (qreal scale : kScales) {
        m_scale->addItem(scale > 0 ? QStringLiteral("%1 %").arg(qRound(scale * 100)) : QString(),
                         scale);
    }
    m_pages = new QComboBox(m_hostGroup);
    m_pages->setObjectName(QStringLiteral("servicePages"));
    for (int pages : {KZentoOfficeHost::InternetPages, KZentoOfficeHost::LocalPages,
                      KZentoOfficeHost::UnreachablePages})
        m_pages->addItem(QString(), pages);
    // The local server's address joins its item once it listens.
    for (QComboBox* box : {m_language, m_scale, m_pages})
        box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_languageLabel = new QLabel(m_hostGroup);
    m_languageLabel->setBuddy(m_language);
    m_scaleLabel = new QLabel(m_hostGroup);
    m_scaleLabel->setBuddy(m_scale);
    m_pagesLabel = new QLabel(m_hostGroup);
    m_pagesLabel->setBuddy(m_pages);
    auto* layout = new QFormLayout(m_hostGroup);
    layout->addRow(m_offline);
    layout->addRow(m_languageLabel, m_language);
    layout->addRow(m_scaleLabel, m_scale);
    layout->addRow(m_pagesLabel, m_pages);
    connect(m_language, QOverload<int>::of(&QComboBox::activated), this,
            &KDeveloperPanel::chooseLanguage);
    connect(m_scale, QOverload<int>::of(&QComboBox::activated), this,
            &KDeveloperPanel::chooseScale);
    connect(m_pages, QOverload<int>::of(&QComboBox::activated), this,
            &KDeveloperPanel::chooseServicePages);
    return m_hostGroup;
}

QGroupBox* KDeveloperPanel::createProductGroup()
{
    m_productGroup = new QGroupBox;
    const auto featureBox = [this](const char* feature) {
        auto* box = new QCheckBox(QLatin1String(feature), m_productGroup);
        box->setObjectName(QLatin1String(feature));
        box->setProperty(kFeatureProperty, QLatin1String(feature));
        connect(box, &QCheckBox::clicked, this, &KDeveloperPanel::setFeature);
        return box;
    };
    // The features by the names the product knows them by.
    m_simplified = featureBox("SimplifiedUserCenter");
    m_intranet = featureBox("IntranetVersion");
    m_embedding = new QCheckBox(m_productGroup);
    m_embedding->setObjectName(QStringLiteral("embedding"));
    connect(m_embedding, &QCheckBox::clicked, this, &KDeveloperPanel::setEmbedding);
    auto* layout = new QVBoxLayout(m_productGroup);
    layout->addWidget(m_simplified);
    layout->addWidget(m_intranet);
    layout->addWidget(m_embedding);
    return m_productGroup;
}

QWidget* KDeveloperPanel::createLogs()
{
    m_logs = new QTabWidget;
    m_logs->setObjectName(QStringLiteral("logs"));
    m_logs->setDocumentMode(true);
    const auto log = [this](const char* name) {
        auto* text = new QPlainTextEdit(m_logs);
        text->setObjectName(QLatin1String(name));
        text->setReadOnly(true);
        // Addresses are long and have no spaces.
        text->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        text->setMaximumBlockCount(kMaxLines);
        return text;
    };
    m_activity = log("activity");
    m_logs->addTab(m_activity, QString());
    auto* events = new QWidget(m_logs);
    m_events = log("usageEvents");
    m_clearEvents = new QPushButton(events);
    m_clearEvents->setObjectName(QStringLiteral("clearEvents"));
    connect(m_clearEvents, &QPushButton::clicked, this, &KDeveloperPanel::clearEvents);
    auto* eventsLayout = new QVBoxLayout(events);
    eventsLayout->setContentsMargins(0, 0, 0, 0);
    eventsLayout->addWidget(m_events);
    eventsLayout->addWidget(m_clearEvents, 0, Qt::AlignRight);
    m_logs->addTab(events, QString());
    return m_logs;
}

void KDeveloperPanel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslateUi();
    QDockWidget::changeEvent(event);
}

void KDeveloperPanel::retranslateUi()
{
    setWindowTitle(tr("Developer Panel"));
    m_accountGroup->setTitle(tr("Account (simulator)"));
    m_signIn->setText(tr("Sign &in"));
    m_signOut->setText(tr("Sign &out"));
    m_company->setText(tr("&Company account"));
    m_avatarLabel->setText(tr("Pict&ure:"));
    m_avatar->setItemText(0, tr("Demo picture"));
    m_avatar->setItemText(1, tr("Initials on teal"));
    m_avatar->setItemText(2, tr("Initials on orange"));
    m_avatar->setItemText(3, tr("Other picture..."));

    m_errorsGroup->setTitle(tr("Cloud client errors"));
    m_launchError->setText(tr("Launch faile&d"));
    m_launchError->setToolTip(tr("The cloud service process did not start"));
    m_exitError->setText(tr("&Exited with:"));
    m_exitError->setToolTip(tr("The cloud service process exited with the error below"));
    m_ipcError->setText(tr("I&PC error"));
    m_ipcError->setToolTip(tr("IPC error while getting the user information"));
    m_rpcError->setText(tr("&RPC error"));
    m_rpcError->setToolTip(tr("RPC error while getting the user information"));

    m_hostGroup->setTitle(tr("Host"));
    m_offline->setText(tr("Offli&ne: signed out by the network"));
    m_languageLabel->setText(tr("&Language:"));
    m_scaleLabel->setText(tr("Display &scale:"));
    m_scale->setItemText(0, tr("The screen's"));
    m_pagesLabel->setText(tr("Service pa&ges:"));
    m_pages->setItemText(0, tr("The internet (profile)"));
    m_pages->setItemText(1, tr("Local server %1")
                                .arg(m_host->serviceServer()->isListening()
                                         ? m_host->serviceServer()->baseUrl().authority()
                                         : QString()));
    m_pages->setItemText(2, tr("Unreachable server"));

    m_productGroup->setTitle(tr("Product"));
    m_simplified->setToolTip(
        tr("Personal accounts get the account button and the personal centre"));
    m_intranet->setToolTip(tr("An intranet build: no personal centre"));
    m_embedding->setText(tr("E&mbedded in another program"));
    m_embedding->setToolTip(tr(
        "This window reports KMainWindow::isEmbedding(): no account button, no personal centre"));

    m_logs->setTabText(0, tr("Activity"));
    m_logs->setTabText(1, tr("Usage events"));
    m_clearEvents->setText(tr("Clear the lis&t"));

    // Screen readers: each control by what it does, lists by their group.
    m_exitMessage->setAccessibleName(tr("Exit message"));
    m_logs->setAccessibleName(tr("Activity and usage events"));
    m_activity->setAccessibleName(tr("Activity"));
    m_events->setAccessibleName(tr("Usage events"));
    m_launchError->setAccessibleDescription(m_launchError->toolTip());
    m_exitError->setAccessibleDescription(m_exitError->toolTip());
    m_ipcError->setAccessibleDescription(m_ipcError->toolTip());
    m_rpcError->setAccessibleDescription(m_rpcError->toolTip());
    for (QCheckBox* box : {m_simplified, m_intranet, m_embedding})
        box->setAccessibleDescription(box->toolTip());
    m_avatar->setAccessibleName(tr("Picture"));
    m_language->setAccessibleName(tr("Language"));
    m_scale->setAccessibleName(tr("Display scale"));
    m_pages->setAccessibleName(tr("Service pages"));
}

// As wide as the switches need (in this language, with the local server's
// address), never cut at the side: whenever their layout changes.
bool KDeveloperPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_scroll->widget() && event->type() == QEvent::LayoutRequest) {
        m_scroll->setMinimumWidth(m_scroll->widget()->sizeHint().width() +
                                  m_scroll->verticalScrollBar()->sizeHint().width());
    }
    return QDockWidget::eventFilter(watched, event);
}

void KDeveloperPanel::refreshAccount()
{
    INimboClient* client = KDeskhiveClient::client();
    m_accountGroup->setEnabled(client);
    m_errorsGroup->setEnabled(client);
    if (!client)
        return;
    const Json::Value info = client->getUserInfo();
    const bool signedIn = info["IsLogined"].asBool();
    m_signIn->setEnabled(!signedIn);
    m_signOut->setEnabled(signedIn);
    m_company->setChecked(info["IsCompanyAccount"].asBool());
}

void KDeveloperPanel::refreshHost()
{
    m_offline->setChecked(m_host->isOffline());
    m_language->setCurrentIndex(qMax(0, m_language->findData(krt::hostcontrol::language())));
    int scale = 0;
    for (int i = 1; i < m_scale->count(); ++i) {
        if (qFuzzyCompare(m_scale->itemData(i).toReal(), krt::hostcontrol::displayScale()))
            scale = i;
    }
    m_scale->setCurrentIndex(scale);
    m_pages->setCurrentIndex(m_pages->findData(int(m_host->servicePages())));
    for (QCheckBox* box : {m_simplified, m_intranet})
        box->setChecked(krt::product::isSupported(box->property(kFeatureProperty).toString()));
    m_embedding->setChecked(m_window->isEmbedding());
    // The local server's address once it listens.
    retranslateUi();
}

void KDeveloperPanel::refreshEvents()
{
    watchEvents();
    bool restarted = false;
    const QList<QByteArray> lines = m_eventTail.readNewLines(&restarted);
    if (restarted)
        m_events->clear();
    // The list keeps its last kMaxLines lines; earlier ones need no look.
    for (int i = qMax(0, lines.size() - kMaxLines); i < lines.size(); ++i) {
        const QJsonDocument event = QJsonDocument::fromJson(lines[i]);
        if (event.isObject())
            m_events->appendPlainText(describeEvent(event.object().toVariantMap()));
    }
}

// The event file may not exist yet, and may be replaced: its folder is
// watched too, and the file again whenever it turns up.
void KDeveloperPanel::watchEvents()
{
    const QString file = m_eventTail.path();
    const QString dir = QFileInfo(file).absolutePath();
    if (!m_watcher.directories().contains(dir) && QDir().mkpath(dir))
        m_watcher.addPath(dir);
    if (!m_watcher.files().contains(file) && QFileInfo::exists(file))
        m_watcher.addPath(file);
}

void KDeveloperPanel::signIn()
{
    reportWrite(m_host->simulatorState()->setSignedIn(true));
}

void KDeveloperPanel::signOut()
{
    reportWrite(m_host->simulatorState()->setSignedIn(false));
}

void KDeveloperPanel::setCompanyAccount(bool company)
{
    reportWrite(m_host->simulatorState()->setCompanyAccount(company));
}

void KDeveloperPanel::chooseAvatar(int index)
{
    KSimulatorStateEditor* state = m_host->simulatorState();
    const QString choice = m_avatar->itemData(index).toString();
    QString path;
    if (choice == QLatin1String("demo")) {
        path = KDeskhiveClient::demoAvatarPath();
    } else if (choice == QLatin1String("file")) {
        path = QFileDialog::getOpenFileName(this, tr("Picture"), QString(),
                                            tr("Images (*.png *.jpg *.jpeg *.bmp *.gif)"));
        if (path.isEmpty())
            return;
    } else {
        QString name = state->read().value(QStringLiteral("Name")).toString();
        path = state->makeInitialsAvatar(
            choice, name.isEmpty() ? QStringLiteral("Demo User") : name,
            choice == QLatin1String("teal") ? QColor(0x12, 0x8C, 0x8C) : QColor(0xE0, 0x73, 0x2C));
        if (path.isEmpty()) {
            addActivity(tr("Cannot write a picture beside %1").arg(state->path()));
            return;
        }
    }
    reportWrite(state->setAvatar(path));
}

void KDeveloperPanel::raiseError()
{
    QString signal = sender()->property(kSignalProperty).toString();
    if (sender() == m_exitError)
        signal += QLatin1Char(':') + m_exitMessage->text();
    reportWrite(m_host->simulatorState()->raise(signal));
}

void KDeveloperPanel::chooseLanguage(int index)
{
    m_host->setLanguage(m_language->itemData(index).toString());
}

void KDeveloperPanel::chooseScale(int index)
{
    m_host->setDisplayScale(m_scale->itemData(index).toReal());
}

void KDeveloperPanel::chooseServicePages(int index)
{
    m_host->setServicePages(
        static_cast<KZentoOfficeHost::ServicePages>(m_pages->itemData(index).toInt()));
}

void KDeveloperPanel::setFeature(bool supported)
{
    m_host->setFeatureSupported(sender()->property(kFeatureProperty).toString(), supported);
}

void KDeveloperPanel::setEmbedding(bool embedding)
{
    m_window->setEmbedding(embedding);
    m_window->updateCommands();
}

void KDeveloperPanel::clearEvents()
{
    krt::hostcontrol::clearRecordedEvents();
    refreshEvents();
}

void KDeveloperPanel::addActivity(const QString& line)
{
    m_activity->appendPlainText(now() + QStringLiteral("  ") + line);
}

void KDeveloperPanel::reportWrite(bool written)
{
    if (!written) {
        addActivity(
            tr("Cannot write %1: %2")
                .arg(m_host->simulatorState()->path(), m_host->simulatorState()->errorString()));
    }
}

void KDeveloperPanel::onUrlCaught(const QUrl& url)
{
    addActivity(tr("Opened %1").arg(withoutSecrets(url.toString())));
}

void KDeveloperPanel::onRequestServed(const QString& method, const QString& target, int status)
{
    addActivity(tr("Served %1 %2: %3").arg(method, withoutSecrets(target)).arg(status));
}

void KDeveloperPanel::onCommandRun(const QString& name)
{
    addActivity(tr("Host command %1").arg(name));
}

void KDeveloperPanel::onAccountEntered(int code, const QString& first, const QString& second)
{
    addActivity(tr("Account service: entry %1 (\"%2\", \"%3\")").arg(code).arg(first, second));
}

void KDeveloperPanel::onLoginStatusChange()
{
    addActivity(tr("Client: login status changed"));
    refreshAccount();
}

void KDeveloperPanel::onUserInfoChange()
{
    addActivity(tr("Client: user information changed"));
    refreshAccount();
}

void KDeveloperPanel::onFailedToLaunch()
{
    addActivity(tr("Client: the cloud service did not start"));
}

void KDeveloperPanel::onExitWithErrors(const QString& message)
{
    addActivity(tr("Client: the cloud service exited: %1").arg(message));
}

void KDeveloperPanel::onIpcError()
{
    addActivity(tr("Sync cache: IPC error getting user information"));
}

void KDeveloperPanel::onRpcError()
{
    addActivity(tr("Sync cache: RPC error getting user information"));
}
