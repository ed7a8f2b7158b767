#include "kxopenexternalurl.h"

#include "weblogging.h"

#include <QDesktopServices>
#include <QUrl>

bool kxIsExternalUrlAllowed(const QUrl& url)
{
    if (!url.isValid())
        return false;
    // QUrl keeps the scheme in lower case, whatever the page wrote.
    const QString scheme = url.scheme();
    if (scheme == QLatin1String("mailto"))
        return true;
    return (scheme == QLatin1String("http") || scheme == QLatin1String("https")) &&
           !url.host().isEmpty();
}

bool kxCheckExternalUrl(const QUrl& url)
{
    if (kxIsExternalUrlAllowed(url))
        return true;
    qWarning("Refused to open \"%s\": only http, https and mailto addresses are handed to the "
             "system",
             qUtf8Printable(url.toDisplayString()));
    return false;
}

bool kxOpenExternalUrl(const QUrl& url)
{
    if (!kxCheckExternalUrl(url))
        return false;
    qCDebug(lcAuthWeb, "opening %s", qUtf8Printable(url.toDisplayString()));
    return QDesktopServices::openUrl(url);
}
