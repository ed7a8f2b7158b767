#include "qcommstores.h"

#include "qcommstorepaths.h"

#include <vexlite/khksoftwaresettings.h>

#include <QDir>

namespace {

QString read(KHKSoftwareSettings::HKEY root, const QString& path, const QString& key,
             const QVariant& defaultValue)
{
    KHKSoftwareSettings settings(root, path);
    return settings.value(key, defaultValue).toString();
}

void write(const QString& path, const QString& key, const QVariant& value)
{
    KHKSoftwareSettings settings(KHKSoftwareSettings::CurrentUser, path);
    settings.setValue(key, value);
}

// An empty per-user text, stored or defaulted, defers to the machine root.
QString readWithFallback(const QString& path, const QString& key, const QVariant& defaultValue)
{
    const QString text = read(KHKSoftwareSettings::CurrentUser, path, key, defaultValue);
    if (!text.isEmpty())
        return text;
    return read(KHKSoftwareSettings::LocalMachine, path, key, defaultValue);
}

QString subPath(const QString& path, const QString& group)
{
    return path + QLatin1Char('\\') + group;
}

} // namespace

namespace QComm {

QString readOldNimboRegValue(const QString& key, const QVariant& defaultValue)
{
    return read(KHKSoftwareSettings::CurrentUser, kOldNimboStorePath, key, defaultValue);
}

QString readNimboRegValue(const QString& key, const QVariant& defaultValue)
{
    return read(KHKSoftwareSettings::CurrentUser, kNimboStorePath, key, defaultValue);
}

void writeNimboRegValue(const QString& key, const QVariant& value)
{
    write(kNimboStorePath, key, value);
}

QString readNimboRegValue(const QString& group, const QString& key, const QVariant& defaultValue)
{
    return read(KHKSoftwareSettings::CurrentUser,
                subPath(kNimboStorePath, QDir::toNativeSeparators(group)), key, defaultValue);
}

void writeNimboRegValue(const QString& group, const QString& key, const QVariant& value)
{
    write(subPath(kNimboStorePath, QDir::toNativeSeparators(group)), key, value);
}

QString readNimboUserInfoRegValue(const QString& key, const QVariant& defaultValue)
{
    return read(KHKSoftwareSettings::CurrentUser, kNimboUserInfoStorePath, key, defaultValue);
}

void writeNimboUserInfoRegValue(const QString& key, const QVariant& value)
{
    write(kNimboUserInfoStorePath, key, value);
}

void removeNimboUserInfoRegValue(const QString& key)
{
    QSettings settings(kNimboUserInfoStorePath, QSettings::NativeFormat);
    settings.remove(key);
}

QString readZentoCommonRegValue(const QString& key, const QVariant& defaultValue)
{
    return readWithFallback(kZentoCommonStorePath, key, defaultValue);
}

void writeZentoCommonRegValue(const QString& key, const QVariant& value)
{
    write(kZentoCommonStorePath, key, value);
}

QString readDeskhiveRegValue(const QString& key, const QVariant& defaultValue)
{
    return readWithFallback(kDeskhiveStorePath, key, defaultValue);
}

void writeDeskhiveRegValue(const QString& key, const QVariant& value)
{
    write(kDeskhiveStorePath, key, value);
}

QString readDeskhiveRegValue(const QString& group, const QString& key, const QVariant& defaultValue)
{
    return readWithFallback(subPath(kDeskhiveStorePath, group), key, defaultValue);
}

void writeDeskhiveRegValue(const QString& group, const QString& key, const QVariant& value)
{
    write(subPath(kDeskhiveStorePath, group), key, value);
}

QString readNimboCloudDiskRegValue(const QString& key, const QVariant& defaultValue)
{
    return read(KHKSoftwareSettings::CurrentUser, kNimboCloudDiskStorePath, key, defaultValue);
}

void writeNimboCloudDiskRegValue(const QString& key, const QVariant& value)
{
    write(kNimboCloudDiskStorePath, key, value);
}

QString readNimboNseRegValue(const QString& key, const QVariant& defaultValue)
{
    return read(KHKSoftwareSettings::CurrentUser, kNimboNseStorePath, key, defaultValue);
}

void writeNimboNseRegValue(const QString& key, const QVariant& value)
{
    write(kNimboNseStorePath, key, value);
}

QString makeIniKey(const QString& group, const QString& key)
{
    return QLatin1Char('/') + group + QLatin1Char('/') + key;
}

} // namespace QComm
