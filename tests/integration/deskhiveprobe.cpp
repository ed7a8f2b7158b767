// deskhiveprobe: reports what the plug-in's cloud client access finds beside
// this executable, one "key=value" line each, for the integration suites.
// Usage: deskhiveprobe <address to wrap>

#include "usercenter/kdeskhivelib.h"
#include "usercenter/knimboclientinstance.h"

#include <deskhive/livestateupdatecache.h>
#include <deskhive/nimboclient.h>

#include <QCoreApplication>
#include <QStringList>
#include <QTextStream>

#include <json/writer.h>

namespace {

QString presence(const QObject* object)
{
    return object ? QStringLiteral("object") : QStringLiteral("null");
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    const QString url = args.value(1);

    const KDeskhiveLib& lib = *KDeskhiveLib::instance();
    Json::StreamWriterBuilder compact;
    compact["indentation"] = "";

    QTextStream out(stdout);
    out << "loaded=" << (lib.isLoaded() ? "true" : "false") << '\n'
        << "file=" << lib.fileName() << '\n'
        << "error=" << lib.errorString().simplified() << '\n'
        << "dispatch=" << presence(lib.localPushMessageDispatchInstance()) << '\n'
        << "client=" << presence(lib.nimboClientInstance()) << '\n'
        << "cache=" << presence(lib.liveStateUpdateCacheInstance()) << '\n'
        << "controller=" << presence(lib.deskhivePluginController()) << '\n'
        << "userinfo="
        << QString::fromStdString(Json::writeString(compact, KNimboClientInstance::userInfo()))
        << '\n'
        << "logined=" << (KNimboClientInstance::isLogined() ? "true" : "false") << '\n'
        << "autologin=" << KNimboClientInstance::getAutoLoginUrl(url) << '\n';
    return 0;
}
