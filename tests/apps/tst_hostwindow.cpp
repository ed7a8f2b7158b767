// The reference host's window and developer panel, in process, with the
// built plug-in and web module loaded through QLibrary as the host loads
// them, on the shipped profile and the cloud simulator's state file. Real
// clicks and keys; the state file, the host's control API, the desktop's
// URL handler and the dialogs the window opens tell what happened.

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
#include <QtTest>

#include <memory>
#include <sys/stat.h>

using namespace AuthTest;

namespace {

const QString kDefaultJump = "https://jump.zentooffice.example/go";

// Stands in for the browser.
class KUrlCatcher : public QObject
{
    Q_OBJECT

public:
    QList<QUrl> urls;

public slots:
    void open(const QUrl& url) { urls << url; }
};

// Runs whenShown with a web dialog once it is on the screen, then closes it.
class KDialogHook : public QObject
{
public:
    explicit KDialogHook(std::function<void(QDialog*)> whenShown)
        : m_whenShown(std::move(whenShown))
    {
        qApp->installEventFilter(this);
    }
    ~KDialogHook() override { qApp->removeEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* dialog = qobject_cast<QDialog*>(watched);
        if (event->type() == QEvent::Show && dialog && dialog->inherits("KxWebDlg")) {
            QTimer::singleShot(0, dialog, [this, dialog] {
                m_whenShown(dialog);
                dialog->accept();
            });
        }
        return false;
    }

private:
    std::function<void(QDialog*)> m_whenShown;
};

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
    QString activity() const { return control<QPlainTextEdit>("activity")->toPlainText(); }
    // The simulator's answer to a write of its state file.
    static QSignalSpy* stateRead()
    {
        QObject* client = KDeskhiveClient::client();
        return new QSignalSpy(client, SIGNAL(stateFileRead()));
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
        QVERIFY(KTestAppDir::write(m_statePath, R"({"IsLogined": true, "Name": "Demo User",
                                                    "Id": "demo-0001"})"));
        qputenv("DESKHIVE_STATE", m_statePath.toUtf8());
        QVERIFY(QFile::copy(m_bin + "/profile/host.json", m_env.profilePath() + "/host.json"));
        QVERIFY(krt::hostcontrol::loadProfile(m_env.profilePath()));
        m_plugin = std::make_unique<KAuthPluginLoader>(m_bin + "/libauthplugin.so");
        IKAuthorizationHandler* handler = m_plugin->load();
        QVERIFY2(handler, qPrintable(m_plugin->errorString()));
        krt::hostcontrol::setHandler(handler);
        m_commands = std::make_unique<KHostCommandRegistration>();
        m_host = std::make_unique<KZentoOfficeHost>();
        QVERIFY2(m_host->loadWebModule(m_bin + "/libhostweb.so"),
                 qPrintable(m_host->webModuleError()));
        m_window = m_host->newWindow(true);
        m_window->show();
        QApplication::setActiveWindow(m_window);
        QTRY_VERIFY(m_window->isActiveWindow());
        QTRY_VERIFY(signedInAs("Demo User"));
    }

    // Dialogs come and go; shortcuts need the window active.
    void init()
    {
        QApplication::setActiveWindow(m_window);
        QTRY_VERIFY(m_window->isActiveWindow());
    }

    void cleanupTestCase()
    {
        m_host.reset();
        m_commands.reset();
    }

    // Each account control writes the state file; each error button raises
    // its signal once per click, the same one twice in a row included.
    void panelDrivesTheSimulator_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("member");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<bool>("fromSyncCache");

