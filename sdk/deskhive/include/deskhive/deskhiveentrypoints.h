#ifndef DESKHIVE_DESKHIVEENTRYPOINTS_H
#define DESKHIVE_DESKHIVEENTRYPOINTS_H

class QObject;
class INimboClient;
class ILiveStateUpdateCache;

// The Deskhive library's entry points, resolved by name at run time:
// "LocalPushMessageDispatchInstance", "NimboClientInstance",
// "LiveStateUpdateCacheInstance" and "DeskhivePluginController". Each
// returns an object the library owns; callers never delete it.
extern "C" {
typedef QObject* (*LocalPushMessageDispatchInstanceFunc)();
typedef INimboClient* (*NimboClientInstanceFunc)();
typedef ILiveStateUpdateCache* (*LiveStateUpdateCacheInstanceFunc)();
typedef QObject* (*DeskhivePluginControllerFunc)();
}

#endif // DESKHIVE_DESKHIVEENTRYPOINTS_H
