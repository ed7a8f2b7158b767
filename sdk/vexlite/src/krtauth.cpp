#include "vexlite/krtauth.h"

#include "khostprofile.h"
#include "vexlite/ikauthorizationhandler.h"
#include "vexlite/kqtcompat.h"

namespace {

// Named commands enter a handler of the suite's common family through the
// operation that follows the eight of the interface,
// prehook(const QString&, void*). The host cannot name the plug-ins' classes,
// so it knows that entry only by its place in the handler's table: under the
// Itanium C++ ABI the object begins with a pointer to its table, the
// interface has no virtual destructor, and a member function takes the object
// as its first argument.
bool callCommonPrehook(IKAuthorizationHandler* handler, const QString& name, void* data)
{
    using Entry = bool (*)(IKAuthorizationHandler*, const QString&, void*);
    constexpr int kCommonPrehookSlot = 8;
    const Entry* table = *reinterpret_cast<const Entry* const*>(handler);
    return table[kCommonPrehookSlot](handler, name, data);
}

bool passCommand(const QString& name, void* data)
{
    KHostProfile& host = KHostProfile::instance();
    // The lock is not held while the handler runs: it calls back into krt.
    IKAuthorizationHandler* handler = host.handler();
    const bool goOn = !handler || callCommonPrehook(handler, name, data);
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
    return KQtCompat::isNull(value) || !value.canConvert<QString>() ? defaultValue
                                                                    : value.toString();
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
    return KQtCompat::isNull(value) || !value.canConvert<bool>() ? defaultValue : value.toBool();
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
