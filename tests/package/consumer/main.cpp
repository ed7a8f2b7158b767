// A module of the suite using the plug-in's exported classes and functions
// and the helper layer through the installed headers, linked to the
// installed libraries. It prints what it sees, one "subject: observation" a
// line; the test that builds it knows what to expect.

// Include guards a module may well use for headers of its own: those of
// the installed headers must differ, or the declarations below would vanish.
#define AUTHPLUGINENTRY_H
#define COMMPATHS_H
#define KNETWORKSTATEMONITOR_H
#define KXAUTHGLOBAL_H
#define QCOMMFILETYPES_H
#define QCOMMIDENTITY_H
#define QCOMMSTORES_H

#include "webdialog.h"

#include <authpluginentry.h>
#include <knetworkstatemonitor.h>

#include <commpaths.h>
#include <qcommfiletypes.h>
#include <qcommidentity.h>
#include <qcommstores.h>

#include <vex/kxapplication.h>
#include <vexlite/ikauthorizationhandler.h>

#include <QDir>
#include <QStandardPaths>
#include <QTextStream>

namespace {

QString yesNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

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
        out << "offline mode, network back: " << yesNo(monitor->isNimboOffLineMode()) << '\n';
        out << "network changes: " << changes.join(QLatin1Char(',')) << '\n';
    }

    useHelpers(out);

    useWebDialog(out);
    return 0;
}
