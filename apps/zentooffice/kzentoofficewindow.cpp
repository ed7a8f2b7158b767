#include "kzentoofficewindow.h"

#include "ikhostweb.h"
#include "kaboutdialog.h"
#include "kdeveloperpanel.h"
#include "kdocumentrequest.h"
#include "kzentoofficehost.h"

#include <vex/kcommand.h>
#include <vex/klistcommand.h>
#include <vexlite/kqtcompat.h>
#include <vexlite/krtauth.h>

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// The number of an untitled document, kept on its page: its tab's title
// is made anew in each language.
const char kUntitledNumber[] = "untitledNumber";

// Larger files open as a notice, not as text.
constexpr qint64 kMaxTextSize = qint64(4) * 1024 * 1024;

// The Help menu's pages, by the plug-in's information keys.
struct KProductPage
{
    const char* objectName;
    const char* key;
};
const KProductPage kProductPages[] = {
    {"actionHomePage", "Product/HomePage"},
    {"actionHelp", "Product/HelpPage"},
    {"actionFeedback", "Product/UserFeedbackPage"},
    {"actionSupport", "Product/TechSupportUrl"},
};

QUrl productPageUrl(const QString& key)
{
    return QUrl(krt::auth::getInfo(key).toString(), QUrl::TolerantMode);
}

// At most the limit and one chunk of the file (no more, whatever size it
// claims: files under /proc claim none), in chunks a multiple of 8 bytes,
// as some of those files require. False, with errno, when reading failed.
bool readAtMost(int fd, qint64 limit, QByteArray* content)
{
    QByteArray chunk(64 * 1024, Qt::Uninitialized);
    while (content->size() <= limit) {
        const ssize_t got = ::read(fd, chunk.data(), size_t(chunk.size()));
        if (got == 0)
            return true;
        if (got < 0 && errno != EINTR)
            return false;
        if (got > 0)
            content->append(chunk.constData(), int(got));
    }
    return true;
}

// The file's text, or a null string and why the window does not show it.
// Nothing is opened before it is known to be a regular file (opening a pipe
// waits for a writer; a device may never end), and it is checked again
// once open, without having waited.
QString readText(const QString& path, QString* problem)
{
    const QFileInfo info(path);
    if (info.isDir()) {
        *problem = KZentoOfficeWindow::tr("%1 is a folder, not a document.").arg(path);
        return QString();
    }
    if (info.exists() && !info.isFile()) {
        *problem =
            KZentoOfficeWindow::tr("%1 is a pipe, device or socket, not a document.").arg(path);
        return QString();
    }
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat status = {};
    const bool regular = fd >= 0 && ::fstat(fd, &status) == 0 && S_ISREG(status.st_mode);
    QByteArray content;
    const bool read = regular && readAtMost(fd, kMaxTextSize, &content);
    const int error = errno;
    if (fd >= 0)
        ::close(fd);
    if (fd >= 0 && !regular) {
        *problem =
            KZentoOfficeWindow::tr("%1 is a pipe, device or socket, not a document.").arg(path);
        return QString();
    }
    if (!read) {
        *problem = KZentoOfficeWindow::tr("%1 cannot be read: %2")
                       .arg(path, QString::fromLocal8Bit(std::strerror(error)));
        return QString();
    }
    if (content.size() > kMaxTextSize) {
        *problem = KZentoOfficeWindow::tr("%1 is larger than %2 MiB, more than this window shows.")
                       .arg(path)
                       .arg(kMaxTextSize >> 20);
        return QString();
    }
    bool valid = false;
    const QString text = KQtCompat::decodeUtf8(content, &valid);
    if (!valid || content.contains('\0')) {
        *problem = KZentoOfficeWindow::tr("%1 is not a text file this window can show.").arg(path);
        return QString();
    }
    return text.isNull() ? QStringLiteral("") : text;
}

} // namespace

