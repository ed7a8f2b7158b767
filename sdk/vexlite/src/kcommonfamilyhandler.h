#ifndef VEXLITE_KCOMMONFAMILYHANDLER_H
#define VEXLITE_KCOMMONFAMILYHANDLER_H

#include "vexlite/ikauthorizationhandler.h"

// The host's view of a handler of the suite's common family: named commands
// enter through the operation that follows the eight of the interface. The
// host knows that entry only by its place in the handler's table, as it does
// for the suite's closed plug-ins. Declared with external linkage on purpose:
// the compiler must not conclude that nothing implements it.
class KCommonFamilyHandler : public IKAuthorizationHandler
{
public:
    using IKAuthorizationHandler::prehook;
    virtual bool prehook(const QString& name, void* data) = 0;

protected:
    KCommonFamilyHandler() = default;
    ~KCommonFamilyHandler() = default;
};

#endif // VEXLITE_KCOMMONFAMILYHANDLER_H
