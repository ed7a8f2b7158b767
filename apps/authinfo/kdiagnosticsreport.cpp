#include "kdiagnosticsreport.h"

#include "kwebengineversion.h"

#include "commpaths.h"
#include "qcommidentity.h"
#include "qcommpaths.h"

#include <vexlite/hostcontrol.h>

#include <QFileInfo>
#include <QPair>
#include <QTextStream>
#include <QVector>

bool KDiagnosticsReport::print(QTextStream& out)
{
    // A directory the client needs but could not create; the helpers'
    // warning says why.
    bool created = true;
    const auto dir = [&created](const QString& path) {
        if (QFileInfo(path).isDir())
            return path;
        created = false;
        return path + QStringLiteral("  ") + tr("(cannot be created)");
    };
    const auto wide = [&dir](const Comm::WideString& path) {
        return dir(QString::fromStdU16String(path));
    };

    // The user agent the suite's web views send: the host's interface
    // language and the engine's own version.
    const QString engineVersion = KWebEngineVersion::userAgentVersion();
    const QString webKitUserAgent =
        engineVersion.isEmpty()
            ? tr("(no web engine in this build)")
            : QComm::getWebKitUserAgent(false, krt::hostcontrol::language(), engineVersion);

    const QVector<QPair<QString, QString>> lines{
        {tr("Suite version"), QComm::zentoVersion()},
        {tr("Device identifier"), QComm::deviceID()},
        {tr("Language identifier"), QString::number(QComm::langID())},
        {tr("Web engine user agent"), webKitUserAgent},
        {tr("Host user agent"), QComm::getUserAgent()},
        {tr("App data root"), QString::fromStdU16String(Comm::getAppdataPath())},
        {tr("Nimbo data"), wide(Comm::getNimboAppdataPath())},
        {tr("Zento Cloud Files"), wide(Comm::getNimboLocalAppdataPath(false))},
        {tr("User data"), wide(Comm::getNimboUserDataRootPath(false))},
        {tr("Deskhive"), wide(Comm::getDeskhivePath())},
        {tr("Log"), wide(Comm::getLogPath())},
        {tr("Dump"), wide(Comm::getDumpPath())},
        {tr("Icon cache"), dir(QComm::getNimboIconCachePath())},
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
    return created;
}
