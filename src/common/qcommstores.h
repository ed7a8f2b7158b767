#ifndef QCOMMSTORES_H
#define QCOMMSTORES_H

#include <QString>
#include <QVariant>

// One accessor pair per settings store of the cloud-document client, so no
// caller spells a store's key path itself. Reads return the stored value, or
// the default when absent, as text; writes store the value as it is under
// the per-user root. Each call opens the store, does one thing and closes it.
namespace QComm {

QString readOldNimboRegValue(const QString& key, const QVariant& defaultValue);

QString readNimboRegValue(const QString& key, const QVariant& defaultValue);
void writeNimboRegValue(const QString& key, const QVariant& value);
QString readNimboRegValue(const QString& group, const QString& key, const QVariant& defaultValue);
void writeNimboRegValue(const QString& group, const QString& key, const QVariant& value);

QString readNimboUserInfoRegValue(const QString& key, const QVariant& defaultValue);
void writeNimboUserInfoRegValue(const QString& key, const QVariant& value);
// Removes from the native settings file named after the user-info path, not
// from the store the two functions above use.
void removeNimboUserInfoRegValue(const QString& key);

// These two fall back to the machine-wide root when the per-user text is empty.
QString readZentoCommonRegValue(const QString& key, const QVariant& defaultValue);
void writeZentoCommonRegValue(const QString& key, const QVariant& value);
QString readDeskhiveRegValue(const QString& key, const QVariant& defaultValue);
void writeDeskhiveRegValue(const QString& key, const QVariant& value);
QString readDeskhiveRegValue(const QString& group, const QString& key,
                             const QVariant& defaultValue);
void writeDeskhiveRegValue(const QString& group, const QString& key, const QVariant& value);

QString readNimboCloudDiskRegValue(const QString& key, const QVariant& defaultValue);
void writeNimboCloudDiskRegValue(const QString& key, const QVariant& value);

QString readNimboNseRegValue(const QString& key, const QVariant& defaultValue);
void writeNimboNseRegValue(const QString& key, const QVariant& value);

// "/group/key", for values kept in a file-based settings object instead.
QString makeIniKey(const QString& group, const QString& key);

} // namespace QComm

#endif // QCOMMSTORES_H
