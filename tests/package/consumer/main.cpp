// A module of the suite using the plug-in's exported classes and functions
// and the helper layer through the installed headers, linked to the
// installed libraries. It prints what it sees, one "subject: observation" a
// line; the test that builds it knows what to expect. The web dialog and
// the web plug-in registry only where the package has them: one built
// without a web engine has neither, nor their headers.

// Include guards a module may well use for headers of its own: those of
// the installed headers must differ, or the declarations below would vanish.
#define AUTHPLUGINENTRY_H
#define COMMPATHS_H
#define IKXWEBPLUGINFACTORYITEM_H
#define KNETWORKSTATEMONITOR_H
#define KXAUTHGLOBAL_H
#define KXNIMBOCUSTOMFRAMEDLG_H
#define KXWEBDLG_H
#define KXWEBPLUGINFACTORYITEMREGISTER_H
#define KXWEBRESOURCES_H
#define QCOMMFILETYPES_H
#define QCOMMIDENTITY_H
#define QCOMMSTORES_H

#include <authpluginentry.h>
#include <knetworkstatemonitor.h>
#if __has_include(<kxwebdlg.h>)
#define CONSUMER_WEB_DIALOG
#include <ikxwebpluginfactoryitem.h>
#include <kxwebdlg.h>
#include <kxwebpluginfactoryitemregister.h>
#include <kxwebresources.h>
#endif

#include <commpaths.h>
#include <qcommfiletypes.h>
#include <qcommidentity.h>
#include <qcommstores.h>

#include <vex/kxapplication.h>
#include <vexlite/ikauthorizationhandler.h>

#include <QDir>
#include <QShowEvent>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

namespace {

QString yesNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

#ifdef CONSUMER_WEB_DIALOG
const char kMimeType[] = "application/x-zento-consumer";

// A kind of native object the module's pages embed, registered the way the
// suite's modules do: a static register beside the item.
class ConsumerItem : public IKxWebPluginFactoryItem
{
public:
    QObject* create(const QString&, const QUrl&, const QStringList&, const QStringList&) override
    {
        return nullptr;
    }
    // The library's names for the item's types, whichever engine it runs on.
    KxWebPlugin plugin() override
    {
        KxWebPluginMimeType type;
        type.name = QLatin1String(kMimeType);
        KxWebPlugin plugin;
        plugin.name = QStringLiteral("consumer");
        plugin.mimeTypes << type;
        return plugin;
    }
};
const KxWebPluginFactoryItemRegister registered(new ConsumerItem);

// Derived across the library's boundary: the page's bridge reaches the
// override, and the dialog closes itself once it is on screen.
class ConsumerDialog : public KxWebDlg
{
public:
    using KxWebDlg::KxWebDlg;

    QString version() override { return QStringLiteral("consumer"); }

    QSize shownSize;

protected:
    void showEvent(QShowEvent* event) override
    {
        KxWebDlg::showEvent(event);
        shownSize = size();
        QTimer::singleShot(0, this, [this] { acceptOnceAnswered(500); });
    }

    // The page's answers may come after it loaded (QtWebEngine): closes
    // once the title shows them, or after tries more looks.
    void acceptOnceAnswered(int tries)
    {
        if (windowTitle().count(QLatin1Char(' ')) >= 2 || tries == 0)
            accept();
        else
            QTimer::singleShot(10, this, [this, tries] { acceptOnceAnswered(tries - 1); });
    }
};

// The page asks the bridge and shows the answers as its title, which the
// dialog takes over.
QUrl writePage(const QTemporaryDir& dir)
{
    QFile page(dir.filePath(QStringLiteral("page.html")));
    if (!page.open(QIODevice::WriteOnly))
        return QUrl();
    // The answers come at once or as Promises, as the engine has it.
    page.write(QByteArray("<script>Promise.all([zentoctx.isMimeTypeAvailable('") + kMimeType +
               "'), zentoctx.isMimeTypeAvailable('application/x-other'), zentoctx.version()])"
               ".then(function (a) { document.title = a.join(' '); });</script>");
    return QUrl::fromLocalFile(page.fileName());
}
#endif

void useHelpers(QTextStream& out)
{
    const QString log = QString::fromStdU16String(Comm::getLogPath());
    const QDir data(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    out << "log folder: " << (QFileInfo(log).isDir() ? "made, " : "missing, ")
        << data.relativeFilePath(log) << '\n';
    QComm::writeNimboRegValue(QStringLiteral("consumer/answer"), 42);
    out << "store: "
        << QComm::readNimboRegValue(QStringLiteral("consumer/answer"), QStringLiteral("none"))
        << '\n';
    out << "user agent: " << QComm::getUserAgent() << '\n';
    out << "file type of xlsx: " << QComm::getAppTypeBySuffix(QStringLiteral("xlsx")) << '\n';
}

} // namespace

int main(int argc, char** argv)
{
    KxApplication app(argc, argv);
    QTextStream out(stdout);
    // The Qt the package's targets gave the module.
    out << "qt major version: " << QT_VERSION_MAJOR << '\n';

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
        out << "network changes: " << changes.join(QLatin1Char(',')) << '\n';
    }

    useHelpers(out);

#ifdef CONSUMER_WEB_DIALOG
    const QString offline = kxGetWebResMuiFile(QStringLiteral("offline.html"));
    out << "offline page: " << offline << '\n';

    const QTemporaryDir dir;
    ConsumerDialog dialog(writePage(dir), nullptr, QUrl(offline));
    dialog.resize(480, 320);
    out << "dialog classes: " << dialog.metaObject()->className() << " < "
        << dialog.metaObject()->superClass()->className() << '\n';
    QWidget* widget = &dialog;
    out << "cast to the base: " << yesNo(dynamic_cast<KxNimboCustomFrameDlg*>(widget)) << '\n';
    const int result = dialog.exec();
    out << "dialog: " << (result == QDialog::Accepted ? "accepted" : "rejected") << ", shown "
        << dialog.shownSize.width() << 'x' << dialog.shownSize.height() << '\n';
    out << "page saw: " << dialog.windowTitle() << '\n';
#endif
    return 0;
}
