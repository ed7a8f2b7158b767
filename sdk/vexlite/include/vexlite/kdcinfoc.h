#ifndef VEXLITE_KDCINFOC_H
#define VEXLITE_KDCINFOC_H

#include "vexlite_global.h"

#include <QString>

// What the host reports about its distribution: the channel the installation
// came from and the suite's version.
class VEXLITE_EXPORT KDcInfoC
{
public:
    // The distribution channel; empty when the host has none.
    static QString getMC();
    // The suite's version, as krt::info::version() gives it.
    static QString getVersion();
};

#endif // VEXLITE_KDCINFOC_H