KZentoOfficeWindow::KZentoOfficeWindow(KZentoOfficeHost* host, QWidget* parent)
    : KMainWindow(parent)
    , m_host(host)
    , m_documents(new QTabWidget(this))
    , m_menuBar(new QMenuBar(this))
    , m_panel(new KDeveloperPanel(host, this))
{
    // The title area, then the menu bar, as the suite's windows have them.
    auto* top = new QWidget(this);
    auto* topLayout = new QVBoxLayout(top);
    topLayout->setContentsMargins(0, 0, 0, 0);
    topLayout->setSpacing(0);
    topLayout->addWidget(titleArea());
    topLayout->addWidget(m_menuBar);
    setMenuWidget(top);

    m_documents->setObjectName(QStringLiteral("documents"));
    m_documents->setDocumentMode(true);
    m_documents->setTabsClosable(true);
    m_documents->setMovable(true);
    connect(m_documents, &QTabWidget::tabCloseRequested, this, [this](int index) {
        QWidget* page = m_documents->widget(index);
        m_documents->removeTab(index);
        delete page;
    });
    setCentralWidget(m_documents);
    addDockWidget(Qt::RightDockWidgetArea, m_panel);

    createMenus();
    retranslateUi();
    addTitleCommandsFromProfile();
    newDocument();
    resize(640, 400);
}

KZentoOfficeWindow::~KZentoOfficeWindow() = default;

void KZentoOfficeWindow::setDeveloperPanelVisible(bool visible)
{
    // The View menu's entry follows, and shows or hides the panel.
    findChild<QAction*>(QStringLiteral("actionDeveloperPanel"))->setChecked(visible);
    m_panel->setVisible(visible);
}

int KZentoOfficeWindow::openDocument(const KDocumentRequest& request)
{
    const int index = addDocumentTab(request);
    m_documents->setCurrentIndex(index);
    return index;
}

void KZentoOfficeWindow::openDocuments(const QList<KDocumentRequest>& requests)
{
    if (requests.isEmpty())
        return;
    // A tab widget on screen lays out all its tabs again for every one
    // added; hidden meanwhile, it does so once.
    const bool wasHidden = m_documents->isHidden();
    m_documents->hide();
    int index = -1;
    for (const KDocumentRequest& request : requests)
        index = addDocumentTab(request);
    m_documents->setCurrentIndex(index);
    if (!wasHidden)
        m_documents->show();
    m_documents->currentWidget()->setFocus();
}

int KZentoOfficeWindow::addDocumentTab(const KDocumentRequest& request)
{
    auto* page = new QPlainTextEdit;
    page->setFrameShape(QFrame::NoFrame);
    page->setAccessibleName(request.title());
    if (request.kind() == KDocumentRequest::LocalFile) {
        QString problem;
        const QString text = readText(request.path(), &problem);
        page->setReadOnly(text.isNull());
        page->setPlainText(text.isNull() ? problem : text);
    } else {
        page->setReadOnly(true);
        page->setPlainText(tr("%1\n\nA cloud document (file id %2), opened through %3://.")
                               .arg(request.displayName(), request.fileId(), request.scheme()));
    }
    const int index = m_documents->addTab(page, request.title());
    m_documents->setTabToolTip(
        index, request.kind() == KDocumentRequest::LocalFile ? request.path() : request.argument());
    return index;
}

void KZentoOfficeWindow::rebuildTitleCommands()
{
    // The commands of a tree are all parented to the window, not to their
    // list: collect the whole tree first.
    QList<KCommand*> old;
    QList<KCommand*> pending{titleCommands()};
    while (!pending.isEmpty()) {
        KCommand* command = pending.takeFirst();
        for (int i = 0; i < command->childCount(); ++i) {
            if (KCommand* child = command->childAt(i)) {
                old << child;
                pending << child;
            }
        }
    }
    titleCommands()->clearChildren();
    // Later: a rebuild may come from inside one of their widgets.
    for (KCommand* command : qAsConst(old))
        command->deleteLater();
    addTitleCommandsFromProfile();
    updateCommands();
}

void KZentoOfficeWindow::newDocument()
{
    auto* page = new QPlainTextEdit;
    page->setFrameShape(QFrame::NoFrame);
    page->setProperty(kUntitledNumber, ++m_untitled);
    m_documents->setCurrentIndex(m_documents->addTab(page, QString()));
    retranslateUntitled(page);
    page->setFocus();
}

void KZentoOfficeWindow::retranslateUntitled(QWidget* page)
{
    const QString title = tr("Document %1").arg(page->property(kUntitledNumber).toInt());
    page->setAccessibleName(title);
    m_documents->setTabText(m_documents->indexOf(page), title);
}

