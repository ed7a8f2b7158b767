#include "kwarningcatcher.h"

#include <QMutex>
#include <QMutexLocker>

namespace {

// Warnings may come from any thread (watchdogs, the thread pool).
QMutex& lock()
{
    static QMutex mutex;
    return mutex;
}

QStringList& caught()
{
    static QStringList list;
    return list;
}

void collect(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type != QtWarningMsg)
        return;
    QMutexLocker locker(&lock());
    caught().append(message);
}

} // namespace

KWarningCatcher::KWarningCatcher()
    : m_previous(qInstallMessageHandler(collect))
{
    clear();
}

KWarningCatcher::~KWarningCatcher()
{
    qInstallMessageHandler(m_previous);
    clear();
}

QStringList KWarningCatcher::warnings() const
{
    QMutexLocker locker(&lock());
    return caught();
}

void KWarningCatcher::clear()
{
    QMutexLocker locker(&lock());
    caught().clear();
}
