// A stand-in for a Deskhive library of another build: it exports only
// NimboClientInstance, a client that answers what the test put in its
// environment: FAKE_NIMBO_USERINFO (JSON text, anything unparsable a null
// value) and FAKE_NIMBO_AUTOLOGIN (the wrapped address for every address).

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

} // namespace

extern "C" Q_DECL_EXPORT INimboClient* NimboClientInstance()
{
    static KFakeNimboClient client;
    return &client;
}
