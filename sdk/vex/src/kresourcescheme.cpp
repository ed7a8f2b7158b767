#include "vex/kresourcescheme.h"

#include <vexlite/hostcontrol.h>

#include <QCoreApplication>
#include <QDir>

namespace {

const char kResourceFolder[] = "res";

} // namespace

QString KResourceScheme::prefix()
{
    return QStringLiteral("res");
}

QStringList KResourceScheme::searchPaths()
{
    QStringList paths;
    const QString profile = krt::hostcontrol::profileDir();
    if (!profile.isEmpty())
        paths << QDir(profile).filePath(QLatin1String(kResourceFolder));
    if (QCoreApplication::instance())
        paths << QDir(QCoreApplication::applicationDirPath())
                     .filePath(QLatin1String(kResourceFolder));
    // Every library's compiled-in tree hangs below the one root ":/".
    paths << QStringLiteral(":/");
    paths.removeDuplicates();
    return paths;
}

void KResourceScheme::install()
{
    QDir::setSearchPaths(prefix(), searchPaths());
}
