#include "vexlite/krtinfocollect.h"

#include "khostprofile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMutex>
#include <QMutexLocker>

namespace {

// Lines of one record must not interleave when several threads collect.
QMutex g_fileLock;

void append(QJsonObject record)
{
    record.insert(QLatin1String("time"),
                  QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs));
    const QByteArray line = QJsonDocument(record).toJson(QJsonDocument::Compact) + '\n';
    const QString path = KHostProfile::instance().infoCollectFile();

    const QMutexLocker lock(&g_fileLock);
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).absolutePath()) ||
        !file.open(QIODevice::WriteOnly | QIODevice::Append) || file.write(line) != line.size())
        qWarning("vexlite: cannot record a usage event in %s: %s", qPrintable(path),
                 qPrintable(file.errorString()));
}

} // namespace

namespace krt {
namespace infocollect {

void collectExpEvent(const QString& expId, const QString& expVar, const QString& eventName,
                     const QString& eventCategory, const QString& eventLable, int eventValue,
                     const QString& viewName)
{
    append({{QLatin1String("kind"), QLatin1String("event")},
            {QLatin1String("expId"), expId},
            {QLatin1String("expVar"), expVar},
            {QLatin1String("eventName"), eventName},
            {QLatin1String("eventCategory"), eventCategory},
            {QLatin1String("eventLable"), eventLable},
            {QLatin1String("eventValue"), eventValue},
            {QLatin1String("viewName"), viewName}});
}

void collectExpView(const QString& expId, const QString& expVar, const QString& viewName,
                    const QString& viewCategory)
{
    append({{QLatin1String("kind"), QLatin1String("view")},
            {QLatin1String("expId"), expId},
            {QLatin1String("expVar"), expVar},
            {QLatin1String("viewName"), viewName},
            {QLatin1String("viewCategory"), viewCategory}});
}

} // namespace infocollect
} // namespace krt
