#include "kscreenshotwalk.h"

#include "kdeskhiveclient.h"
#include "kdeveloperpanel.h"
#include "kdocumentrequest.h"
#include "kzentoofficehost.h"
#include "kzentoofficewindow.h"

#include <deskhive/nimboclient.h>
#include <vex/kmenubutton.h>
#include <vex/kpopupwidget.h>
#include <vex/ktriggercommand.h>
#include <vexlite/hostcontrol.h>

#include <QApplication>
#include <QCursor>
#include <QDeadlineTimer>
#include <QDialog>
#include <QDir>
#include <QEvent>
#include <QEventLoop>
#include <QFile>
#include <QImage>
#include <QStatusBar>
#include <QTimer>

#include <memory>

namespace {

const QByteArray kPersonal =
    R"({"IsLogined": true, "Name": "Demo User", "Id": "demo-0001", "UserAvatarImagePath": "avatar.png"})";
const QByteArray kCompany = R"({"IsLogined": true, "Name": "Ada Lovelace", "Id": "corvane-0007",
    "UserAvatarImagePath": "avatar.png", "IsCompanyAccount": true})";
const QByteArray kCompanyIpcError = R"({"IsLogined": true, "Name": "Ada Lovelace",
    "Id": "corvane-0007", "UserAvatarImagePath": "avatar.png", "IsCompanyAccount": true,
    "emit": ["occurIpcErrorsWhenGetUserInf"]})";
const QByteArray kSignedOut = R"({"IsLogined": false})";

// A cloud document as the helper layer hands it over ("Quarterly
// report.docx" in Base64).
const QString kCloudDocument =
    QStringLiteral("vexnimbo://type=open&fileid=4711&displayname=UXVhcnRlcmx5IHJlcG9ydC5kb2N4");

const QSize kWindowSize(640, 400);
const QSize kPanelWindowSize(1060, 780);

// Behind the balloons, menus and dialogs that reach past the window.
const QColor kBackdrop(0xE4, 0xE7, 0xEB);

// The windows the button has opened (balloon, menu) that are on the screen.
QList<QWidget*> shownWindowsOf(QWidget* widget)
{
    QList<QWidget*> shown;
    const QList<QWidget*> children = widget->findChildren<QWidget*>();
    for (QWidget* child : children) {
        if (child->isWindow() && child->isVisible())
            shown << child;
    }
    return shown;
}

QPoint outside(QWidget* window)
{
    return window->frameGeometry().bottomRight() + QPoint(40, 40);
}

// Runs whenShown once a web dialog of parent is on the screen (its page
// loaded, or its wait over), from inside the dialog's modal run.
class KWebDialogHook : public QObject
{
public:
    KWebDialogHook(QWidget* parent, std::function<void(QDialog*)> whenShown)
        : m_parent(parent)
        , m_whenShown(std::move(whenShown))
    {
        qApp->installEventFilter(this);
    }
    ~KWebDialogHook() override { qApp->removeEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* dialog = qobject_cast<QDialog*>(watched);
        if (event->type() == QEvent::Show && dialog && dialog->inherits("KxWebDlg") &&
            dialog->parentWidget() == m_parent && !m_done) {
            m_done = true;
            QTimer::singleShot(0, dialog, [this, dialog] { m_whenShown(dialog); });
        }
        return false;
    }

private:
    QWidget* m_parent;
    std::function<void(QDialog*)> m_whenShown;
    bool m_done = false;
};

} // namespace

KScreenshotWalk::KScreenshotWalk(KZentoOfficeHost* host, const QString& dir,
                                 const QString& statePath, QTextStream& err)
    : m_host(host)
    , m_dir(dir)
    , m_statePath(statePath)
    , m_err(err)
    , m_client(KDeskhiveClient::client())
{}

bool KScreenshotWalk::run()
{
    if (!m_client) {
        m_err << "zentooffice: no cloud simulator in addons/deskhive beside the program\n";
        return false;
    }
    if (!QDir().mkpath(m_dir)) {
        m_err << "zentooffice: cannot create " << m_dir << '\n';
        return false;
    }
    QCursor::setPos(0, 0);
    if (!setState(kPersonal))
        return false;
    const std::unique_ptr<KZentoOfficeWindow> window(m_host->newWindow());
    window->openDocument(KDocumentRequest::fromArgument(kCloudDocument, QString()));
    window->resize(kWindowSize);
    if (!openWindow(window.get()))
        return false;
    if (!userButton(window.get())) {
        m_err << "zentooffice: the profile's title area has no user-centre button\n";
        return false;
    }
    const QString language = krt::hostcontrol::language();
    const bool ok =
        accountSteps(window.get()) && webSteps(window.get()) && chineseSteps(window.get());
    m_host->setServicePages(KZentoOfficeHost::InternetPages);
    m_host->setLanguage(language);
    return ok;
}

