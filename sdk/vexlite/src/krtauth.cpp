#include "vexlite/krtauth.h"

#include "kcommonfamilyhandler.h"
#include "khostprofile.h"
#include "vexlite/ikauthorizationhandler.h"

namespace {

bool passCommand(const QString& name, void* data)
{
    KHostProfile& host = KHostProfile::instance();
    // The lock is not held while the handler runs: it calls back into krt.
    IKAuthorizationHandler* handler = host.handler();
    const bool goOn = !handler || static_cast<KCommonFamilyHandler*>(handler)->prehook(name, data);
    if (goOn)
        host.recordExecutedCommand(name);
    return goOn;
}

} // namespace

namespace krt {
namespace auth {

QVariant getInfo(const QString& key)
{
    IKAuthorizationHandler* handler = KHostProfile::instance().handler();
    return handler ? handler->getInfo(key) : QVariant();
}

QString getStringInfo(const QString& key, const QString& defaultValue)
{
    const QVariant value = getInfo(key);
    return value.isNull() || !value.canConvert<QString>() ? defaultValue : value.toString();
}

int getIntInfo(const QString& key, int defaultValue)
{
    bool ok = false;
    const int value = getInfo(key).toInt(&ok);
    return ok ? value : defaultValue;
}

bool getBoolInfo(const QString& key, bool defaultValue)
{
    const QVariant value = getInfo(key);
    return value.isNull() || !value.canConvert<bool>() ? defaultValue : value.toBool();
}

bool prehook(const QString& name, void* data, void* /*extra*/)
{
    return passCommand(name, data);
}

bool prehook(const QString& name, bool /*flag*/, void* data)
{
    return passCommand(name, data);
}

} // namespace auth
} // namespace krt
