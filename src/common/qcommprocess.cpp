#include "qcommprocess.h"

#include "_kprocesslauncher.h"
#include "kopencommand.h"
#include "qcommstorepaths.h"

#include <vexlite/khksoftwaresettings.h>
#include <vexlite/krtproduct.h>

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QThreadPool>
#include <QUrl>

namespace QComm {

QString zentocloudsvrPath()
{
    return QStringLiteral("%1/../SharedSupport/zentocloudsvr.app")
        .arg(QCoreApplication::applicationDirPath());
}

void launchZentocloudsvr(const QString& extraArgs)
{
    if (QCoreApplication::applicationName() != QLatin1String("zentooffice"))
        return;
    // The editions differ in the plug-in the service loads.
    const QLatin1String fixed(
        krt::product::isOverseasVersion()
            ? "Run /InstanceId:ZentoCloudSvr zentocloudsvrimp.dll /nimbowork /run_plugin "
              "/plugin_name=nimbo /plugin_entry=nimboworkxa.dll /start_from=plugin_nimbo "
            : "Run /InstanceId:ZentoCloudSvr zentocloudsvrimp.dll /nimbowork /run_plugin "
              "/plugin_name=nimbo /plugin_entry=nimbowork.dll /start_from=plugin_nimbo ");
    const QString arguments = QLatin1Char('"') + fixed + extraArgs + QLatin1Char('"');
    QThreadPool::globalInstance()->start(new _KProcessLauncher(arguments, zentocloudsvrPath()));
}

void launchZentocloudsvr(const QString&, const QString&) {}

bool createProcess(const QString& program, const QString& arguments, const QString& workingDir)
{
    Q_UNUSED(arguments)
    Q_UNUSED(workingDir)
    if (program.isEmpty())
        return false;
    QString quoted = program;
    if (quoted.contains(QLatin1Char(' ')) && !isSurroundWith(quoted, QStringLiteral("\"")))
        quoted = QLatin1Char('"') + quoted + QLatin1Char('"');
    // Processes are started by the host on this platform; the quoted form
    // is where a start would begin.
    return false;
}

bool isSurroundWith(const QString& s, const QString& mark)
{
    return s.startsWith(mark) && s.endsWith(mark);
}

int getClientCount()
{
    KHKSoftwareSettings settings(KHKSoftwareSettings::CurrentUser, kNimboStorePath);
    settings.beginGroup(QStringLiteral("activeclient"));
    const int count = settings.childGroups().size();
    settings.endGroup();
    return count;
}

void setClientActive(unsigned int, bool) {}

bool openUrl(const QString& url)
{
    return QDesktopServices::openUrl(QUrl(url, QUrl::TolerantMode));
}

bool openUrlBySafari(const QString& url)
{
    if (url.isEmpty() || !QFileInfo::exists(KOpenCommand::safariBundle()))
        return false;
    KOpenCommand::forSafari(url).run();
    return true;
}

} // namespace QComm
