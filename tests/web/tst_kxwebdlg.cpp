// The web dialog against pages of a local server: when it shows, the one
// switch to the fallback page, its size from page script, the close and
// Escape callbacks, sign-in through the cloud simulator, links and
// window.open going to the system, and the library's offline page.

#include "ktestappdir.h"
#include "ktestenvironment.h"
#include "ktesthttpserver.h"
#include "kwarningcatcher.h"
#include "kwebdlgdriver.h"

#include <kdeskhivelib.h>
#include <kxauthwebpage.h>
#include <kxauthwebview.h>
#include <kxwebdlg.h>
#include <kxwebresources.h>

#include <deskhive/nimboclient.h>
#include <vex/kresourcescheme.h>
#include <vexlite/hostcontrol.h>

#include <QUrlQuery>
#include <QWebElement>
#include <QWebFrame>
#include <QtTest>

using namespace AuthTest;

namespace {

const QByteArray kPage = "<html><head><title>Service</title></head><body>"
                         "<a id='link' href='#'>a link</a> <p id='text'>service page</p>"
                         "</body></html>";

// A port nothing listens on: connections to it are refused.
QUrl refusedUrl(const QString& path)
{
    KTestHttpServer server;
    server.listen();
    return server.url(path);
}

// The address the dialog loads for url: the host's facts appended.
QUrl withItems(QUrl url, const QString& lang = "en-US")
{
    QUrlQuery query(url);
    query.addQueryItem("distsrc", "mc-test");
    query.addQueryItem("lang", lang);
    query.addQueryItem("version", "12.1.0.17890");
    query.addQueryItem("hId", "hd-42");
    url.setQuery(query);
    return url;
}

QString pageText(KxWebDlg& dialog, const QString& selector)
{
    return mainFrame(dialog)->findFirstElement(selector).toPlainText();
}

} // namespace

