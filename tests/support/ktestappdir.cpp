#include "ktestappdir.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QUuid>

namespace AuthTest {

KTestAppDir::KTestAppDir(const QString& parentDir)
    : m_path(QDir(parentDir).filePath(QStringLiteral("app-") +
                                      QUuid::createUuid().toString(QUuid::Id128).left(12)))
{
    QDir().mkpath(m_path);
}

bool KTestAppDir::installExecutable(const QString& name) const
{
    QFile build(QDir(QCoreApplication::applicationDirPath()).filePath(name));
    return build.open(QIODevice::ReadOnly) && writeFile(name, build.readAll(), true);
}

bool KTestAppDir::write(const QString& path, const QByteArray& content, bool executable)
{
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(file).absolutePath()) ||
        !file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(content) < 0)
        return false;
    file.close();
    return !executable || file.setPermissions(file.permissions() | QFile::ExeOwner |
                                              QFile::ExeGroup | QFile::ExeOther);
}

KTestAppDir::Result KTestAppDir::run(const QString& name, const QStringList& args,
                                     const QProcessEnvironment& env, int timeoutMs) const
{
    QProcess process;
    QProcessEnvironment merged = QProcessEnvironment::systemEnvironment();
    merged.insert(env);
    process.setProcessEnvironment(merged);
    process.start(filePath(name), args);
    const bool finished = process.waitForFinished(timeoutMs);
    if (!finished)
        process.kill(); // and waits for it when destroyed
    return {finished && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

} // namespace AuthTest
