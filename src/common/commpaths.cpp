#include "commpaths.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QString>

namespace {

Comm::WideString below(const Comm::WideString& parent, const char16_t* piece)
{
    Comm::WideString path = parent + piece;
    Comm::createDeepDirectory(path);
    return path;
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

bool fileExists(const unsigned short* path)
{
    if (!path || !*path)
        return false;
    return QFileInfo::exists(QString::fromUtf16(reinterpret_cast<const char16_t*>(path)));
}

} // namespace Comm
