#include "vexlite/kprocesslaunchermac.h"

#include <QProcess>

bool KProcessLauncherMac::LaunchProcessByNSTask(const QString& executable,
                                                const QString& argumentText)
{
    if (executable.isEmpty())
        return false;
    return QProcess::startDetached(executable, QStringList{argumentText});
}
