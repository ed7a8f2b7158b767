#ifndef KSINGLEINSTANCE_H
#define KSINGLEINSTANCE_H

#include "kconnectionlimiter.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <memory>

class QLocalServer;
class QLocalSocket;
class QLockFile;

// One host per user and profile: the first process listens on a local
// socket in the user's runtime directory (private to the user); a later
// one hands its arguments over that socket to the first and ends.
//
// Becoming the first is decided under a lock file beside the socket, so
// two processes starting together cannot both listen. The first holds a
// second lock file for as long as it runs: a socket left behind by a
// process that died (nobody answers, nobody holds the lock) is replaced,
// while a running host that cannot be reached is never given a rival.
// The first serves a few connections at once, each for a few seconds, and
// listens again whenever its socket fails or disappears.
//
// The exchange: the later process sends one line (KInstanceMessage) and
// waits for the line "ok" that the first sends once it has taken it.
class KSingleInstance : public QObject
{
    Q_OBJECT

public:
    enum Role {
        Primary,    // this is the host of the profile (listening, or trying to)
        Forwarded,  // a running host took the arguments
        Unanswered, // a host runs on the profile but did not take them
        Alone,      // no runtime directory for a socket: run on
    };

    // The key names the instance: for example the profile directory.
    explicit KSingleInstance(const QString& key, QObject* parent = nullptr);
    ~KSingleInstance() override;

    Role start(const QStringList& arguments);
    // Why start() answered Unanswered or Alone, or why Primary does not
    // listen (yet).
    QString errorString() const { return m_error; }
    QString socketPath() const { return m_socketPath; }

    // How many later processes are served at once (more are turned away)
    // and how long each may take to send its message.
    void setLimits(int maxConnections, int timeoutMs);
    // How often the first checks that it still listens.
    void setWatchInterval(int intervalMs) { m_watch.setInterval(intervalMs); }

signals:
    // Arguments a later process handed over; empty when it had none (the
    // user started the program again: show the window).
    void argumentsReceived(const QStringList& arguments);

private slots:
    void acceptConnections();
    void checkListening();

private:
    enum Delivery { NobodyListens, Delivered, NotTaken };
    Delivery forward(const QStringList& arguments);
    bool listen();
    void readMessage(QLocalSocket* socket);

    QString m_socketPath;
    QString m_error;
    std::unique_ptr<QLockFile> m_running;
    // A child: it goes, with its connections, after every connection to
    // this object is gone.
    QLocalServer* m_server;
    KConnectionLimiter m_limiter;
    QTimer m_watch;
};

#endif // KSINGLEINSTANCE_H
