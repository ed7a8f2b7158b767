// The service's pages on 127.0.0.1, fetched the way the web dialog and a
// browser fetch them, and requests no page answers.

#include "klocalserviceserver.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QtTest>

#include <memory>

class TestServicePages : public QObject
{
    Q_OBJECT

    KLocalServiceServer m_server;
    QNetworkAccessManager m_network;

private slots:
    void initTestCase()
    {
        QVERIFY(m_server.listen());
        QCOMPARE(m_server.jumpBase().toString(),
                 QString("http://127.0.0.1:%1/go").arg(m_server.port()));
    }

    // method "RAW": target is the whole request, sent over a socket as
    // clients other than browsers send it. Each gets an answer, and what no
    // browser sends ends with one all the same.
    void serves_data()
    {
        QTest::addColumn<QByteArray>("method");
        QTest::addColumn<QString>("target");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("marker"); // in the body; empty: no body

        const auto row = [](const char* tag, const char* method, const QString& target, int status,
                            const char* marker = "") {
            QTest::newRow(tag) << QByteArray(method) << target << status << QByteArray(marker);
        };
        row("launcher page, with the dialog's query", "GET",
            "/go/launcher_page?distsrc=x&lang=zh-CN&version=1&hId=2", 200, "typeof zentoctx");
        row("personal centre", "GET", "/center", 200, "<h1>Personal Center</h1>");
        row("enterprise centre", "GET", "/admin", 200, "<h1>Enterprise Center</h1>");
        row("bridge page", "GET", "/bridge", 200, "zentoctx.setOnEscPressCallback(");
        row("help page", "GET", "/go/help_page", 200, "<title>Zento Office Help</title>");
        row("head", "HEAD", "/center", 200);
        row("unknown page", "GET", "/go/nothing", 404);
        row("post", "POST", "/center", 405);
        const QString large = "GET /center HTTP/1.1\r\nX: " + QString(20000, 'a');
        row("HTTP/1.0, no header lines", "RAW", "GET /center HTTP/1.0\r\n\r\n", 200);
        row("bare line feeds, empty line first", "RAW", "\nGET /admin HTTP/1.1\nHost: x\n\n", 200);
        row("not http", "RAW", "hello\r\n\r\n", 400);
        row("no version", "RAW", "GET /center\r\n\r\n", 400);
        row("absolute target", "RAW", "GET http://x/center HTTP/1.1\r\n\r\n", 400);
        row("head too large, unfinished", "RAW", large, 431);
        row("head too large, in one piece", "RAW", large + "\r\n\r\n", 431);
    }

    void serves()
    {
        QFETCH(QByteArray, method);
        QFETCH(QString, target);
        QFETCH(int, status);
        QFETCH(QByteArray, marker);

        if (method == "RAW") {
            QTcpSocket socket;
            socket.connectToHost(QHostAddress::LocalHost, m_server.port());
            socket.write(target.toUtf8());
            QByteArray answer;
            QTRY_VERIFY_WITH_TIMEOUT((answer += socket.readAll()).contains("\r\n\r\n"), 5000);
            QVERIFY2(answer.startsWith("HTTP/1.1 " + QByteArray::number(status)),
                     answer.constData());
            return;
        }
        QSignalSpy served(&m_server, &KLocalServiceServer::requestServed);
        QNetworkRequest request(QUrl(m_server.baseUrl().toString() + target));
        request.setHeader(QNetworkRequest::ContentTypeHeader, "application/x-www-form-urlencoded");
        const std::unique_ptr<QNetworkReply> reply(
            method == "POST" ? m_network.post(request, QByteArray("x=1"))
                             : m_network.sendCustomRequest(request, method));
        QSignalSpy finished(reply.get(), &QNetworkReply::finished);
        QVERIFY(finished.wait(5000));
        QCOMPARE(reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), status);
        const QByteArray body = reply->readAll();
        QVERIFY2(marker.isEmpty() ? body.isEmpty() : body.contains(marker), body.constData());
        if (status == 200) {
            QVERIFY(reply->header(QNetworkRequest::ContentTypeHeader)
                        .toString()
                        .startsWith("text/html"));
        }
        QCOMPARE(served.count(), 1);
        QCOMPARE(served.first(), (QVariantList{QString(method), target, status}));
    }

    // Clients that connect and send nothing, or half a head, hold a
    // connection only until its time is up; one more connection than the
    // server serves at once waits for that, then gets its page.
    void limitsConnections_data()
    {
        QTest::addColumn<QByteArray>("held"); // what the holding clients send

        QTest::newRow("idle") << QByteArray();
        QTest::newRow("half a head") << QByteArray("GET /center HTTP/1.1\r\nHost: x\r\n");
    }

    void limitsConnections()
    {
        QFETCH(QByteArray, held);

        constexpr int timeoutMs = 300;
        KLocalServiceServer server;
        server.setLimits(2, timeoutMs);
        QVERIFY(server.listen());
        QElapsedTimer clock;
        clock.start();
        QTcpSocket holders[2];
        for (QTcpSocket& holder : holders) {
            holder.connectToHost(QHostAddress::LocalHost, server.port());
            holder.write(held);
        }
        QTcpSocket late;
        late.connectToHost(QHostAddress::LocalHost, server.port());
        late.write("GET /center HTTP/1.1\r\nHost: x\r\n\r\n");
        QByteArray answer;
        QTRY_VERIFY_WITH_TIMEOUT((answer += late.readAll()).contains("<h1>Personal Center</h1>"),
                                 5000);
        QVERIFY2(clock.elapsed() >= timeoutMs, qPrintable(QString::number(clock.elapsed())));
        for (QTcpSocket& holder : holders)
            QTRY_COMPARE(holder.state(), QAbstractSocket::UnconnectedState);
    }
};

QTEST_MAIN(TestServicePages)
#include "tst_servicepages.moc"
