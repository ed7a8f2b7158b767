// The script bridge "zentoctx" as page script sees it: the methods it has,
// the host's facts, kept values, usage events, the registry-like stores,
// opening addresses, and which pages get the bridge at all.

#include "ktestenvironment.h"
#include "ktesthttpserver.h"
#include "kurlcatcher.h"
#include "kwarningcatcher.h"
#include "kwebdlgdriver.h"

#include <kdeskhivelib.h>
#include <kxacommonauthhandler.h>
#include <kxwebbridgeorigins.h>
#include <kxwebdlg.h>
#include <kxwebdlgengine.h>

#include <deskhive/nimboclient.h>
#include <vex/kxsettings.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/khksoftwaresettings.h>

#include <QtTest>

using namespace AuthTest;

namespace {

const QByteArray kProbe = "<html><head><script>document.title = typeof zentoctx;</script>"
                          "</head><body><button id='open' style='width:90px;height:30px' "
                          "onclick=\"window.open('https://popup.zento.example/')\">open</button>"
                          "</body></html>";

// For waits on what QtWebEngine does across its processes: under the
// sanitizers on a busy machine, a load has taken longer than QtTest's five
// seconds.
constexpr int kSlowMs = 20000;

// The bridge calls' answers joined with separator, in a form both engines
// run: the calls go out in order, their answers come as values or, on
// QtWebEngine, as Promises.
QString joined(const QStringList& calls, const QString& separator = QString())
{
    return QString("Promise.all([%1]).then(function (a) { return a.join('%2'); })")
        .arg(calls.join(", "), separator);
}

} // namespace

