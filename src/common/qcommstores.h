#ifndef AUTHCOMMON_QCOMMSTORES_H
#define AUTHCOMMON_QCOMMSTORES_H

#include "authcommon_export.h"

#include <QString>
#include <QVariant>

// One accessor pair per settings store of the cloud-document client, so no
// caller spells a store's key path itself. Reads return the stored value, or
// the default when absent, as text; writes store the value as it is under
// the per-user root. Each call opens the store, does one thing and closes it.
namespace QComm {

AUTHCOMMON_EXPORT QString readOldNimboRegValue(const QString& key, const QVariant& defaultValue);

AUTHCOMMON_EXPORT QString readNimboRegValue(const QString& key, const QVariant& defaultValue);
AUTHCOMMON_EXPORT void writeNimboRegValue(const QString& key, const QVariant& value);
AUTHCOMMON_EXPORT QString readNimboRegValue(const QString& group, const QString& key,
                                            const QVariant& defaultValue);
AUTHCOMMON_EXPORT void writeNimboRegValue(const QString& group, const QString& key,
                                          const QVariant& value);

AUTHCOMMON_EXPORT QString readNimboUserInfoRegValue(const QString& key,
                                                    const QVariant& defaultValue);
AUTHCOMMON_EXPORT void writeNimboUserInfoRegValue(const QString& key, const QVariant& value);
// Removes from the native settings file named after the user-info path, not
// from the store the two functions above use.
AUTHCOMMON_EXPORT void removeNimboUserInfoRegValue(const QString& key);

// These two fall back to the machine-wide root when the per-user text is empty.
AUTHCOMMON_EXPORT QString readZentoCommonRegValue(const QString& key, const QVariant& defaultValue);
AUTHCOMMON_EXPORT void writeZentoCommonRegValue(const QString& key, const QVariant& value);
AUTHCOMMON_EXPORT QString readDeskhiveRegValue(const QString& key, const QVariant& defaultValue);
AUTHCOMMON_EXPORT void writeDeskhiveRegValue(const QString& key, const QVariant& value);
AUTHCOMMON_EXPORT QString readDeskhiveRegValue(const QString& group, const QString& key,
                                               const QVariant& defaultValue);
AUTHCOMMON_EXPORT void writeDeskhiveRegValue(const QString& group, const QString& key,
                                             const QVariant& value);

AUTHCOMMON_EXPORT QString readNimboCloudDiskRegValue(const QString& key,
                                                     const QVariant& defaultValue);
AUTHCOMMON_EXPORT void writeNimboCloudDiskRegValue(const QString& key, const QVariant& value);

AUTHCOMMON_EXPORT QString readNimboNseRegValue(const QString& key, const QVariant& defaultValue);
AUTHCOMMON_EXPORT void writeNimboNseRegValue(const QString& key, const QVariant& value);

// "/group/key", for values kept in a file-based settings object instead.
AUTHCOMMON_EXPORT QString makeIniKey(const QString& group, const QString& key);

} // namespace QComm

#endif // AUTHCOMMON_QCOMMSTORES_H
