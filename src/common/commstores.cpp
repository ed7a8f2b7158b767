#include "commstores.h"

#include "qcommstorepaths.h"

#include <QString>

namespace {

QVariant readUserInfo(const Comm::WideString& key, const QVariant& defaultValue)
{
    KHKSoftwareSettings settings(KHKSoftwareSettings::CurrentUser, QComm::kNimboUserInfoStorePath);
    return settings.value(QString::fromStdU16String(key), defaultValue);
}

void writeUserInfo(const Comm::WideString& key, const QVariant& value)
{
    KHKSoftwareSettings settings(KHKSoftwareSettings::CurrentUser, QComm::kNimboUserInfoStorePath);
    settings.setValue(QString::fromStdU16String(key), value);
}

} // namespace

namespace Comm {

int readNimboUserInfoRegValue(const WideString& key, unsigned int defaultValue)
{
    return readUserInfo(key, defaultValue).toInt();
}

WideString readNimboUserInfoRegValue(const WideString& key, const WideString& defaultValue)
{
    return readUserInfo(key, QString::fromStdU16String(defaultValue)).toString().toStdU16String();
}

void writeNimboUserInfoRegValue(const WideString& key, const WideString& value)
{
    writeUserInfo(key, QString::fromStdU16String(value));
}

void writeNimboUserInfoRegValue(const WideString& key, unsigned int value)
{
    writeUserInfo(key, value);
}

WideString readRegStrValue(KHKSoftwareSettings::HKEY, const WideString&, const WideString&,
                           const WideString& defaultValue)
{
    return defaultValue;
}

unsigned int readRegNumValue(KHKSoftwareSettings::HKEY, const WideString& path,
                             const WideString& name, unsigned int defaultValue)
{
    return path.empty() || name.empty() ? defaultValue : 0;
}

bool writeRegStrValue(KHKSoftwareSettings::HKEY, const WideString&, const WideString&,
                      const WideString&)
{
    return false;
}

bool writeRegNumValue(KHKSoftwareSettings::HKEY, const WideString&, const WideString&, unsigned int)
{
    return false;
}

int getVersionNetwork(int n)
{
    return n;
}

void getZentoVersionAndChannel(WideString&, WideString&) {}

bool checkIsSupportThriftIpc()
{
    return true;
}

bool checkIsSupportNimboNse()
{
    return false;
}

} // namespace Comm
