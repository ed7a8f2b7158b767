#include "ksingleinstance.h"

#include "kinstancemessage.h"
#include "zentoofficelogging.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <QStandardPaths>

namespace {

constexpr int kConnectTimeoutMs = 1000;
constexpr int kAnswerTimeoutMs = 5000;
constexpr int kLockTimeoutMs = 5000;
// Later processes at once, and how long each may take: a handful of
// documents opened together from a file manager fit.
constexpr int kMaxConnections = 8;
constexpr int kMessageTimeoutMs = 5000;
constexpr int kWatchIntervalMs = 2000;

} // namespace

KSingleInstance::KSingleInstance(const QString& key, QObject* parent)
    : QObject(parent)
    , m_server(new QLocalServer(this))
    , m_limiter(kMaxConnections, kMessageTimeoutMs)
{
    // Created 0700 if missing and checked to be the user's own.
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (!runtime.isEmpty()) {
        const QByteArray hash =
            QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
        m_socketPath = QDir(runtime).filePath(
            QStringLiteral("zentooffice-%1.socket").arg(QString::fromLatin1(hash)));
    }
    connect(m_server, &QLocalServer::newConnection, this, &KSingleInstance::acceptConnections);
    m_watch.setInterval(kWatchIntervalMs);
    connect(&m_watch, &QTimer::timeout, this, &KSingleInstance::checkListening);
}

KSingleInstance::~KSingleInstance()
{
    // Unreachable before the lock goes, never the other way round.
    m_server->close();
}

void KSingleInstance::setLimits(int maxConnections, int timeoutMs)
{
    m_limiter.setLimits(maxConnections, timeoutMs);
}

KSingleInstance::Role KSingleInstance::start(const QStringList& arguments)
{
    if (m_socketPath.isEmpty()) {
        m_error = tr("no runtime directory for the instance's socket");
        return Alone;
    }
    const QString lockPath = m_socketPath + QStringLiteral(".lock");
    QLockFile lock(lockPath);
    if (!lock.tryLock(kLockTimeoutMs)) {
        m_error = tr("another start on this profile holds %1").arg(lockPath);
        return Unanswered;
    }
    switch (forward(arguments)) {
    case Delivered:
        return Forwarded;
    case NotTaken:
        // It may only be busy: its socket stays.
        m_error = tr("the running host did not take the arguments");
        return Unanswered;
    case NobodyListens:
        break;
    }
    // Held for good: whoever holds it is the profile's host, reachable or
    // not. Only its process's death frees it, never its age.
    m_running = std::make_unique<QLockFile>(m_socketPath + QStringLiteral(".running"));
    m_running->setStaleLockTime(0);
    if (!m_running->tryLock(0)) {
        qint64 pid = 0;
        QString host;
        QString application;
        m_running->getLockInfo(&pid, &host, &application);
        m_running.reset();
        m_error = tr("a host runs on this profile (process %1) but cannot be reached").arg(pid);
        return Unanswered;
    }
    m_watch.start();
    listen();
    return Primary;
}

KSingleInstance::Delivery KSingleInstance::forward(const QStringList& arguments)
{
    QLocalSocket socket;
    socket.connectToServer(m_socketPath);
    // A listening socket accepts at once, however busy its host is.
    if (!socket.waitForConnected(kConnectTimeoutMs))
        return NobodyListens;
    socket.write(KInstanceMessage::encode(arguments));
    if (!socket.waitForBytesWritten(kAnswerTimeoutMs))
        return NotTaken;
    while (!socket.canReadLine()) {
        if (!socket.waitForReadyRead(kAnswerTimeoutMs))
            return NotTaken;
    }
    return socket.readLine().trimmed() == "ok" ? Delivered : NotTaken;
}

bool KSingleInstance::listen()
{
    // Only the lock's holder gets here: any socket file there is a dead
    // host's, or this host's own that failed.
    m_server->close();
    QLocalServer::removeServer(m_socketPath);
    if (!m_server->listen(m_socketPath)) {
        m_error = m_server->errorString();
        return false;
    }
    m_error.clear();
    return true;
}

void KSingleInstance::checkListening()
{
    // A listener closes for good, deleting its file, when accepting fails
    // (out of descriptors), and the file can be deleted under it. A failed
    // listen() is tried again, too.
    if (m_server->isListening() && QFileInfo::exists(m_socketPath))
        return;
    const QString reason = m_server->errorString();
    if (listen()) {
        qCWarning(lcZentoOffice, "listening again on %s, which had failed or gone: %s",
                  qUtf8Printable(m_socketPath),
                  reason.isEmpty() ? "deleted" : qUtf8Printable(reason));
    }
}

void KSingleInstance::acceptConnections()
{
    while (QLocalSocket* socket = m_server->nextPendingConnection()) {
        // Turned away when full: the later process says so and ends.
        if (!m_limiter.hasRoom()) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        m_limiter.admit(socket);
        socket->setReadBufferSize(KInstanceMessage::kMaxSize + 1);
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { readMessage(socket); });
    }
}

void KSingleInstance::readMessage(QLocalSocket* socket)
{
    if (!socket->canReadLine() && socket->bytesAvailable() <= KInstanceMessage::kMaxSize)
        return;
    const std::optional<QStringList> arguments =
        socket->canReadLine() ? KInstanceMessage::decode(socket->readLine()) : std::nullopt;
    if (!arguments) {
        socket->abort();
        socket->deleteLater();
        return;
    }
    socket->write("ok\n");
    socket->flush();
    socket->disconnectFromServer();
    emit argumentsReceived(*arguments);
}
