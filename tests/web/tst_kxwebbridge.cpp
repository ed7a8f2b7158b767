// The script bridge "zentoctx" as page script sees it: the methods it has,
// the host's facts, kept values, usage events, the registry-like stores,
// opening addresses, and which pages get the bridge at all.

#include "ktestenvironment.h"
#include "ktesthttpserver.h"
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

#include <QUrlQuery>

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
        qputenv("DESKHIVE_STATE", (m_env.rootPath() + "/deskhive-state.json").toUtf8());
        QVERIFY(m_server.listen());
        m_server.addPage("/probe", kProbe);
        m_server.addRedirect("/away", m_server.url("/probe", "localhost"));
    }

    void init()
    {
        m_env.resetHost();
        krt::hostcontrol::setVersion("12.1.0.17890");
        krt::hostcontrol::setDistributionChannel("mc-test");
        krt::hostcontrol::setHardwareId("hd-42");
        INimboClient* client = KDeskhiveLib::instance()->nimboClientInstance();
        QVERIFY2(client, "the cloud simulator is not beside the suite");
        client->logout();
    }

    // The page sees the thirty methods, and nothing else of the dialog.
    void surface()
    {
        const QStringList methods{"resize",
                                  "moveTo",
                                  "accept",
                                  "reject",
                                  "get",
                                  "set",
                                  "experiment",
                                  "postEvent",
                                  "postPageView",
                                  "distSrc",
                                  "lang",
                                  "version",
                                  "hdid",
                                  "setVisible",
                                  "readStrReg",
                                  "readIntReg",
                                  "writeStrReg",
                                  "writeIntReg",
                                  "readProductConfig",
                                  "isFileExist",
                                  "login",
                                  "openAutoLoginUrl",
                                  "isLogined",
                                  "loginedUserId",
                                  "isMimeTypeAvailable",
                                  "availableMimeTypes",
                                  "openUrl",
                                  "isSupportWindowOpen",
                                  "setOnCloseCallback",
                                  "setOnEscPressCallback"};
        const QStringList dialogOnly{"exec",
                                     "show",
                                     "hide",
                                     "close",
                                     "done",
                                     "open",
                                     "setWindowTitle",
                                     "setStyleSheet",
                                     "update",
                                     "on_loadTimedOut",
                                     "populateJavaScriptWindowObject",
                                     "on_linkClicked"};
        const QString script = "[%1].filter(function(n){ return typeof zentoctx[n] %2 "
                               "'function'; }).join(',')";
        const auto quoted = [](const QStringList& names) { return "'" + names.join("','") + "'"; };
        QCOMPARE(inPage(script.arg(quoted(methods), "!==")).toString(), QString());
        QCOMPARE(inPage(script.arg(quoted(dialogOnly), "===")).toString(), QString());
    }

    void hostFacts_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QVariant>("answer");

        const QString existing = QCoreApplication::applicationFilePath();
        QTest::newRow("distSrc") << "zentoctx.distSrc()" << QVariant("mc-test");
        QTest::newRow("lang") << "zentoctx.lang()" << QVariant("en-US");
        QTest::newRow("version") << "zentoctx.version()" << QVariant("12.1.0.17890");
        QTest::newRow("hdid") << "zentoctx.hdid()" << QVariant("hd-42");
        QTest::newRow("isFileExist")
            << "zentoctx.isFileExist('" + existing + "')" << QVariant(true);
        QTest::newRow("isFileExist, missing")
            << "zentoctx.isFileExist('/no/such/file')" << QVariant(false);
        QTest::newRow("isFileExist, empty") << "zentoctx.isFileExist('')" << QVariant(false);
        QTest::newRow("isSupportWindowOpen") << "zentoctx.isSupportWindowOpen()" << QVariant(true);
        QTest::newRow("availableMimeTypes") << "zentoctx.availableMimeTypes()" << QVariant("");
        QTest::newRow("isMimeTypeAvailable")
            << "zentoctx.isMimeTypeAvailable('text/html')" << QVariant(false);
        QTest::newRow("isLogined, signed out") << "zentoctx.isLogined()" << QVariant(false);
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
        KxSettings settings;
        QCOMPARE(settings.value("ZentoCtx/colour").toString(), QString("blue"));
    }

    void usageEvents_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QVariantMap>("event");

        const QVariantMap base{
            {"kind", "event"},         {"expId", ""},      {"expVar", ""},    {"eventName", "open"},
            {"eventCategory", "menu"}, {"eventLable", ""}, {"eventValue", 0}, {"viewName", ""}};
        QVariantMap three = base;
        three["eventLable"] = "top";
        QVariantMap four = three;
        four["eventValue"] = 3;
        QVariantMap five = four;
        five.insert({{"viewName", "home"}, {"expId", "e1"}, {"expVar", "B"}});
        const QVariantMap view{{"kind", "view"},
                               {"expId", "e2"},
                               {"expVar", "A"},
                               {"viewName", "home"},
                               {"viewCategory", "start"}};

        QTest::newRow("name and category") << "zentoctx.postEvent('open', 'menu')" << base;
        QTest::newRow("with a label") << "zentoctx.postEvent('open', 'menu', 'top')" << three;
        QTest::newRow("with a value") << "zentoctx.postEvent('open', 'menu', 'top', 3)" << four;
        QTest::newRow("all, in an experiment")
            << "zentoctx.experiment('e1', 'B'); zentoctx.postEvent('open', 'menu', 'top', 3, "
               "'home')"
            << five;
        QTest::newRow("page view")
            << "zentoctx.experiment('e2', 'A'); zentoctx.postPageView('home', 'start')" << view;
    }

    void usageEvents()
    {
        QFETCH(QString, script);
        QFETCH(QVariantMap, event);

        krt::hostcontrol::clearRecordedEvents();
        inPage(script);
        const QList<QVariantMap> events = krt::hostcontrol::recordedEvents();
        QCOMPARE(events.size(), 1);
        QVariantMap recorded = events.first();
        recorded.remove("time");
        QCOMPARE(recorded, event);
    }

    // Keys of the user's settings store, never files: paths that could
    // leave the store, or name nothing, are refused with one warning per
    // call and write nothing.
    void registryKeys_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("accepted");

        const QString absolute = m_env.rootPath() + "/evil.ini";
        QTest::newRow("store path") << "Corvane\\Web\\Test"
                                    << "colour" << true;
        QTest::newRow("slashes") << "Corvane/Web/Test"
                                 << "colour" << true;
        QTest::newRow("absolute path") << absolute << "colour" << false;
        QTest::newRow("root") << "\\Corvane"
                              << "colour" << false;
        QTest::newRow("drive") << "C:\\evil"
                               << "colour" << false;
        QTest::newRow("parent") << "..\\..\\evil.ini"
                                << "colour" << false;
        QTest::newRow("parent inside") << "Corvane/../../evil.ini"
                                       << "colour" << false;
        QTest::newRow("empty key") << ""
                                   << "colour" << false;
        QTest::newRow("empty value name") << "Corvane\\Web"
                                          << "" << false;
    }

    void registryKeys()
    {
        QFETCH(QString, key);
        QFETCH(QString, name);
        QFETCH(bool, accepted);

        const QString store = KHKSoftwareSettings::storeFileName(KHKSoftwareSettings::CurrentUser);
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
        if (!accepted) {
            for (const QString& warning : warnings.warnings())
                QVERIFY2(warning.startsWith("Refused the settings key"), qPrintable(warning));
        }
        QCOMPARE(KHKSoftwareSettings(KHKSoftwareSettings::CurrentUser, key).value(name).toString(),
                 accepted ? QString("blue") : QString());
        QVERIFY(!QFileInfo::exists(m_env.rootPath() + "/evil.ini"));
        QVERIFY(!QFileInfo::exists(QDir::current().filePath("../../evil.ini")));
        QFile written(store);
        QCOMPARE(written.open(QIODevice::ReadOnly) && written.readAll().contains("blue"), accepted);
    }

    // Only http, https and mailto addresses go to the system.
    void openUrl_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("opened"); // empty: refused

        QTest::newRow("https") << "https://help.zento.example/a?b=c"
                               << "https://help.zento.example/a?b=c";
        QTest::newRow("http") << "http://help.zento.example/"
                              << "http://help.zento.example/";
        QTest::newRow("mail") << "mailto:help@zento.example"
                              << "mailto:help@zento.example";
        QTest::newRow("scheme in capitals") << "HTTPS://Help.Zento.Example/"
                                            << "https://help.zento.example/";
        QTest::newRow("file") << "file:///etc/hosts"
                              << "";
        QTest::newRow("bare path") << "/etc/hosts"
                                   << "";
        QTest::newRow("program's scheme") << "zento://open?file=x"
                                          << "";
        QTest::newRow("javascript") << "javascript:alert(1)"
                                    << "";
        QTest::newRow("data") << "data:text/html,<b>x</b>"
                              << "";
        QTest::newRow("http without host") << "http:relative"
                                           << "";
        QTest::newRow("empty") << ""
                               << "";
    }

    void openUrl()
    {
        QFETCH(QString, address);
        QFETCH(QString, opened);

        KUrlCatcher catcher;
        KWarningCatcher warnings;
        const bool result = inPage(QString("zentoctx.openUrl('%1')").arg(address)).toBool();
        QCOMPARE(result, !opened.isEmpty());
        QCOMPARE(catcher.urls, opened.isEmpty() ? QList<QUrl>() : QList<QUrl>{QUrl(opened)});
        QCOMPARE(warnings.warnings().size(), opened.isEmpty() ? 1 : 0);
    }

    void openAutoLoginUrl_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<bool>("opened");

        QTest::newRow("https") << "https://centre.zento.example/me" << true;
        QTest::newRow("file") << "file:///etc/hosts" << false;
    }

    void openAutoLoginUrl()
    {
        QFETCH(QString, address);
        QFETCH(bool, opened);

        KDeskhiveLib::instance()->nimboClientInstance()->login(QVariant());
        KUrlCatcher catcher;
        KWarningCatcher warnings;
        inPage(QString("zentoctx.openAutoLoginUrl('%1')").arg(address));
        QCOMPARE(catcher.urls.size(), opened ? 1 : 0);
        if (opened) {
            const QUrl wrapped = catcher.urls.first();
            QCOMPARE(wrapped.host(), QString("account.zentooffice.example"));
            QCOMPARE(QUrlQuery(wrapped).queryItemValue("target", QUrl::FullyDecoded), address);
        }
        QCOMPARE(warnings.warnings().size(), opened ? 0 : 1);
    }

    // Which pages the dialog reaches get the bridge: the page navigates
    // there and the probe page reports what it sees.
    void bridgeOrigins_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("layer"); // where the allow-list is configured
        QTest::addColumn<QString>("bridge");

        QTest::newRow("same origin") << "/probe"
                                     << ""
                                     << "object";
        QTest::newRow("other host name") << "localhost/probe"
                                         << ""
                                         << "undefined";
        QTest::newRow("redirected away") << "/away"
                                         << ""
                                         << "undefined";
        QTest::newRow("fallback's origin") << "fallback/probe"
                                           << ""
                                           << "object";
        QTest::newRow("other port") << "other/probe"
                                    << ""
                                    << "undefined";
        QTest::newRow("allowed by the machine") << "other/probe"
                                                << "machine"
                                                << "object";
        QTest::newRow("allowed by policy") << "other/probe"
                                           << "policy"
                                           << "object";
        QTest::newRow("allowed by the user only") << "other/probe"
                                                  << "user"
                                                  << "undefined";
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
        const QHash<QString, krt::hostcontrol::ConfigLayer> layers{
            {"machine", krt::hostcontrol::MachineLayer},
            {"policy", krt::hostcontrol::PolicyLayer},
            {"user", krt::hostcontrol::UserLayer}};
        if (!layer.isEmpty())
            krt::hostcontrol::setConfigValue(
                layers.value(layer), KxWebBridgeOrigins::configKey(),
                QStringList{"https://help.zento.example", other.url("/").toString()});

        QUrl address = m_server.url(target);
        if (target.startsWith("localhost"))
            address = m_server.url(target.mid(9), "localhost");
        else if (target.startsWith("fallback"))
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

    void originRules_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("dialog");
        QTest::addColumn<QString>("configured");
        QTest::addColumn<bool>("admitted");

        const QString d = "https://svc.zento.example/start";
        QTest::newRow("same origin") << "https://svc.zento.example/other?x" << d << "" << true;
        QTest::newRow("default port written")
            << "https://svc.zento.example:443/" << d << "" << true;
        QTest::newRow("other port") << "https://svc.zento.example:8443/" << d << "" << false;
        QTest::newRow("other scheme") << "http://svc.zento.example/start" << d << "" << false;
        QTest::newRow("other host") << "https://evil.example/start" << d << "" << false;
        QTest::newRow("host in capitals") << "https://SVC.zento.example/" << d << "" << true;
        QTest::newRow("subdomain") << "https://a.svc.zento.example/" << d << "" << false;
        QTest::newRow("library page")
            << "qrc:/auth_plugin/mui/zh_CN/offline.html" << d << "" << true;
        QTest::newRow("other resource") << "qrc:/images/logo.png" << d << "" << false;
        QTest::newRow("resource dialog") << "qrc:/gallery/a.html"
                                         << "qrc:/gallery/b.html"
                                         << "" << true;
        QTest::newRow("the dialog's file") << "file:///tmp/a.html#x"
                                           << "file:///tmp/a.html"
                                           << "" << true;
        QTest::newRow("another file") << "file:///tmp/b.html"
                                      << "file:///tmp/a.html"
                                      << "" << false;
        QTest::newRow("data") << "data:text/html,x" << d << "" << false;
        QTest::newRow("about") << "about:blank" << d << "" << false;
        QTest::newRow("empty") << "" << d << "" << false;
        QTest::newRow("configured")
            << "https://help.example/x" << d << "https://help.example" << true;
        QTest::newRow("configured, path ignored")
            << "https://help.example/x" << d << "https://help.example/y/z" << true;
        QTest::newRow("configured list") << "http://127.0.0.1:8080/" << d
                                         << "https://help.example; http://127.0.0.1:8080,x" << true;
        QTest::newRow("configured, other port")
            << "http://127.0.0.1:8081/" << d << "http://127.0.0.1:8080" << false;
        QTest::newRow("configured nonsense")
            << "https://help.example/" << d << "help.example" << false;
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
        // The fallback's origin counts like the dialog's own.
        QCOMPARE(KxWebBridgeOrigins::admits(QUrl(page), QUrl(), QUrl(dialog)), admitted);
    }
};

QTEST_MAIN(TestKxWebBridge)

#include "tst_kxwebbridge.moc"
