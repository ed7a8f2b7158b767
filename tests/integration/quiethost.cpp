// A host that prints nothing of its own, for tst_quietlogging: it loads
// the plug-in as the suite does, signs in from a web dialog's page, opens
// the personal centre and ends. Whatever reaches stderr is the library's
// (or Qt's). The one argument is the installation's hardware identifier.
// Exit status 0 once every step has happened.

#include "kurlcatcher.h"

#include <kxwebdlg.h>

#include <vexlite/hostcontrol.h>
#include <vexlite/krtauth.h>

#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QLibrary>
#include <QTemporaryDir>
#include <QTimer>

namespace {

// Escape, once the dialog shows, signs in; once signed in the page opens
// the centre's page wrapped for automatic sign-in, another page with a
// token in its query, and closes.
const char kPage[] = R"(<title>quiet</title><script>
zentoctx.hdid();
zentoctx.setOnEscPressCallback("signIn");
function signIn() {
    zentoctx.login("function () {"
        + "zentoctx.openAutoLoginUrl('https://centre.zento.example/me');"
        + "zentoctx.openUrl('https://help.zento.example/?token=s3cret');"
        + "zentoctx.reject(); }");
    return 1;
}
</script>)";

// Presses Escape in the dialog once it shows.
class EscapeWhenShown : public QObject
{
public:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show) {
            QTimer::singleShot(0, watched, [watched] {
                QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
                QCoreApplication::sendEvent(watched, &escape);
            });
        }
        return false;
    }
};

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    if (argc != 2)
        return 2;
    QLibrary plugin(QCoreApplication::applicationDirPath() + QStringLiteral("/libauthplugin.so"));
    using Entry = IKAuthorizationHandler* (*)();
    const auto entry = reinterpret_cast<Entry>(plugin.resolve("GetAuthorizationHandler"));
    if (!entry)
        return 2;
    krt::hostcontrol::setHandler(entry());
    krt::hostcontrol::setHardwareId(QString::fromLocal8Bit(argv[1]));
    krt::hostcontrol::setProductString(QStringLiteral("PersonalCenterUrl"),
                                       QStringLiteral("https://centre.zento.example/"));

    AuthTest::KUrlCatcher opened;
    QTemporaryDir dir;
    QFile page(dir.filePath(QStringLiteral("quiet.html")));
    if (!page.open(QIODevice::WriteOnly) || page.write(kPage) < 0)
        return 2;
    page.close();
    KxWebDlg dialog(QUrl::fromLocalFile(page.fileName()));
    EscapeWhenShown escape;
    dialog.installEventFilter(&escape);
    const int result = dialog.exec();
    krt::auth::prehook(QStringLiteral("OpenUserCenter"), false, nullptr);
    return result == QDialog::Rejected && opened.urls.size() == 3 ? 0 : 1;
}
