// The web dialog against pages of a local server: when it shows, the one
// switch to the fallback page, the host's facts in the address, its size
// from page script, the close and Escape callbacks, sign-in through the
// cloud simulator, links and window.open going to the system, and the
// library's offline page.

#include "ktestappdir.h"
#include "ktestenvironment.h"
#include "ktesthttpserver.h"
#include "kurlcatcher.h"
#include "kwarningcatcher.h"
#include "kwebdlgdriver.h"

#include <kxwebdlg.h>
#include <kxwebdlgengine.h>
#include <kxwebresources.h>

#include <vex/kresourcescheme.h>
#include <vexlite/hostcontrol.h>

#include <QScreen>
#include <QUrlQuery>
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

// The page's frame, if it has one, has loaded.
bool frameLoaded(KxWebDlg& dialog)
{
    return js(dialog, "!document.querySelector('iframe') || window.frameLoaded === true").toBool();
}

// Escape key presses that reach a widget.
class KKeyCounter : public QObject
{
public:
    explicit KKeyCounter(QWidget& widget) { widget.installEventFilter(this); }
    int escapes = 0;
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress &&
            static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
            ++escapes;
        return false;
    }
};

} // namespace

class TestKxWebDlg : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KTestHttpServer m_server; // kPage at "/page"

