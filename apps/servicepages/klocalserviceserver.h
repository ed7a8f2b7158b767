#ifndef KLOCALSERVICESERVER_H
#define KLOCALSERVICESERVER_H

#include "kconnectionlimiter.h"

#include <QHash>
#include <QObject>
#include <QTcpServer>
#include <QUrl>

class KHttpRequestHead;
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
//   /bridge               a page that calls every method of the dialog's
//                         bridge and shows what each returned
// A profile points its "JumpUrl", "PersonalCenterUrl" and
// "EnterpriseCenterUrl" product strings at jumpBase(), personalCenterUrl()
// and enterpriseCenterUrl().
//
// HTTP/1.x, GET and HEAD, one request per connection; the query is ignored.
// Unknown paths get 404, other methods 405, requests that are not HTTP 400,
// heads over 16 KiB 431 (KHttpRequestHead). At most 16 connections are
// served at once (the rest wait their turn) and each ends after 10 s,
// answered or not.
class KLocalServiceServer : public QObject
{
    Q_OBJECT

public:
    explicit KLocalServiceServer(QObject* parent = nullptr);
    ~KLocalServiceServer() override;

    // On the given port of 127.0.0.1, or a free one for 0. False when the
    // port cannot be had.
    bool listen(quint16 port = 0);
    bool isListening() const { return m_server->isListening(); }
    quint16 port() const { return m_server->serverPort(); }

    // How many connections are served at once, and how long each may take
    // (for connections taken from now on).
    void setLimits(int maxConnections, int timeoutMs);

    // http://127.0.0.1:<port>, and the addresses below it.
    QUrl baseUrl() const;
    QUrl jumpBase() const;
    QUrl personalCenterUrl() const;
    QUrl enterpriseCenterUrl() const;
    QUrl bridgePageUrl() const;

signals:
    // After each answer: the method and target (path and query) as the
    // client sent them, and the status given.
    void requestServed(const QString& method, const QString& target, int status);

private slots:
    void acceptConnections();

private:
    void readRequest(QTcpSocket* socket);
    void respond(QTcpSocket* socket, const KHttpRequestHead& head);
    static QByteArray page(const QString& path);

    // A child: it goes, with its connections, after every connection to
    // this object is gone.
    QTcpServer* m_server;
    QHash<QTcpSocket*, QByteArray> m_pending;
    KConnectionLimiter m_limiter;
};

#endif // KLOCALSERVICESERVER_H
