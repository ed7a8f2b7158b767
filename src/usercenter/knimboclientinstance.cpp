#include "knimboclientinstance.h"

#include "kdeskhivelib.h"
#include "qcommjson.h"

#include <deskhive/nimboclient.h>

namespace KNimboClientInstance {

Json::Value userInfo()
{
    INimboClient* client = KDeskhiveLib::instance()->nimboClientInstance();
    return client ? client->getUserInfo() : Json::Value();
}

bool isLogined()
{
    const Json::Value info = userInfo();
    if (info.empty())
        return false;
    // A flag of the wrong type reads as not signed in instead of throwing.
    return QComm::jsonGetBool(info, QStringLiteral("IsLogined"), false);
}

QString getAutoLoginUrl(const QString& url)
{
    if (!isLogined())
        return url;
    QString wrapped;
    if (INimboClient* client = KDeskhiveLib::instance()->nimboClientInstance())
        client->getAutoLoginUrl(url, wrapped);
    return wrapped.isEmpty() ? url : wrapped;
}

} // namespace KNimboClientInstance
