#include "kconnectionlimiter.h"

KConnectionLimiter::KConnectionLimiter(int maxConnections, int timeoutMs, QObject* parent)
    : QObject(parent)
    , m_maxConnections(maxConnections)
    , m_timeoutMs(timeoutMs)
{}

void KConnectionLimiter::setLimits(int maxConnections, int timeoutMs)
{
    m_maxConnections = maxConnections;
    m_timeoutMs = timeoutMs;
}

void KConnectionLimiter::count(QObject* socket)
{
    ++m_count;
    connect(socket, &QObject::destroyed, this, [this] {
        --m_count;
        QMetaObject::invokeMethod(this, &KConnectionLimiter::roomFreed, Qt::QueuedConnection);
    });
}
