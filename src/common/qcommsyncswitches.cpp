#include "qcommsyncswitches.h"

#include "qcommstores.h"

#include <QString>
#include <QVariant>

namespace {

// The way a variant holding text converts to bool: only "", "0" and
// "false" (in any letter case) are off.
bool isOn(const QString& text)
{
    return QVariant(text).toBool();
}

bool readCloudSwitch(const char* name)
{
    return isOn(QComm::readNimboRegValue(QLatin1String(name), true));
}

} // namespace

namespace QComm {

bool isDesktopSyncEnable()
{
    static const bool enabled = readCloudSwitch("enableDesktopSyncEx");
    return enabled;
}

bool isV5MetadataEnable()
{
    static const bool enabled = readCloudSwitch("enableV5Metadata");
    return enabled;
}

bool desktopSyncSwitchOn()
{
    const QString userId = readNimboUserInfoRegValue(QStringLiteral("userid"), QString());
    if (userId.isEmpty())
        return false;
    return isOn(
        readNimboRegValue(QStringLiteral("usercenter/%1/desksync/switch").arg(userId), QString()));
}

bool zentoboxDesktopSyncEnable()
{
    return false;
}

} // namespace QComm
