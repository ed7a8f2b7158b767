#include "authpluginentry.h"

#include "kxacommonauthhandler.h"
#include "kxplugintranslator.h"

IKAuthorizationHandler* GetAuthorizationHandler()
{
    static KXaCommonAuthHandler handler;
    // The host asks once it runs: its application object and language exist.
    kxInstallPluginTranslator();
    return &handler;
}
