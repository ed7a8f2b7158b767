#ifndef KXOPENEXTERNALURL_H
#define KXOPENEXTERNALURL_H

class QUrl;

// Whether the web dialogs may hand url to the system: http and https
// addresses with a host, and mailto. Anything else (file, a program's own
// scheme, javascript, data) could open a local file or start a program.
bool kxIsExternalUrlAllowed(const QUrl& url);

// The same, with one warning when url is refused.
bool kxCheckExternalUrl(const QUrl& url);

// Opens url with the desktop's handler when it is allowed, and gives the
// desktop's answer. Otherwise opens nothing, logs one warning and gives
// false.
bool kxOpenExternalUrl(const QUrl& url);

#endif // KXOPENEXTERNALURL_H
