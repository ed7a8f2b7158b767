#ifndef AUTHPLUGIN_KXOPENURL_H
#define AUTHPLUGIN_KXOPENURL_H

#include "kxauthglobal.h"

#include <QString>

// The centres of the cloud service kxNimboOpenStoreUrl opens.
enum STORE_URL_TYPE {
    STORE_URL_PERSONAL_CENTER = 1,   // product string "PersonalCenterUrl"
    STORE_URL_ENTERPRISE_CENTER = 2, // product string "EnterpriseCenterUrl"
};

// Opens url in the system browser, wrapped for automatic sign-in when
// someone is signed in and the cloud client can wrap it; else as it is.
KXAUTH_EXPORT void kxOpenAutoLoginUrl(const QString& url);

// Opens a centre of the cloud service, wrapped by the cloud client whenever
// there is one (signed in or not) and plain when it gives nothing. Any
// other kind opens nothing.
KXAUTH_EXPORT void kxNimboOpenStoreUrl(STORE_URL_TYPE kind);

#endif // AUTHPLUGIN_KXOPENURL_H
