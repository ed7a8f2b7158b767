#ifndef VEXLITE_KXUSERAGENTUTIL_H
#define VEXLITE_KXUSERAGENTUTIL_H

#include "vexlite_global.h"

#include <QString>

// The user agent the host's own network requests carry.
class VEXLITE_EXPORT KxUserAgentUtil
{
public:
    // Empty when the host has none configured.
    static QString getUserAgent();
};

#endif // VEXLITE_KXUSERAGENTUTIL_H