void KZentoOfficeWindow::openFile()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Open"));
    if (path.isEmpty())
        return;
    const KDocumentRequest request = KDocumentRequest::fromArgument(path, QString());
    if (request.isValid())
        openDocument(request);
    else
        statusBar()->showMessage(tr("%1: %2").arg(path, request.error()));
}

void KZentoOfficeWindow::closeCurrentTab()
{
    if (m_documents->count() > 0)
        emit m_documents->tabCloseRequested(m_documents->currentIndex());
}

void KZentoOfficeWindow::showWelcomePage()
{
    runWebDialog(krt::auth::getInfo(QStringLiteral("Product/Url/LauncherPage")).toUrl());
}

void KZentoOfficeWindow::showBridgePage()
{
    const QUrl url = m_host->bridgePageUrl();
    if (url.isEmpty()) {
        statusBar()->showMessage(tr("The local server cannot listen: no bridge page"));
        return;
    }
    const int result = runWebDialog(url);
    if (result == QDialog::Accepted)
        statusBar()->showMessage(tr("The bridge page closed the dialog: accepted"));
    else if (result == QDialog::Rejected)
        statusBar()->showMessage(tr("The bridge page closed the dialog: rejected"));
}

int KZentoOfficeWindow::runWebDialog(const QUrl& url)
{
    IKHostWeb* web = m_host->webModule();
    if (!web) {
        QMessageBox::warning(this, windowTitle(),
                             tr("The web module is missing: %1").arg(m_host->webModuleError()));
        return -1;
    }
    QPointer<QDialog> dialog = web->createWebDialog(url, this);
    const int result = dialog->exec();
    delete dialog;
    return result;
}

void KZentoOfficeWindow::showAbout()
{
    auto* about = new KAboutDialog(this);
    about->setAttribute(Qt::WA_DeleteOnClose);
    about->open();
}

void KZentoOfficeWindow::focusAccountButton()
{
    for (const char* name : {"UserCenter", "SignIn"}) {
        QWidget* button = pocketWidget(findCommand(QLatin1String(name)));
        if (button && button->isVisible()) {
            button->setFocus(Qt::ShortcutFocusReason);
            return;
        }
    }
}

void KZentoOfficeWindow::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslateUi();
    KMainWindow::changeEvent(event);
}

void KZentoOfficeWindow::openProductPage()
{
    auto* action = qobject_cast<QAction*>(sender());
    if (!action)
        return;
    const QUrl url = productPageUrl(action->data().toString());
    if (url.isEmpty() || !QDesktopServices::openUrl(url))
        statusBar()->showMessage(tr("Cannot open %1").arg(url.toString()));
}

void KZentoOfficeWindow::updateHelpMenu()
{
    for (const KProductPage& page : kProductPages) {
        if (auto* action = findChild<QAction*>(QLatin1String(page.objectName)))
            action->setEnabled(!productPageUrl(QLatin1String(page.key)).isEmpty());
    }
}

void KZentoOfficeWindow::fillAccountMenu()
{
    const QList<QMenu*> submenus =
        m_accountMenu->findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly);
    m_accountMenu->clear();
    qDeleteAll(submenus);
    updateCommands();
    KListCommand::fillMenu(m_accountMenu, titleCommands());
    m_accountMenu->addSeparator();
    m_accountMenu->addAction(findChild<QAction*>(QStringLiteral("actionAccountButton")));
}

