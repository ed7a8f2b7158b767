#include "kscreenshotwalk.h"

#include "kzentoofficewindow.h"

#include <deskhive/deskhiveentrypoints.h>
#include <deskhive/nimboclient.h>
#include <vex/kmenubutton.h>
#include <vex/kpopupwidget.h>
#include <vexlite/hostcontrol.h>

#include <QApplication>
#include <QCoreApplication>
#include <QCursor>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QImage>
#include <QLibrary>
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

// Behind the balloons and menus that reach past the window.
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

} // namespace

KScreenshotWalk::KScreenshotWalk(const QString& dir, const QString& statePath, QTextStream& err)
    : m_dir(dir)
    , m_statePath(statePath)
    , m_err(err)
{
    // The simulator the plug-in loaded (the same library, loaded once): its
    // client says when it has read the state file.
    QLibrary simulator(QCoreApplication::applicationDirPath() +
                       QStringLiteral("/addons/deskhive/deskhive"));
    if (simulator.load()) {
        const auto entry =
            reinterpret_cast<NimboClientInstanceFunc>(simulator.resolve("NimboClientInstance"));
        if (entry)
            m_client = entry();
    }
}

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
    auto window = std::make_unique<KZentoOfficeWindow>();
    if (!openWindow(window.get()))
        return false;
    KMenuButton* button = userButton(window.get());
    if (!button) {
        m_err << "zentooffice: the profile's title area has no user-centre button\n";
        return false;
    }
    // Shown with the name, and laid out for it.
    const auto shows = [button](const QString& text) {
        return [button, text] {
            return button->isVisible() && button->text() == text &&
                   button->size() == button->sizeHint();
        };
    };

    const bool ok =
        step("signed-in",
             [&] { return waitFor(shows("Demo User")) && save("signed-in", window.get()); }) &&
        step("company",
             [&] {
                 return setState(kCompany) && waitFor(shows("Ada Lovelace")) &&
                        save("company", window.get());
             }) &&
        step("account-menu", [&] { return captureMenu(window.get(), "account-menu"); }) &&
        step("offline",
             [&] {
                 krt::hostcontrol::setLogoutDuetoOffLine(true);
                 const bool saved = showOfflineBalloon(window.get()) &&
                                    save("offline", window.get(), shownWindowsOf(button));
                 QCursor::setPos(outside(window.get()));
                 krt::hostcontrol::setLogoutDuetoOffLine(false);
                 return saved && waitFor([button] { return shownWindowsOf(button).isEmpty(); });
             }) &&
        step("login-error-tip",
             [&] {
                 return setState(kCompanyIpcError) &&
                        waitFor([button] { return !shownWindowsOf(button).isEmpty(); }) &&
                        save("login-error-tip", window.get(), shownWindowsOf(button));
             }) &&
        step("signed-out", [&] {
            return setState(kSignedOut) && waitFor([button] { return !button->isVisible(); }) &&
                   save("signed-out", window.get());
        });
    if (!ok)
        return false;

    // The same in Chinese, in a window made after the switch, as the suite
    // makes its windows' commands.
    window.reset();
    krt::hostcontrol::setLanguage(QStringLiteral("zh_CN"));
    if (!setState(kPersonal))
        return false;
    auto chinese = std::make_unique<KZentoOfficeWindow>();
    return openWindow(chinese.get()) &&
           step("account-menu-zh_CN",
                [&] { return captureMenu(chinese.get(), "account-menu-zh_CN"); }) &&
           step("offline-zh_CN", [&] {
               krt::hostcontrol::setLogoutDuetoOffLine(true);
               KMenuButton* shown = userButton(chinese.get());
               const bool saved = shown && showOfflineBalloon(chinese.get()) &&
                                  save("offline-zh_CN", chinese.get(), shownWindowsOf(shown));
               QCursor::setPos(outside(chinese.get()));
               krt::hostcontrol::setLogoutDuetoOffLine(false);
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
    const QString path = QDir(m_dir).filePath(name + QStringLiteral(".png"));
    if (!image.save(path)) {
        m_err << "zentooffice: cannot write " << path << '\n';
        return false;
    }
    m_written << path;
    return true;
}
