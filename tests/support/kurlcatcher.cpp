#include "kurlcatcher.h"

#include <QDesktopServices>

namespace AuthTest {

namespace {

const char* const kSchemes[] = {"",     "http", "https",      "mailto", "file", "ftp",
                                "data", "qrc",  "javascript", "about",  "zento"};

} // namespace

KUrlCatcher::KUrlCatcher()
{
    for (const char* scheme : kSchemes)
        QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "open");
}

KUrlCatcher::~KUrlCatcher()
{
    for (const char* scheme : kSchemes)
        QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
}

QStringList KUrlCatcher::take()
{
    QStringList taken;
    for (const QUrl& url : qAsConst(urls))
        taken << unwrapped(url.toString(QUrl::FullyEncoded));
    urls.clear();
    return taken;
}

QString KUrlCatcher::unwrapped(const QString& address)
{
    const QString wrapPrefix =
        QStringLiteral("https://account.zentooffice.example/autologin?token=");
    const int target = address.indexOf(QLatin1String("&target="));
    if (address.startsWith(wrapPrefix) && target > 0)
        return QStringLiteral("wrapped:") + address.mid(target + 8);
    return address;
}

void KUrlCatcher::open(const QUrl& url)
{
    urls.append(url);
}

} // namespace AuthTest
