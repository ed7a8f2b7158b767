#include "kxopenurl.h"

#include "kdeskhivelib.h"
#include "knimboclientinstance.h"
#include "usercenterlogging.h"

#include <deskhive/nimboclient.h>
#include <vexlite/krtproduct.h>

#include <QDesktopServices>
#include <QUrl>

namespace {

// Logged before wrapping and without query, fragment or user: a wrapped
// address carries the user's sign-in token, and so may a query.
void logOpening(const QString& url)
{
    if (!lcAuthUserCenter().isDebugEnabled())
        return;
    const QUrl plain(url, QUrl::TolerantMode);
    qCDebug(lcAuthUserCenter, "opening %s",
            qPrintable(
                plain.toString(QUrl::RemoveQuery | QUrl::RemoveFragment | QUrl::RemoveUserInfo)));
}

void open(const QString& address)
{
    // The desktop's answer is of no use here: there is nobody to tell.
    QDesktopServices::openUrl(QUrl(address, QUrl::TolerantMode));
}

} // namespace

void kxOpenAutoLoginUrl(const QString& url)
{
    logOpening(url);
    open(KNimboClientInstance::getAutoLoginUrl(url));
}

void kxNimboOpenStoreUrl(STORE_URL_TYPE kind)
{
    const char* key = nullptr;
    switch (kind) {
    case STORE_URL_PERSONAL_CENTER:
        key = "PersonalCenterUrl";
        break;
    case STORE_URL_ENTERPRISE_CENTER:
        key = "EnterpriseCenterUrl";
        break;
    }
    if (!key)
        return;
    const QString url = krt::product::getString(QLatin1String(key));
    logOpening(url);
    QString wrapped;
    if (INimboClient* client = KDeskhiveLib::instance()->nimboClientInstance())
        client->getAutoLoginUrl(url, wrapped);
    open(wrapped.isEmpty() ? url : wrapped);
}
