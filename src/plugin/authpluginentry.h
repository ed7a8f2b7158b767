#ifndef AUTHPLUGIN_AUTHPLUGINENTRY_H
#define AUTHPLUGIN_AUTHPLUGINENTRY_H

#include "kxauthglobal.h"

class IKAuthorizationHandler;

// The one entry point hosts resolve by name. Every call returns the same
// handler, created on the first; the host must not delete it.
extern "C" KXAUTH_EXPORT IKAuthorizationHandler* GetAuthorizationHandler();

#endif // AUTHPLUGIN_AUTHPLUGINENTRY_H
