#include "_kprocesslauncher.h"

#include <vexlite/kprocesslaunchermac.h>

_KProcessLauncher::_KProcessLauncher(const QString& arguments, const QString& bundlePath)
    : m_arguments(arguments)
    , m_bundlePath(bundlePath)
{}

_KProcessLauncher::~_KProcessLauncher() = default;

void _KProcessLauncher::run()
{
    KProcessLauncherMac::LaunchProcessByNSTask(
        QStringLiteral("%1/Contents/MacOS/zentocloudsvr").arg(m_bundlePath), m_arguments);
}
