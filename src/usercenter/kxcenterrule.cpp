#include "kxcenterrule.h"

#include "qcommjson.h"

#include <vex/kcommand.h>
#include <vex/kmainwindow.h>
#include <vexlite/krtproduct.h>

namespace {

KMainWindow* mainWindowAbove(const QObject* object)
{
    for (QObject* o = const_cast<QObject*>(object); o; o = o->parent()) {
        if (auto* window = qobject_cast<KMainWindow*>(o))
            return window;
    }
    return nullptr;
}

} // namespace

KMainWindow* kxHoldingMainWindow(const QObject* object)
{
    if (KMainWindow* window = mainWindowAbove(object))
        return window;
    const auto* command = qobject_cast<const KCommand*>(object);
    return command ? mainWindowAbove(command->host()) : nullptr;
}

bool kxHasUserCenter(const QObject* command, const Json::Value& info)
{
    const bool company = QComm::jsonGetBool(info, QStringLiteral("IsCompanyAccount"), false);
    if (!company && !krt::product::isSupported(QStringLiteral("SimplifiedUserCenter")))
        return false;
    // The window the command sits in, not whichever was active last.
    const KMainWindow* window = kxHoldingMainWindow(command);
    return !(window && window->isEmbedding());
}