bool KScreenshotWalk::accountSteps(KZentoOfficeWindow* window)
{
    KMenuButton* button = userButton(window);
    return step("signed-in",
                [&] {
                    return waitFor([&] { return showsUser(window, "Demo User"); }) &&
                           save("signed-in", window);
                }) &&
           step("company",
                [&] {
                    return setState(kCompany) &&
                           waitFor([&] { return showsUser(window, "Ada Lovelace"); }) &&
                           save("company", window);
                }) &&
           step("account-menu", [&] { return captureMenu(window, "account-menu"); }) &&
           step("offline",
                [&] {
                    m_host->setOffline(true);
                    const bool saved = showOfflineBalloon(window) &&
                                       save("offline", window, shownWindowsOf(button));
                    QCursor::setPos(outside(window));
                    m_host->setOffline(false);
                    return saved && waitFor([button] { return shownWindowsOf(button).isEmpty(); });
                }) &&
           step("login-error-tip",
                [&] {
                    return setState(kCompanyIpcError) &&
                           waitFor([button] { return !shownWindowsOf(button).isEmpty(); }) &&
                           save("login-error-tip", window, shownWindowsOf(button));
                }) &&
           step("signed-out", [&] {
               return setState(kSignedOut) && waitFor([button] { return !button->isVisible(); }) &&
                      save("signed-out", window);
           });
}

bool KScreenshotWalk::webSteps(KZentoOfficeWindow* window)
{
    if (!setState(kPersonal) || !waitFor([&] { return showsUser(window, "Demo User"); }))
        return false;
    // Without the web module (a build without a web engine has none) there
    // are no web dialogs to take; the start has said why.
    const bool ok =
        !m_host->webModule() ||
        (step("webdlg-online",
              [&] {
                  m_host->setServicePages(KZentoOfficeHost::LocalPages);
                  return captureWebDialog(window, "webdlg-online",
                                          &KZentoOfficeWindow::showWelcomePage);
              }) &&
         step("webdlg-offline",
              [&] {
                  m_host->setServicePages(KZentoOfficeHost::UnreachablePages);
                  return captureWebDialog(window, "webdlg-offline",
                                          &KZentoOfficeWindow::showWelcomePage);
              }) &&
         step("bridge-page", [&] {
             // Once the page has made its calls.
             return captureWebDialog(
                 window, "bridge-page", &KZentoOfficeWindow::showBridgePage, [](QDialog* dialog) {
                     return dialog->windowTitle().endsWith(QLatin1String(" calls"));
                 });
         }));
    window->statusBar()->clearMessage();
    if (!ok)
        return false;

    // The panel after a visit to the personal centre on the local pages:
    // the address with automatic sign-in, caught instead of opened.
    m_host->setServicePages(KZentoOfficeHost::LocalPages);
    auto* center = qobject_cast<KTriggerCommand*>(
        window->findCommand(QStringLiteral("KxOpenPersonalCenterCommand")));
    if (center)
        center->trigger();
    window->setDeveloperPanelVisible(true);
    window->resize(kPanelWindowSize);
    const bool saved = step("developer-panel", [&] {
        return waitFor([window] { return window->developerPanel()->isVisible(); }) &&
               save("developer-panel", window);
    });
    window->setDeveloperPanelVisible(false);
    window->resize(kWindowSize);
    return saved;
}

// The interface switched as the developer panel switches it: the host's
// menus and the plug-in's commands, made anew in the window.
bool KScreenshotWalk::chineseSteps(KZentoOfficeWindow* window)
{
    m_host->setLanguage(QStringLiteral("zh_CN"));
    KMenuButton* button = nullptr;
    // Active again after the dialogs, so that hovering opens the menu.
    return openWindow(window) && waitFor([&] {
               button = userButton(window);
               return button && showsUser(window, "Demo User");
           }) &&
           step("account-menu-zh_CN", [&] { return captureMenu(window, "account-menu-zh_CN"); }) &&
           step("offline-zh_CN", [&] {
               m_host->setOffline(true);
               const bool saved = showOfflineBalloon(window) &&
                                  save("offline-zh_CN", window, shownWindowsOf(button));
               QCursor::setPos(outside(window));
               m_host->setOffline(false);
               return saved;
           });
}

bool KScreenshotWalk::step(const QString& name, const std::function<bool()>& body)
{
    if (body())
        return true;
    m_err << "zentooffice: the screenshot \"" << name << "\" could not be made\n";
    return false;
}

// Writes the state file and waits until the simulator has read it and the
// button has handled what the client signalled (queued).
bool KScreenshotWalk::setState(const QByteArray& json)
{
    QEventLoop loop;
    QTimer timeout;
    timeout.setSingleShot(true);
    connect(m_client, SIGNAL(stateFileRead()), &loop, SLOT(quit()));
    connect(&timeout, SIGNAL(timeout()), &loop, SLOT(quit()));
    QFile file(m_statePath);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(json) != json.size()) {
        m_err << "zentooffice: cannot write " << m_statePath << '\n';
        return false;
    }
    file.close();
    timeout.start(5000);
    loop.exec();
    if (!timeout.isActive()) {
        m_err << "zentooffice: the cloud simulator did not read " << m_statePath << '\n';
        return false;
    }
    // What the client signalled reaches the button queued.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    return true;
}

