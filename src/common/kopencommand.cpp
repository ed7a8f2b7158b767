#include "kopencommand.h"

#include <QDir>
#include <QProcess>

KOpenCommand::KOpenCommand(const QString& application, const QString& target, const QString& text,
                           const QString& launcher)
    : m_text(text)
#ifdef Q_OS_MACOS
    , m_program(QStringLiteral("open"))
    , m_arguments{QStringLiteral("-a"), application, target}
#else
    , m_program(launcher)
    , m_arguments{target}
#endif
{
#ifdef Q_OS_MACOS
    Q_UNUSED(launcher)
#else
    Q_UNUSED(application)
#endif
}

KOpenCommand KOpenCommand::forSuite(const QString& bundle, const QString& target)
{
    // One pass, so a %n inside either value stays as it is.
    return KOpenCommand(bundle, target, QStringLiteral("open -a \"%1\" \"%2\"").arg(bundle, target),
                        QDir(bundle).filePath(QStringLiteral("zentooffice")));
}

KOpenCommand KOpenCommand::forSafari(const QString& url)
{
    const QString safari = safariBundle();
    return KOpenCommand(safari, url, QStringLiteral("open -a %1 \"%2\"").arg(safari, url),
                        safari + QStringLiteral("/Contents/MacOS/Safari"));
}

QString KOpenCommand::safariBundle()
{
    return QStringLiteral("/Applications/Safari.app");
}

bool KOpenCommand::run() const
{
#ifdef Q_OS_MACOS
    QProcess process;
    process.start(m_program, m_arguments);
    if (!process.waitForStarted() || !process.waitForFinished(-1))
        return true;
    return process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0;
#else
    return !QProcess::startDetached(m_program, m_arguments);
#endif
}
