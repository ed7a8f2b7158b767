#include "vexlite/khksoftwaresettings.h"

#include "khostprofile.h"

#include <QDir>
#include <QStandardPaths>

QString KHKSoftwareSettings::storeFileName(HKEY root)
{
    QString dir = KHostProfile::instance().dir();
    // A host without a profile directory still keeps its values somewhere
    // the user owns rather than in the working directory.
    if (dir.isEmpty())
        dir = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
              QStringLiteral("/zento-host");
    const char* file = root == LocalMachine ? "stores/machine.ini" : "stores/user.ini";
    return QDir(dir).filePath(QLatin1String(file));
}

KHKSoftwareSettings::KHKSoftwareSettings(HKEY root, const QString& keyPath, QObject* parent)
    : QSettings(storeFileName(root), QSettings::IniFormat, parent)
{
    // The registry-style path becomes nested groups of the file, so a path
    // and its parent see the same values.
    if (!keyPath.isEmpty())
        beginGroup(QString(keyPath).replace(QLatin1Char('\\'), QLatin1Char('/')));
}

KHKSoftwareSettings::~KHKSoftwareSettings() = default;
