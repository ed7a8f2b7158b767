#include "ktestenvironment.h"

#include <vexlite/hostcontrol.h>

#include <QDir>

namespace AuthTest {

KTestEnvironment::KTestEnvironment()
    : m_root(QDir::tempPath() + QStringLiteral("/authtest-XXXXXX"))
{
    const QDir root(m_root.path());
    for (const char* sub :
         {"home", "home/.config", "home/.local/share", "home/.cache", "work", "profile"})
        root.mkpath(QLatin1String(sub));
    qputenv("HOME", homePath().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (homePath() + QStringLiteral("/.config")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", (homePath() + QStringLiteral("/.local/share")).toLocal8Bit());
    qputenv("XDG_CACHE_HOME", (homePath() + QStringLiteral("/.cache")).toLocal8Bit());
    qputenv(krt::hostcontrol::profileEnvironmentVariable(), profilePath().toLocal8Bit());
    QDir::setCurrent(root.filePath(QStringLiteral("work")));
    resetHost();
}

void KTestEnvironment::resetHost() const
{
    QDir(profilePath() + QStringLiteral("/stores")).removeRecursively();
    krt::hostcontrol::resetProfile(profilePath());
    krt::hostcontrol::setHandler(nullptr);
    krt::hostcontrol::clearExecutedCommands();
}

} // namespace AuthTest
