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
    const QString wrapPrefix =
        QStringLiteral("https://account.zentooffice.example/autologin?token=");
    QStringList taken;
    for (const QUrl& url : qAsConst(urls)) {
        QString text = url.toString(QUrl::FullyEncoded);
        const int target = text.indexOf(QLatin1String("&target="));
        if (text.startsWith(wrapPrefix) && target > 0)
            text = QStringLiteral("wrapped:") + text.mid(target + 8);
        taken << text;
    }
    urls.clear();
    return taken;
}

void KUrlCatcher::open(const QUrl& url)
{
    urls.append(url);
}

} // namespace AuthTest
