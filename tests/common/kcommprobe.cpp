#include "kcommprobe.h"

#include <vexlite/hostcontrol.h>

namespace {

const QString kProbe = QStringLiteral("commprobe");

} // namespace

KCommProbe::KCommProbe(const QString& parentDir)
    : m_appDir(parentDir)
    , m_valid(m_appDir.installExecutable(kProbe))
{}

QStringList KCommProbe::run(const QStringList& calls, QString* err) const
{
    krt::hostcontrol::saveProfile(krt::hostcontrol::profileDir());
    QProcessEnvironment env;
    // Debug output is part of what some calls promise.
    env.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("default.debug=true"));
    const KTestAppDir::Result result = m_appDir.run(kProbe, calls, env);
    if (err)
        *err = result.err;
    if (result.exitCode != 0)
        return {QStringLiteral("<probe failed: %1>").arg(result.err.trimmed())};
    QStringList lines = result.out.split(QLatin1Char('\n'));
    lines.removeLast(); // after the last line's end
    return lines;
}
