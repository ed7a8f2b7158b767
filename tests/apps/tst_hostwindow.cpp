// The reference host's window and developer panel, in process, with the
// built plug-in and web module loaded through QLibrary as the host loads
// them, on the shipped profile and the cloud simulator's state file. Real
// clicks and keys; the state file, the host's control API, the desktop's
// URL handler and the dialogs the window opens tell what happened. Every
// row starts from the same host (init()): English, the screen's scale,
// online, the profile's pages, the demo user signed in.

#include "ikhostweb.h"
#include "kaboutdialog.h"
#include "kauthpluginloader.h"
#include "kdeskhiveclient.h"
#include "kdeveloperpanel.h"
#include "kdocumentrequest.h"
#include "khostcommandregistration.h"
#include "ksimulatorstateeditor.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"
#include "kurlcatcher.h"
#include "kzentoofficehost.h"
#include "kzentoofficewindow.h"

#include <deskhive/nimboclient.h>
#include <vex/kcommand.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/ikaccountservice.h>
#include <vexlite/krtinfocollect.h>
#include <vexlite/krtproduct.h>
#include <vexlite/kshellapplicaitons.h>
#include <vexlite/kshellapplication.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QDesktopServices>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTabWidget>
#include <QTextBlock>
#include <QtTest>

#include <memory>
#include <sys/stat.h>

using namespace AuthTest;

namespace {

const QString kDefaultJump = "https://jump.zentooffice.example/go";
const QByteArray kSignedIn = R"({"IsLogined": true, "Name": "Demo User", "Id": "demo-0001"})";
const QByteArray kSignedOut = R"({"IsLogined": false})";

} // namespace

class TestHostWindow : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    const QString m_bin = QCoreApplication::applicationDirPath();
    QString m_statePath;
    std::unique_ptr<KAuthPluginLoader> m_plugin;
    std::unique_ptr<KHostCommandRegistration> m_commands;
    std::unique_ptr<KZentoOfficeHost> m_host;
    KZentoOfficeWindow* m_window = nullptr;

    template <typename T>
    T* control(const char* name) const
    {
        return m_window->developerPanel()->findChild<T*>(QLatin1String(name));
    }
    QWidget* pocket(const char* name) const
    {
        return m_window->pocketWidget(m_window->findCommand(QLatin1String(name)));
    }
    QJsonObject state() const { return KSimulatorStateEditor(m_statePath).read(); }
    // The simulator's answer to a write of its state file.
    static QSignalSpy* stateRead()
    {
        return new QSignalSpy(KDeskhiveClient::client(), SIGNAL(stateFileRead()));
    }
    // Writes the state file unless it holds json already, and waits until
    // the simulator has read it.
    bool setState(const QByteArray& json)
    {
        QFile file(m_statePath);
        if (file.open(QIODevice::ReadOnly) && file.readAll() == json)
            return true;
        const std::unique_ptr<QSignalSpy> read(stateRead());
        return KTestAppDir::write(m_statePath, json) && read->wait(5000);
    }
    // The web dialog's engine, whichever it is, through its meta-object.
    static QObject* webEngine(QDialog* dialog)
    {
        const QList<QObject*> objects = dialog->findChildren<QObject*>();
        const auto engine = std::find_if(objects.cbegin(), objects.cend(),
                                         [](QObject* o) { return o->inherits("KxWebDlgEngine"); });
        return engine == objects.cend() ? nullptr : *engine;
    }
    // script's value in the web dialog's page.
    static QVariant evaluate(QDialog* dialog, const QString& script)
    {
        QVariant result;
        if (QObject* engine = webEngine(dialog))
            QMetaObject::invokeMethod(engine, "evaluate", Q_RETURN_ARG(QVariant, result),
                                      Q_ARG(QString, script));
        return result;
    }
    // Triggers the Help menu's entry and, from inside its web dialog's modal
    // run, acts once the dialog shows and is ready (a dialog that is not
    // within 10 s gets no act); then closes the dialog if it is still open.
    // Whether it was.
    bool onWebDialog(const char* entry, const std::function<void(QDialog*)>& act,
                     const std::function<bool(QDialog*)>& ready = nullptr)
    {
        bool leftOpen = false;
        QElapsedTimer waiting;
        waiting.start();
        QTimer poll;
        connect(&poll, &QTimer::timeout, this, [&] {
            QDialog* dialog = nullptr;
            const QList<QDialog*> dialogs = m_window->findChildren<QDialog*>();
            for (QDialog* d : dialogs)
                dialog = d->inherits("KxWebDlg") && d->isVisible() ? d : dialog;
            const bool isReady = dialog && (!ready || ready(dialog));
            if (!isReady && !(dialog && waiting.hasExpired(10000)))
                return;
            poll.stop();
            if (isReady)
                act(dialog);
            leftOpen = dialog->isVisible();
            if (leftOpen)
                dialog->reject();
        });
        poll.start(10);
        m_window->findChild<QAction*>(entry)->trigger();
        return leftOpen;
    }
    bool signedInAs(const QString& name) const
    {
        auto* button = qobject_cast<QAbstractButton*>(pocket("UserCenter"));
        return button && button->isVisible() && button->text() == name;
    }

