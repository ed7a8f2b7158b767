#ifndef KTESTHTTPSERVER_H
#define KTESTHTTPSERVER_H

#include <QHash>
#include <QList>
#include <QPointer>
#include <QStringList>
#include <QTcpServer>
#include <QUrl>

class QTcpSocket;

namespace AuthTest {

// A small HTTP/1.1 server on 127.0.0.1 for the web suites. Each path has a
// page that is served at once, or held back: headers and the first half of
// the body go out, the rest only on finishHanging(), so the page never
// finishes loading until then. Unknown paths get 404. close() stops
// listening, so connections to the port are refused; listen() on the same
// port serves again.
class KTestHttpServer : public QObject
{
    Q_OBJECT

public:
    enum Mode { Serve, Hang };

    explicit KTestHttpServer(QObject* parent = nullptr);
    ~KTestHttpServer() override;

    // On the given port, or any free one for 0.
    bool listen(quint16 port = 0);
    void close();
    quint16 port() const { return m_port; }

    // http://<host>:<port><path>; "localhost" is a different origin.
    QUrl url(const QString& path, const QString& host = QStringLiteral("127.0.0.1")) const;

    void addPage(const QString& path, const QByteArray& html, Mode mode = Serve);
    void addRedirect(const QString& path, const QUrl& location);
    void finishHanging();

    // The request targets (path and query), oldest first.
    QStringList requests() const { return m_requests; }
    int requestCount(const QString& path) const;

private slots:
    void accept();

private:
    struct Page
    {
        QByteArray response;
        Mode mode = Serve;
    };

    void answer(QTcpSocket* socket);

    QTcpServer m_server;
    quint16 m_port = 0;
    QHash<QString, Page> m_pages;
    QStringList m_requests;
    QList<QPair<QPointer<QTcpSocket>, QByteArray>> m_hanging;
};

} // namespace AuthTest

#endif // KTESTHTTPSERVER_H