void KZentoOfficeWindow::createMenus()
{
    m_fileMenu = m_menuBar->addMenu(QString());
    addAction(m_fileMenu, "actionNewDocument", QKeySequence::New, SLOT(newDocument()));
    QAction* newWindow = addAction(m_fileMenu, "actionNewWindow",
                                   QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N), nullptr);
    connect(newWindow, &QAction::triggered, m_host, [this] { m_host->newWindow()->show(); });
    addAction(m_fileMenu, "actionOpen", QKeySequence::Open, SLOT(openFile()));
    m_fileMenu->addSeparator();
    addAction(m_fileMenu, "actionCloseTab", QKeySequence::Close, SLOT(closeCurrentTab()));
    addAction(m_fileMenu, "actionCloseWindow", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_W),
              SLOT(close()));
    m_fileMenu->addSeparator();
    QAction* quit = addAction(m_fileMenu, "actionQuit", QKeySequence::Quit, nullptr);
    connect(quit, &QAction::triggered, qApp, &QApplication::closeAllWindows, Qt::QueuedConnection);

    m_accountMenu = m_menuBar->addMenu(QString());
    addAction(nullptr, "actionAccountButton", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_U),
              SLOT(focusAccountButton()));
    connect(m_accountMenu, &QMenu::aboutToShow, this, &KZentoOfficeWindow::fillAccountMenu);
    fillAccountMenu();

    m_viewMenu = m_menuBar->addMenu(QString());
    QAction* panel = addAction(m_viewMenu, "actionDeveloperPanel",
                               QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_D), nullptr);
    panel->setCheckable(true);
    connect(panel, &QAction::toggled, m_panel, &QWidget::setVisible);
    connect(m_panel, &QDockWidget::visibilityChanged, panel, [this, panel] {
        // Hidden behind another dock's tab still counts as open.
        panel->setChecked(!m_panel->isHidden());
    });

    m_helpMenu = m_menuBar->addMenu(QString());
    addAction(m_helpMenu, "actionWelcome", QKeySequence(), SLOT(showWelcomePage()));
    addAction(m_helpMenu, "actionBridgePage", QKeySequence(), SLOT(showBridgePage()));
    m_helpMenu->addSeparator();
    for (const KProductPage& page : kProductPages) {
        QAction* action =
            addAction(m_helpMenu, page.objectName,
                      qstrcmp(page.key, "Product/HelpPage") == 0 ? QKeySequence::HelpContents
                                                                 : QKeySequence(),
                      SLOT(openProductPage()));
        action->setData(QLatin1String(page.key));
    }
    m_helpMenu->addSeparator();
    addAction(m_helpMenu, "actionAbout", QKeySequence(), SLOT(showAbout()));
    connect(m_helpMenu, &QMenu::aboutToShow, this, &KZentoOfficeWindow::updateHelpMenu);
    updateHelpMenu();
}

QAction* KZentoOfficeWindow::addAction(QMenu* menu, const char* objectName,
                                       const QKeySequence& shortcut, const char* slot)
{
    auto* action = new QAction(this);
    action->setObjectName(QLatin1String(objectName));
    action->setShortcut(shortcut);
    // Shortcuts work while the menu bar is closed, too.
    KMainWindow::addAction(action);
    if (menu)
        menu->addAction(action);
    if (slot)
        connect(action, SIGNAL(triggered()), this, slot);
    return action;
}

void KZentoOfficeWindow::retranslateUi()
{
    const QString product = krt::auth::getStringInfo(QStringLiteral("Product/VexName"));
    setWindowTitle(product);
    titleArea()->setAccessibleName(tr("Title bar"));
    m_menuBar->setAccessibleName(tr("Menu bar"));
    m_documents->setAccessibleName(tr("Documents"));

    m_fileMenu->setTitle(tr("&File"));
    m_accountMenu->setTitle(tr("&Account"));
    m_viewMenu->setTitle(tr("&View"));
    m_helpMenu->setTitle(tr("&Help"));
    const QPair<const char*, QString> texts[] = {
        {"actionNewDocument", tr("&New Document")},
        {"actionNewWindow", tr("New &Window")},
        {"actionOpen", tr("&Open...")},
        {"actionCloseTab", tr("&Close Tab")},
        {"actionCloseWindow", tr("Close Win&dow")},
        {"actionQuit", tr("&Quit")},
        {"actionAccountButton", tr("Go to the Account &Button")},
        {"actionDeveloperPanel", tr("&Developer Panel")},
        {"actionWelcome", tr("&Welcome Page")},
        {"actionBridgePage", tr("&Bridge Page")},
        {"actionHomePage", tr("&Home Page")},
        {"actionHelp", tr("&Help Contents")},
        {"actionFeedback", tr("Send &Feedback")},
        {"actionSupport", tr("Technical &Support")},
        {"actionAbout", tr("&About %1").arg(product)},
    };
    for (const auto& text : texts) {
        if (auto* action = findChild<QAction*>(QLatin1String(text.first)))
            action->setText(text.second);
    }
    for (int i = 0; i < m_documents->count(); ++i) {
        if (m_documents->widget(i)->property(kUntitledNumber).isValid())
            retranslateUntitled(m_documents->widget(i));
    }
}
