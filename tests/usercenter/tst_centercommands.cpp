// The personal and enterprise centre commands and the addresses they lead
// to. In this process: the simulator beside the executable, its account
// driven by a state file. In copies of this program run with --probe from
// folders without the cloud library or with the stand-in of
// fakedeskhive.cpp: what the commands (the user centre and its button too)
// and helpers do without a client, or with one that wraps addresses while
// nobody is signed in.

#include "ksimulatorstate.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"
#include "kurlcatcher.h"

#include "kenterprisecentertriggercommand.h"
#include "kusercentermenubutton.h"
#include "kusercentermenucommand.h"
#include "kxopenpersonalcentercommand.h"
#include "kxopenurl.h"

#include <vex/kmainwindow.h>
#include <vex/kresourcescheme.h>
#include <vexlite/hostcontrol.h>

#include <QtTest>

#include <memory>

using namespace AuthTest;

using namespace krt::hostcontrol;

namespace {

const QString kPersonal = "https://account.example/center";
const QString kEnterprise = "https://business.example/admin?x=1";
const QString kDefaultAvatar = "res:/resource/zentodeskhive/defaultthumbnail.png";
QStringList g_logged;

void configure(bool simplified, bool intranet)
{
    setProductString("PersonalCenterUrl", kPersonal);
    setProductString("EnterpriseCenterUrl", kEnterprise);
    setFeatureSupported("SimplifiedUserCenter", simplified);
    setFeatureSupported("IntranetVersion", intranet);
}

// Run in a copy of this program: whether the personal centre and the user
// centre would show, whether the account button shows the default avatar,
// then what kxOpenAutoLoginUrl(url) and kxNimboOpenStoreUrl of kinds 1, 2
// and 3 open ("-" for nothing).
int probe(const QString& url)
{
    KTestEnvironment env;
    KResourceScheme::install();
    configure(true, false);
    KUrlCatcher catcher;
    KxOpenPersonalCenterCommand command(nullptr, nullptr);
    KUserCenterMenuCommand centre(nullptr, nullptr);
    command.update();
    centre.update();
    const std::unique_ptr<QWidget> button(centre.createPocketWidget(nullptr));
    const QImage avatar = static_cast<KUserCenterMenuButton*>(button.get())->thumbnail();
    QStringList out{QString::number(command.isVisible()), QString::number(centre.isVisible()),
                    QString::number(avatar == QImage(kDefaultAvatar))};
    const auto take = [&] {
        const QStringList urls = catcher.take();
        out << (urls.isEmpty() ? "-" : urls.join(','));
    };
    kxOpenAutoLoginUrl(url);
    take();
    for (int kind : {1, 2, 3}) {
        kxNimboOpenStoreUrl(STORE_URL_TYPE(kind));
        take();
    }
    QTextStream(stdout) << out.join(' ') << '\n';
    return 0;
}

} // namespace

class TestCenterCommands : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KSimulatorState m_state{m_env.rootPath()};
    KUrlCatcher m_urls;

