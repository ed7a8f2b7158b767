#include "ktesthttpserver.h"

#include <QTcpSocket>

namespace AuthTest {

KTestHttpServer::KTestHttpServer(QObject* parent)
    : QObject(parent)
{
    connect(&m_server, &QTcpServer::newConnection, this, &KTestHttpServer::accept);
}

KTestHttpServer::~KTestHttpServer()
{
    for (const auto& held : qAsConst(m_hanging)) {
        if (held.first)
            held.first->abort();
    }
}

bool KTestHttpServer::listen(quint16 port)
{
    if (!m_server.listen(QHostAddress::LocalHost, port))
        return false;
    m_port = m_server.serverPort();
    return true;
}

void KTestHttpServer::close()
{
    m_server.close();
}

QUrl KTestHttpServer::url(const QString& path, const QString& host) const
{
    return QUrl(QStringLiteral("http://%1:%2%3").arg(host).arg(m_port).arg(path));
}

void KTestHttpServer::addPage(const QString& path, const QByteArray& html, Mode mode)
{
    m_pages[path] = {"HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=utf-8\r\n"
                     "Content-Length: " +
                         QByteArray::number(html.size()) + "\r\nConnection: close\r\n\r\n" + html,
                     mode};
}

void KTestHttpServer::addRedirect(const QString& path, const QUrl& location)
{
    m_pages[path] = {"HTTP/1.1 302 Found\r\nLocation: " + location.toEncoded() +
                         "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n",
                     Serve};
}

void KTestHttpServer::finishHanging()
{
    const auto held = m_hanging;
    m_hanging.clear();
    for (const auto& [socket, rest] : held) {
        if (!socket)
            continue;
        socket->write(rest);
        socket->disconnectFromHost();
    }
}

int KTestHttpServer::requestCount(const QString& path) const
{
    int count = 0;
    for (const QString& target : m_requests)
        count += QUrl(target).path() == path;
    return count;
}

void KTestHttpServer::accept()
{
    while (QTcpSocket* socket = m_server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { answer(socket); });
    }
}

// One request per connection: the server closes it after the response.
void KTestHttpServer::answer(QTcpSocket* socket)
{
    const QByteArray head = socket->property("head").toByteArray() + socket->readAll();
    socket->setProperty("head", head);
    if (!head.contains("\r\n\r\n") || socket->property("answered").toBool())
        return;
    socket->setProperty("answered", true);

    const QList<QByteArray> requestLine = head.left(head.indexOf("\r\n")).split(' ');
    const QString target = QString::fromLatin1(requestLine.value(1));
    m_requests.append(target);
    const auto page = m_pages.constFind(QUrl(target).path());
    if (page == m_pages.cend()) {
        socket->write("HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
        socket->disconnectFromHost();
        return;
    }
    if (page->mode == Serve) {
        socket->write(page->response);
        socket->disconnectFromHost();
        return;
    }
    // Headers and half the body: the page starts but never finishes.
    const int bodyStart = page->response.indexOf("\r\n\r\n") + 4;
    const int half = bodyStart + (page->response.size() - bodyStart) / 2;
    socket->write(page->response.left(half));
    m_hanging.append({socket, page->response.mid(half)});
}

} // namespace AuthTest
