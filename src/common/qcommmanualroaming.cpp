#include "qcommmanualroaming.h"

#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QSettings>

#include <memory>

namespace {

const QLatin1String kFileGroup("file");

// The list of dir, entered at its "file" group; written back when destroyed.
std::unique_ptr<QSettings> openList(const QString& dir)
{
    auto list = std::make_unique<QSettings>(
        QStringLiteral("%1%2%3").arg(dir, QDir::separator(), QComm::MANUAL_ROAMING_CONFIG_FILE),
        QSettings::IniFormat);
    list->setIniCodec("UTF-8");
    list->beginGroup(kFileGroup);
    return list;
}

QString keyOf(const QString& file)
{
    // A path is taken up to its first zero character, as the client does.
    QString key = QString::fromLatin1(QByteArray(file.toUtf8().constData()).toBase64());
    // The settings class drops a "/" that ends a key; a "=" after it, which
    // Base64 readers skip, keeps it. UTF-8 never makes the other keys it
    // would change (one that starts with "/" or holds "//"): those need
    // bytes from 0xFC up.
    if (key.endsWith(QLatin1Char('/')))
        key += QLatin1Char('=');
    return key;
}

} // namespace

namespace QComm {

QStringList getManualRoamingFiles(const QString& dir)
{
    QStringList files;
    if (dir.isEmpty())
        return files;
    const auto list = openList(dir);
    for (const QString& key : list->allKeys()) {
        const QByteArray decoded = QByteArray::fromBase64(key.toUtf8());
        const QString name = decoded.isNull() ? QString() : QString::fromUtf8(decoded.constData());
        if (!name.isEmpty() && !files.contains(name))
            files.append(name);
    }
    return files;
}

void addManualRoamingFiles(const QString& dir, const QString& file)
{
    if (dir.isEmpty())
        return;
    const auto list = openList(dir);
    list->setValue(keyOf(file), static_cast<uint>(QDateTime::currentDateTime().toSecsSinceEpoch()));
}

void delManualRoamingFiles(const QString& dir, const QString& file)
{
    if (dir.isEmpty())
        return;
    const auto list = openList(dir);
    list->remove(keyOf(file));
    list->endGroup();
}

} // namespace QComm
