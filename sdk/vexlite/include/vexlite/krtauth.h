#ifndef VEXLITE_KRTAUTH_H
#define VEXLITE_KRTAUTH_H

#include "vexlite_global.h"

#include <QString>
#include <QVariant>

// The host's way to the authorization handler. Without a handler every
// request answers null (or the caller's default) and every command goes on.
namespace krt {
namespace auth {

VEXLITE_EXPORT QVariant getInfo(const QString& key);
VEXLITE_EXPORT QString getStringInfo(const QString& key, const QString& defaultValue = QString());
VEXLITE_EXPORT int getIntInfo(const QString& key, int defaultValue = 0);
VEXLITE_EXPORT bool getBoolInfo(const QString& key, bool defaultValue = false);

// Named commands pass through the handler before the host runs them; false
// from the handler stops the host's own handling of the command.
VEXLITE_EXPORT bool prehook(const QString& name, void* data, void* extra);
VEXLITE_EXPORT bool prehook(const QString& name, bool flag, void* data);

} // namespace auth
} // namespace krt

#endif // VEXLITE_KRTAUTH_H
