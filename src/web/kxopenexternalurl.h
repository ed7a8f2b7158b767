#ifndef KXOPENEXTERNALURL_H
#define KXOPENEXTERNALURL_H

class QUrl;

// Whether the web dialogs may hand url to the system: http and https
// addresses with a host, and mailto addresses whose fields are only to, cc,
// bcc, subject and body. Anything else (file, a program's own scheme,
// javascript, data, a mail address that attaches a file) could open a local
// file, start a program or send a file away.
bool kxIsExternalUrlAllowed(const QUrl& url);

// The same, with one warning when url is refused; the warning shows the
// address without its query (see kxUrlForLog).
bool kxCheckExternalUrl(const QUrl& url);

// Opens url with the desktop's handler when it is allowed, and gives the
// desktop's answer. Otherwise opens nothing, logs one warning and gives
// false.
bool kxOpenExternalUrl(const QUrl& url);

#endif // KXOPENEXTERNALURL_H
