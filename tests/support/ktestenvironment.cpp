#include "ktestenvironment.h"

#include <vexlite/hostcontrol.h>

#include <QDir>
#include <QFile>

KTestEnvironment::KTestEnvironment()
    : m_root(QDir::tempPath() + QStringLiteral("/authtest-XXXXXX"))
{
    const QDir root(m_root.path());
    for (const char* sub :
         {"home", "home/.config", "home/.local/share", "home/.cache", "work", "profile"})
        root.mkpath(QLatin1String(sub));
    qputenv("HOME", homePath().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", root.filePath(QStringLiteral("home/.config")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", root.filePath(QStringLiteral("home/.local/share")).toLocal8Bit());
    qputenv("XDG_CACHE_HOME", root.filePath(QStringLiteral("home/.cache")).toLocal8Bit());
    qputenv(krt::hostcontrol::profileEnvironmentVariable(), profilePath().toLocal8Bit());
    QDir::setCurrent(root.filePath(QStringLiteral("work")));
    resetHost();
}

QString KTestEnvironment::homePath() const
{
    return QDir(m_root.path()).filePath(QStringLiteral("home"));
}

QString KTestEnvironment::profilePath() const
{
    return QDir(m_root.path()).filePath(QStringLiteral("profile"));
}

void KTestEnvironment::resetHost() const
{
    QDir(QDir(profilePath()).filePath(QStringLiteral("stores"))).removeRecursively();
    krt::hostcontrol::resetProfile(profilePath());
    krt::hostcontrol::setHandler(nullptr);
    krt::hostcontrol::clearExecutedCommands();
}
