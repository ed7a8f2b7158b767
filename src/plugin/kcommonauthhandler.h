#ifndef KCOMMONAUTHHANDLER_H
#define KCOMMONAUTHHANDLER_H

#include "kauthorizationhandler.h"

// Adds the entry through which the host passes named commands, and the
// suite user name's filling-in after the user registered.
class KCommonAuthHandler : public KAuthorizationHandler
{
public:
    KCommonAuthHandler() = default;
    ~KCommonAuthHandler() = default;

    using KAuthorizationHandler::prehook;
    virtual bool prehook(const QString& name, void* data);

    // Gives the suite an author name when it has none: the login name of
    // the user the process runs as ("USER"). An existing name is kept.
    void processUserName();
};

#endif // KCOMMONAUTHHANDLER_H
