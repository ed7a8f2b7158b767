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
    // !!! THE ORDER OF THE VIRTUAL FUNCTIONS IS PART OF THE INTERFACE !!!
    // The host cannot name this class: it reaches this prehook by its place
    // in the virtual table, slot 8, the first after the eight of
    // IKAuthorizationHandler (sdk/vexlite/src/krtauth.cpp does the same).
    // Declare no virtual function before it, here or in
    // KAuthorizationHandler, give no class of the hierarchy a virtual
    // destructor, and keep this the first virtual function this class adds;
    // KXaCommonAuthHandler overrides it and adds none of its own before it.
    virtual bool prehook(const QString& name, void* data);

    // Gives the suite an author name when it has none: the login name of
    // the user the process runs as ("USER"). An existing name is kept.
    void processUserName();
};

#endif // KCOMMONAUTHHANDLER_H