class TestKxWebBridge : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KTestHttpServer m_server;

    // Opens a dialog on the server's probe page and runs script in it.
    QVariant inPage(const QString& script)
    {
        KxWebDlg dialog(m_server.url("/probe"));
        QVariant result;
        execShown(dialog, [&] { result = js(dialog, script); });
        return result;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_server.listen());
        m_server.addPage("/probe", kProbe);
        m_server.addRedirect("/away", m_server.url("/probe", "localhost"));
    }

    void init() { QVERIFY2(resetWebHost(m_env), "the cloud simulator is not beside the suite"); }

    // The page sees the thirty methods and nothing else, of the dialog or of
    // QObject, and they answer with the host's facts; whatever it calls, the
    // bridge stays.
    void surface_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("answer");

        const QString methods =
            "resize moveTo accept reject get set experiment postEvent postPageView distSrc lang "
            "version hdid setVisible readStrReg readIntReg writeStrReg writeIntReg "
            "readProductConfig isFileExist login openAutoLoginUrl isLogined loginedUserId "
            "isMimeTypeAvailable availableMimeTypes openUrl isSupportWindowOpen "
            "setOnCloseCallback setOnEscPressCallback";
        const QString notFunctions = "'%1'.split(' ').filter(function(n){ return typeof "
                                     "zentoctx[n] !== 'function'; }).join(',')";
        const QString defined = "'%1'.split(' ').filter(function(n){ return typeof "
                                "zentoctx[n] !== 'undefined'; }).join(',')";
        QCOMPARE(methods.count(' '), 29);
        QTest::newRow("the bridge methods") << notFunctions.arg(methods) << "";
        QTest::newRow("nothing of the dialog or QObject")
            << defined.arg("exec show close done setWindowTitle on_loadTimedOut on_linkClicked "
                           "deleteLater destroyed objectName objectNameChanged parent findChild")
            << "";
        QTest::newRow("what it lists")
            << "Object.getOwnPropertyNames(zentoctx).map(function(n){ return n.split('(')[0]; "
               "}).filter(function(n, i, all){ return all.indexOf(n) === i; }).join(' ')"
            << methods;
        for (const char* fact : {"distSrc()=mc-test", "lang()=en-US", "version()=12.1.0.17890",
                                 "hdid()=hd-42", "isFileExist('/etc/hosts')=true",
                                 "isFileExist('/no/such/file')=false", "isSupportWindowOpen()=true",
                                 "availableMimeTypes()=", "isMimeTypeAvailable('text/html')=false"})
            QTest::newRow(fact) << "zentoctx." + QString(fact).section('=', 0, 0)
                                << QString(fact).section('=', 1);
        QTest::newRow("calling all it has")
            << "for (var name in zentoctx) { try { zentoctx[name](); } catch (e) {} } "
               "try { zentoctx['deleteLater()'](); } catch (e) {} typeof zentoctx"
            << "object";
    }

    void surface()
    {
        QFETCH(QString, script);
        QFETCH(QString, answer);

        KxWebDlg dialog(m_server.url("/probe"));
        execShown(dialog, [&] {
            QCOMPARE(js(dialog, script).toString(), answer);
            // What deleteLater would have done by now.
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCOMPARE(js(dialog, "zentoctx.version()").toString(), QString("12.1.0.17890"));
        });
    }

    // What a page hands the bridge is bounded: texts (keys, stored values,
    // any other), and how many values it keeps. Refused calls warn and give
    // their empty answer.
    void limits_data()
    {
        QTest::addColumn<int>("stored"); // values kept before, in either store
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<int>("refused");

        const auto text = [](int length) { return QString("Array(%1).join('k')").arg(length + 1); };
        const auto row = [](const char* tag, const QString& script, const char* answer, int refused,
                            int stored = 0) {
            QTest::newRow(tag) << stored << script << QString(answer) << refused;
        };
        const QString keep =
            "var k = %1; zentoctx.set(k, %2); "
            "Promise.resolve(zentoctx.get(k)).then(function (v) { return v.length; })";
        row("key of 256, value of 4096", keep.arg(text(256), text(4096)), "4096", 0);
        row("key of 257", keep.arg(text(257), "'v'"), "0", 2);
        row("value of 4097", keep.arg("'k'", text(4097)), "0", 1);
        // Kept in the host settings, group "ZentoCtx", as other dialogs left
        // them (k1).
        row("a value more than 256",
            "zentoctx.set('last', 'x'); zentoctx.set('more', 'x'); zentoctx.set('k0', 'y');" +
                joined({"zentoctx.get('last')", "zentoctx.get('more')", "zentoctx.get('k0')",
                        "zentoctx.get('k1')"}),
            "xyx", 1, 255);
        row("store value more than 256",
            "zentoctx.writeIntReg('B', 'last', 1); zentoctx.writeIntReg('B', 'more', 2);"
            "zentoctx.writeIntReg('A', 'n0', 9);" +
                joined({"zentoctx.readIntReg('B', 'last')", "zentoctx.readIntReg('B', 'more')",
                        "zentoctx.readIntReg('A', 'n0')"},
                       "|"),
            "1|0|9", 1, 255);
        row("store value of 4097",
            QString("zentoctx.writeStrReg('A', 'n', %1); zentoctx.readStrReg('A', 'n')")
                .arg(text(4097)),
            "", 1);
        row("product key of 257", QString("zentoctx.readProductConfig(%1)").arg(text(257)), "", 1);
        const QString longText = "var p = '%1'; p += Array(16385 - p.length + 1).join(' ');";
        row("address of 16385",
            longText.arg("https://zento.example/") +
                "Promise.resolve(zentoctx.openUrl(p)).then(String)",
            "false", 1);
        row("callback of 16385",
            longText.arg("function(){ return 1; }") + "Promise.resolve(zentoctx.setOnCloseCallback("
                                                      "p)).then(function () { return 'set'; })",
            "set", 1);
    }

    void limits()
    {
        QFETCH(int, stored);
        QFETCH(QString, script);
        QFETCH(QString, answer);
        QFETCH(int, refused);

        {
            KxSettings values;
            values.beginGroup("ZentoCtx");
            KHKSoftwareSettings pageStore(KHKSoftwareSettings::CurrentUser, "WebPages\\A");
            for (int i = 0; i < stored; ++i) {
                values.setValue(QString("k%1").arg(i), "x");
                pageStore.setValue(QString("n%1").arg(i), i);
            }
        }

        KUrlCatcher catcher;
        KWarningCatcher warnings;
        QCOMPARE(inPage(script).toString(), answer);
        QCOMPARE(warnings.warnings().size(), refused);
        for (const QString& warning : warnings.warnings())
            QVERIFY2(warning.startsWith("Refused"), qPrintable(warning));
        QCOMPARE(catcher.urls, QList<QUrl>());
    }

    // event: what the host recorded, its values in the order below.
    void usageEvents_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("event");

        QTest::newRow("name and category, the rest defaults")
            << "zentoctx.postEvent('open', 'menu')"
            << "event|||open|menu||0|";
        QTest::newRow("all, in an experiment")
            << "zentoctx.experiment('e1', 'B'); zentoctx.postEvent('open', 'menu', 'top', 3, "
               "'home')"
            << "event|e1|B|open|menu|top|3|home";
        QTest::newRow("page view") << "zentoctx.experiment('e2', 'A');"
                                      "zentoctx.postPageView('home', 'start')"
                                   << "view|e2|A|home|start";
    }

    void usageEvents()
    {
        QFETCH(QString, script);
        QFETCH(QString, event);

        krt::hostcontrol::clearRecordedEvents();
        inPage(script);
        const QList<QVariantMap> events = krt::hostcontrol::recordedEvents();
        QCOMPARE(events.size(), 1);
        QStringList values;
        for (const char* key : {"kind", "expId", "expVar", "eventName", "eventCategory",
                                "eventLable", "eventValue", "viewName", "viewCategory"}) {
            if (events[0].contains(key))
                values << events[0].value(key).toString();
        }
        QCOMPARE(values.join('|'), event);
        QCOMPARE(events[0].size(), values.size() + 1); // and the time
    }

    // Keys below the store's group for web pages, never files nor the
    // installation's own keys: paths that could leave the group, or name
    // nothing, are refused with one warning per call and write nothing.
    void registryKeys_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("accepted");

        const auto row = [](const char* tag, const QString& key, const char* name, bool accepted) {
            QTest::newRow(tag) << key << QString(name) << accepted;
        };
        row("store path", "Corvane\\Web\\Test", "colour", true);
        row("device identifier", "roamingdevice", "deviceid", true);
        row("suite's user name", "Corvane\\Office\\6.0\\Common\\UserInfo", "UserName", true);
        row("absolute path", m_env.rootPath() + "/evil.ini", "colour", false);
        row("root", "\\Corvane", "colour", false);
        row("drive", "C:\\evil", "colour", false);
        row("parent", "..\\..\\evil.ini", "colour", false);
        row("parent inside", "Corvane/../../evil.ini", "colour", false);
        row("empty key", "", "colour", false);
        row("empty value name", "Corvane\\Web", "", false);
    }

    void registryKeys()
    {
        QFETCH(QString, key);
        QFETCH(QString, name);
        QFETCH(bool, accepted);

        // What the installation keeps there, out of the page's reach.
        KHKSoftwareSettings installation(KHKSoftwareSettings::CurrentUser, key);
        if (!name.isEmpty())
            installation.setValue(name, "real");
        installation.sync();
        const QString intName = name.isEmpty() ? name : name + "N";
        const QString arguments = QString("'%1', '%2'").arg(QString(key).replace("\\", "\\\\"));
        KWarningCatcher warnings;
        // The writes' answers left out.
        const QString read =
            inPage(QString("Promise.all([zentoctx.readStrReg(%1), zentoctx.readIntReg(%2),"
                           "zentoctx.writeStrReg(%1, 'blue'), zentoctx.writeIntReg(%2, 7),"
                           "zentoctx.readStrReg(%1), zentoctx.readIntReg(%2)]).then(function (a) {"
                           "return [a[0], a[1], a[4], a[5]].join('|'); })")
                       .arg(arguments.arg(name), arguments.arg(intName)))
                .toString();

        QCOMPARE(read, accepted ? QString("|0|blue|7") : QString("|0||0"));
        QCOMPARE(warnings.warnings().size(), accepted ? 0 : 6);
        for (const QString& warning : warnings.warnings())
            QVERIFY2(warning.startsWith("Refused the settings key"), qPrintable(warning));
        installation.sync();
        if (!name.isEmpty())
            QCOMPARE(installation.value(name).toString(), QString("real"));
        QCOMPARE(KHKSoftwareSettings(KHKSoftwareSettings::CurrentUser, "WebPages\\" + key)
                     .value(name)
                     .toString(),
                 accepted ? QString("blue") : QString());
        QVERIFY(!QFileInfo::exists(m_env.rootPath() + "/evil.ini"));
        QVERIFY(!QFileInfo::exists(QDir::current().filePath("../../evil.ini")));
    }

    // Only http, https and mailto addresses with somewhere to go are handed
    // to the system, through openUrl() and, wrapped, openAutoLoginUrl().
    void openUrl_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("opened"); // empty: refused

        const auto row = [](const char* tag, const char* address, const char* opened,
                            const char* method = "openUrl") {
            QTest::newRow(tag) << QString(method) << QString(address) << QString(opened);
        };
        row("https", "https://help.zento.example/a?b=c", "https://help.zento.example/a?b=c");
        row("http", "http://help.zento.example/", "http://help.zento.example/");
        row("mail", "mailto:help@zento.example", "mailto:help@zento.example");
        row("file", "file:///etc/hosts", "");
        row("program's scheme", "zento://open?file=x", "");
        row("http without host", "http:relative", "");
        row("empty", "", "");
        row("mail with fields", "mailto:help@zento.example?subject=Hi&cc=a@zento.example&body=x",
            "mailto:help@zento.example?subject=Hi&cc=a@zento.example&body=x");
        row("mail attaching a file", "mailto:help@zento.example?attach=/etc/passwd", "");
        row("mail attaching, capitals", "mailto:h@zento.example?body=x&ATTACHMENT=/etc/passwd", "");
        row("mail attaching, encoded", "mailto:help@zento.example?%61ttach=/etc/passwd", "");
        row("token refused", "zento://open?token=s3cret", "");
        row("signed in, https", "https://centre.zento.example/me", "WRAPPED", "openAutoLoginUrl");
        row("signed in, file", "file:///etc/hosts", "", "openAutoLoginUrl");
    }

    void openUrl()
    {
        QFETCH(QString, method);
        QFETCH(QString, address);
        QFETCH(QString, opened);

        KDeskhiveLib::instance()->nimboClientInstance()->login(QVariant());
        KUrlCatcher catcher;
        KWarningCatcher warnings;
        const QVariant result = inPage(QString("zentoctx.%1('%2')").arg(method, address));
        QCOMPARE(warnings.warnings().size(), opened.isEmpty() ? 1 : 0);
        // The address's query, where tokens travel, stays out of the log.
        QVERIFY(!warnings.warnings().join(' ').contains("s3cret"));
        if (method == "openUrl")
            QCOMPARE(result.toBool(), !opened.isEmpty());
        if (opened == "WRAPPED")
            opened = "wrapped:" + QUrl::toPercentEncoding(address);
        QCOMPARE(catcher.take(), opened.isEmpty() ? QStringList() : QStringList(opened));
    }

    // Which pages the dialog reaches get the bridge: the page navigates
    // there and the probe page reports what it sees. Only those open
    // windows, from script or on a click. The rules themselves, other ports
    // among them, are originRules'.
    void bridgeOrigins_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("layer"); // where the allow-list is configured
        QTest::addColumn<QString>("bridge");

        const auto row = [](const char* tag, const char* target, const char* layer, bool bridge) {
            QTest::newRow(tag) << QString(target) << QString(layer)
                               << QString(bridge ? "object" : "undefined");
        };
        row("same origin", "/probe", "", true);
        row("redirected away", "/away", "", false);
        row("fallback's origin", "fallback/probe", "", true);
        row("allowed by the machine", "other/probe", "machine", true);
        row("allowed by the user only", "other/probe", "user", false);
    }

    void bridgeOrigins()
    {
        QFETCH(QString, target);
        QFETCH(QString, layer);
        QFETCH(QString, bridge);

        KTestHttpServer fallback;
        KTestHttpServer other;
        QVERIFY(fallback.listen() && other.listen());
        fallback.addPage("/probe", kProbe);
        other.addPage("/probe", kProbe);
        if (!layer.isEmpty())
            krt::hostcontrol::setConfigValue(
                layer == "user" ? krt::hostcontrol::UserLayer : krt::hostcontrol::MachineLayer,
                KxWebBridgeOrigins::configKey(),
                QStringList{"https://help.zento.example", other.url("/").toString()});

        QUrl address = m_server.url(target);
        if (target.startsWith("fallback"))
            address = fallback.url(target.mid(8));
        else if (target.startsWith("other"))
            address = other.url(target.mid(5));

        KxWebDlg dialog(m_server.url("/probe"), nullptr, fallback.url("/offline"));
        KUrlCatcher catcher;
        QString seen;
        bool closed = false;
        execShown(dialog, [&] {
            QCOMPARE(dialog.windowTitle(), QString("object"));
            js(dialog, "zentoctx.setOnCloseCallback('keep')");
            QSignalSpy loaded(webEngine(dialog), &KxWebDlgEngine::loadFinished);
            js(dialog, QString("location.href = '%1'").arg(address.toString()));
            QVERIFY(loaded.wait(kSlowMs));
            // The title may come after the load's end.
            QTRY_VERIFY(dialog.windowTitle() == "object" || dialog.windowTitle() == "undefined");
            seen = dialog.windowTitle();
            js(dialog, "window.open('https://popup.zento.example/')");
            QVERIFY(clickElement(dialog, "#open"));
            if (bridge == "object")
                QTRY_COMPARE_WITH_TIMEOUT(catcher.urls.size(), 2, kSlowMs);
            // The callback the first page set runs only in a page with the
            // bridge: any other cannot keep the dialog open with it.
            js(dialog, "window.keep = function(){ return 1; }");
            closed = dialog.close();
        });
        QCOMPARE(seen, bridge);
        QCOMPARE(closed, bridge == "undefined");
        QCOMPARE(catcher.urls.size(), bridge == "object" ? 2 : 0);
    }

    // A frame of another origin gets nothing from the bridge, neither the
    // page's "zentoctx" nor the channel under it, even when it and the page
    // relax document.domain to the same value: the page cannot relax it,
    // and where it does anyway (through another window's setter) the bridge
    // refuses every call while the frame can reach it.
    void otherOriginFrames_data()
    {
        QTest::addColumn<QString>("relax"); // what the page does
        QTest::addColumn<QString>("relaxed");
        QTest::addColumn<QString>("pageAfter"); // the page's own hdid() afterwards

        QTest::newRow("none relaxes") << ""
                                      << ""
                                      << "hd-42";
        QTest::newRow("both relax")
            << "try { document.domain = '127.0.0.1'; window.relaxed = 'yes'; }"
               "catch (e) { window.relaxed = e.name; }"
            << "SecurityError"
            << "hd-42";
        QTest::newRow("relaxed through another window")
            << "var f = document.createElement('iframe'); document.head.appendChild(f);"
               "Object.getOwnPropertyDescriptor(f.contentWindow.Document.prototype, 'domain')"
               ".set.call(document, '127.0.0.1'); window.relaxed = document.domain;"
            << "127.0.0.1"
            << "";
    }

    void otherOriginFrames()
    {
        QFETCH(QString, relax);
        QFETCH(QString, relaxed);
        QFETCH(QString, pageAfter);

        KTestHttpServer page;
        KTestHttpServer other;
        QVERIFY(page.listen() && other.listen());
        // The frame tells the page what it got.
        page.addPage("/page", QString("<script>window.relaxed = ''; %1 window.got = '';"
                                      "addEventListener('message', function (e) { window.got = "
                                      "e.data; });</script><iframe src='%2'></iframe>")
                                  .arg(relax, other.url("/frame").toString())
                                  .toUtf8());
        other.addPage("/frame",
                      "<script>document.domain = '127.0.0.1';"
                      "var z; try { z = parent.zentoctx; } catch (e) {}"
                      "var channel = typeof qt === 'undefined' ? 'no channel' : 'a channel';"
                      "Promise.all(z ? [z.hdid(), z.get('colour')] : []).then(function (a) {"
                      "  parent.postMessage((z ? a.join('') : 'nothing') + ', ' + channel, '*');"
                      "  if (z) { z.set('colour', 'stolen'); "
                      "    z.openUrl('https://evil.zento.example/'); }"
                      "});</script>");
        KUrlCatcher catcher;
        KWarningCatcher warnings;
        KxWebDlg dialog(page.url("/page"));
        execShown(dialog, [&] {
            QTRY_VERIFY(!js(dialog, "window.got").toString().isEmpty());
            QCOMPARE(js(dialog, "window.relaxed").toString(), relaxed);
            const QString got = js(dialog, "window.got").toString();
            QVERIFY2(got == "nothing, no channel" || got == ", no channel", qPrintable(got));
            QCOMPARE(js(dialog, "zentoctx.hdid()").toString(), pageAfter);
        });
        QCOMPARE(KxSettings().value("ZentoCtx/colour").toString(), QString());
        QCOMPARE(catcher.urls, QList<QUrl>());
        QCOMPARE(warnings.warnings().size(), pageAfter.isEmpty() ? 1 : 0);
    }

    // Pages cannot grow the handler's cache of unanswerable keys without
    // end: past its bound a key is asked again each time, so an answer
    // configured later is found.
    void unknownProductKeys()
    {
        KXaCommonAuthHandler handler;
        krt::hostcontrol::setHandler(&handler);
        KWarningCatcher warnings;
        const int keys = KAuthorizationHandler::kMaxUnknownKeys + 10;
        QString answer;
        KxWebDlg dialog(m_server.url("/probe"));
        execShown(dialog, [&] {
            js(dialog, QString("for (var i = 0; i < %1; ++i) zentoctx.readProductConfig('Web/n' + "
                               "i); zentoctx.readProductConfig('Web/late')")
                           .arg(keys));
            krt::hostcontrol::setConfigValue(krt::hostcontrol::MachineLayer, "Web/late", "known");
            answer = js(dialog, "zentoctx.readProductConfig('Web/late')").toString();
        });
        krt::hostcontrol::setHandler(nullptr);
        QCOMPARE(answer, QString("known"));
        QCOMPARE(warnings.warnings().size(), KAuthorizationHandler::kMaxUnknownKeys + 1);
    }

    // page, the dialog's address (the fallback's counts alike), what the
    // policy allows, and whether the page gets the bridge.
    void originRules_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("dialog");
        QTest::addColumn<QString>("configured");
        QTest::addColumn<bool>("admitted");

        const auto row = [](const char* tag, const char* page, bool admitted,
                            const char* configured = "",
                            const char* dialog = "https://svc.zento.example/start") {
            QTest::newRow(tag) << QString(page) << QString(dialog) << QString(configured)
                               << admitted;
        };
        row("same origin", "https://svc.zento.example/other?x", true);
        row("default port written", "https://svc.zento.example:443/", true);
        row("other port", "https://svc.zento.example:8443/", false);
        row("other scheme", "http://svc.zento.example/start", false);
        row("subdomain", "https://a.svc.zento.example/", false);
        row("library page", "qrc:/auth_plugin/mui/zh_CN/offline.html", true);
        row("other resource", "qrc:/images/logo.png", false);
        row("resource dialog", "qrc:/gallery/a.html", true, "", "qrc:/gallery/b.html");
        row("the dialog's file", "file:///tmp/a.html#x", true, "", "file:///tmp/a.html");
        row("another file", "file:///tmp/b.html", false, "", "file:///tmp/a.html");
        row("empty", "", false);
        row("configured, path ignored", "https://help.example/x", true, "https://help.example/y/z");
        row("configured list", "http://127.0.0.1:8080/", true,
            "https://help.example; http://127.0.0.1:8080,x");
        row("configured nonsense", "https://help.example/", false, "help.example");
    }

    void originRules()
    {
        QFETCH(QString, page);
        QFETCH(QString, dialog);
        QFETCH(QString, configured);
        QFETCH(bool, admitted);

        if (!configured.isEmpty())
            krt::hostcontrol::setConfigValue(krt::hostcontrol::PolicyLayer,
                                             KxWebBridgeOrigins::configKey(), configured);
        QCOMPARE(KxWebBridgeOrigins::admits(QUrl(page), QUrl(dialog), QUrl()), admitted);
        QCOMPARE(KxWebBridgeOrigins::admits(QUrl(page), QUrl(), QUrl(dialog)), admitted);
    }
};

QTEST_MAIN(TestKxWebBridge)

#include "tst_kxwebbridge.moc"
