#include "deskhive/livestateupdatecache.h"

ILiveStateUpdateCache::ILiveStateUpdateCache(QObject* parent)
    : QObject(parent)
{}

ILiveStateUpdateCache::~ILiveStateUpdateCache() = default;
