#include "kfakenimboclient.h"

#include <json/reader.h>

#include <memory>

void KFakeNimboClient::login(const QVariant&) {}

void KFakeNimboClient::getAutoLoginUrl(const QString&, QString& autoLoginUrl)
{
    autoLoginUrl = qEnvironmentVariable("FAKE_NIMBO_AUTOLOGIN");
}

void KFakeNimboClient::logout() {}

Json::Value KFakeNimboClient::getUserInfo()
{
    const QByteArray text = qgetenv("FAKE_NIMBO_USERINFO");
    Json::Value info;
    const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
    if (!reader->parse(text.constData(), text.constData() + text.size(), &info, nullptr))
        return Json::Value();
    return info;
}
