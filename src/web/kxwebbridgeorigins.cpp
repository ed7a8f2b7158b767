#include "kxwebbridgeorigins.h"

#include <vexlite/krtconfigs.h>

#include <QRegularExpression>
#include <QUrl>
#include <QVariant>

namespace {

// Every configuration layer but the user's.
constexpr unsigned kNoUserLayer = 27;

int defaultPort(const QString& scheme)
{
    if (scheme == QLatin1String("http") || scheme == QLatin1String("ws"))
        return 80;
    if (scheme == QLatin1String("https") || scheme == QLatin1String("wss"))
        return 443;
    return -1;
}

bool isLibraryPage(const QUrl& url)
{
    return url.scheme() == QLatin1String("qrc") &&
           url.path().startsWith(QLatin1String("/auth_plugin/"));
}

} // namespace

QString KxWebBridgeOrigins::configKey()
{
    return QStringLiteral("Auth/WebBridgeOrigins");
}

bool KxWebBridgeOrigins::sameOrigin(const QUrl& a, const QUrl& b)
{
    if (!a.isValid() || !b.isValid() || a.scheme().isEmpty() || a.scheme() != b.scheme())
        return false;
    const QString scheme = a.scheme();
    if (scheme == QLatin1String("qrc"))
        return true;
    if (scheme == QLatin1String("file"))
        return a.isLocalFile() && a.adjusted(QUrl::RemoveQuery | QUrl::RemoveFragment) ==
                                      b.adjusted(QUrl::RemoveQuery | QUrl::RemoveFragment);
    // QUrl keeps scheme and host in lower case.
    if (a.host().isEmpty() || a.host() != b.host())
        return false;
    const int port = defaultPort(scheme);
    return a.port(port) == b.port(port);
}

QStringList KxWebBridgeOrigins::configuredOrigins()
{
    const QVariant value = krt::configs::getValue(configKey(), kNoUserLayer);
    QStringList entries;
    if (value.userType() == QMetaType::QVariantList || value.userType() == QMetaType::QStringList)
        entries = value.toStringList();
    else
        entries = value.toString().split(QRegularExpression(QStringLiteral("[;,\\s]+")));
    entries.removeAll(QString());
    return entries;
}

bool KxWebBridgeOrigins::admits(const QUrl& page, const QUrl& dialogUrl, const QUrl& fallbackUrl)
{
    if (isLibraryPage(page) || sameOrigin(page, dialogUrl) || sameOrigin(page, fallbackUrl))
        return true;
    const QStringList origins = configuredOrigins();
    for (const QString& origin : origins) {
        if (sameOrigin(page, QUrl(origin, QUrl::StrictMode)))
            return true;
    }
    return false;
}
