#include "commsuitekit.h"

#include "ktestappdir.h"

#include <vexlite/hostcontrol.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace AuthTest {

QSettings raw(KHKSoftwareSettings::HKEY root)
{
    return QSettings(KHKSoftwareSettings::storeFileName(root), QSettings::IniFormat);
}

QString text(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QStringList runProbe(const KTestAppDir& appDir, const QStringList& operations,
                     const QString& folder, QString* err)
{
    const QString program = folder.isEmpty() ? "commprobe" : folder + "/commprobe";
    QFile build(QDir(QCoreApplication::applicationDirPath()).filePath("commprobe"));
    if (!build.open(QIODevice::ReadOnly) || !appDir.writeFile(program, build.readAll(), true))
        return {"<probe not installed>"};
    krt::hostcontrol::saveProfile(krt::hostcontrol::profileDir());
    // Names travel as UTF-8 whatever the locale; debug notices are part of
    // what some helpers promise, in the helpers' own category.
    QProcessEnvironment env;
    env.insert("LC_ALL", "C.UTF-8");
    env.insert("QT_LOGGING_RULES", "*.debug=false;auth.common.debug=true");
    const KTestAppDir::Result result = appDir.run(program, operations, env);
    if (err)
        *err = result.err;
    if (result.exitCode != 0)
        return {"<probe failed: " + result.err.trimmed() + '>'};
    QStringList texts;
    for (const QString& line : result.out.split('\n', Qt::SkipEmptyParts))
        texts.append(QJsonDocument::fromJson(line.toUtf8()).array().at(0).toString());
    return texts;
}

} // namespace AuthTest
