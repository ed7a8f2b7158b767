#include "kdeskhiveclient.h"

#include <deskhive/deskhiveentrypoints.h>
#include <deskhive/livestateupdatecache.h>
#include <deskhive/nimboclient.h>

#include <QCoreApplication>
#include <QLibrary>

namespace {

QString simulatorDir()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/addons/deskhive");
}

// The library's entry point by name; null without the library. QLibrary
// leaves the library loaded when it goes, as the entry points need.
QFunctionPointer entryPoint(const char* name)
{
    QLibrary library(simulatorDir() + QStringLiteral("/deskhive"));
    return library.load() ? library.resolve(name) : nullptr;
}

} // namespace

INimboClient* KDeskhiveClient::client()
{
    static const auto entry =
        reinterpret_cast<NimboClientInstanceFunc>(entryPoint("NimboClientInstance"));
    return entry ? entry() : nullptr;
}

QObject* KDeskhiveClient::syncCache()
{
    static const auto entry = reinterpret_cast<LiveStateUpdateCacheInstanceFunc>(
        entryPoint("LiveStateUpdateCacheInstance"));
    return entry ? static_cast<QObject*>(entry()) : nullptr;
}

QString KDeskhiveClient::stateFilePath()
{
    const QString named = qEnvironmentVariable("DESKHIVE_STATE");
    return named.isEmpty() ? simulatorDir() + QStringLiteral("/state.json") : named;
}

QString KDeskhiveClient::demoAvatarPath()
{
    return simulatorDir() + QStringLiteral("/avatar.png");
}
