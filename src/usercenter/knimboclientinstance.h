#ifndef KNIMBOCLIENTINSTANCE_H
#define KNIMBOCLIENTINSTANCE_H

#include <QString>

#include <json/value.h>

// Account questions answered by the cloud client of KDeskhiveLib. Without a
// client object nobody is signed in and addresses stay as they are.
namespace KNimboClientInstance {

// The client's user information; a null value without a client object.
Json::Value userInfo();
// True only when the user information says "IsLogined": true.
bool isLogined();
// url wrapped for automatic sign-in, or url itself when nobody is signed in
// or the client cannot wrap it.
QString getAutoLoginUrl(const QString& url);

} // namespace KNimboClientInstance

#endif // KNIMBOCLIENTINSTANCE_H
