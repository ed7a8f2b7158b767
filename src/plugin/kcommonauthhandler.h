#ifndef KCOMMONAUTHHANDLER_H
#define KCOMMONAUTHHANDLER_H

#include "kauthorizationhandler.h"

// Adds the entry through which the host passes named commands.
class KCommonAuthHandler : public KAuthorizationHandler
{
public:
    KCommonAuthHandler() = default;
    ~KCommonAuthHandler() = default;

    using KAuthorizationHandler::prehook;
    virtual bool prehook(const QString& name, void* data);
};

#endif // KCOMMONAUTHHANDLER_H