private slots:
    void initTestCase()
    {
        m_statePath = m_env.rootPath() + "/deskhive/state.json";
        QVERIFY(KTestAppDir::write(m_statePath, kSignedIn));
        qputenv("DESKHIVE_STATE", m_statePath.toUtf8());
        QVERIFY(QFile::copy(m_bin + "/profile/host.json", m_env.profilePath() + "/host.json"));
        QVERIFY(krt::hostcontrol::loadProfile(m_env.profilePath()));
        m_plugin = std::make_unique<KAuthPluginLoader>(m_bin + "/libauthplugin.so");
        IKAuthorizationHandler* handler = m_plugin->load();
        QVERIFY2(handler, qPrintable(m_plugin->errorString()));
        krt::hostcontrol::setHandler(handler);
        m_commands = std::make_unique<KHostCommandRegistration>();
        m_host = std::make_unique<KZentoOfficeHost>();
        // A build without a web engine has no web module.
        QVERIFY2(m_host->loadWebModule(m_bin + "/libhostweb.so") == AUTH_WEB_DIALOG,
                 qPrintable(m_host->webModuleError()));
        m_window = m_host->newWindow(true);
        m_window->show();
    }

    void init()
    {
        if (krt::hostcontrol::language() != "en_US")
            m_host->setLanguage("en_US");
        if (krt::hostcontrol::displayScale() != 0)
            m_host->setDisplayScale(0);
        if (m_host->isOffline())
            m_host->setOffline(false);
        if (m_host->servicePages() != KZentoOfficeHost::InternetPages)
            m_host->setServicePages(KZentoOfficeHost::InternetPages);
        m_window->setEmbedding(false);
        m_host->setFeatureSupported("SimplifiedUserCenter", true);
        m_host->setFeatureSupported("IntranetVersion", false);
        QVERIFY(setState(kSignedIn));
        QTRY_VERIFY(signedInAs("Demo User"));
        // Dialogs come and go; shortcuts need the window active.
        QApplication::setActiveWindow(m_window);
        QTRY_VERIFY(m_window->isActiveWindow());
    }

    void cleanupTestCase()
    {
        m_host.reset();
        m_commands.reset();
    }

    // Each account control writes the state file, each error button a new
    // request for its signal (what the simulator raises for a request is the
    // cloud library suite's, the new serial each time the editor's).
    void panelDrivesTheSimulator_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("signedIn"); // before the click
        QTest::addColumn<QString>("member");
        QTest::addColumn<QVariant>("value");

        const auto row = [](const char* name, const char* button, bool signedIn, const char* member,
                            const QVariant& value) {
            QTest::newRow(name) << button << signedIn << member << value;
        };
        row("sign out", "signOut", true, "IsLogined", false);
        row("sign in", "signIn", false, "IsLogined", true);
        row("company", "companyAccount", true, "IsCompanyAccount", true);
        row("launch failed", "launchError", true, "emit",
            QVariantList{"failedToLaunchCloudsvrProcess"});
        row("exited", "exitError", true, "emit", QVariantList{"cloudsvrExitWithErrors:disk full"});
        row("ipc", "ipcError", true, "emit", QVariantList{"occurIpcErrorsWhenGetUserInf"});
        row("rpc", "rpcError", true, "emit", QVariantList{"occurRpcErrorsWhenGetUserInf"});
    }

    void panelDrivesTheSimulator()
    {
        QFETCH(QString, button);
        QFETCH(bool, signedIn);
        QFETCH(QString, member);
        QFETCH(QVariant, value);

        QVERIFY(setState(signedIn ? kSignedIn : kSignedOut));
        auto* control = this->control<QAbstractButton>(qPrintable(button));
        QTRY_VERIFY(control->isEnabled());
        const qint64 serial = state().value("emitSerial").toVariant().toLongLong();
        const std::unique_ptr<QSignalSpy> read(stateRead());
        QTest::mouseClick(control, Qt::LeftButton);
        QVERIFY(read->wait(5000));
        QCOMPARE(state().value(member).toVariant(), value);
        QCOMPARE(state().value("emitSerial").toVariant().toLongLong(), serial + (member == "emit"));
    }

    // The panel's writes change only the members they are about, in place,
    // in a file the simulator reads (comments, trailing commas); a file it
    // cannot read stays as it is, and the panel is told why.
    void stateEditorKeepsTheRest_data()
    {
        QTest::addColumn<QByteArray>("before"); // MISSING: no file, PIPE: a named pipe
        QTest::addColumn<QString>("change");
        QTest::addColumn<QByteArray>("after"); // DEMO: the demo user's picture
        QTest::addColumn<QString>("error");

        const auto row = [](const char* tag, const QByteArray& before, const char* change,
                            const QByteArray& after, const char* error = "") {
            QTest::newRow(tag) << before << QString(change) << after << QString(error);
        };
        row("comment, trailing comma",
            "{\n    // by hand\n    \"IsLogined\": true,\n    \"Name\": \"Ann\",\n}\n", "company",
            "{\n    // by hand\n    \"IsLogined\": true,\n    \"Name\": \"Ann\",\n"
            "    \"IsCompanyAccount\": true,\n}\n");
        row("in place, long number kept",
            R"({"Quota": 12345678901234567890123, "IsCompanyAccount": true /* x */})", "personal",
            R"({"Quota": 12345678901234567890123, "IsCompanyAccount": false /* x */})");
        row("sign in, demo user", "{}", "signIn",
            R"({"IsLogined": true, "Name": "Demo User", "Id": "demo-0001", )"
            R"("UserAvatarImagePath": "DEMO"})");
        row("sign in, user kept, emit emptied",
            R"({"Name": "Ann", "emit": ["x"], "IsLogined": false})", "signIn",
            R"({"Name": "Ann", "emit": [], "IsLogined": true})");
        row("raise, 20-digit serial", R"({"emitSerial": 18446744073709551614})", "raise",
            R"({"emitSerial": 18446744073709551615, "emit": ["rpc"]})");
        row("missing", "MISSING", "signOut", "{\n    \"IsLogined\": false\n}\n");
        row("not JSON", R"({"IsLogined": tru)", "company", R"({"IsLogined": tru)", "left as it is");
        row("pipe", "PIPE", "signIn", QByteArray(), "not a regular file");
    }

    void stateEditorKeepsTheRest()
    {
        QFETCH(QByteArray, before);
        QFETCH(QString, change);
        QFETCH(QByteArray, after);
        QFETCH(QString, error);

        const QString path = m_env.rootPath() + "/editor/" + QTest::currentDataTag() + ".json";
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        if (before == "PIPE")
            QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        else if (before != "MISSING")
            QVERIFY(KTestAppDir::write(path, before));
        KSimulatorStateEditor editor(path);
        const bool written = change == "signIn"     ? editor.setSignedIn(true)
                             : change == "signOut"  ? editor.setSignedIn(false)
                             : change == "company"  ? editor.setCompanyAccount(true)
                             : change == "personal" ? editor.setCompanyAccount(false)
                                                    : editor.raise("rpc");
        QCOMPARE(written, error.isEmpty());
        QVERIFY2(editor.errorString().contains(error), qPrintable(editor.errorString()));
        QFile file(path);
        QVERIFY(before == "PIPE" || file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), after.replace("DEMO", KDeskhiveClient::demoAvatarPath().toUtf8()));
    }

    // The keyboard on the panel's switches reaches the host: the host's
    // texts and the plug-in's commands follow the language, the title area
    // the scale, the account button the network.
    void panelSwitches_data()
    {
        QTest::addColumn<QString>("language"); // before the key
        QTest::addColumn<qreal>("scale");      // before the key; 0: the screen's
        QTest::addColumn<QString>("box");
        QTest::addColumn<int>("key");
        QTest::addColumn<QStringList>("texts"); // File menu, personal centre, panel, first tab
        QTest::addColumn<qreal>("scaleAfter");
        QTest::addColumn<bool>("offline"); // after a click on the box

        const auto row = [](const char* tag, const char* language, qreal scale, const char* box,
                            Qt::Key key, const QStringList& texts, qreal scaleAfter, bool offline) {
            QTest::newRow(tag) << QString(language) << scale << QString(box) << int(key) << texts
                               << scaleAfter << offline;
        };
        const QStringList english{"&File", "Personal Center", "Developer Panel", "Document 1"};
        const QStringList chinese{"文件(&F)", "个人中心", "开发者面板", "文档 1"};
        row("Chinese", "en_US", 0, "language", Qt::Key_Down, chinese, 0, false);
        row("English", "zh_CN", 0, "language", Qt::Key_Up, english, 0, false);
        row("100 %, offline", "en_US", 0, "displayScale", Qt::Key_Down, english, 1, true);
        row("150 %", "en_US", 1.25, "displayScale", Qt::Key_Down, english, 1.5, false);
        row("the screen's", "en_US", 1.5, "displayScale", Qt::Key_Home, english, 0, false);
    }

    void panelSwitches()
    {
        QFETCH(QString, language);
        QFETCH(qreal, scale);
        QFETCH(QString, box);
        QFETCH(int, key);
        QFETCH(QStringList, texts);
        QFETCH(qreal, scaleAfter);
        QFETCH(bool, offline);

        m_host->setLanguage(language);
        m_host->setDisplayScale(scale);
        QTest::keyClick(control<QComboBox>(qPrintable(box)), Qt::Key(key));
        QTRY_COMPARE(m_window->findChild<QMenuBar*>()->actions().first()->text(), texts[0]);
        QTRY_COMPARE(m_window->findCommand("KxOpenPersonalCenterCommand")->text(), texts[1]);
        QCOMPARE(m_window->developerPanel()->windowTitle(), texts[2]);
        QCOMPARE(m_window->documents()->tabText(0), texts[3]);
        QCOMPARE(krt::hostcontrol::displayScale(), scaleAfter);
        QTRY_COMPARE(pocket("UserCenter")->height(),
                     qRound(28 * (scaleAfter > 0 ? scaleAfter : 1)));

        if (offline) {
            // Offline mode is the plug-in's for a user signed in before the
            // latest login change.
            QVERIFY(setState(kSignedOut) && setState(kSignedIn));
            QTest::mouseClick(control<QAbstractButton>("offline"), Qt::LeftButton);
        }
        IKAccountService* account =
            KShellApplicaitons::instance()->getActiveApp()->accountService();
        QCOMPARE(account->isLogoutDuetoOffLine(), offline);
        if (m_host->webModule())
            QCOMPARE(m_host->webModule()->isNimboOffLineMode(), offline);
    }

    // The product's features and the window's embedding, switched in the
    // panel, decide at once who sees the account button and the personal
    // centre.
    void productSwitches_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<bool>("button");
        QTest::addColumn<bool>("personalCentre");

        // Which accounts keep them is the centre rule's suite's.
        QTest::newRow("not simplified") << "SimplifiedUserCenter" << false << false;
        QTest::newRow("intranet") << "IntranetVersion" << true << false;
        QTest::newRow("embedded") << "embedding" << false << false;
    }

    void productSwitches()
    {
        QFETCH(QString, box);
        QFETCH(bool, button);
        QFETCH(bool, personalCentre);

        KCommand* centre = m_window->findCommand("KxOpenPersonalCenterCommand");
        QVERIFY(pocket("UserCenter")->isVisible() && centre->isVisible());
        QTest::keyClick(control<QAbstractButton>(qPrintable(box)), Qt::Key_Space);
        QCOMPARE(pocket("UserCenter")->isVisible(), button);
        QCOMPARE(centre->isVisible(), personalCentre);
    }

    // The named commands that go on past the plug-in, and the account
    // service's calls, reach the host; Activity lists them with what the
    // desktop was asked to open: the host opens the enterprise centre, the
    // plug-in the personal one, each wrapped for the demo user.
    void hostHearsTheAccount_data()
    {
        QTest::addColumn<QString>("command");      // triggered; CLICK: a left click on the account
        QTest::addColumn<QStringList>("activity"); // the lines it adds; OPENED: the centre's
        QTest::addColumn<QString>("centre");       // product string; empty: nothing opened

        QTest::newRow("enterprise centre")
            << "KEnterpriseCenterTriggerCommand"
            << QStringList{"Host command OpenEnterpriseCenter", "Opened OPENED"}
            << "EnterpriseCenterUrl";
        QTest::newRow("personal centre")
            << "KxOpenPersonalCenterCommand"
            << QStringList{"Opened OPENED", "Host command OpenUserCenter"} << "PersonalCenterUrl";
        QTest::newRow("left click")
            << "CLICK" << QStringList{R"(Account service: entry 4 ("", ""))"} << "";
    }

    void hostHearsTheAccount()
    {
        QFETCH(QString, command);
        QFETCH(QStringList, activity);
        QFETCH(QString, centre);

        m_host->setServicePages(KZentoOfficeHost::LocalPages);
        auto* log = control<QPlainTextEdit>("activity");
        // An empty log still has one (empty) block, which the first line fills.
        const int before = log->toPlainText().isEmpty() ? 0 : log->document()->blockCount();
        const int caught = m_host->caughtUrls().size();
        if (command == "CLICK")
            QTest::mouseClick(pocket("UserCenter"), Qt::LeftButton);
        else
            m_window->findCommand(command)->action()->trigger();

        QCOMPARE(m_host->caughtUrls().size(), caught + !centre.isEmpty());
        if (!centre.isEmpty()) {
            const QString opened = m_host->caughtUrls().last().toString();
            const QString target = krt::product::getString(centre);
            QVERIFY2(opened.startsWith("https://account.zentooffice.example/autologin?token=") &&
                         opened.endsWith("&target=" + QUrl::toPercentEncoding(target)),
                     qPrintable(opened));
            // The activity hides the token.
            activity.replaceInStrings(
                "OPENED",
                QString(opened).replace(QRegularExpression("token=[^&]*"), "token=(hidden)"));
        }
        QStringList added;
        for (int i = before; i < log->document()->blockCount(); ++i)
            added << log->document()->findBlockByNumber(i).text().section("  ", 1, -1);
        QCOMPARE(added, activity);
    }

    // The jump base and the centres point at the local server, or at port 0,
    // which nobody can serve; then the desktop's addresses are caught, not
    // opened.
    void servicePages_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("jumpBase"); // LOCAL: the local server's
        QTest::addColumn<bool>("caught");

        const auto row = [](const char* tag, int before, Qt::Key key, const QString& jumpBase,
                            bool caught) {
            QTest::newRow(tag) << before << int(key) << jumpBase << caught;
        };
        row("local", KZentoOfficeHost::InternetPages, Qt::Key_Down, "LOCAL", true);
        row("unreachable", KZentoOfficeHost::LocalPages, Qt::Key_Down, "http://127.0.0.1:0/go",
            true);
        row("internet", KZentoOfficeHost::UnreachablePages, Qt::Key_Home, kDefaultJump, false);
    }

    void servicePages()
    {
        QFETCH(int, before);
        QFETCH(int, key);
        QFETCH(QString, jumpBase);
        QFETCH(bool, caught);

        m_host->setServicePages(KZentoOfficeHost::ServicePages(before));
        KLocalServiceServer* server = m_host->serviceServer();
        auto* box = control<QComboBox>("servicePages");
        QTest::keyClick(box, Qt::Key(key));
        // Its text whole, the server's address too.
        QTRY_VERIFY(box->width() >= box->sizeHint().width() &&
                    box->sizeHint().width() >
                        box->fontMetrics().horizontalAdvance(box->currentText()));
        const QString jump = krt::product::getString("JumpUrl");
        QCOMPARE(jump, jumpBase == "LOCAL" ? server->jumpBase().toString() : jumpBase);
        if (!caught)
            return; // the browser's now
        const QUrl center(krt::product::getString("PersonalCenterUrl"));
        QVERIFY(center.toString().startsWith("http://127.0.0.1:"));
        QVERIFY(QDesktopServices::openUrl(center));
        QCOMPARE(m_host->caughtUrls().last(), center);
    }

    // The launcher page in the plug-in's web dialog, from the local server;
    // the library's offline page where it cannot be reached.
    void welcomePage_data()
    {
        QTest::addColumn<int>("pages");
        QTest::addColumn<QString>("shown"); // LOCAL: the local server's launcher page

        QTest::newRow("online") << int(KZentoOfficeHost::LocalPages)
                                << "LOCAL/launcher_page?distsrc=official&lang=en-US&version=";
        QTest::newRow("offline fallback") << int(KZentoOfficeHost::UnreachablePages)
                                          << "qrc:/auth_plugin/mui/default/offline.html";
    }

    void welcomePage()
    {
        QFETCH(int, pages);
        QFETCH(QString, shown);

        if (!m_host->webModule())
            QSKIP("a build without a web engine has no Welcome page");
        m_host->setServicePages(KZentoOfficeHost::ServicePages(pages));
        shown.replace("LOCAL", m_host->serviceServer()->jumpBase().toString());
        QString url;
        onWebDialog("actionWelcome", [&](QDialog* dialog) {
            QUrl address;
            if (QObject* engine = webEngine(dialog))
                QMetaObject::invokeMethod(engine, "url", Q_RETURN_ARG(QUrl, address));
            url = address.toString();
        });
        QVERIFY2(url.startsWith(shown), qPrintable(url));
    }

    // The bridge page in the plug-in's web dialog (Help > Bridge Page): the
    // calls it makes on load and what they returned, refusals among them;
    // its buttons size, move and close the dialog, open a window and sign
    // in; the dialog asks the page's callbacks before Escape or a close.
    void bridgePage_data()
    {
        QTest::addColumn<bool>("signedIn");
        QTest::addColumn<QString>("action");    // a button of the page, ESCAPE or CLOSE
        QTest::addColumn<bool>("keepOpen");     // what the page's callbacks answer
        QTest::addColumn<QStringList>("calls"); // among the page's, "call → result"
        QTest::addColumn<QVariant>("effect");   // contents size, place, or the address opened
        QTest::addColumn<QString>("closed");    // in the status bar; empty: left open

        const QString help = "LOCAL/go/help_page";
        const auto row = [](const char* name, bool signedIn, const char* action, bool keepOpen,
                            const QStringList& calls, const QVariant& effect, const char* closed) {
            QTest::newRow(name) << signedIn << action << keepOpen << calls << effect << closed;
        };
        row("on load", true, "", false,
            {"version() → \"12.1.0.17890\"", "isLogined() → true",
             "loginedUserId() → \"demo-0001\"",
             "readStrReg(key, \"Note\") → \"from the bridge page\"",
             "readStrReg(\"Corvane\\..\\..\\Web\", \"Note\") → \"\"",
             "openUrl(\"file:///etc/hostname\") → false"},
            QVariant(), "");
        row("resize", true, "resize", false, {"resize(640, 460) → (no value)"}, QSize(640, 460),
            "");
        // As near (80, 60) as the 722 x 561 dialog stays on the 800 x 600 screen.
        row("move", true, "move", false, {"moveTo(80, 60) → (no value)"}, QPoint(78, 39), "");
        row("window", true, "window", false, {"window.open(\"" + help + "\") !== null → true"},
            QUrl(help), "");
        row("accept", true, "accept", false, {"accept() → (no value)"}, QVariant(), "accepted");
        row("Escape", true, "ESCAPE", false, {"Escape callback → 0"}, QVariant(), "rejected");
        row("close, kept open", true, "CLOSE", true, {"close callback → 1"}, QVariant(), "");
        row("login", false, "login", false,
            {"isLogined() → false", "login success callback: loginedUserId() → \"demo-0001\""},
            QVariant(), "");
    }

    void bridgePage()
    {
        QFETCH(bool, signedIn);
        QFETCH(QString, action);
        QFETCH(bool, keepOpen);
        QFETCH(QStringList, calls);
        QFETCH(QVariant, effect);
        QFETCH(QString, closed);

        if (!m_host->webModule())
            QSKIP("a build without a web engine has no bridge page");
        m_host->setServicePages(KZentoOfficeHost::LocalPages);
        if (!signedIn)
            QVERIFY(setState(kSignedOut));
        const QString local = m_host->serviceServer()->baseUrl().toString();
        calls.replaceInStrings("LOCAL", local);
        m_window->statusBar()->clearMessage();
        const int caught = m_host->caughtUrls().size();
        QStringList made;
        bool allMade = false;
        QVariant seen;
        const bool leftOpen = onWebDialog(
            "actionBridgePage",
            [&](QDialog* dialog) {
                if (keepOpen)
                    evaluate(dialog, "document.getElementById('keep-open').checked = true");
                if (action == "ESCAPE")
                    QTest::keyClick(dialog, Qt::Key_Escape);
                else if (action == "CLOSE")
                    dialog->close();
                else if (!action.isEmpty())
                    evaluate(dialog, "document.getElementById('" + action + "').click()");
                allMade = QTest::qWaitFor(
                    [&] {
                        made =
                            evaluate(dialog, "bridgeCalls.map(c => c.join(' → '))").toStringList();
                        return std::all_of(calls.cbegin(), calls.cend(), [&](const QString& call) {
                            return made.contains(call);
                        });
                    },
                    5000);
                seen = effect.userType() == QMetaType::QSize
                           ? QVariant(dialog->contentsRect().size())
                       : effect.userType() == QMetaType::QPoint ? QVariant(dialog->pos())
                                                                : QVariant();
            },
            // Once the calls made on load are done.
            [](QDialog* dialog) { return dialog->windowTitle().endsWith(" calls"); });

        QVERIFY2(allMade, qPrintable(made.join('\n')));
        if (effect.userType() == QMetaType::QUrl)
            QCOMPARE(m_host->caughtUrls().mid(caught),
                     QList<QUrl>{QUrl(effect.toString().replace("LOCAL", local))});
        else
            QCOMPARE(seen, effect);
        QCOMPARE(leftOpen, closed.isEmpty());
        const QString status = m_window->statusBar()->currentMessage();
        QVERIFY2(status.endsWith(closed.isEmpty() ? "rejected" : closed), qPrintable(status));
    }

    void about()
    {
        const auto configure = [](const char* key, const QVariant& value) {
            krt::hostcontrol::setConfigValue(krt::hostcontrol::BuiltinLayer, key, value);
        };
        configure("Product/VexName", "Corvane Writer");
        configure("Product/VexThanksTo", "Thanks to everyone.");
        m_window->findChild<QAction*>("actionAbout")->trigger();
        KAboutDialog* about = nullptr;
        QTRY_VERIFY((about = m_window->findChild<KAboutDialog*>()) && about->isVisible());
        QCOMPARE(about->windowTitle(), "About Corvane Writer");
        QCOMPARE(about->productName(), "Corvane Writer");
        QCOMPARE(about->thanksTo(), "Thanks to everyone.");
        about->close();
        QTRY_VERIFY(!m_window->findChild<KAboutDialog*>());
        configure("Product/VexName", QVariant());
        configure("Product/VexThanksTo", QVariant());
    }

    // Each entry opens what the plug-in answers for its key (the answers
    // themselves are the handler's suite's), from the keyboard: Alt+H and a
    // click, or the entry's shortcut; an entry without an address is off.
    void helpPages_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<bool>("overseas");
        QTest::addColumn<QString>("opened"); // empty: the entry is disabled

        QTest::newRow("home") << "actionHomePage" << false << kDefaultJump + "/home_page";
        QTest::newRow("help, F1") << "actionHelp" << false << kDefaultJump + "/help_page";
        QTest::newRow("support, overseas") << "actionSupport" << true << "";
    }

    void helpPages()
    {
        QFETCH(QString, action);
        QFETCH(bool, overseas);
        QFETCH(QString, opened);

        KUrlCatcher browser;
        krt::hostcontrol::setOverseasVersion(overseas);
        auto* entry = m_window->findChild<QAction*>(action);
        if (entry->shortcut() == QKeySequence::HelpContents) {
            QTest::keyClick(m_window, Qt::Key_F1);
        } else {
            QTest::keyClick(m_window, Qt::Key_H, Qt::AltModifier);
            QMenu* help = m_window->findChild<QMenuBar*>()->actions().last()->menu();
            QTRY_VERIFY(help->isVisible());
            QCOMPARE(entry->isEnabled(), !opened.isEmpty());
            if (entry->isEnabled())
                QTest::mouseClick(help, Qt::LeftButton, {}, help->actionGeometry(entry).center());
            else
                QTest::keyClick(help, Qt::Key_Escape);
            QTRY_VERIFY(!help->isVisible());
        }
        krt::hostcontrol::setOverseasVersion(false);
        QCOMPARE(browser.urls, opened.isEmpty() ? QList<QUrl>() : QList<QUrl>{QUrl(opened)});
    }

    // Signed out, the title area offers the host's Sign In; signed in, the
    // account menu offers Sign Out. Both go through the cloud client.
    void signInAndOutFromTheTitleArea()
    {
        QVERIFY(setState(kSignedOut));
        QTRY_VERIFY(pocket("SignIn") && pocket("SignIn")->isVisible());
        QVERIFY(!pocket("UserCenter")->isVisible());
        QCOMPARE(pocket("SignIn")->accessibleName(), "Sign In");

        QTest::mouseClick(pocket("SignIn"), Qt::LeftButton);
        QTRY_VERIFY(signedInAs("Demo User"));
        QVERIFY(!pocket("SignIn")->isVisible());
        QCOMPARE(state().value("IsLogined").toBool(), true);

        KCommand* signOut = m_window->findCommand("SignOut");
        QTRY_VERIFY(signOut->isVisible());
        signOut->action()->trigger();
        QTRY_VERIFY(pocket("SignIn")->isVisible());
        QCOMPARE(state().value("IsLogined").toBool(), false);
    }

    // Ctrl+Shift+N: a window with commands of its own from the factory.
    void newWindow()
    {
        QTest::keyClick(m_window, Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_COMPARE(m_host->windows().size(), 2);
        KZentoOfficeWindow* other = m_host->windows().first() == m_window
                                        ? m_host->windows().last()
                                        : m_host->windows().first();
        KCommand* mine = m_window->findCommand("UserCenter");
        KCommand* its = other->findCommand("UserCenter");
        QVERIFY(its && its != mine && its->host() == other);
        QVERIFY(other->pocketWidget(its));
        other->close();
        QTRY_COMPARE(m_host->windows(), QList<KZentoOfficeWindow*>{m_window});
    }

    // What a second start handed over opens in tabs, up to the limit of one
    // request; the rest is reported in the status bar.
    void forwardedArgumentsOpenInTabs_data()
    {
        QTest::addColumn<QStringList>("arguments"); // NOTES: a text file of the test's
        QTest::addColumn<QStringList>("titles");    // of the tabs opened, in order
        QTest::addColumn<QString>("status");

        const QString report =
            "vexnimbo://type=open&fileid=7&displayname=" + QByteArray("Report.docx").toBase64();
        QTest::newRow("documents and junk")
            << QStringList{"NOTES", report, "junk"} << QStringList{"notes.txt", "Report.docx"}
            << "junk: no such file";
        const int limit = KZentoOfficeHost::kMaxDocumentsAtOnce;
        QTest::newRow("more than one request opens")
            << QStringList(QVector<QString>(limit + 3, report).toList())
            << QStringList(QVector<QString>(limit, "Report.docx").toList())
            << "not opened, beyond 100 documents at once: 3 more";
        QTest::newRow("much junk") << QStringList{"j1", "j2", "j3", "j4", "j5"} << QStringList()
                                   << "j3: no such file; also refused: 2 more";
    }

    void forwardedArgumentsOpenInTabs()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QStringList, titles);
        QFETCH(QString, status);

        const QString notes = m_env.rootPath() + "/notes.txt";
        QVERIFY(KTestAppDir::write(notes, "Minutes of the meeting\n"));
        arguments.replaceInStrings("NOTES", notes);
        QTabWidget* tabs = m_window->documents();
        const int before = tabs->count();
        m_host->onArgumentsReceived(arguments);
        QStringList opened;
        for (int i = before; i < tabs->count(); ++i)
            opened << tabs->tabText(i);
        while (tabs->count() > before)
            delete tabs->widget(before);
        QCOMPARE(opened, titles);
        QVERIFY2(m_window->statusBar()->currentMessage().contains(status),
                 qPrintable(m_window->statusBar()->currentMessage()));
    }

    // A local file shows its text; anything else says in its tab why not,
    // without waiting on a pipe or reading more than the limit, whatever
    // size the file claims.
    void showsWhatAFileHolds_data()
    {
        QTest::addColumn<QString>("path");       // FILE: a text file of the test's
        QTest::addColumn<QString>("replacedBy"); // after the request was made
        QTest::addColumn<QString>("shown");

        const auto row = [](const char* tag, const char* path, const char* replacedBy,
                            const char* shown) {
            QTest::newRow(tag) << QString(path) << QString(replacedBy) << QString(shown);
        };
        row("claims no size, holds text", "/proc/self/maps", "", "[stack]");
        row("claims no size, holds gigabytes", "/proc/self/pagemap", "", "larger than 4 MiB");
        row("now a folder", "FILE", "folder", "is a folder");
        row("now a pipe", "FILE", "pipe", "is a pipe, device or socket");
    }

    void showsWhatAFileHolds()
    {
        QFETCH(QString, path);
        QFETCH(QString, replacedBy);
        QFETCH(QString, shown);

        if (path == "FILE") {
            path = m_env.rootPath() + "/shown/" + QTest::currentDataTag();
            QVERIFY(KTestAppDir::write(path, "Minutes of the meeting\n"));
        }
        const KDocumentRequest request = KDocumentRequest::fromArgument(path, QString());
        QVERIFY2(request.isValid(), qPrintable(request.error()));
        if (!replacedBy.isEmpty())
            QVERIFY(QFile::remove(path));
        if (replacedBy == "folder")
            QVERIFY(QDir().mkdir(path));
        else if (replacedBy == "pipe")
            QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        const int index = m_window->openDocument(request);
        const std::unique_ptr<QWidget> page(m_window->documents()->widget(index));
        const QString text = qobject_cast<QPlainTextEdit*>(page.get())->toPlainText();
        QVERIFY2(text.contains(shown), qPrintable(text.left(200)));
    }

    // The list follows what is appended to the event file and keeps its
    // last lines; it empties when the file is cleared or replaced, and
    // neither a huge file nor a pipe in its place holds the window up.
    void usageEventsShown_data()
    {
        QTest::addColumn<QString>("before"); // lines in the file, HUGE or PIPE
        QTest::addColumn<QString>("first");  // line of the list
        QTest::addColumn<int>("lines");

        const QString signIn = "event \u00b7 sign_in \u00b7 launcher \u00b7 button";
        QTest::newRow("appended") << "0" << signIn << 1;
        QTest::newRow("more than the list keeps") << "250" << QString("view \u00b7 page 52") << 200;
        QTest::newRow("3 GiB, the event at its end") << "HUGE" << signIn << 1;
        QTest::newRow("replaced by a pipe") << "PIPE" << QString() << 1;
    }

    void usageEventsShown()
    {
        QFETCH(QString, before);
        QFETCH(QString, first);
        QFETCH(int, lines);

        auto* list = control<QPlainTextEdit>("usageEvents");
        QTest::mouseClick(control<QAbstractButton>("clearEvents"), Qt::LeftButton);
        QTRY_COMPARE(list->toPlainText(), "");
        const QString path = krt::hostcontrol::infoCollectFile();
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        for (int i = 1; i <= before.toInt(); ++i)
            file.write("{\"kind\": \"view\", \"viewName\": \"page " + QByteArray::number(i) +
                       "\"}\n");
        if (before == "HUGE")
            QVERIFY(file.resize(qint64(3) << 30) && file.seek(file.size()) && file.write("\n"));
        file.close();
        krt::infocollect::collectExpEvent("", "", "sign_in", "launcher", "button", 0, "");
        QTRY_VERIFY(list->toPlainText().endsWith("button"));
        if (before == "PIPE") {
            QVERIFY(file.remove());
            QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
            QTRY_COMPARE(list->toPlainText(), "");
        }
        QCOMPARE(list->document()->blockCount(), lines);
        // An empty list's first line is a null string, which Qt 6 finds ends
        // with nothing but a null string.
        const QString firstLine = list->toPlainText().section('\n', 0, 0);
        QVERIFY2(first.isEmpty() ? firstLine.isEmpty() : firstLine.endsWith(first),
                 qPrintable(list->toPlainText().left(200)));
        QFile::remove(path);
    }

    // Assistive tools find every control a person can use (title area,
    // menus, tabs, the developer panel) by a name and a role, in either
    // language; every menu and menu entry has a mnemonic.
    void assistiveToolsNameEveryControl_data()
    {
        QTest::addColumn<QString>("language");

        QTest::newRow("English") << "en_US";
        QTest::newRow("Chinese") << "zh_CN";
    }

    void assistiveToolsNameEveryControl()
    {
        QFETCH(QString, language);

        m_host->setLanguage(language);
        QStringList unnamed;
        int named = 0;
        // A control takes the focus or offers actions (scroll bars are Qt's
        // own); menus are walked hidden, the rest as shown.
        std::function<void(QAccessibleInterface*, bool)> walk = [&](QAccessibleInterface* node,
                                                                    bool hidden) {
            const QAccessibleActionInterface* actions = node->actionInterface();
            if (node->state().invisible && !hidden)
                return;
            if ((node->state().focusable || (actions && !actions->actionNames().isEmpty())) &&
                node->role() != QAccessible::ScrollBar) {
                if (node->role() == QAccessible::NoRole || node->text(QAccessible::Name).isEmpty())
                    unnamed << node->object()->metaObject()->className();
                ++named;
            }
            for (int i = 0; i < node->childCount(); ++i)
                walk(node->child(i), hidden);
        };
        walk(QAccessible::queryAccessibleInterface(m_window), false);
        const QList<QAction*> menus = m_window->findChild<QMenuBar*>()->actions();
        for (QAction* menu : menus) {
            emit menu->menu()->aboutToShow();
            walk(QAccessible::queryAccessibleInterface(menu->menu()), true);
            // The plug-in's commands in the Account menu have none.
            const QList<QAction*> entries = menu->menu()->actions() << menu;
            for (QAction* entry : entries) {
                if (!entry->isSeparator() && !entry->text().contains('&') && menu != menus.at(1))
                    unnamed << "no mnemonic: " + entry->text();
            }
        }
        QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join("; ")));
        QVERIFY2(named >= 40, qPrintable(QString::number(named)));
    }
};

// As the host's application does (KxApplication): the plug-in it loads may
// bring QtWebEngine, which composes with the application's OpenGL context.
int main(int argc, char* argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    TestHostWindow test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}
#include "tst_hostwindow.moc"
