#ifndef KLOCALSERVICESERVER_H
#define KLOCALSERVICESERVER_H

#include <QHash>
#include <QObject>
#include <QTcpServer>
#include <QUrl>

class QTcpSocket;

// The cloud service's pages on 127.0.0.1, so the web dialog's online path
// and the centres' addresses can be followed without the internet. Pages,
// each self-contained HTML:
//   /go/launcher_page     the launcher page (the web dialog's Welcome page),
//                         which talks to the dialog's "zentoctx" bridge
//   /go/<page id>         the product's other pages under the jump base
//                         (home_page, help_page, user_feedback_page,
//                         technical_support_page, eula)
//   /center, /admin       the personal and the enterprise centre
// A profile points its "JumpUrl", "PersonalCenterUrl" and
// "EnterpriseCenterUrl" product strings at jumpBase(), personalCenterUrl()
// and enterpriseCenterUrl().
//
// HTTP/1.1, GET and HEAD, one request per connection; the query is ignored.
// Unknown paths get 404, other methods 405, requests that are not HTTP 400;
// a request head over 16 KiB, or one not complete within 10 s, ends the
// connection.
class KLocalServiceServer : public QObject
{
    Q_OBJECT

public:
    explicit KLocalServiceServer(QObject* parent = nullptr);
    ~KLocalServiceServer() override;

    // On the given port of 127.0.0.1, or a free one for 0. False when the
    // port cannot be had.
    bool listen(quint16 port = 0);
    bool isListening() const { return m_server.isListening(); }
    quint16 port() const { return m_server.serverPort(); }

    // http://127.0.0.1:<port>, and the addresses below it.
    QUrl baseUrl() const;
    QUrl jumpBase() const;
    QUrl personalCenterUrl() const;
    QUrl enterpriseCenterUrl() const;

signals:
    // After each answer: the method and target (path and query) as the
    // client sent them, and the status given.
    void requestServed(const QString& method, const QString& target, int status);

private slots:
    void acceptConnections();

private:
    void readRequest(QTcpSocket* socket);
    void respond(QTcpSocket* socket, const QByteArray& head, bool tooLarge);
    static QByteArray page(const QString& path);

    // Before the server: its connections, destroyed with it, still find
    // the table when they say they are gone.
    QHash<QTcpSocket*, QByteArray> m_pending;
    QTcpServer m_server;
};

#endif // KLOCALSERVICESERVER_H
