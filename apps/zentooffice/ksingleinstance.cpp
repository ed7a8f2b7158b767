#include "ksingleinstance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalSocket>
#include <QLockFile>
#include <QStandardPaths>

namespace {

constexpr int kConnectTimeoutMs = 1000;
constexpr int kAnswerTimeoutMs = 5000;
constexpr int kLockTimeoutMs = 5000;

} // namespace

KSingleInstance::KSingleInstance(const QString& key, QObject* parent)
    : QObject(parent)
{
    // Created 0700 if missing and checked to be the user's own.
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (!runtime.isEmpty()) {
        const QByteArray hash =
            QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
        m_socketPath = QDir(runtime).filePath(
            QStringLiteral("zentooffice-%1.socket").arg(QString::fromLatin1(hash)));
    }
    connect(&m_server, &QLocalServer::newConnection, this, &KSingleInstance::acceptConnections);
}

KSingleInstance::~KSingleInstance() = default;

KSingleInstance::Role KSingleInstance::start(const QStringList& arguments)
{
    if (m_socketPath.isEmpty()) {
        m_error = tr("no runtime directory for the instance's socket");
        return Alone;
    }
    const QString lockPath = m_socketPath + QStringLiteral(".lock");
    QLockFile lock(lockPath);
    if (!lock.tryLock(kLockTimeoutMs)) {
        m_error = tr("cannot lock %1").arg(lockPath);
        return Alone;
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
    // Whatever socket file is there was left behind by a host that died.
    QLocalServer::removeServer(m_socketPath);
    if (!m_server.listen(m_socketPath)) {
        m_error = m_server.errorString();
        return Alone;
    }
    return Primary;
}

KSingleInstance::Delivery KSingleInstance::forward(const QStringList& arguments)
{
    QLocalSocket socket;
    socket.connectToServer(m_socketPath);
    // A listening socket accepts at once, however busy its host is.
    if (!socket.waitForConnected(kConnectTimeoutMs))
        return NobodyListens;
    const QJsonObject message{{QStringLiteral("open"), QJsonArray::fromStringList(arguments)}};
    socket.write(QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n');
    if (!socket.waitForBytesWritten(kAnswerTimeoutMs))
        return NotTaken;
    while (!socket.canReadLine()) {
        if (!socket.waitForReadyRead(kAnswerTimeoutMs))
            return NotTaken;
    }
    return socket.readLine().trimmed() == "ok" ? Delivered : NotTaken;
}

void KSingleInstance::acceptConnections()
{
    while (QLocalSocket* socket = m_server.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
            if (!socket->canReadLine()) {
                if (socket->bytesAvailable() > kMaxMessageSize)
                    socket->abort();
                return;
            }
            const QJsonDocument message = QJsonDocument::fromJson(socket->readLine());
            const QJsonValue open = message.object().value(QStringLiteral("open"));
            if (!open.isArray()) {
                socket->abort();
                return;
            }
            QStringList arguments;
            const QJsonArray list = open.toArray();
            for (const QJsonValue& argument : list)
                arguments << argument.toString();
            socket->write("ok\n");
            socket->flush();
            socket->disconnectFromServer();
            emit argumentsReceived(arguments);
        });
    }
}
