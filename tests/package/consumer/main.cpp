// A module of the suite using the plug-in's exported classes and functions
// through the installed headers, linked to the installed library. It
// prints what it sees, one "subject: observation" a line; the test that
// builds it knows what to expect.

#include <authpluginentry.h>
#include <knetworkstatemonitor.h>
#include <kxwebdlg.h>
#include <kxwebresources.h>

#include <vex/kxapplication.h>
#include <vexlite/ikauthorizationhandler.h>

#include <QShowEvent>
#include <QTextStream>
#include <QTimer>

namespace {

// Derived across the library's boundary: the page's bridge reaches the
// override, and the dialog closes itself once it is on screen.
class ConsumerDialog : public KxWebDlg
{
public:
    using KxWebDlg::KxWebDlg;

    QString version() override
    {
        ++versionCalls;
        return QStringLiteral("consumer");
    }

    int versionCalls = 0;
    QSize shownSize;

protected:
    void showEvent(QShowEvent* event) override
    {
        KxWebDlg::showEvent(event);
        shownSize = size();
        QTimer::singleShot(0, this, [this] { accept(); });
    }
};

QString yesNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

} // namespace

int main(int argc, char** argv)
{
    KxApplication app(argc, argv);
    QTextStream out(stdout);

    IKAuthorizationHandler* handler = GetAuthorizationHandler();
    out << "entry point: "
        << (handler && GetAuthorizationHandler() == handler ? "one handler" : "no handler") << '\n';
    if (handler)
        out << "product name: " << handler->getInfo(QStringLiteral("Product/VexName")).toString()
            << '\n';

    QObject* object = KNetworkStateMonitor::instance();
    auto* monitor = qobject_cast<KNetworkStateMonitor*>(object);
    out << "monitor: " << (monitor ? monitor->metaObject()->className() : "not found") << '\n';
    if (monitor) {
        QStringList changes;
        QObject::connect(
            monitor, &KNetworkStateMonitor::notifyNetworkStatus, [&changes](bool online) {
                changes << (online ? QStringLiteral("online") : QStringLiteral("offline"));
            });
        monitor->setLastLoginStatus(true);
        monitor->setNetworkAvailable(false);
        monitor->setNetworkAvailable(false);
        out << "offline mode, network lost: " << yesNo(monitor->isNimboOffLineMode()) << '\n';
        monitor->setNetworkAvailable(true);
        out << "offline mode, network back: " << yesNo(monitor->isNimboOffLineMode()) << '\n';
        out << "network changes: " << changes.join(QLatin1Char(',')) << '\n';
    }

    const QString offline = kxGetWebResMuiFile(QStringLiteral("offline.html"));
    out << "offline page: " << offline << '\n';

    ConsumerDialog dialog{QUrl(offline)};
    dialog.resize(480, 320);
    out << "dialog classes: " << dialog.metaObject()->className() << " < "
        << dialog.metaObject()->superClass()->className() << '\n';
    QWidget* widget = &dialog;
    out << "cast to the base: " << yesNo(dynamic_cast<KxNimboCustomFrameDlg*>(widget)) << '\n';
    const int result = dialog.exec();
    out << "dialog: " << (result == QDialog::Accepted ? "accepted" : "rejected") << ", shown "
        << dialog.shownSize.width() << 'x' << dialog.shownSize.height() << '\n';
    out << "page asked the consumer's version: " << yesNo(dialog.versionCalls > 0) << '\n';
    return 0;
}
