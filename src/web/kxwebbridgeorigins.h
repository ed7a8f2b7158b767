#ifndef KXWEBBRIDGEORIGINS_H
#define KXWEBBRIDGEORIGINS_H

#include <QStringList>

class QUrl;

// Which pages a web dialog publishes its script bridge to. A page may use
// the bridge when its address is
// - one of the library's own pages ("qrc:/auth_plugin/..."),
// - of the same origin as the address the dialog was opened for or as its
//   fallback page,
// - of an origin listed in the host configuration under configKey(), read
//   with source mask 27 (every layer but the user's, so a user cannot
//   widen the list).
// An origin is scheme, host and port (the scheme's default port when none
// is written). A local file is its own origin; every compiled-in resource
// (qrc) shares one; data:, about: and other addresses without a host have
// none and match nothing.
class KxWebBridgeOrigins
{
public:
    // "Auth/WebBridgeOrigins": a list of origins ("https://help.example",
    // "http://127.0.0.1:8080"), as a list value or as one text separated by
    // ";", "," or white space. Paths in an entry are ignored.
    static QString configKey();

    static bool admits(const QUrl& page, const QUrl& dialogUrl, const QUrl& fallbackUrl);
    static bool sameOrigin(const QUrl& a, const QUrl& b);
    // The configured list as it reads today.
    static QStringList configuredOrigins();
};

#endif // KXWEBBRIDGEORIGINS_H
