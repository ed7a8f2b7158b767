#ifndef KCONNECTIONLIMITER_H
#define KCONNECTIONLIMITER_H

#include <QObject>
#include <QTimer>

// How many connections a local server serves at once, and for how long
// each. A server takes a connection only while there is room (the others
// wait, not yet accepted, in the system's queue) and each one it takes is
// cut when its time is up, so no client, however many connections it
// opens or however slowly it sends, uses up the process's file
// descriptors or holds a connection for good.
class KConnectionLimiter : public QObject
{
    Q_OBJECT

public:
    KConnectionLimiter(int maxConnections, int timeoutMs, QObject* parent = nullptr);

    // For connections taken from now on.
    void setLimits(int maxConnections, int timeoutMs);
    int maxConnections() const { return m_maxConnections; }
    int timeoutMs() const { return m_timeoutMs; }

    bool hasRoom() const { return m_count < m_maxConnections; }

    // Counts the socket until it is destroyed, and aborts and deletes it
    // once its time is up.
    template <typename Socket>
    void admit(Socket* socket)
    {
        count(socket);
        QTimer::singleShot(m_timeoutMs, socket, [socket] {
            socket->abort();
            socket->deleteLater();
        });
    }

signals:
    // A connection went: the server may take the next waiting one. Queued,
    // so the server never takes one from inside a socket's destruction.
    void roomFreed();

private:
    void count(QObject* socket);

    int m_maxConnections;
    int m_timeoutMs;
    int m_count = 0;
};

#endif // KCONNECTIONLIMITER_H
