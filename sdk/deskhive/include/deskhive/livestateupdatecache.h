#ifndef DESKHIVE_LIVESTATEUPDATECACHE_H
#define DESKHIVE_LIVESTATEUPDATECACHE_H

#include "deskhive_global.h"

#include <QObject>

// The user-information sync cache the Deskhive library hands out from
// LiveStateUpdateCacheInstance(). Users only listen to its error signals.
class DESKHIVE_EXPORT ILiveStateUpdateCache : public QObject
{
    Q_OBJECT

public:
    explicit ILiveStateUpdateCache(QObject* parent = nullptr);
    ~ILiveStateUpdateCache() override;

signals:
    // The cache could not reach the cloud service process.
    void occurIpcErrorsWhenGetUserInf();
    // The cloud service process could not reach the server.
    void occurRpcErrorsWhenGetUserInf();
};

#endif // DESKHIVE_LIVESTATEUPDATECACHE_H