bool KScreenshotWalk::waitFor(const std::function<bool()>& done, int timeoutMs)
{
    const QDeadlineTimer deadline(timeoutMs);
    while (!done()) {
        if (deadline.hasExpired())
            return false;
        QEventLoop loop;
        QTimer::singleShot(10, &loop, SLOT(quit()));
        loop.exec();
    }
    return true;
}

bool KScreenshotWalk::openWindow(KMainWindow* window)
{
    window->show();
    QApplication::setActiveWindow(window);
    return waitFor([window] { return window->isActiveWindow(); });
}

KMenuButton* KScreenshotWalk::userButton(KMainWindow* window) const
{
    KCommand* command = window->findCommand(QStringLiteral("UserCenter"));
    return qobject_cast<KMenuButton*>(window->pocketWidget(command));
}

// Shown with the name, and laid out for it.
bool KScreenshotWalk::showsUser(KMainWindow* window, const QString& name) const
{
    KMenuButton* button = userButton(window);
    return button && button->isVisible() && button->text() == name &&
           button->size() == button->sizeHint();
}

// The mouse comes to rest on the user-centre button.
bool KScreenshotWalk::hover(KMainWindow* window)
{
    KMenuButton* button = userButton(window);
    if (!button)
        return false;
    QCursor::setPos(outside(window));
    QCursor::setPos(button->mapToGlobal(button->rect().center()));
    return true;
}

bool KScreenshotWalk::showOfflineBalloon(KMainWindow* window)
{
    KMenuButton* button = userButton(window);
    if (!button || !hover(window))
        return false;
    button->update();
    return waitFor([button] { return !shownWindowsOf(button).isEmpty(); });
}

bool KScreenshotWalk::captureMenu(KMainWindow* window, const QString& name)
{
    KMenuButton* button = userButton(window);
    if (!button)
        return false;
    bool saved = false;
    bool shown = false;
    // Called inside the popup's run; hiding it ends the run.
    const QMetaObject::Connection connection =
        connect(button, &KMenuButton::popupShown, this, [&](KPopupWidget* popup) {
            shown = true;
            saved = save(name, window, {popup});
            popup->hide();
        });
    const bool opened = hover(window) && waitFor([&shown] { return shown; });
    disconnect(connection);
    QCursor::setPos(outside(window));
    return opened && saved;
}

// A web dialog of the Help menu, taken once the dialog shows (and is
// ready, if that is asked) and closed from there.
bool KScreenshotWalk::captureWebDialog(KZentoOfficeWindow* window, const QString& name,
                                       void (KZentoOfficeWindow::*open)(),
                                       const std::function<bool(QDialog*)>& ready)
{
    bool saved = false;
    const KWebDialogHook hook(window, [&](QDialog* dialog) {
        // Some engines (QtWebEngine) paint a page a while after it loaded,
        // and in steps: the picture waits for a mark on the page's white
        // that has stayed the same for ten looks (a tenth of a second).
        QImage last;
        int same = 0;
        const auto painted = [&] {
            const QImage image = dialog->grab().toImage();
            same = image == last ? same + 1 : 0;
            last = image;
            const QRect page = dialog->contentsRect().adjusted(2, 2, -2, -2);
            for (int y = page.top(); y <= page.bottom(); y += 2) {
                for (int x = page.left(); x <= page.right(); x += 2) {
                    if (image.pixel(x, y) != qRgb(255, 255, 255))
                        return same >= 10;
                }
            }
            return false;
        };
        saved = (!ready || waitFor([&] { return ready(dialog); })) && waitFor(painted) &&
                save(name, window, {dialog});
        dialog->accept();
    });
    (window->*open)();
    return saved;
}

// The window and the given windows above it, as they stand on the screen.
bool KScreenshotWalk::save(const QString& name, QWidget* window, const QList<QWidget*>& extras)
{
    // Layouts settle from the inside out, one posted request per level.
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    QRect area = window->frameGeometry();
    for (QWidget* extra : extras)
        area |= extra->frameGeometry();
    QImage image(area.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(kBackdrop);
    window->render(&image, window->geometry().topLeft() - area.topLeft());
    for (QWidget* extra : extras)
        extra->render(&image, extra->geometry().topLeft() - area.topLeft(), QRegion(),
                      QWidget::DrawChildren);
    const QString path = QDir(m_dir).filePath(QStringLiteral("host-%1.png").arg(name));
    if (!image.save(path)) {
        m_err << "zentooffice: cannot write " << path << '\n';
        return false;
    }
    m_written << path;
    return true;
}
