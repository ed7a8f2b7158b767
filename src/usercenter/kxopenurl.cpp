#include "kxopenurl.h"

#include "kdeskhivelib.h"
#include "knimboclientinstance.h"
#include "usercenterlogging.h"

#include <deskhive/nimboclient.h>
#include <vexlite/krtproduct.h>

#include <QDesktopServices>
#include <QUrl>

namespace {

void open(const QString& address)
{
    qCDebug(lcAuthUserCenter, "opening %s", qPrintable(address));
    // The desktop's answer is of no use here: there is nobody to tell.
    QDesktopServices::openUrl(QUrl(address, QUrl::TolerantMode));
}

} // namespace

void kxOpenAutoLoginUrl(const QString& url)
{
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
    QString wrapped;
    if (INimboClient* client = KDeskhiveLib::instance()->nimboClientInstance())
        client->getAutoLoginUrl(url, wrapped);
    open(wrapped.isEmpty() ? url : wrapped);
}