class TestKxWebDlg : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void initTestCase()
    {
        qputenv("DESKHIVE_STATE", (m_env.rootPath() + "/deskhive-state.json").toUtf8());
    }

    void init()
    {
        m_env.resetHost();
        KResourceScheme::install();
        krt::hostcontrol::setVersion("12.1.0.17890");
        krt::hostcontrol::setDistributionChannel("mc-test");
        krt::hostcontrol::setHardwareId("hd-42");
        INimboClient* client = KDeskhiveLib::instance()->nimboClientInstance();
        QVERIFY2(client, "the cloud simulator is not beside the suite");
        client->logout();
    }

    void construction()
    {
        KxWebDlg dialog(QUrl("http://127.0.0.1:1/"));
        QCOMPARE(dialog.size(), QSize(602, 341));
        QCOMPARE(dialog.minimumSize(), dialog.maximumSize());
        QCOMPARE(dialog.titleColor(), QColor("#6C7079"));
        KxAuthWebView* view = webView(dialog);
        QVERIFY(qobject_cast<KxAuthWebPage*>(view->page()));
        QCOMPARE(view->contextMenuPolicy(), Qt::NoContextMenu);
        QCOMPARE(view->page()->linkDelegationPolicy(), QWebPage::DelegateAllLinks);
        // The page came with setPage after the view was made: no factory.
        QVERIFY(!view->page()->pluginFactory());

        // Not placed yet: only the size changes.
        dialog.resize(300, 200);
        QCOMPARE(dialog.geometry(), QRect(0, 0, 302, 241));
    }

    void queryItems_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("channel");
        QTest::addColumn<QString>("request");

        const QString items = "distsrc=mc-test&lang=en-US&version=12.1.0.17890&hId=hd-42";
        QTest::newRow("plain") << "/page"
                               << "en_US"
                               << "mc-test"
                               << "/page?" + items;
        QTest::newRow("own query first") << "/page?from=menu"
                                         << "en_US"
                                         << "mc-test"
                                         << "/page?from=menu&" + items;
        QTest::newRow("Chinese")
            << "/page"
            << "zh_CN"
            << "mc-test"
            << "/page?distsrc=mc-test&lang=zh-CN&version=12.1.0.17890&hId=hd-42";
        QTest::newRow("no channel") << "/page"
                                    << "en_US"
                                    << ""
                                    << "/page?distsrc=&lang=en-US&version=12.1.0.17890&hId=hd-42";
    }

    void queryItems()
    {
        QFETCH(QString, target);
        QFETCH(QString, language);
        QFETCH(QString, channel);
        QFETCH(QString, request);

        krt::hostcontrol::setLanguage(language);
        krt::hostcontrol::setDistributionChannel(channel);
        KTestHttpServer server;
        QVERIFY(server.listen());
        server.addPage("/page", kPage);
        KxWebDlg dialog(server.url(target));
        execShown(dialog);
        QCOMPARE(server.requests(), QStringList{request});
    }

    // When the dialog shows: at once after a load, after the one-second wait
    // for a page that never finishes, and after one switch to the fallback.
    void loading_data()
    {
        QTest::addColumn<QString>("page");     // "serve", "hang", "refuse"
        QTest::addColumn<QString>("fallback"); // "none", "serve", "refuse", "same"
        QTest::addColumn<int>("loads");
        QTest::addColumn<int>("timeouts");
        QTest::addColumn<bool>("onFallback");

        QTest::newRow("loads at once") << "serve"
                                       << "none" << 1 << 0 << false;
        QTest::newRow("never finishes") << "hang"
                                        << "none" << 1 << 1 << false;
        QTest::newRow("never finishes, fallback unused") << "hang"
                                                         << "serve" << 1 << 1 << false;
        QTest::newRow("refused, fallback") << "refuse"
                                           << "serve" << 2 << 0 << true;
        QTest::newRow("refused, fallback refused") << "refuse"
                                                   << "refuse" << 2 << 0 << true;
        QTest::newRow("refused, no fallback") << "refuse"
                                              << "none" << 1 << 0 << false;
        QTest::newRow("refused, fallback is the page") << "refuse"
                                                       << "same" << 1 << 0 << false;
    }

    void loading()
    {
        QFETCH(QString, page);
        QFETCH(QString, fallback);
        QFETCH(int, loads);
        QFETCH(int, timeouts);
        QFETCH(bool, onFallback);

        KTestHttpServer server;
        QVERIFY(server.listen());
        server.addPage("/page", kPage,
                       page == "hang" ? KTestHttpServer::Hang : KTestHttpServer::Serve);
        server.addPage("/offline", "<title>Offline</title>");
        const QUrl url = page == "refuse" ? refusedUrl("/page") : server.url("/page");
        QUrl fallbackUrl;
        if (fallback == "serve")
            fallbackUrl = server.url("/offline");
        else if (fallback == "refuse")
            fallbackUrl = refusedUrl("/offline");
        else if (fallback == "same")
            fallbackUrl = withItems(url);

        KxWebDlg dialog(url, nullptr, fallbackUrl);
        KxAuthWebView* view = webView(dialog);
        auto* timer = dialog.findChild<QTimer*>();
        QSignalSpy started(view, &QWebView::loadStarted);
        QSignalSpy finished(view, &QWebView::loadFinished);
        QSignalSpy timedOut(timer, &QTimer::timeout);
        QUrl shownUrl;
        const KExecRecord run = execShown(dialog, [&] {
            QVERIFY(!timer->isActive());
            shownUrl = view->url();
        });

        QCOMPARE(run.result, int(QDialog::Accepted));
        QCOMPARE(run.shows, 1);
        QCOMPARE(timer->interval(), 1000);
        QCOMPARE(timedOut.count(), timeouts);
        QCOMPARE(started.count(), loads);
        QCOMPARE(finished.count(), page == "hang" ? 0 : loads);
        QCOMPARE(shownUrl, onFallback ? fallbackUrl : withItems(url));
        if (fallback == "serve")
            QCOMPARE(server.requestCount("/offline"), onFallback ? 1 : 0);
        if (onFallback && fallback == "serve")
            QCOMPARE(server.requests().last(), QString("/offline"));
    }

    // A page that finishes after the dialog showed starts no second run.
    void lateLoadFinished()
    {
        KTestHttpServer server;
        QVERIFY(server.listen());
        server.addPage("/page", kPage, KTestHttpServer::Hang);
        KxWebDlg dialog(server.url("/page"));
        QSignalSpy finished(webView(dialog), &QWebView::loadFinished);
        KWarningCatcher warnings;
        const KExecRecord run = execShown(dialog, [&] {
            QCOMPARE(finished.count(), 0);
            server.finishHanging();
            QVERIFY(finished.wait());
            QVERIFY(finished.last().first().toBool());
            QVERIFY(dialog.isVisible());
        });
        QCOMPARE(run.result, int(QDialog::Accepted));
        QCOMPARE(run.shows, 1);
        QCOMPARE(warnings.warnings(), QStringList());
        QCOMPARE(dialog.windowTitle(), QString("Service"));
    }

    void runsAgain()
    {
        KTestHttpServer server;
        QVERIFY(server.listen());
        server.addPage("/page", kPage);
        KxWebDlg dialog(server.url("/page"));
        QCOMPARE(execShown(dialog, {}, QDialog::Accepted).result, int(QDialog::Accepted));
        QCOMPARE(execShown(dialog, {}, QDialog::Rejected).result, int(QDialog::Rejected));
        QCOMPARE(server.requestCount("/page"), 2);
    }

    void emptyAddress()
    {
        KxWebDlg dialog((QUrl()));
        QCOMPARE(execShown(dialog).shows, 1);
    }

    // Page script sizes the contents area; once placed, the centre stays.
    void resize_data()
    {
        QTest::addColumn<QSize>("content");
        QTest::addColumn<QRect>("geometry");

        // From 602 x 341 at (100, 100).
        QTest::newRow("smaller") << QSize(400, 200) << QRect(200, 150, 402, 241);
        QTest::newRow("larger") << QSize(1000, 500) << QRect(-100, 0, 1002, 541);
        QTest::newRow("one wider, odd half dropped")
            << QSize(601, 300) << QRect(100, 100, 603, 341);
        QTest::newRow("one narrower, toward zero") << QSize(599, 299) << QRect(100, 100, 601, 340);
        QTest::newRow("negative") << QSize(-10, -10) << QRect(400, 250, 2, 41);
    }

    void resize()
    {
        QFETCH(QSize, content);
        QFETCH(QRect, geometry);

        KTestHttpServer server;
        QVERIFY(server.listen());
        server.addPage("/page", kPage);
        KxWebDlg dialog(server.url("/page"));
        execShown(dialog, [&] {
            js(dialog, "zentoctx.moveTo(100, 100)");
            QTRY_COMPARE(dialog.pos(), QPoint(100, 100));
            js(dialog,
               QString("zentoctx.resize(%1, %2)").arg(content.width()).arg(content.height()));
            QTRY_COMPARE(dialog.geometry(), geometry);
            QCOMPARE(dialog.minimumSize(), geometry.size());
            QCOMPARE(dialog.maximumSize(), geometry.size());
            QTRY_COMPARE(webView(dialog)->geometry(),
                         QRect(QPoint(1, 40), content.expandedTo(QSize(0, 0))));
        });
    }

    // A page loads before the dialog shows, at the size it will be shown at;
    // its resize() before the dialog is placed only fixes the size.
    void sizeWhileLoading_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("pageSize");
        QTest::addColumn<QSize>("dialogSize");

        QTest::newRow("default") << ""
                                 << "600x300" << QSize(602, 341);
        QTest::newRow("600 x 300") << "zentoctx.resize(600, 300);"
                                   << "600x300" << QSize(602, 341);
        QTest::newRow("400 x 200") << "zentoctx.resize(400, 200);"
                                   << "400x200" << QSize(402, 241);
    }

    void sizeWhileLoading()
    {
        QFETCH(QString, script);
        QFETCH(QString, pageSize);
        QFETCH(QSize, dialogSize);

        KTestHttpServer server;
        QVERIFY(server.listen());
        server.addPage("/page", "<script>" + script.toUtf8() +
                                    "document.title = innerWidth + 'x' + innerHeight;</script>");
        KxWebDlg dialog(server.url("/page"));
        QString title;
        QSize size;
        execShown(dialog, [&] {
            title = dialog.windowTitle();
            size = dialog.size();
        });
        QCOMPARE(title, pageSize);
        QCOMPARE(size, dialogSize);
        QCOMPARE(dialog.minimumSize(), dialogSize);
    }

    // Sizes no widget can have are kept within what one can (and the sums
    // with the margins do not overflow).
    void extremeSizes()
    {
        KxWebDlg dialog(QUrl("http://127.0.0.1:1/"));
        dialog.resize(INT_MAX, INT_MAX);
        QCOMPARE(dialog.maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
        dialog.resize(INT_MIN, INT_MIN);
        QCOMPARE(dialog.size(), QSize(2, 41));
        dialog.moveTo(INT_MAX, INT_MIN);
        QCOMPARE(dialog.pos(), QPoint(QWIDGETSIZE_MAX, -QWIDGETSIZE_MAX));
    }

    // What the page's close callback answers decides whether a close
    // request (the program's or the title's close button) closes.
    void closeCallback_data()
    {
        QTest::addColumn<QString>("setup");
        QTest::addColumn<bool>("button");
        QTest::addColumn<bool>("staysOpen");

        const QString set = "zentoctx.setOnCloseCallback(%1);";
        QTest::newRow("none") << "" << false << false;
        QTest::newRow("1") << set.arg("'function(){ return 1; }'") << false << true;
        QTest::newRow("'1'") << set.arg("'function(){ return \"1\"; }'") << false << true;
        QTest::newRow("a named function, 1")
            << "window.onClose = function(){ return 1; };" + set.arg("'onClose'") << false << true;
        QTest::newRow("0") << set.arg("'function(){ return 0; }'") << false << false;
        QTest::newRow("'yes'") << set.arg("'function(){ return \"yes\"; }'") << false << false;
        QTest::newRow("nothing") << set.arg("'function(){}'") << false << false;
        QTest::newRow("throws") << set.arg("'function(){ throw new Error(\"x\"); }'") << false
                                << false;
        QTest::newRow("null keeps the callback")
            << set.arg("'function(){ return 1; }'") + set.arg("null") << false << true;
        QTest::newRow("empty clears it")
            << set.arg("'function(){ return 1; }'") + set.arg("''") << false << false;
        QTest::newRow("1, close button") << set.arg("'function(){ return 1; }'") << true << true;
        QTest::newRow("0, close button") << set.arg("'function(){ return 0; }'") << true << false;
    }

    void closeCallback()
    {
        QFETCH(QString, setup);
        QFETCH(bool, button);
        QFETCH(bool, staysOpen);

        KTestHttpServer server;
        QVERIFY(server.listen());
        server.addPage("/page", kPage);
        KxWebDlg dialog(server.url("/page"));
        bool openAfterClose = false;
        const KExecRecord run = execShown(dialog, [&] {
            js(dialog, setup);
            if (button) {
                QWindow* window = dialog.windowHandle();
                QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, QPoint(580, 20));
                QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, QPoint(580, 20));
            } else {
                dialog.close();
            }
            openAfterClose = dialog.isVisible();
        });
        QCOMPARE(openAfterClose, staysOpen);
        QCOMPARE(run.result, int(staysOpen ? QDialog::Accepted : QDialog::Rejected));
    }

    // Escape without modifiers asks the page's Escape callback, written as a
    // function's name: it is called as name + "()".
    void escape_data()
    {
        QTest::addColumn<QString>("callback");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<bool>("staysOpen");
        QTest::addColumn<int>("calls");

        QTest::newRow("no callback") << "" << int(Qt::NoModifier) << false << 0;
        QTest::newRow("answers 1") << "answerOne" << int(Qt::NoModifier) << true << 1;
        QTest::newRow("answers 0") << "answerZero" << int(Qt::NoModifier) << false << 1;
        QTest::newRow("a function literal is not called")
            << "function(){ calls++; return 1; }" << int(Qt::NoModifier) << false << 0;
        QTest::newRow("with Shift") << "answerZero" << int(Qt::ShiftModifier) << true << 0;
        QTest::newRow("with Ctrl") << "answerZero" << int(Qt::ControlModifier) << true << 0;
    }

    void escape()
    {
        QFETCH(QString, callback);
        QFETCH(int, modifiers);
        QFETCH(bool, staysOpen);
        QFETCH(int, calls);

        KTestHttpServer server;
        QVERIFY(server.listen());
        server.addPage("/page", kPage);
        KxWebDlg dialog(server.url("/page"));
        bool openAfterKey = false;
        const KExecRecord run = execShown(dialog, [&] {
            js(dialog, "window.calls = 0;"
                       "window.answerOne = function(){ calls++; return 1; };"
                       "window.answerZero = function(){ calls++; return 0; };");
            if (!callback.isEmpty())
                js(dialog, QString("zentoctx.setOnEscPressCallback('%1')").arg(callback));
            // Where the keyboard is: the page, which leaves Escape alone.
            QTest::keyClick(webView(dialog), Qt::Key_Escape, Qt::KeyboardModifiers(modifiers));
            openAfterKey = dialog.isVisible();
        });
        QCOMPARE(openAfterKey, staysOpen);
        QCOMPARE(run.result, int(staysOpen ? QDialog::Accepted : QDialog::Rejected));
        QCOMPARE(js(dialog, "calls").toInt(), calls);
    }

    void login()
    {
        KTestHttpServer server;
        QVERIFY(server.listen());
        server.addPage("/page", kPage);
        KxWebDlg dialog(server.url("/page"));
        execShown(dialog, [&] {
            QCOMPARE(js(dialog, "zentoctx.isLogined()").toBool(), false);
            QCOMPARE(js(dialog, "zentoctx.loginedUserId()").toString(), QString());
            js(dialog, "zentoctx.login('function(){ document.title = \"hello \" + "
                       "zentoctx.loginedUserId(); }')");
            QTRY_COMPARE(dialog.windowTitle(), QString("hello demo-0001"));
            QCOMPARE(js(dialog, "zentoctx.isLogined()").toBool(), true);
        });
    }

    // Script that opens a window, and every link the user clicks, go to the
    // system; the page stays as it is and nothing is loaded. Pages of the
    // server and local files (WebKit itself keeps a server's page from
    // local files). A second, allowed address after each one tells when
    // the first has been dealt with.
    void external_data()
    {
        QTest::addColumn<QString>("page"); // "server" or "file"
        QTest::addColumn<QString>("how");  // "open", "link" or "blank" (link to a new window)
        QTest::addColumn<QString>("address");
        QTest::addColumn<bool>("opened");
        QTest::addColumn<bool>("refused");

        const QString web = "https://help.zento.example/x";
        const QString mail = "mailto:help@zento.example";
        for (const char* how : {"open", "link", "blank"}) {
            const QByteArray h = QByteArray(how) + ": ";
            QTest::newRow(h + "web") << "server" << how << web << true << false;
            QTest::newRow(h + "mail") << "server" << how << mail << true << false;
            QTest::newRow(h + "program's scheme")
                << "server" << how << "zento://open?file=x" << false << true;
            QTest::newRow(h + "file from a server's page")
                << "server" << how << "file:///etc/hosts" << false << false;
            QTest::newRow(h + "file from a file")
                << "file" << how << "file:///etc/hosts" << false << true;
            QTest::newRow(h + "web from a file") << "file" << how << web << true << false;
        }
    }

    void external()
    {
        QFETCH(QString, page);
        QFETCH(QString, how);
        QFETCH(QString, address);
        QFETCH(bool, opened);
        QFETCH(bool, refused);

        const QByteArray html = QString("<title>Links</title><a id='link' href='%1' %2 "
                                        "style='display:block;height:40px'>go</a>")
                                    .arg(address, how == "blank" ? "target='_blank'" : "")
                                    .toUtf8();
        KTestHttpServer server;
        QVERIFY(server.listen());
        server.addPage("/page", html);
        const QString file = m_env.rootPath() + "/links.html";
        QVERIFY(KTestAppDir::write(file, html));
        KxWebDlg dialog(page == "server" ? server.url("/page") : QUrl::fromLocalFile(file));
        KUrlCatcher catcher;
        KWarningCatcher warnings;
        const QUrl barrier("https://barrier.zento.example/");
        QUrl before;
        QUrl after;
        execShown(dialog, [&] {
            before = webView(dialog)->url();
            if (how == "open")
                js(dialog, QString("window.open('%1')").arg(address));
            else
                QVERIFY(clickElement(dialog, "#link"));
            js(dialog, QString("window.open('%1')").arg(barrier.toString()));
            QTRY_VERIFY(catcher.urls.contains(barrier));
            after = webView(dialog)->url();
        });
        const QList<QUrl> expected =
            opened ? QList<QUrl>{QUrl(address), barrier} : QList<QUrl>{barrier};
        QCOMPARE(catcher.urls, expected);
        QCOMPARE(warnings.warnings().size(), refused ? 1 : 0);
        QCOMPARE(after, before);
        QCOMPARE(dialog.windowTitle(), QString("Links"));
    }

    // The library's offline page as the fallback: it shows the host's facts
    // through the bridge, signs in and closes the dialog.
    void offlinePage_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("heading");
        QTest::addColumn<QString>("signedOut");
        QTest::addColumn<QString>("signedIn");

        QTest::newRow("English") << "en_US"
                                 << "Zento Cloud"
                                 << "You are offline"
                                 << "You are not signed in."
                                 << "Signed in as demo-0001.";
        QTest::newRow("Chinese") << "zh_CN"
                                 << "Zento 云服务"
                                 << "网络连接已断开"
                                 << "您尚未登录。"
                                 << "已登录：demo-0001";
    }

    void offlinePage()
    {
        QFETCH(QString, language);
        QFETCH(QString, title);
        QFETCH(QString, heading);
        QFETCH(QString, signedOut);
        QFETCH(QString, signedIn);

        krt::hostcontrol::setLanguage(language);
        KxWebDlg dialog(refusedUrl("/page"), nullptr, QUrl(kxGetWebResMuiFile("offline.html")));
        const KExecRecord run = execShown(dialog, [&] {
            QCOMPARE(dialog.windowTitle(), title);
            QCOMPARE(pageText(dialog, "h1"), heading);
            QCOMPARE(pageText(dialog, "#about"),
                     "Zento Office 12.1.0.17890 · " + QString(language).replace('_', '-'));
            QCOMPARE(pageText(dialog, "#account"), signedOut);

            // At home in the frame: the title bar's colour, the page's
            // white body and its main button in the same grey.
            const QImage image = dialog.grab().toImage();
            QCOMPARE(image.pixelColor(300, 20), QColor("#6C7079"));
            QCOMPARE(image.pixelColor(590, 330), QColor(Qt::white));
            const QRect retry =
                mainFrame(dialog)->findFirstElement("#retry").geometry().translated(1, 40);
            QCOMPARE(image.pixelColor(retry.left() + 4, retry.center().y()), QColor("#6C7079"));

            QVERIFY(clickElement(dialog, "#login"));
            QTRY_COMPARE(pageText(dialog, "#account"), signedIn);
            QVERIFY(clickElement(dialog, "#close"));
        });
        QCOMPARE(run.result, int(QDialog::Rejected));
    }

    // "Try again" goes back to the page that failed.
    void offlineRetry()
    {
        KTestHttpServer server;
        QVERIFY(server.listen());
        const quint16 port = server.port();
        server.close();
        server.addPage("/page", kPage);
        KxWebDlg dialog(server.url("/page"), nullptr, QUrl(kxGetWebResMuiFile("offline.html")));
        execShown(dialog, [&] {
            QCOMPARE(pageText(dialog, "h1"), QString("You are offline"));
            QVERIFY(server.listen(port));
            QVERIFY(clickElement(dialog, "#retry"));
            QTRY_COMPARE(dialog.windowTitle(), QString("Service"));
        });
        QCOMPARE(server.requestCount("/page"), 1);
    }
};

QTEST_MAIN(TestKxWebDlg)

#include "tst_kxwebdlg.moc"
