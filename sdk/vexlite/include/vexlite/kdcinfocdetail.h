#ifndef VEXLITE_KDCINFOCDETAIL_H
#define VEXLITE_KDCINFOCDETAIL_H

#include "vexlite_global.h"

#include <QString>

// The installation's identity as the host recorded it at set-up: a UUID of
// the installation and an identifier of the machine's hardware. Empty when
// the host has none.
class VEXLITE_EXPORT KDcInfoCDetail
{
public:
    static QString getUuid();
    static QString getHdid();
};

#endif // VEXLITE_KDCINFOCDETAIL_H
