#ifndef KDESKHIVELIB_H
#define KDESKHIVELIB_H

#include <deskhive/deskhiveentrypoints.h>

#include <QString>

class QLibrary;

// The suite's cloud-document library, found in "addons/deskhive" beside the
// application and loaded once per process. Whatever is missing (the folder,
// the library, an entry point) only makes its accessors return null; users
// then behave as if nobody were signed in.
class KDeskhiveLib
{
public:
    static KDeskhiveLib* instance();

    // Where the library is looked for.
    static QString pluginDirectory();

    bool isLoaded() const;
    // The file the library was loaded from, or tried; empty without a handle.
    QString fileName() const;
    // Why loading failed; empty when it did not.
    QString errorString() const;

    // The library's own objects, asked for afresh on every call and never
    // deleted here. Null when unavailable: always test the result.
    QObject* localPushMessageDispatchInstance() const;
    INimboClient* nimboClientInstance() const;
    ILiveStateUpdateCache* liveStateUpdateCacheInstance() const;
    QObject* deskhivePluginController() const;

private:
    KDeskhiveLib();
    ~KDeskhiveLib();
    KDeskhiveLib(const KDeskhiveLib&) = delete;
    KDeskhiveLib& operator=(const KDeskhiveLib&) = delete;

    QLibrary* m_library = nullptr;
    LocalPushMessageDispatchInstanceFunc m_localPushMessageDispatchInstance = nullptr;
    NimboClientInstanceFunc m_nimboClientInstance = nullptr;
    LiveStateUpdateCacheInstanceFunc m_liveStateUpdateCacheInstance = nullptr;
    DeskhivePluginControllerFunc m_deskhivePluginController = nullptr;
};

#endif // KDESKHIVELIB_H