private slots:
    void init()
    {
        m_env.resetHost();
        configure(true, false);
        m_urls.take();
    }

    void visibility_data()
    {
        QTest::addColumn<QByteArray>("state");
        QTest::addColumn<bool>("simplified");
        QTest::addColumn<bool>("intranet");
        QTest::addColumn<QString>("window");
        QTest::addColumn<bool>("suspended");
        QTest::addColumn<bool>("visible");

        const QByteArray personal = R"({"IsLogined": true, "Name": "P"})";
        const QByteArray company = R"({"IsLogined": true, "IsCompanyAccount": true})";
        const QByteArray out = R"({"IsLogined": false, "IsCompanyAccount": true})";
        const auto row = [](const char* tag, const QByteArray& state, bool simplified,
                            bool intranet, const char* window, bool visible,
                            bool suspended = false) {
            QTest::newRow(tag) << state << simplified << intranet << QString(window) << suspended
                               << visible;
        };
        row("personal, simplified centre", personal, true, false, "none", true);
        row("personal, no simplified centre", personal, false, false, "none", false);
        row("company, no simplified centre", company, false, false, "none", true);
        row("company, intranet", company, true, true, "none", false);
        row("signed out", out, true, false, "none", false);
        // The window that holds the command, not the one activated last.
        row("in an embedding window", company, true, false, "embedding", false);
        row("in an embedding window, another newer", company, true, false, "embedding, newer",
            false);
        row("another, newer window embedding", company, true, false, "plain, newer embedding",
            true);
        row("updates suspended", company, true, false, "none", false, true);
    }

    void visibility()
    {
        QFETCH(QByteArray, state);
        QFETCH(bool, simplified);
        QFETCH(bool, intranet);
        QFETCH(QString, window);
        QFETCH(bool, suspended);
        QFETCH(bool, visible);

        QVERIFY(m_state.set(state));
        configure(simplified, intranet);
        QScopedPointer<KMainWindow> main(window == "none" ? nullptr : new KMainWindow);
        if (main)
            main->setEmbedding(window.startsWith("embedding"));
        KMainWindow newer; // the most recently activated main window
        newer.setEmbedding(window.endsWith("newer embedding"));
        KxOpenPersonalCenterCommand command(main.data(), nullptr);
        KEnterpriseCenterTriggerCommand enterprise(main.data(), nullptr);
        command.setVisible(!visible); // update() must set it either way
        command.setUpdatesSuspended(suspended);
        enterprise.setVisible(false);
        command.update();
        enterprise.update();
        QCOMPARE(command.isVisible(), visible);
        QVERIFY(!enterprise.isVisible()); // the host's default, untouched
    }

    // kind 0 asks kxOpenAutoLoginUrl(url), others kxNimboOpenStoreUrl(kind).
    void opened_data()
    {
        QTest::addColumn<bool>("signedIn");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("expected"); // "WRAPPED": url wrapped; "-": nothing

        const auto row = [](const char* tag, bool signedIn, int kind, const QString& url,
                            const QString& expected) {
            QTest::newRow(tag) << signedIn << kind << url << expected;
        };
        const QString odd = "https://x.example/a b/%zz?q=1&r=é#f";
        row("signed out: exactly the address", false, 0, kPersonal, kPersonal);
        row("signed out: parsed tolerantly", false, 0, odd,
            QUrl(odd, QUrl::TolerantMode).toString(QUrl::FullyEncoded));
        row("signed out: empty", false, 0, "", "");
        row("signed in", true, 0, kPersonal, "WRAPPED");
        row("personal centre, signed out", false, 1, kPersonal, kPersonal);
        row("enterprise centre, signed in", true, 2, kEnterprise, "WRAPPED");
        row("no such centre", true, 3, "", "-");
    }

    // Opened once with the library's default logging, which says nothing,
    // and once with its notices on, which name the address without its query
    // or what the client wrapped it into.
    void opened()
    {
        QFETCH(bool, signedIn);
        QFETCH(int, kind);
        QFETCH(QString, url);
        QFETCH(QString, expected);

        QVERIFY(m_state.set(signedIn ? R"({"IsLogined": true, "Id": "7"})" : "{}"));
        if (expected == "WRAPPED")
            expected = "wrapped:" + QUrl::toPercentEncoding(url);
        for (const char* rules : {"", "auth.*.debug=true"}) {
            QLoggingCategory::setFilterRules(rules);
            g_logged.clear();
            const QtMessageHandler previous =
                qInstallMessageHandler([](QtMsgType, const QMessageLogContext&,
                                          const QString& message) { g_logged << message; });
            kind ? kxNimboOpenStoreUrl(STORE_URL_TYPE(kind)) : kxOpenAutoLoginUrl(url);
            qInstallMessageHandler(previous);
            QLoggingCategory::setFilterRules(QString());
            QCOMPARE(m_urls.take(), expected == "-" ? QStringList() : QStringList(expected));
            const QString plain =
                QUrl(url, QUrl::TolerantMode).toString(QUrl::RemoveQuery | QUrl::RemoveFragment);
            const bool told = *rules && expected != "-";
            QCOMPARE(g_logged, told ? QStringList("opening " + plain) : QStringList());
        }
    }

    // library: "-" no addons/deskhive, else the stand-in's user information
    // and its wrapped address for every address.
    void withoutSimulator_data()
    {
        QTest::addColumn<QString>("library");
        QTest::addColumn<QByteArray>("userInfo");
        QTest::addColumn<QString>("wrap");
        QTest::addColumn<QString>("expected"); // the probe's line, "U": its address

        const QString p = kPersonal, e = kEnterprise;
        QTest::newRow("no client object") << "-" << QByteArray() << ""
                                          << "0 0 1 U " + p + ' ' + e + " -";
        // The store helper asks the client without the signed-in test; the
        // button shows the company's mark.
        QTest::newRow("client wraps while signed out")
            << "fake" << QByteArray(R"({"IsLogined": false, "IsCompanyAccount": true})")
            << "https://w.example/"
            << "0 0 0 U https://w.example/ https://w.example/ -";
    }

    void withoutSimulator()
    {
        QFETCH(QString, library);
        QFETCH(QByteArray, userInfo);
        QFETCH(QString, wrap);
        QFETCH(QString, expected);

        const KTestAppDir app(m_env.rootPath());
        const QString self = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
        QVERIFY(app.installExecutable(self));
        if (library == "fake") {
            QFile fake(FAKE_DESKHIVE);
            QVERIFY(fake.open(QIODevice::ReadOnly) &&
                    app.writeFile("addons/deskhive/libdeskhive.so", fake.readAll()));
        }
        QProcessEnvironment env;
        env.insert("FAKE_NIMBO_USERINFO", userInfo);
        env.insert("FAKE_NIMBO_AUTOLOGIN", wrap);
        const QString url = "https://jump.example/p?x=1";
        const KTestAppDir::Result run = app.run(self, {"--probe", url}, env);
        QCOMPARE(run.out.trimmed(), expected.replace("U", url));
    }
};

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--probe") == 0)
        return probe(QString::fromUtf8(argv[2]));
    TestCenterCommands test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_centercommands.moc"