private slots:
    void initTestCase()
    {
        QVERIFY(m_server.listen());
        m_server.addPage("/page", kPage);
        KResourceScheme::install();
    }

    void init() { QVERIFY2(resetWebHost(m_env), "the cloud simulator is not beside the suite"); }

    void construction()
    {
        KxWebDlg dialog(QUrl("http://127.0.0.1:1/"));
        QCOMPARE(dialog.size(), QSize(602, 341));
        QCOMPARE(dialog.minimumSize(), dialog.maximumSize());
        QCOMPARE(dialog.titleColor(), QColor("#6C7079"));
        QCOMPARE(webView(dialog)->contextMenuPolicy(), Qt::NoContextMenu);

        // Not placed yet: only the size changes (and sums with the margins
        // do not overflow).
        dialog.resize(INT_MAX, 200);
        QCOMPARE(dialog.geometry(), QRect(0, 0, 800, 241));
    }

    // When the dialog shows: at once after a load, after the one-second wait
    // for a page still loading (whose late finish starts no second run), and
    // after one switch to the fallback. The page is asked for with the
    // host's facts after its own query.
    void loading_data()
    {
        QTest::addColumn<QString>("page");     // "serve", "hang", "late", "refuse"
        QTest::addColumn<QString>("fallback"); // "none", "serve", "refuse", "same"
        QTest::addColumn<int>("loads");
        QTest::addColumn<bool>("timedOut");
        QTest::addColumn<bool>("onFallback");

        const auto row = [](const char* tag, const char* page, const char* fallback, int loads,
                            bool timedOut, bool onFallback) {
            QTest::newRow(tag) << QString(page) << QString(fallback) << loads << timedOut
                               << onFallback;
        };
        row("loads at once", "serve", "none", 1, false, false);
        row("never finishes", "hang", "none", 1, true, false);
        row("finishes after showing", "late", "none", 1, true, false);
        row("refused, fallback", "refuse", "serve", 2, false, true);
        row("refused, fallback refused", "refuse", "refuse", 2, false, true);
        row("refused, no fallback", "refuse", "none", 1, false, false);
        row("refused, fallback is the page", "refuse", "same", 1, false, false);
    }

    void loading()
    {
        QFETCH(QString, page);
        QFETCH(QString, fallback);
        QFETCH(int, loads);
        QFETCH(bool, timedOut);
        QFETCH(bool, onFallback);

        krt::hostcontrol::setLanguage("zh_CN");
        KTestHttpServer server;
        QVERIFY(server.listen());
        server.addPage("/page", kPage,
                       page == "serve" ? KTestHttpServer::Serve : KTestHttpServer::Hang);
        server.addPage("/offline", "<title>Offline</title>");
        const QUrl url =
            page == "refuse" ? refusedUrl("/page?from=menu") : server.url("/page?from=menu");
        QUrl withItems = url;
        withItems.setQuery("from=menu&distsrc=mc-test&lang=zh-CN&version=12.1.0.17890&hId=hd-42");
        const QUrl fallbackUrl = QHash<QString, QUrl>{
            {"serve", server.url("/offline")},
            {"refuse", refusedUrl("/offline")},
            {"same", withItems}}.value(fallback);

        KxWebDlg dialog(url, nullptr, fallbackUrl);
        KxWebDlgEngine* engine = webEngine(dialog);
        auto* timer = dialog.findChild<QTimer*>();
        QSignalSpy started(engine, &KxWebDlgEngine::loadStarted);
        QSignalSpy finished(engine, &KxWebDlgEngine::loadFinished);
        QSignalSpy timeouts(timer, &QTimer::timeout);
        KWarningCatcher warnings;
        QUrl shownUrl;
        const KExecRecord run = execShown(dialog, [&] {
            QVERIFY(!timer->isActive());
            // Shown once the engine's signal has reached everyone: the modal
            // run never runs inside it.
            QCOMPARE(finished.count(), timedOut ? 0 : loads);
            shownUrl = engine->url();
            if (page == "late") {
                server.finishHanging();
                QVERIFY(finished.wait());
                QVERIFY(finished.last().first().toBool() && dialog.isVisible());
            }
        });

        QCOMPARE(run.result, int(QDialog::Accepted));
        QCOMPARE(run.shows, 1);
        QCOMPARE(timer->interval(), 1000);
        QCOMPARE(timeouts.count(), int(timedOut));
        QCOMPARE(started.count(), loads);
        QCOMPARE(finished.count(), page == "hang" ? 0 : loads);
        QCOMPARE(shownUrl, onFallback ? fallbackUrl : withItems);
        QCOMPARE(warnings.warnings(), QStringList());
        if (fallback == "serve") // the fallback as it is
            QCOMPARE(server.requests(), QStringList("/offline"));
    }

    // Every exec() loads and shows again; an empty address shows too.
    void runsAgain()
    {
        const int before = m_server.requestCount("/page");
        KxWebDlg dialog(m_server.url("/page"));
        QCOMPARE(execShown(dialog, {}, QDialog::Accepted).result, int(QDialog::Accepted));
        QCOMPARE(execShown(dialog, {}, QDialog::Rejected).result, int(QDialog::Rejected));
        QCOMPARE(m_server.requestCount("/page"), before + 2);
        KxWebDlg empty((QUrl()));
        QCOMPARE(execShown(empty).shows, 1);
    }

    // Page script sizes the contents area; once placed, the centre stays
    // (halves toward zero). Size and place stay within the screen's
    // available area, 800 x 600 offscreen.
    void resize_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QRect>("geometry");

        // From 602 x 341 at (100, 100).
        QTest::newRow("smaller") << "resize(400, 200)" << QRect(200, 150, 402, 241);
        QTest::newRow("one narrower, toward zero")
            << "resize(599, 299)" << QRect(100, 100, 601, 340);
        QTest::newRow("negative") << "resize(-10, -10)" << QRect(400, 250, 2, 41);
        QTest::newRow("beyond the screen") << "resize(30000, 30000)" << QRect(0, 0, 800, 600);
        QTest::newRow("past the top") << "resize(600, 540)" << QRect(100, 0, 602, 581);
        QTest::newRow("off the screen")
            << "moveTo(-2147483648, -2147483648)" << QRect(0, 0, 602, 341);
        QTest::newRow("past the corner") << "moveTo(30000, 30000)" << QRect(198, 259, 602, 341);
    }

    void resize()
    {
        QFETCH(QString, script);
        QFETCH(QRect, geometry);

        QCOMPARE(QGuiApplication::primaryScreen()->availableGeometry(), QRect(0, 0, 800, 600));
        KxWebDlg dialog(m_server.url("/page"));
        execShown(dialog, [&] {
            js(dialog, "zentoctx.moveTo(100, 100)");
            QTRY_COMPARE(dialog.pos(), QPoint(100, 100));
            js(dialog, "zentoctx." + script);
            QTRY_COMPARE(dialog.geometry(), geometry);
            QCOMPARE(dialog.minimumSize(), geometry.size());
            QCOMPARE(dialog.maximumSize(), geometry.size());
            QTRY_COMPARE(webView(dialog)->geometry(),
                         QRect(QPoint(1, 40), geometry.size() - QSize(2, 41)));
        });
    }

    // A page loads before the dialog shows, at the size it will be shown at;
    // its resize() before the dialog is placed only fixes the size.
    void sizeWhileLoading_data()
    {
        QTest::addColumn<qreal>("scale"); // the host's display scale
        QTest::addColumn<QString>("script");
        QTest::addColumn<QSize>("content"); // in the page's pixels
        QTest::addColumn<QSize>("size");

        QTest::newRow("default") << 1.0 << "" << QSize(600, 300) << QSize(602, 341);
        QTest::newRow("400 x 200")
            << 1.0 << "zentoctx.resize(400, 200);" << QSize(400, 200) << QSize(402, 241);
        // The page grows with the frame, its title bar twice as high.
        QTest::newRow("300 x 200 at 200 %")
            << 2.0 << "zentoctx.resize(300, 200);" << QSize(300, 200) << QSize(602, 481);
    }

    void sizeWhileLoading()
    {
        QFETCH(qreal, scale);
        QFETCH(QString, script);
        QFETCH(QSize, content);
        QFETCH(QSize, size);

        krt::hostcontrol::setDisplayScale(scale);
        KTestHttpServer server;
        QVERIFY(server.listen());
        // The bridge may answer later (QtWebEngine): the size as it comes.
        server.addPage("/page", "<script>" + script.toUtf8() +
                                    "var size = function () { document.title = innerWidth + 'x' + "
                                    "innerHeight; }; size(); addEventListener('resize', size);"
                                    "</script>");
        KxWebDlg dialog(server.url("/page"));
        execShown(dialog, [&] {
            QTRY_COMPARE(dialog.windowTitle(),
                         QString("%1x%2").arg(content.width()).arg(content.height()));
        });
        QCOMPARE(dialog.size(), size);
        QCOMPARE(dialog.minimumSize(), dialog.size());
    }

    // What the page's callbacks answer decides whether a close request (the
    // program's or the title's close button) or Escape without modifiers
    // closes. The Escape callback is a function's name, called as name + "()".
    void closing_data()
    {
        QTest::addColumn<QString>("how"); // "close", "button", "Escape" or "Shift+Escape"
        QTest::addColumn<QString>("setup");
        QTest::addColumn<bool>("staysOpen");
        QTest::addColumn<int>("calls");

        const auto row = [](const char* tag, const char* how, const QString& setup, bool staysOpen,
                            int calls = 0) {
            QTest::newRow(tag) << QString(how) << setup << staysOpen << calls;
        };
        const auto close = [](const char* callback) {
            return QString("zentoctx.setOnCloseCallback(%1);").arg(callback);
        };
        const auto esc = [](const char* callback) {
            return QString("zentoctx.setOnEscPressCallback('%1');").arg(callback);
        };
        const QString one = close("'function(){ return 1; }'");
        row("close: no callback", "close", "", false);
        row("close: 1", "close", one, true);
        row("close: '1'", "close", close("'function(){ return \"1\"; }'"), true);
        row("close: 'yes'", "close", close("'function(){ return \"yes\"; }'"), false);
        row("close: null keeps the callback", "close", one + close("null"), true);
        row("close: empty clears it", "close", one + close("''"), false);
        row("button: 1", "button", one, true);
        row("button: 0", "button", close("'function(){ return 0; }'"), false);
        row("Escape: no callback", "Escape", "", false);
        row("Escape: answers 1", "Escape", esc("answerOne"), true, 1);
        row("Escape: answers 0", "Escape", esc("answerZero"), false, 1);
        row("Escape: a function literal is not called", "Escape",
            esc("function(){ calls++; return 1; }"), false);
        row("Escape with Shift", "Shift+Escape", esc("answerZero"), true);
    }

    void closing()
    {
        QFETCH(QString, how);
        QFETCH(QString, setup);
        QFETCH(bool, staysOpen);
        QFETCH(int, calls);

        KxWebDlg dialog(m_server.url("/page"));
        bool openAfterwards = false;
        const KExecRecord run = execShown(dialog, [&] {
            js(dialog, "window.calls = 0;"
                       "window.answerOne = function(){ calls++; return 1; };"
                       "window.answerZero = function(){ calls++; return 0; };" +
                           setup);
            QWindow* window = dialog.windowHandle();
            if (how == "close") {
                dialog.close();
            } else if (how == "button") {
                QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, QPoint(580, 20));
                QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, QPoint(580, 20));
            } else {
                // Where the keyboard is: the page, which leaves Escape alone
                // (QtWebEngine hands it back to the dialog later).
                KKeyCounter atDialog(dialog);
                QTest::keyClick(inputWidget(dialog), Qt::Key_Escape,
                                how.startsWith("Shift") ? Qt::ShiftModifier : Qt::NoModifier);
                QTRY_COMPARE(atDialog.escapes, 1);
            }
            openAfterwards = dialog.isVisible();
        });
        QCOMPARE(openAfterwards, staysOpen);
        QCOMPARE(run.result, int(staysOpen ? QDialog::Accepted : QDialog::Rejected));
        QCOMPARE(js(dialog, "calls").toInt(), calls);
    }

    void login()
    {
        KxWebDlg dialog(m_server.url("/page"));
        execShown(dialog, [&] {
            QCOMPARE(js(dialog, "zentoctx.isLogined()").toBool(), false);
            QCOMPARE(js(dialog, "zentoctx.loginedUserId()").toString(), QString());
            js(dialog, "zentoctx.login('function(){ Promise.resolve(zentoctx.loginedUserId())"
                       ".then(function(id){ document.title = \"hello \" + id; }); }')");
            QTRY_COMPARE(dialog.windowTitle(), QString("hello demo-0001"));
            QCOMPARE(js(dialog, "zentoctx.isLogined()").toBool(), true);
        });
    }

    // Windows that script opens and links the user clicks never load in the
    // dialog: the first address of each goes to the system if its scheme is
    // one the system may have, a form sent into a pop-up goes nowhere, a
    // pop-up goes once it has navigated, and a page holds a few at most.
    void external_data()
    {
        QTest::addColumn<QString>("script"); // run first; then the link is clicked, if any
        QTest::addColumn<QString>("link");   // its address, "%1" the server
        QTest::addColumn<QString>("target");
        QTest::addColumn<QStringList>("opened");
        QTest::addColumn<bool>("fromFile"); // the page is a local file

        const QString web = "https://help.zento.example/";
        const auto row = [](const char* tag, const QString& script, const QString& link,
                            const char* target, const QStringList& opened, bool fromFile = false) {
            QTest::newRow(tag) << script << link << QString(target) << opened << fromFile;
        };
        row("window.open", "window.open('" + web + "')", "", "", {web});
        row("window.open, program's scheme", "window.open('zento://open')", "", "", {});
        row("a hundred window.open", "for (var i = 0; i < 100; ++i) window.open('" + web + "' + i)",
            "", "", {web + "0", web + "1", web + "2", web + "3"});
        row("link", "", web, "", {web});
        row("link, program's scheme", "", "zento://open", "", {});
        row("link to a new window", "", web, "_blank", {web});
        row("link to a new window, program's scheme", "", "zento://open", "_blank", {});
        row("link, mail", "", "mailto:help@zento.example", "", {"mailto:help@zento.example"});
        row("link, file from a file", "", "file:///etc/hosts", "", {}, true);
        row("form into a pop-up",
            "window.open('', 'pop'); document.getElementById('form').submit()", "", "", {});
        row("link into a pop-up", "window.open('', 'pop')", "%1/target", "pop", {"%1/target"});
        // A frame gets no bridge, nor windows.
        row("from a frame of another origin",
            "var f = document.createElement('iframe'); f.src = '%2'; f.onload = function(){ "
            "window.frameLoaded = true; }; document.body.appendChild(f)",
            "", "", {});
    }

    void external()
    {
        QFETCH(QString, script);
        QFETCH(QString, link);
        QFETCH(QString, target);
        QFETCH(QStringList, opened);
        QFETCH(bool, fromFile);

        KTestHttpServer server;
        QVERIFY(server.listen());
        const QString base = server.url("").toString();
        const QByteArray html =
            QString("<title>Links</title><form id='form' method='post' target='pop' "
                    "action='%1/target'><input name='a'></form><a id='link' href='%2' "
                    "target='%3' style='display:block;height:40px'>go</a>")
                .arg(base, QString(link).replace("%1", base), target)
                .toUtf8();
        server.addPage("/page", html);
        server.addPage("/target", kPage);
        server.addPage("/opener", "<script>window.open('https://help.zento.example/')</script>");
        script.replace("%2", server.url("/opener", "localhost").toString());
        const QString file = m_env.rootPath() + "/links.html";
        QVERIFY(KTestAppDir::write(file, html));
        KxWebDlg dialog(fromFile ? QUrl::fromLocalFile(file) : server.url("/page"));
        KUrlCatcher catcher;
        KWarningCatcher warnings;
        // QtWebEngine 6 tells nothing of a new window's address of a scheme
        // it does not load: it opens nothing, and there is nothing to warn
        // of. QtWebEngine 5.15 hands it over, as QtWebKit does.
        const bool untold = AUTH_WEB_QTWEBENGINE && QT_VERSION_MAJOR == 6 && target == "_blank";
        const int refusals =
            int(!untold && (script + link).contains(QRegularExpression("zento:|file:")));
        int alive = -1;
        QUrl before;
        execShown(dialog, [&] {
            before = webEngine(dialog)->url();
            js(dialog, script);
            QTRY_VERIFY(frameLoaded(dialog));
            alive = popupCount(dialog);
            if (!link.isEmpty())
                QVERIFY(clickElement(dialog, "#link"));
            QTRY_COMPARE(popupCount(dialog), 0);
            QTRY_COMPARE(warnings.warnings().size(), refusals);
            // Loaded again after all that: what it started has happened.
            QSignalSpy loaded(webEngine(dialog), &KxWebDlgEngine::loadFinished);
            js(dialog, "setTimeout(function(){ location.reload(); }, 0)");
            QVERIFY(loaded.wait());
        });
        QVERIFY2(alive <= maxPopups(), qPrintable(QString::number(alive)));
        QCOMPARE(catcher.take(), opened.replaceInStrings("%1", base));
        QCOMPARE(warnings.warnings().size(), refusals);
        QCOMPARE(webEngine(dialog)->url(), before);
        QCOMPARE(dialog.windowTitle(), QString("Links"));
        QCOMPARE(server.requestCount("/target"), 0);
    }

    // The library's offline page as the fallback: it shows the host's facts
    // through the bridge, signs in and closes the dialog.
    void offlinePage_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QStringList>("texts"); // title, heading, signed out, signed in

        QTest::newRow("English") << "en_US"
                                 << QStringList{"Zento Cloud", "You are offline",
                                                "You are not signed in.",
                                                "Signed in as demo-0001."};
        QTest::newRow("Chinese") << "zh_CN"
                                 << QStringList{"Zento 云服务", "网络连接已断开", "您尚未登录。",
                                                "已登录：demo-0001"};
    }

    void offlinePage()
    {
        QFETCH(QString, language);
        QFETCH(QStringList, texts);

        krt::hostcontrol::setLanguage(language);
        KxWebDlg dialog(refusedUrl("/page"), nullptr, QUrl(kxGetWebResMuiFile("offline.html")));
        const KExecRecord run = execShown(dialog, [&] {
            QCOMPARE(dialog.windowTitle(), texts[0]);
            QCOMPARE(pageText(dialog, "h1"), texts[1]);
            // The bridge's answers may come after the page's load.
            QTRY_COMPARE(pageText(dialog, "#about"),
                         "Zento Office 12.1.0.17890 · " + QString(language).replace('_', '-'));
            QTRY_COMPARE(pageText(dialog, "#account"), texts[2]);

            // At home in the frame: the title bar's colour, the page's
            // white body and its main button in the same grey (once the
            // engine has painted what the page laid out last).
            const QRect retry = elementRect(dialog, "#retry").translated(1, 40);
            const auto pixel = [&](int x, int y) {
                return dialog.grab().toImage().pixelColor(x, y);
            };
            QCOMPARE(pixel(300, 20), QColor("#6C7079"));
            QCOMPARE(pixel(590, 330), QColor(Qt::white));
            QTRY_COMPARE(pixel(retry.left() + 4, retry.center().y()), QColor("#6C7079"));

            QVERIFY(clickElement(dialog, "#login"));
            QTRY_COMPARE(pageText(dialog, "#account"), texts[3]);
            QVERIFY(clickElement(dialog, "#close"));
            QTRY_VERIFY(!dialog.isVisible());
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