        QTest::newRow("sign out") << "signOut"
                                  << "IsLogined" << QVariant(false) << QByteArray() << false;
        QTest::newRow("sign in") << "signIn"
                                 << "IsLogined" << QVariant(true) << QByteArray() << false;
        QTest::newRow("company") << "companyAccount"
                                 << "IsCompanyAccount" << QVariant(true) << QByteArray() << false;
        QTest::newRow("launch failed")
            << "launchError"
            << "emit" << QVariant(QVariantList{"failedToLaunchCloudsvrProcess"})
            << QByteArray(SIGNAL(failedToLaunchCloudsvrProcess())) << false;
        QTest::newRow("exited") << "exitError"
                                << "emit"
                                << QVariant(QVariantList{"cloudsvrExitWithErrors:disk full"})
                                << QByteArray(SIGNAL(cloudsvrExitWithErrors(QString))) << false;
        QTest::newRow("ipc") << "ipcError"
                             << "emit" << QVariant(QVariantList{"occurIpcErrorsWhenGetUserInf"})
                             << QByteArray(SIGNAL(occurIpcErrorsWhenGetUserInf())) << true;
        QTest::newRow("rpc") << "rpcError"
                             << "emit" << QVariant(QVariantList{"occurRpcErrorsWhenGetUserInf"})
                             << QByteArray(SIGNAL(occurRpcErrorsWhenGetUserInf())) << true;
    }

    void panelDrivesTheSimulator()
    {
        QFETCH(QString, button);
        QFETCH(QString, member);
        QFETCH(QVariant, value);
        QFETCH(QByteArray, signal);
        QFETCH(bool, fromSyncCache);

        auto* control = this->control<QAbstractButton>(qPrintable(button));
        QVERIFY(control);
        QTRY_VERIFY(control->isEnabled());
        QObject* source = KDeskhiveClient::syncCache();
        if (!fromSyncCache)
            source = KDeskhiveClient::client();
        QSignalSpy raised(source, signal.isEmpty() ? SIGNAL(destroyed()) : signal.constData());
        const int clicks = signal.isEmpty() ? 1 : 2;
        for (int i = 0; i < clicks; ++i) {
            const std::unique_ptr<QSignalSpy> read(stateRead());
            QTest::mouseClick(control, Qt::LeftButton);
            QVERIFY(read->wait(5000));
        }
        QCOMPARE(state().value(member).toVariant(), value);
        QCOMPARE(raised.count(), signal.isEmpty() ? 0 : 2);
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

        QTest::newRow("comment, trailing comma")
            << QByteArray(
                   "{\n    // by hand\n    \"IsLogined\": true,\n    \"Name\": \"Ann\",\n}\n")
            << "company"
            << QByteArray("{\n    // by hand\n    \"IsLogined\": true,\n    \"Name\": \"Ann\",\n"
                          "    \"IsCompanyAccount\": true,\n}\n")
            << "";
        QTest::newRow("in place, long number kept")
            << QByteArray(R"({"Quota": 12345678901234567890123, "IsCompanyAccount": true /* x */})")
            << "personal"
            << QByteArray(
                   R"({"Quota": 12345678901234567890123, "IsCompanyAccount": false /* x */})")
            << "";
        QTest::newRow("sign in, demo user")
            << QByteArray("{}") << "signIn"
            << QByteArray(R"({"IsLogined": true, "Name": "Demo User", )"
                          R"("Id": "demo-0001", "UserAvatarImagePath": "DEMO"})")
            << "";
        QTest::newRow("sign in, user kept, emit emptied")
            << QByteArray(R"({"Name": "Ann", "emit": ["x"], "IsLogined": false})") << "signIn"
            << QByteArray(R"({"Name": "Ann", "emit": [], "IsLogined": true})") << "";
        QTest::newRow("raise, 20-digit serial")
            << QByteArray(R"({"emitSerial": 18446744073709551614})") << "raise"
            << QByteArray(R"({"emitSerial": 18446744073709551615, "emit": ["rpc"]})") << "";
        QTest::newRow("missing") << QByteArray("MISSING") << "signOut"
                                 << QByteArray("{\n    \"IsLogined\": false\n}\n") << "";
        QTest::newRow("not JSON") << QByteArray(R"({"IsLogined": tru)") << "company"
                                  << QByteArray(R"({"IsLogined": tru)") << "left as it is";
        QTest::newRow("not an object") << QByteArray(R"(["IsLogined"])") << "company"
                                       << QByteArray(R"(["IsLogined"])") << "left as it is";
        QTest::newRow("pipe") << QByteArray("PIPE") << "signIn" << QByteArray()
                              << "not a regular file";
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
        if (before == "PIPE")
            return;
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), after.replace("DEMO", KDeskhiveClient::demoAvatarPath().toUtf8()));
    }

    // The keyboard on the panel's switches reaches the host, and the host's
    // texts and the plug-in's commands follow the language.
    void panelSwitchesLanguage_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("fileMenu");
        QTest::addColumn<QString>("personalCenter");
        QTest::addColumn<QString>("panelTitle");

        QTest::newRow("Chinese") << int(Qt::Key_Down) << "zh_CN"
                                 << "文件(&F)"
                                 << "个人中心"
                                 << "开发者面板";
        QTest::newRow("English") << int(Qt::Key_Up) << "en_US"
                                 << "&File"
                                 << "Personal Center"
                                 << "Developer Panel";
    }

    void panelSwitchesLanguage()
    {
        QFETCH(int, key);
        QFETCH(QString, language);
        QFETCH(QString, fileMenu);
        QFETCH(QString, personalCenter);
        QFETCH(QString, panelTitle);

        QTest::keyClick(control<QComboBox>("language"), Qt::Key(key));
        QCOMPARE(krt::hostcontrol::language(), language);
        QTRY_COMPARE(m_window->findChild<QMenuBar*>()->actions().first()->text(), fileMenu);
        QTRY_COMPARE(m_window->findCommand("KxOpenPersonalCenterCommand")->text(), personalCenter);
        QCOMPARE(m_window->developerPanel()->windowTitle(), panelTitle);
    }

    void panelSwitchesScaleAndNetwork_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<qreal>("scale"); // 0: the screen's
        QTest::addColumn<bool>("offline");

        QTest::newRow("100 %, offline") << int(Qt::Key_Down) << 1.0 << true;
        QTest::newRow("125 %") << int(Qt::Key_Down) << 1.25 << false;
        QTest::newRow("150 %, offline") << int(Qt::Key_Down) << 1.5 << true;
        QTest::newRow("the screen's") << int(Qt::Key_Home) << 0.0 << false;
    }

    void panelSwitchesScaleAndNetwork()
    {
        QFETCH(int, key);
        QFETCH(qreal, scale);
        QFETCH(bool, offline);

        QTest::keyClick(control<QComboBox>("displayScale"), Qt::Key(key));
        QCOMPARE(krt::hostcontrol::displayScale(), scale);
        // The title area is built anew at that scale.
        QTRY_COMPARE(pocket("UserCenter")->height(), qRound(28 * (scale > 0 ? scale : 1.0)));

        auto* box = control<QAbstractButton>("offline");
        if (box->isChecked() != offline)
            QTest::mouseClick(box, Qt::LeftButton);
        IKAccountService* account =
            KShellApplicaitons::instance()->getActiveApp()->accountService();
        QCOMPARE(account->isLogoutDuetoOffLine(), offline);
        // Signed in before the latest change (the rows above), so offline.
        QCOMPARE(m_host->webModule()->isNimboOffLineMode(), offline);
    }

    // The jump base and the centres point at the local server, or at a port
    // nobody listens on; there the personal centre's address with automatic
    // sign-in is caught, not opened.
    void servicePages_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("jumpBase"); // LOCAL: the local server's
        QTest::addColumn<bool>("caught");

        QTest::newRow("local") << int(Qt::Key_Down) << "LOCAL" << true;
        QTest::newRow("unreachable") << int(Qt::Key_Down) << "" << true;
        QTest::newRow("internet") << int(Qt::Key_Home) << kDefaultJump << false;
    }

    void servicePages()
    {
        QFETCH(int, key);
        QFETCH(QString, jumpBase);
        QFETCH(bool, caught);

        KLocalServiceServer* server = m_host->serviceServer();
        QTest::keyClick(control<QComboBox>("servicePages"), Qt::Key(key));
        const QString jump = krt::product::getString("JumpUrl");
        if (jumpBase == "LOCAL")
            QCOMPARE(jump, server->jumpBase().toString());
        else if (jumpBase.isEmpty())
            QVERIFY(jump.startsWith("http://127.0.0.1:") &&
                    !jump.contains(QString::number(server->port())));
        else
            QCOMPARE(jump, jumpBase);
        if (!caught)
            return; // the browser's now
        const QString center = krt::product::getString("PersonalCenterUrl");
        QVERIFY(center.startsWith("http://127.0.0.1:"));
        const int before = m_host->caughtUrls().size();
        m_window->findCommand("KxOpenPersonalCenterCommand")->action()->trigger();
        QCOMPARE(m_host->caughtUrls().size(), before + 1);
        const QString opened = m_host->caughtUrls().last().toString();
        QVERIFY2(opened.startsWith("https://account.zentooffice.example/autologin?token=") &&
                     opened.endsWith("&target=" + QUrl::toPercentEncoding(center)),
                 qPrintable(opened));
        QVERIFY(activity().contains("Opened " + opened));
    }

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

        m_host->setServicePages(KZentoOfficeHost::ServicePages(pages));
        shown.replace("LOCAL", m_host->serviceServer()->jumpBase().toString());
        QString url;
        const KDialogHook hook([&url](QDialog* dialog) {
            const QList<QWidget*> widgets = dialog->findChildren<QWidget*>();
            for (QWidget* widget : widgets) {
                if (widget->inherits("KxAuthWebView"))
                    url = widget->property("url").toUrl().toString();
            }
        });
        m_window->findChild<QAction*>("actionWelcome")->trigger();
        QVERIFY2(url.startsWith(shown), qPrintable(url));
        m_host->setServicePages(KZentoOfficeHost::InternetPages);
    }

    void about_data()
    {
        QTest::addColumn<QString>("configuredName");
        QTest::addColumn<QString>("configuredThanks");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("thanksStart");

        QTest::newRow("the product's") << ""
                                       << ""
                                       << "Zento Office"
                                       << "This product includes the FreeType font engine";
        QTest::newRow("configured") << "Corvane Writer"
                                    << "Thanks to everyone."
                                    << "Corvane Writer"
                                    << "Thanks to everyone.";
    }

    void about()
    {
        QFETCH(QString, configuredName);
        QFETCH(QString, configuredThanks);
        QFETCH(QString, name);
        QFETCH(QString, thanksStart);

        const auto configure = [](const char* key, const QString& value) {
            krt::hostcontrol::setConfigValue(krt::hostcontrol::BuiltinLayer, key,
                                             value.isEmpty() ? QVariant() : value);
        };
        configure("Product/VexName", configuredName);
        configure("Product/VexThanksTo", configuredThanks);
        m_window->findChild<QAction*>("actionAbout")->trigger();
        KAboutDialog* about = nullptr;
        QTRY_VERIFY((about = m_window->findChild<KAboutDialog*>()) && about->isVisible());
        QCOMPARE(about->windowTitle(), "About " + name);
        QCOMPARE(about->productName(), name);
        QVERIFY2(about->thanksTo().startsWith(thanksStart), qPrintable(about->thanksTo()));
        about->close();
        QTRY_VERIFY(!m_window->findChild<KAboutDialog*>());
        configure("Product/VexName", QString());
        configure("Product/VexThanksTo", QString());
    }

    // Opened from the keyboard: Alt+H, then the entry's shortcut or a click.
    void helpPages_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<bool>("overseas");
        QTest::addColumn<QString>("configuredHome");
        QTest::addColumn<QString>("opened"); // empty: the entry is disabled

        QTest::newRow("home") << "actionHomePage" << false << "" << kDefaultJump + "/home_page";
        QTest::newRow("home, configured") << "actionHomePage" << false << "https://corvane.example/"
                                          << "https://corvane.example/";
        QTest::newRow("help") << "actionHelp" << false << "" << kDefaultJump + "/help_page";
        QTest::newRow("feedback") << "actionFeedback" << false << ""
                                  << kDefaultJump + "/user_feedback_page";
        QTest::newRow("support") << "actionSupport" << false << ""
                                 << kDefaultJump + "/technical_support_page";
        QTest::newRow("support, overseas") << "actionSupport" << true << ""
                                           << "";
    }

    void helpPages()
    {
        QFETCH(QString, action);
        QFETCH(bool, overseas);
        QFETCH(QString, configuredHome);
        QFETCH(QString, opened);

        KUrlCatcher browser;
        QDesktopServices::setUrlHandler("https", &browser, "open");
        krt::hostcontrol::setOverseasVersion(overseas);
        krt::hostcontrol::setConfigValue(krt::hostcontrol::BuiltinLayer, "Product/HomePage",
                                         configuredHome.isEmpty() ? QVariant() : configuredHome);
        QTest::keyClick(m_window, Qt::Key_H, Qt::AltModifier);
        QMenu* help = m_window->findChild<QMenuBar*>()->actions().last()->menu();
        QTRY_VERIFY(help->isVisible());
        auto* entry = m_window->findChild<QAction*>(action);
        QCOMPARE(entry->isEnabled(), !opened.isEmpty());
        if (entry->isEnabled())
            QTest::mouseClick(help, Qt::LeftButton, {}, help->actionGeometry(entry).center());
        else
            QTest::keyClick(help, Qt::Key_Escape);
        QTRY_VERIFY(!help->isVisible());
        QCOMPARE(browser.urls, opened.isEmpty() ? QList<QUrl>() : QList<QUrl>{QUrl(opened)});
        QDesktopServices::unsetUrlHandler("https");
        krt::hostcontrol::setOverseasVersion(false);
    }

    // Signed out, the title area offers the host's Sign In; signed in, the
    // account menu offers Sign Out. Both go through the cloud client.
    void signInAndOutFromTheTitleArea()
    {
        std::unique_ptr<QSignalSpy> read(stateRead());
        QVERIFY(m_host->simulatorState()->setSignedIn(false));
        QVERIFY(read->wait(5000));
        QTRY_VERIFY(pocket("SignIn") && pocket("SignIn")->isVisible());
        QVERIFY(!pocket("UserCenter")->isVisible());
        QCOMPARE(pocket("SignIn")->accessibleName(), "Sign In");

        read.reset(stateRead());
        QTest::mouseClick(pocket("SignIn"), Qt::LeftButton);
        QTRY_VERIFY(signedInAs("Demo User"));
        QVERIFY(!pocket("SignIn")->isVisible());
        QCOMPARE(state().value("IsLogined").toBool(), true);

        KCommand* signOut = m_window->findCommand("SignOut");
        QTRY_VERIFY(signOut->isVisible());
        signOut->action()->trigger();
        QTRY_VERIFY(pocket("SignIn")->isVisible());
        QCOMPARE(state().value("IsLogined").toBool(), false);
        QVERIFY(m_host->simulatorState()->setSignedIn(true));
        QTRY_VERIFY(signedInAs("Demo User"));
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

        QTest::newRow("text") << "FILE"
                              << ""
                              << "Minutes of the meeting";
        QTest::newRow("claims no size, holds text") << "/proc/self/maps"
                                                    << ""
                                                    << "[stack]";
        QTest::newRow("claims no size, holds gigabytes") << "/proc/self/pagemap"
                                                         << ""
                                                         << "larger than 4 MiB";
        QTest::newRow("now a folder") << "FILE"
                                      << "folder"
                                      << "is a folder";
        QTest::newRow("now a pipe") << "FILE"
                                    << "pipe"
                                    << "is a pipe, device or socket";
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
        QTest::newRow("more than the list keeps") << "250"
                                                  << "view \u00b7 page 52" << 200;
        QTest::newRow("3 GiB, the event at its end") << "HUGE" << signIn << 1;
        QTest::newRow("replaced by a pipe") << "PIPE"
                                            << "" << 1;
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
        QVERIFY2(list->toPlainText().section('\n', 0, 0).endsWith(first),
                 qPrintable(list->toPlainText().left(200)));
        QFile::remove(path);
    }

    // Screen readers name every control a keyboard reaches in the title area
    // and the panel; every menu entry has a mnemonic.
    void keyboardAndScreenReaders()
    {
        QList<QWidget*> widgets = m_window->titleArea()->findChildren<QWidget*>();
        widgets += m_window->developerPanel()->findChildren<QWidget*>();
        int named = 0;
        for (QWidget* widget : qAsConst(widgets)) {
            if (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isVisibleTo(m_window) ||
                widget->inherits("QScrollBar"))
                continue;
            QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
            QVERIFY2(accessible && !accessible->text(QAccessible::Name).isEmpty(),
                     widget->metaObject()->className());
            ++named;
        }
        QVERIFY(named >= 15);
        const QList<QAction*> menus = m_window->findChild<QMenuBar*>()->actions();
        for (QAction* menu : menus) {
            QVERIFY2(menu->text().contains('&'), qPrintable(menu->text()));
            const QList<QAction*> entries = menu->menu()->actions();
            for (QAction* entry : entries)
                QVERIFY2(entry->isSeparator() || entry->text().contains('&') ||
                             menu->text() == "&Account",
                         qPrintable(entry->text()));
        }
    }
};

QTEST_MAIN(TestHostWindow)
#include "tst_hostwindow.moc"
