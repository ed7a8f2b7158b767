#include "kdiagnosticsreport.h"

#include "commpaths.h"
#include "qcommidentity.h"
#include "qcommpaths.h"

#include <vexlite/hostcontrol.h>

#include <QPair>
#include <QTextStream>
#include <QVector>
#include <QtWebKit/qwebkitglobal.h>

namespace {

QString path(const Comm::WideString& wide)
{
    return QString::fromStdU16String(wide);
}

} // namespace

void KDiagnosticsReport::print(QTextStream& out)
{
    // The user agent the suite's web views send: the host's interface
    // language and the engine's own version.
    const QString webKitUserAgent =
        QComm::getWebKitUserAgent(false, krt::hostcontrol::language(), qWebKitVersion());

    const QVector<QPair<QString, QString>> lines{
        {tr("Suite version"), QComm::zentoVersion()},
        {tr("Device identifier"), QComm::deviceID()},
        {tr("Language identifier"), QString::number(QComm::langID())},
        {tr("Web engine user agent"), webKitUserAgent},
        {tr("Host user agent"), QComm::getUserAgent()},
        {tr("App data root"), path(Comm::getAppdataPath())},
        {tr("Nimbo data"), path(Comm::getNimboAppdataPath())},
        {tr("Zento Cloud Files"), path(Comm::getNimboLocalAppdataPath(false))},
        {tr("User data"), path(Comm::getNimboUserDataRootPath(false))},
        {tr("Deskhive"), path(Comm::getDeskhivePath())},
        {tr("Log"), path(Comm::getLogPath())},
        {tr("Dump"), path(Comm::getDumpPath())},
        {tr("Icon cache"), QComm::getNimboIconCachePath()},
        {tr("New user data layout"),
         QComm::isNewUserData() ? QStringLiteral("yes") : QStringLiteral("no")},
    };

    int labelWidth = 0;
    for (const auto& line : lines)
        labelWidth = qMax(labelWidth, line.first.size());
    out << tr("Diagnostics") << '\n';
    for (const auto& line : lines)
        out << "  " << line.first.leftJustified(labelWidth) << "  " << line.second << '\n';
    out.flush();
}
