// The script bridge "zentoctx" as page script sees it: the methods it has,
// the host's facts, kept values, usage events, the registry-like stores,
// opening addresses, and which pages get the bridge at all.

#include "ktestenvironment.h"
#include "ktesthttpserver.h"
#include "kurlcatcher.h"
#include "kwarningcatcher.h"
#include "kwebdlgdriver.h"

#include <kdeskhivelib.h>
#include <kxauthwebview.h>
#include <kxwebbridgeorigins.h>
#include <kxwebdlg.h>

#include <deskhive/nimboclient.h>
#include <vex/kxsettings.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/khksoftwaresettings.h>

#include <QtTest>

using namespace AuthTest;

namespace {

const QByteArray kProbe = "<html><head><script>document.title = typeof zentoctx;</script>"
                          "</head><body>probe</body></html>";

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

    // The page sees the thirty methods, and nothing else of the dialog.
    void surface()
    {
        const QString methods =
            "resize moveTo accept reject get set experiment postEvent postPageView distSrc lang "
            "version hdid setVisible readStrReg readIntReg writeStrReg writeIntReg "
            "readProductConfig isFileExist login openAutoLoginUrl isLogined loginedUserId "
            "isMimeTypeAvailable availableMimeTypes openUrl isSupportWindowOpen "
            "setOnCloseCallback setOnEscPressCallback";
        const QString dialogOnly = "exec show hide close done open setWindowTitle setStyleSheet "
                                   "update on_loadTimedOut populateJavaScriptWindowObject "
                                   "on_linkClicked";
        const QString script = "'%1'.split(' ').filter(function(n){ return typeof zentoctx[n] "
                               "%2 'function'; }).join(',')";
        QCOMPARE(methods.count(' '), 29);
        QCOMPARE(inPage(script.arg(methods, "!==")).toString(), QString());
        QCOMPARE(inPage(script.arg(dialogOnly, "===")).toString(), QString());
    }

    void hostFacts_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QVariant>("answer");

        const auto row = [](const char* script, const QVariant& answer) {
            QTest::newRow(script) << QString("zentoctx.") + script << answer;
        };
        row("distSrc()", "mc-test");
        row("lang()", "en-US");
        row("version()", "12.1.0.17890");
        row("hdid()", "hd-42");
        row("isFileExist('/etc/hosts')", true);
        row("isFileExist('/no/such/file')", false);
        row("isSupportWindowOpen()", true);
        row("availableMimeTypes()", "");
        row("isMimeTypeAvailable('text/html')", false);
    }

    void hostFacts()
    {
        QFETCH(QString, script);
        QFETCH(QVariant, answer);

        QCOMPARE(inPage(script), answer);
    }

    // Kept in the host settings, group "ZentoCtx", for the next dialog.
    void keptValues()
    {
        QCOMPARE(inPage("zentoctx.set('colour', 'blue'); zentoctx.get('colour')").toString(),
                 QString("blue"));
        QCOMPARE(inPage("zentoctx.get('colour') + '|' + zentoctx.get('missing')").toString(),
                 QString("blue|"));
        QCOMPARE(KxSettings().value("ZentoCtx/colour").toString(), QString("blue"));
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

    // Keys of the user's settings store, never files: paths that could
    // leave the store, or name nothing, are refused with one warning per
    // call and write nothing.
    void registryKeys_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("accepted");

        const auto row = [](const char* tag, const QString& key, const char* name, bool accepted) {
            QTest::newRow(tag) << key << QString(name) << accepted;
        };
        row("store path", "Corvane\\Web\\Test", "colour", true);
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

        const QString intName = name.isEmpty() ? name : name + "N";
        const QString arguments = QString("'%1', '%2'").arg(QString(key).replace("\\", "\\\\"));
        KWarningCatcher warnings;
        const QString read =
            inPage(QString("zentoctx.writeStrReg(%1, 'blue');"
                           "zentoctx.writeIntReg(%2, 7);"
                           "zentoctx.readStrReg(%1) + '|' + zentoctx.readIntReg(%2)")
                       .arg(arguments.arg(name), arguments.arg(intName)))
                .toString();

        QCOMPARE(read, accepted ? QString("blue|7") : QString("|0"));
        QCOMPARE(warnings.warnings().size(), accepted ? 0 : 4);
        for (const QString& warning : warnings.warnings())
            QVERIFY2(warning.startsWith("Refused the settings key"), qPrintable(warning));
        QCOMPARE(KHKSoftwareSettings(KHKSoftwareSettings::CurrentUser, key).value(name).toString(),
                 accepted ? QString("blue") : QString());
        QVERIFY(!QFileInfo::exists(m_env.rootPath() + "/evil.ini"));
        QVERIFY(!QFileInfo::exists(QDir::current().filePath("../../evil.ini")));
        QFile store(KHKSoftwareSettings::storeFileName(KHKSoftwareSettings::CurrentUser));
        QCOMPARE(store.open(QIODevice::ReadOnly) && store.readAll().contains("blue"), accepted);
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
        if (method == "openUrl")
            QCOMPARE(result.toBool(), !opened.isEmpty());
        if (opened == "WRAPPED")
            opened = "wrapped:" + QUrl::toPercentEncoding(address);
        QCOMPARE(catcher.take(), opened.isEmpty() ? QStringList() : QStringList(opened));
    }

    // Which pages the dialog reaches get the bridge: the page navigates
    // there and the probe page reports what it sees. The rules themselves,
    // other ports among them, are originRules'.
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
        QString seen;
        bool closed = false;
        execShown(dialog, [&] {
            QCOMPARE(dialog.windowTitle(), QString("object"));
            js(dialog, "zentoctx.setOnCloseCallback('keep')");
            QSignalSpy loaded(webView(dialog), &QWebView::loadFinished);
            js(dialog, QString("location.href = '%1'").arg(address.toString()));
            QVERIFY(loaded.wait());
            seen = dialog.windowTitle();
            // The callback the first page set runs only in a page with the
            // bridge: any other cannot keep the dialog open with it.
            js(dialog, "window.keep = function(){ return 1; }");
            closed = dialog.close();
        });
        QCOMPARE(seen, bridge);
        QCOMPARE(closed, bridge == "undefined");
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
