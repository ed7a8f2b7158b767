// Stand-ins for a Deskhive library of another build that lacks entry points.
// Compiled twice: FAKE_DESKHIVE_CLIENT_ONLY exports only NimboClientInstance,
// a client that answers what the test put in its environment
// (FAKE_NIMBO_USERINFO, JSON text, anything unparsable a null value;
// FAKE_NIMBO_AUTOLOGIN, the wrapped address for every address); otherwise
// every entry point but that one.

#include <deskhive/deskhiveentrypoints.h>
#include <deskhive/livestateupdatecache.h>
#include <deskhive/nimboclient.h>

#include <json/reader.h>

#include <memory>

namespace {

class KFakeNimboClient : public INimboClient
{
public:
    void login(const QVariant&) override {}
    void logout() override {}
    void getAutoLoginUrl(const QString&, QString& autoLoginUrl) override
    {
        autoLoginUrl = qEnvironmentVariable("FAKE_NIMBO_AUTOLOGIN");
    }
    Json::Value getUserInfo() override
    {
        const QByteArray text = qgetenv("FAKE_NIMBO_USERINFO");
        Json::Value info;
        const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
        return reader->parse(text.constData(), text.constData() + text.size(), &info, nullptr)
                   ? info
                   : Json::Value();
    }
};

template <typename T>
T* object()
{
    static T instance;
    return &instance;
}

} // namespace

extern "C" {
#ifdef FAKE_DESKHIVE_CLIENT_ONLY
Q_DECL_EXPORT INimboClient* NimboClientInstance()
{
    return object<KFakeNimboClient>();
}
#else
Q_DECL_EXPORT QObject* LocalPushMessageDispatchInstance()
{
    return object<QObject>();
}
Q_DECL_EXPORT ILiveStateUpdateCache* LiveStateUpdateCacheInstance()
{
    return object<ILiveStateUpdateCache>();
}
Q_DECL_EXPORT QObject* DeskhivePluginController()
{
    return object<QObject>();
}
#endif
} // extern "C"
