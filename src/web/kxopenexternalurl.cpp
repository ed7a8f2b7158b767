#include "kxopenexternalurl.h"

#include "weblogging.h"

#include <QDesktopServices>
#include <QUrl>
#include <QUrlQuery>

namespace {

// The header fields a mail address may carry to the mail program. Others
// can name files: attach, attachment and the like make some programs add a
// local file to the new message.
bool isPlainMailField(const QString& name)
{
    for (const char* field : {"to", "cc", "bcc", "subject", "body"}) {
        if (name.compare(QLatin1String(field), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

// Why the web dialogs may not hand url to the system; null when they may.
const char* refusal(const QUrl& url)
{
    // QUrl keeps the scheme in lower case, whatever the page wrote.
    const QString scheme = url.scheme();
    if (url.isValid() && scheme == QLatin1String("mailto")) {
        const QList<QPair<QString, QString>> items = QUrlQuery(url).queryItems(QUrl::FullyDecoded);
        for (const auto& item : items) {
            if (!isPlainMailField(item.first))
                return "a mail address may carry only to, cc, bcc, subject and body";
        }
        return nullptr;
    }
    if (url.isValid() && (scheme == QLatin1String("http") || scheme == QLatin1String("https")) &&
        !url.host().isEmpty())
        return nullptr;
    return "only http, https and mailto addresses are handed to the system";
}

} // namespace

bool kxIsExternalUrlAllowed(const QUrl& url)
{
    return !refusal(url);
}

bool kxCheckExternalUrl(const QUrl& url)
{
    const char* reason = refusal(url);
    if (!reason)
        return true;
    qWarning("Refused to open \"%s\": %s", qUtf8Printable(kxUrlForLog(url)), reason);
    return false;
}

bool kxOpenExternalUrl(const QUrl& url)
{
    if (!kxCheckExternalUrl(url))
        return false;
    qCDebug(lcAuthWeb, "opening %s", qUtf8Printable(kxUrlForLog(url)));
    return QDesktopServices::openUrl(url);
}
