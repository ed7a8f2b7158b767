#include "qcommpaths.h"

#include "_createbuiltdirectory.h"
#include "commpaths.h"
#include "qcommidentity.h"
#include "qcommstores.h"

#include <QDir>
#include <QStringList>

namespace {

// The newest suite version still on the old layout; only later ones move.
constexpr int kLastOldLayoutVersion[] = {9, 1, 0, 4817};

bool isAfterLastOldLayoutVersion(const QString& version)
{
    const QStringList parts = version.split(QLatin1Char('.'), Qt::KeepEmptyParts);
    if (parts.size() != 4)
        return false;
    for (int i = 0; i < 4; ++i) {
        // A part that is not a number reads as 0.
        const int part = parts.at(i).toInt();
        if (part != kLastOldLayoutVersion[i])
            return part > kLastOldLayoutVersion[i];
    }
    return false;
}

bool containsRoot(const QString& nativePath, const QString& root)
{
    const QString needle = QDir::toNativeSeparators(root + QDir::separator());
    return nativePath.contains(needle, Qt::CaseInsensitive);
}

} // namespace

namespace QComm {

bool makeDeepPath(const QString& path)
{
    return !path.isEmpty() && QDir().mkpath(path);
}

void getUserDataRootPath(QString& oldRoot, QString& newRoot)
{
    static QString oldCached;
    static QString newCached;
    if (oldCached.isEmpty())
        oldCached = QString::fromStdU16String(Comm::getDeskhivePath());
    if (newCached.isEmpty())
        newCached = QString::fromStdU16String(Comm::getNimboUserDataRootPath(false));
    oldRoot = oldCached;
    newRoot = newCached;
}

bool isNewUserData()
{
    if (readNimboUserInfoRegValue(QStringLiteral("zentocloudfiles"), 0).toInt(nullptr, 10) != 1)
        return false;
    return isAfterLastOldLayoutVersion(zentoVersion());
}

bool isInUserDataRootPath(const QString& path)
{
    const QString nativePath = QDir::toNativeSeparators(path);
    QString oldRoot;
    QString newRoot;
    getUserDataRootPath(oldRoot, newRoot);
    if (!newRoot.isEmpty() && containsRoot(nativePath, newRoot))
        return true;
    return !oldRoot.isEmpty() && containsRoot(nativePath, oldRoot);
}

QString getNimboIconCachePath()
{
    const QString path = isNewUserData() ? QString::fromStdU16String(Comm::getNimboResourcePath()) +
                                               QStringLiteral("/iconcache")
                                         : QString::fromStdU16String(Comm::getNimboAppdataPath()) +
                                               QStringLiteral("/resource/iconcache");
    const QString nativePath = QDir::toNativeSeparators(path);
    Comm::_createBuiltDirectory(nativePath.toStdU16String());
    return nativePath;
}

} // namespace QComm
