#include "commsuitekit.h"

#include "ktestappdir.h"

#include <vexlite/hostcontrol.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

#include <memory>
#include <vector>

namespace AuthTest {

QSettings raw(KHKSoftwareSettings::HKEY root)
{
    return QSettings(KHKSoftwareSettings::storeFileName(root), QSettings::IniFormat);
}

QString text(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

namespace {

// Copies the probe into folder of appDir and saves the host as the suite set
// it up; the program to run, or empty.
QString installProbe(const KTestAppDir& appDir, const QString& folder)
{
    const QString program = folder.isEmpty() ? "commprobe" : folder + "/commprobe";
    QFile build(QDir(QCoreApplication::applicationDirPath()).filePath("commprobe"));
    if (!build.open(QIODevice::ReadOnly) || !appDir.writeFile(program, build.readAll(), true))
        return QString();
    krt::hostcontrol::saveProfile(krt::hostcontrol::profileDir());
    return program;
}

// Names travel as UTF-8 whatever the locale; debug notices are part of what
// some helpers promise, in the helpers' own category.
QProcessEnvironment probeEnvironment()
{
    QProcessEnvironment env;
    env.insert("LC_ALL", "C.UTF-8");
    env.insert("QT_LOGGING_RULES", "*.debug=false;auth.common.debug=true");
    return env;
}

QStringList texts(const KTestAppDir::Result& result)
{
    if (result.exitCode != 0)
        return {"<probe failed: " + result.err.trimmed() + '>'};
    QStringList texts;
    for (const QString& line : result.out.split('\n', Qt::SkipEmptyParts))
        texts.append(QJsonDocument::fromJson(line.toUtf8()).array().at(0).toString());
    return texts;
}

} // namespace

QList<QStringList> runProbesAtOnce(const KTestAppDir& appDir, const QStringList& operations,
                                   int count, QStringList* errs, const QString& folder)
{
    const QString program = installProbe(appDir, folder);
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(probeEnvironment());
    std::vector<std::unique_ptr<QProcess>> processes;
    for (int i = 0; i < count; ++i) {
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->setProcessEnvironment(env);
        processes.back()->start(appDir.filePath(program), operations);
    }
    QList<QStringList> results;
    for (const auto& process : processes) {
        const bool finished = !program.isEmpty() && process->waitForFinished(30000);
        const KTestAppDir::Result result{
            finished && process->exitStatus() == QProcess::NormalExit ? process->exitCode() : -1,
            QString::fromUtf8(process->readAllStandardOutput()),
            QString::fromUtf8(process->readAllStandardError())};
        results.append(texts(result));
        if (errs)
            errs->append(result.err);
    }
    return results;
}

QStringList runProbe(const KTestAppDir& appDir, const QStringList& operations,
                     const QString& folder, QString* err)
{
    QStringList errs;
    const QStringList texts = runProbesAtOnce(appDir, operations, 1, &errs, folder).value(0);
    if (err)
        *err = errs.value(0);
    return texts;
}

} // namespace AuthTest
