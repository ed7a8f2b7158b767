// A stand-in for a Deskhive library of another build that lacks some entry
// points. Compiled twice: FAKE_DESKHIVE_CLIENT_ONLY exports only
// NimboClientInstance; otherwise every entry point but that one.

#include "kfakenimboclient.h"

#include <deskhive/deskhiveentrypoints.h>
#include <deskhive/livestateupdatecache.h>

extern "C" {

#ifdef FAKE_DESKHIVE_CLIENT_ONLY

Q_DECL_EXPORT INimboClient* NimboClientInstance()
{
    static KFakeNimboClient client;
    return &client;
}

#else

Q_DECL_EXPORT QObject* LocalPushMessageDispatchInstance()
{
    static QObject dispatch;
    return &dispatch;
}

Q_DECL_EXPORT ILiveStateUpdateCache* LiveStateUpdateCacheInstance()
{
    static ILiveStateUpdateCache cache;
    return &cache;
}

Q_DECL_EXPORT QObject* DeskhivePluginController()
{
    static QObject controller;
    return &controller;
}

#endif

} // extern "C"
