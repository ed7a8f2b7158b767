#include "commpaths.h"
#include "_createbuiltdirectory.h"

#include "commlogging.h"

#include <QDir>
#include <QFileInfo>
#include <QMutex>
#include <QSet>
#include <QStandardPaths>
#include <QString>

namespace {

Comm::WideString below(const Comm::WideString& parent, const char16_t* piece)
{
    Comm::WideString path = parent + piece;
    Comm::_createBuiltDirectory(path);
    return path;
}

// Why dir could not be created: the deepest part of it that exists and is
// no directory, or the part that cannot be written into.
QString whyNotCreated(const QString& dir)
{
    QString existing = dir;
    while (!existing.isEmpty() && !QFileInfo::exists(existing)) {
        const int cut = existing.lastIndexOf(QLatin1Char('/'));
        existing = cut > 0 ? existing.left(cut) : QLatin1String(cut == 0 ? "/" : "");
    }
    if (existing.isEmpty())
        return QStringLiteral("no part of it exists");
    if (!QFileInfo(existing).isDir())
        return QStringLiteral("%1 is not a directory").arg(existing);
    if (!QFileInfo(existing).isWritable())
        return QStringLiteral("%1 is not writable").arg(existing);
    return QStringLiteral("the file system refused it");
}

// True the first time a directory is reported in this process.
bool firstReport(const QString& dir)
{
    static QMutex lock;
    static QSet<QString> reported;
    const QMutexLocker locker(&lock);
    if (reported.contains(dir))
        return false;
    reported.insert(dir);
    return true;
}

} // namespace

namespace Comm {

WideString getAppdataPath()
{
    const QString location = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    const int cut = location.lastIndexOf(QLatin1Char('/'));
    return cut < 0 ? WideString() : location.left(cut).toStdU16String();
}

WideString getLocalAppdataPath()
{
    return getAppdataPath();
}

WideString getNimboAppdataPath()
{
    return below(getAppdataPath(), u"/nimbo");
}

WideString getNimboLocalAppdataPath(bool)
{
    return below(getAppdataPath(), u"/Zento Cloud Files");
}

WideString getNimboUserDataRootPath(bool flag)
{
    return below(getNimboLocalAppdataPath(flag), u"/userdata");
}

WideString getNimboUpdateRootPath()
{
    return below(getNimboLocalAppdataPath(false), u"/update");
}

WideString getNimboResourcePath()
{
    return below(getNimboLocalAppdataPath(false), u"/resource");
}

WideString getDeskhivePath()
{
    return below(getAppdataPath(), u"/office6/Deskhive");
}

WideString getLogPath()
{
    return below(getDeskhivePath(), u"/log");
}

WideString getDumpPath()
{
    return below(getDeskhivePath(), u"/dump");
}

WideString getNimboPath()
{
    static const WideString path;
    return path;
}

bool createDeepDirectory(const WideString& path)
{
    // QDir would warn about an empty name; there is nothing to create.
    if (path.empty())
        return false;
    const QString dir = QString::fromStdU16String(path);
    return QFileInfo(dir).isDir() || QDir().mkpath(dir);
}

bool _createBuiltDirectory(const WideString& path)
{
    if (createDeepDirectory(path))
        return true;
    const QString dir = QString::fromStdU16String(path);
    if (firstReport(dir))
        qCWarning(lcAuthCommon, "cannot create the directory %s: %s", qUtf8Printable(dir),
                  qUtf8Printable(whyNotCreated(dir)));
    return false;
}

bool fileExists(const unsigned short* path)
{
    if (!path || !*path)
        return false;
    return QFileInfo::exists(QString::fromUtf16(reinterpret_cast<const char16_t*>(path)));
}

} // namespace Comm
