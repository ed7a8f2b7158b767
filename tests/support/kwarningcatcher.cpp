#include "kwarningcatcher.h"

#include <QMutex>

namespace AuthTest {

namespace {

// Warnings may come from any thread (watchdogs, the thread pool).
QMutex g_lock;
QStringList g_caught;

} // namespace

KWarningCatcher::KWarningCatcher()
    : m_previous(qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context,
                                           const QString& message) {
        const QMutexLocker locker(&g_lock);
        const QLatin1String category(context.category ? context.category : "default");
        // QtWebEngine on the offscreen platform, which has no OpenGL.
        if (type == QtWarningMsg && message != QLatin1String("No suitable graphics backend found"))
            g_caught.append(category == QLatin1String("default")
                                ? message
                                : category + QLatin1String(": ") + message);
    }))
{
    const QMutexLocker locker(&g_lock);
    g_caught.clear();
}

KWarningCatcher::~KWarningCatcher()
{
    qInstallMessageHandler(m_previous);
}

QStringList KWarningCatcher::warnings() const
{
    const QMutexLocker locker(&g_lock);
    return g_caught;
}

} // namespace AuthTest
