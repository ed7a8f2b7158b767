#ifndef KSINGLEINSTANCE_H
#define KSINGLEINSTANCE_H

#include <QLocalServer>
#include <QObject>
#include <QStringList>

// One host per user and profile: the first process listens on a local
// socket in the user's runtime directory (private to the user); a later
// one hands its arguments over that socket to the first and ends.
//
// Becoming the first is decided under a lock file beside the socket, so
// two processes starting together cannot both listen, and a socket left
// behind by a process that died is recognised (nobody answers) and
// replaced.
//
// The exchange: the later process sends one line, a JSON object
// {"open": [arguments]}, and waits for the line "ok" that the first sends
// once it has taken the arguments.
class KSingleInstance : public QObject
{
    Q_OBJECT

public:
    enum Role {
        Primary,    // listening: later processes reach this one
        Forwarded,  // a running host took the arguments
        Unanswered, // a host listens but did not take them in time
        Alone,      // neither (no runtime directory, no socket): run on
    };

    // The key names the instance: for example the profile directory.
    explicit KSingleInstance(const QString& key, QObject* parent = nullptr);
    ~KSingleInstance() override;

    Role start(const QStringList& arguments);
    // Why start() answered Unanswered or Alone.
    QString errorString() const { return m_error; }
    QString socketPath() const { return m_socketPath; }

    // The limit on one message; a longer one is dropped.
    static constexpr int kMaxMessageSize = 1024 * 1024;

signals:
    // Arguments a later process handed over; empty when it had none (the
    // user started the program again: show the window).
    void argumentsReceived(const QStringList& arguments);

private slots:
    void acceptConnections();

private:
    enum Delivery { NobodyListens, Delivered, NotTaken };
    Delivery forward(const QStringList& arguments);

    QString m_socketPath;
    QString m_error;
    QLocalServer m_server;
};

#endif // KSINGLEINSTANCE_H
