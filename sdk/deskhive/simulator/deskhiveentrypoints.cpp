// The four entry points the suite resolves by name. Each hands out an
// object the library owns, or null once the application object has gone.

#include "kdeskhivesimulator.h"

#include <deskhive/deskhiveentrypoints.h>
#include <deskhive/livestateupdatecache.h>
#include <deskhive/nimboclient.h>

extern "C" {

Q_DECL_EXPORT QObject* LocalPushMessageDispatchInstance()
{
    KDeskhiveSimulator* simulator = KDeskhiveSimulator::instance();
    return simulator ? simulator->localPushMessageDispatch() : nullptr;
}

Q_DECL_EXPORT INimboClient* NimboClientInstance()
{
    KDeskhiveSimulator* simulator = KDeskhiveSimulator::instance();
    return simulator ? simulator->nimboClient() : nullptr;
}

Q_DECL_EXPORT ILiveStateUpdateCache* LiveStateUpdateCacheInstance()
{
    KDeskhiveSimulator* simulator = KDeskhiveSimulator::instance();
    return simulator ? simulator->liveStateUpdateCache() : nullptr;
}

Q_DECL_EXPORT QObject* DeskhivePluginController()
{
    KDeskhiveSimulator* simulator = KDeskhiveSimulator::instance();
    return simulator ? simulator->pluginController() : nullptr;
}

} // extern "C"
