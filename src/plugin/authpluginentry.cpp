#include "authpluginentry.h"

#include "kxacommonauthhandler.h"

IKAuthorizationHandler* GetAuthorizationHandler()
{
    static KXaCommonAuthHandler handler;
    return &handler;
}
