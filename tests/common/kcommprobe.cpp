#include "kcommprobe.h"

#include "ktestappdir.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

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

QJsonArray KCommProbe::run(const QStringList& operations) const
{
    // Names travel as UTF-8 whatever the machine's locale.
    QProcessEnvironment env;
    env.insert("LC_ALL", "C.UTF-8");
    const KTestAppDir::Result result = m_appDir.run(m_program, operations, env);
    if (result.exitCode != 0) {
        qWarning("commprobe failed (%d): %s", result.exitCode, qPrintable(result.err));
        return {};
    }
    QJsonArray results;
    for (const QString& line : result.out.split('\n', Qt::SkipEmptyParts))
        results.append(QJsonDocument::fromJson(line.toUtf8()).array().at(0));
    return results;
}
