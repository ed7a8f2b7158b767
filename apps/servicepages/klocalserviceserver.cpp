#include "klocalserviceserver.h"

#include "khttprequesthead.h"

#include <QFile>
#include <QTcpSocket>
#include <QTimer>

namespace {

constexpr int kMaxConnections = 16;
constexpr int kConnectionTimeoutMs = 10000;
// A request that may still be sending (a body nobody asked for, the rest of
// a head too large) is read and dropped for a while before the connection
// ends, so the answer is not lost to a reset.
constexpr int kLingerMs = 2000;

// The product's pages under the jump base that have a page of their own
// here, with the heading and the line it shows.
struct KJumpPage
{
    const char* id;
    const char* title;
    const char* text;
};

const KJumpPage kJumpPages[] = {
    {"home_page", "Zento Office", "The product's home page."},
    {"help_page", "Zento Office Help", "Help on the suite's applications."},
    {"user_feedback_page", "Send Feedback", "Tell the Zento Office team what you think."},
    {"technical_support_page", "Technical Support", "Contact the suite's support team."},
    {"eula", "Licence Agreement", "The end-user licence agreement of Zento Office."},
};

// Connections waiting for room read no more than a head, too.
class KHeadSizedServer : public QTcpServer
{
public:
    using QTcpServer::QTcpServer;

protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto* socket = new QTcpSocket(this);
        socket->setReadBufferSize(KHttpRequestHead::kMaxSize + 1);
        if (socket->setSocketDescriptor(descriptor))
            addPendingConnection(socket);
        else
            delete socket;
    }
};

QByteArray resource(const QString& name)
{
    QFile file(QStringLiteral(":/servicepages/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray filledPage(const char* title, const char* text)
{
    QByteArray html = resource(QStringLiteral("page.html"));
    html.replace("%TITLE%", QString::fromUtf8(title).toHtmlEscaped().toUtf8());
    html.replace("%TEXT%", QString::fromUtf8(text).toHtmlEscaped().toUtf8());
    return html;
}

QByteArray reasonPhrase(int status)
{
    switch (status) {
    case 200:
        return "OK";
    case 400:
        return "Bad Request";
    case 404:
        return "Not Found";
    case 405:
        return "Method Not Allowed";
    default:
        return "Request Header Fields Too Large";
    }
}

} // namespace

KLocalServiceServer::KLocalServiceServer(QObject* parent)
    : QObject(parent)
    , m_server(new KHeadSizedServer(this))
    , m_limiter(kMaxConnections, kConnectionTimeoutMs)
{
    // The pages live in a static library, whose resource registration a
    // linker would otherwise drop.
    Q_INIT_RESOURCE(servicepages);
    // One accepted connection waits for room; the rest stay in the system's
    // queue, holding no descriptor of ours.
    m_server->setMaxPendingConnections(1);
    connect(m_server, &QTcpServer::newConnection, this, &KLocalServiceServer::acceptConnections);
    connect(&m_limiter, &KConnectionLimiter::roomFreed, this,
            &KLocalServiceServer::acceptConnections);
}

KLocalServiceServer::~KLocalServiceServer() = default;

void KLocalServiceServer::setLimits(int maxConnections, int timeoutMs)
{
    m_limiter.setLimits(maxConnections, timeoutMs);
}

bool KLocalServiceServer::listen(quint16 port)
{
    return m_server->isListening() || m_server->listen(QHostAddress::LocalHost, port);
}

QUrl KLocalServiceServer::baseUrl() const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(port()));
}

QUrl KLocalServiceServer::jumpBase() const
{
    return QUrl(baseUrl().toString() + QStringLiteral("/go"));
}

QUrl KLocalServiceServer::personalCenterUrl() const
{
    return QUrl(baseUrl().toString() + QStringLiteral("/center"));
}

QUrl KLocalServiceServer::enterpriseCenterUrl() const
{
    return QUrl(baseUrl().toString() + QStringLiteral("/admin"));
}

QUrl KLocalServiceServer::bridgePageUrl() const
{
    return QUrl(baseUrl().toString() + QStringLiteral("/bridge"));
}

void KLocalServiceServer::acceptConnections()
{
    while (m_limiter.hasRoom()) {
        QTcpSocket* socket = m_server->nextPendingConnection();
        if (!socket)
            return;
        m_limiter.admit(socket);
        m_pending.insert(socket, QByteArray());
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { readRequest(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QObject::destroyed, this, [this, socket] { m_pending.remove(socket); });
        // What came while it waited for room; it may be gone already.
        if (socket->bytesAvailable() > 0)
            readRequest(socket);
        if (socket->state() == QAbstractSocket::UnconnectedState)
            socket->deleteLater();
    }
}

void KLocalServiceServer::readRequest(QTcpSocket* socket)
{
    const auto pending = m_pending.find(socket);
    if (pending == m_pending.end()) {
        socket->readAll(); // answered already
        return;
    }
    // Enough to tell a head within the limit from one over it.
    pending->append(socket->read(KHttpRequestHead::kMaxSize + 1 - pending->size()));
    const KHttpRequestHead head = KHttpRequestHead::parse(*pending);
    if (head.state() == KHttpRequestHead::Incomplete)
        return;
    m_pending.erase(pending);
    socket->readAll(); // a body, or the rest of a head too large
    respond(socket, head);
}

void KLocalServiceServer::respond(QTcpSocket* socket, const KHttpRequestHead& head)
{
    const QByteArray method = head.method();
    int status = 200;
    QByteArray body;
    if (head.state() == KHttpRequestHead::TooLarge) {
        status = 431;
    } else if (!head.isWellFormed()) {
        status = 400;
    } else if (method != "GET" && method != "HEAD") {
        status = 405;
    } else {
        body = page(QUrl::fromEncoded(head.target()).path());
        if (body.isEmpty())
            status = 404;
    }

    QByteArray response = "HTTP/1.1 " + QByteArray::number(status) + ' ' + reasonPhrase(status) +
                          "\r\nContent-Type: text/html; charset=utf-8\r\nContent-Length: " +
                          QByteArray::number(body.size()) +
                          "\r\nCache-Control: no-store\r\nConnection: close\r\n";
    if (status == 405)
        response += "Allow: GET, HEAD\r\n";
    response += "\r\n";
    if (method != "HEAD")
        response += body;
    socket->write(response);
    if (status == 431 || head.announcesBody())
        QTimer::singleShot(kLingerMs, socket, [socket] { socket->disconnectFromHost(); });
    else
        socket->disconnectFromHost();
    emit requestServed(QString::fromLatin1(method), QString::fromLatin1(head.target()), status);
}

QByteArray KLocalServiceServer::page(const QString& path)
{
    if (path == QLatin1String("/go/launcher_page"))
        return resource(QStringLiteral("launcher.html"));
    if (path == QLatin1String("/bridge"))
        return resource(QStringLiteral("bridge.html"));
    if (path == QLatin1String("/center")) {
        return filledPage("Personal Center", "Your account, your devices and your cloud space.");
    }
    if (path == QLatin1String("/admin")) {
        return filledPage("Enterprise Center",
                          "Members, licences and shared spaces of your company.");
    }
    for (const KJumpPage& jump : kJumpPages) {
        if (path == QLatin1String("/go/") + QLatin1String(jump.id))
            return filledPage(jump.title, jump.text);
    }
    return QByteArray();
}
