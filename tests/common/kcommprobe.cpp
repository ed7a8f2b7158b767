#include "kcommprobe.h"

#include "ktestappdir.h"

#include <vexlite/hostcontrol.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

struct ProbeRun
{
    QJsonArray results;
    bool ok = false;
    QString err;
};

ProbeRun runProbe(const KTestAppDir& appDir, const QString& program, const QStringList& operations)
{
    krt::hostcontrol::saveProfile(krt::hostcontrol::profileDir());
    QProcessEnvironment env;
    // Names travel as UTF-8 whatever the machine's locale, and debug notices
    // are part of what some helpers promise.
    env.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    env.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("default.debug=true"));
    const KTestAppDir::Result result = appDir.run(program, operations, env);

    ProbeRun run;
    run.err = result.err;
    run.ok = result.exitCode == 0;
    if (run.ok) {
        for (const QString& line : result.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
            run.results.append(QJsonDocument::fromJson(line.toUtf8()).array().at(0));
    }
    return run;
}

QString toText(const QJsonValue& value)
{
    if (value.isString())
        return value.toString();
    if (value.isArray())
        return QString::fromUtf8(QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact));
    if (value.isObject())
        return QString::fromUtf8(QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact));
    const QString wrapped =
        QString::fromUtf8(QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact));
    return wrapped.mid(1, wrapped.size() - 2);
}

} // namespace

KCommProbe::KCommProbe(const KTestAppDir& appDir, const QString& folder)
    : m_appDir(appDir)
    , m_program(folder.isEmpty() ? QStringLiteral("commprobe") : folder + "/commprobe")
{
    QFile build(QDir(QCoreApplication::applicationDirPath()).filePath("commprobe"));
    m_valid = build.open(QIODevice::ReadOnly) && appDir.writeFile(m_program, build.readAll(), true);
}

QString KCommProbe::dir() const
{
    return QFileInfo(m_appDir.filePath(m_program)).absolutePath();
}

QJsonArray KCommProbe::run(const QStringList& operations, QString* err) const
{
    const ProbeRun run = runProbe(m_appDir, m_program, operations);
    if (err)
        *err = run.err;
    if (!run.ok)
        qWarning("commprobe failed: %s", qPrintable(run.err.trimmed()));
    return run.results;
}

QStringList KCommProbe::runText(const QStringList& operations, QString* err) const
{
    const ProbeRun run = runProbe(m_appDir, m_program, operations);
    if (err)
        *err = run.err;
    if (!run.ok)
        return {QStringLiteral("<probe failed: %1>").arg(run.err.trimmed())};
    QStringList lines;
    for (const QJsonValue& value : run.results)
        lines.append(toText(value));
    return lines;
}
