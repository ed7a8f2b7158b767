// The personal and enterprise centre commands and the addresses they lead
// to. In this process: the simulator beside the executable, its account
// driven by a state file. In copies of this program run with --probe from
// folders without the cloud library or with the stand-in of
// fakedeskhive.cpp: what the commands and helpers do without a client, or
// with one that wraps addresses while nobody is signed in.

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include "kdeskhivelib.h"
#include "kenterprisecentertriggercommand.h"
#include "kxopenpersonalcentercommand.h"
#include "kxopenurl.h"

#include <deskhive/nimboclient.h>
#include <vex/kmainwindow.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/kshellapplicaitons.h>

#include <QDesktopServices>
#include <QtTest>

using namespace AuthTest;

using namespace krt::hostcontrol;

namespace {

const QString kPersonal = "https://account.example/center";
const QString kEnterprise = "https://business.example/admin?x=1";
const QString kWrapPrefix = "https://account.zentooffice.example/autologin?token=";

// Every address handed to the desktop, as the desktop would get it.
class KUrlCatcher : public QObject
{
    Q_OBJECT

public:
    KUrlCatcher()
    {
        for (const char* scheme : {"", "http", "https"})
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    QStringList opened;

public slots:
    void open(const QUrl& url) { opened << url.toString(QUrl::FullyEncoded); }
};

void configure(bool simplified, bool intranet)
{
    setProductString("PersonalCenterUrl", kPersonal);
    setProductString("EnterpriseCenterUrl", kEnterprise);
    setFeatureSupported("SimplifiedUserCenter", simplified);
    setFeatureSupported("IntranetVersion", intranet);
}

// Run in a copy of this program: whether the personal centre would show
// for a signed-in company account, then what kxOpenAutoLoginUrl(url) and
// kxNimboOpenStoreUrl of kinds 1, 2 and 3 open ("-" for nothing).
int probe(const QString& url)
{
    KTestEnvironment env;
    configure(true, false);
    KUrlCatcher catcher;
    KxOpenPersonalCenterCommand command(nullptr, nullptr);
    command.update();
    QStringList out{QString::number(command.isVisible())};
    const auto take = [&] {
        out << (catcher.opened.isEmpty() ? "-" : catcher.opened.join(','));
        catcher.opened.clear();
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
    QString m_statePath = m_env.rootPath() + "/state.json";
    QByteArray m_state;
    KUrlCatcher m_urls;

    bool setState(const QByteArray& state)
    {
        if (state == m_state)
            return true;
        QSignalSpy read(KDeskhiveLib::instance()->nimboClientInstance(), SIGNAL(stateFileRead()));
        m_state = state;
        return KTestAppDir::write(m_statePath, state) && read.wait(5000);
    }

    QString wrapped(const QString& url) const { return "wrapped:" + QUrl::toPercentEncoding(url); }

    // The addresses opened since the last call, wrapped ones in a form a
    // table can state.
    QStringList takeOpened()
    {
        QStringList result;
        for (QString url : qAsConst(m_urls.opened)) {
            const int target = url.indexOf("&target=");
            if (url.startsWith(kWrapPrefix) && target > 0)
                url = "wrapped:" + url.mid(target + 8);
            result << url;
        }
        m_urls.opened.clear();
        return result;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(KTestAppDir::write(m_statePath, "{}"));
        qputenv("DESKHIVE_STATE", m_statePath.toUtf8());
        QVERIFY(KDeskhiveLib::instance()->nimboClientInstance());
    }

    void init()
    {
        m_env.resetHost();
        configure(true, false);
        m_urls.opened.clear();
    }

    // window: "none", "standalone", "embedding", or "embedding elsewhere"
    // (an embedding window of an application that is not the active one).
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
        row("personal, intranet", personal, true, true, "none", false);
        row("signed out", out, true, false, "none", false);
        row("signed out, nothing known", "{}", true, false, "none", false);
        row("in a standalone window", company, true, false, "standalone", true);
        row("in an embedding window", company, true, false, "embedding", false);
        row("embedding window of another application", company, true, false, "embedding elsewhere",
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

        QVERIFY(setState(state));
        configure(simplified, intranet);
        QScopedPointer<KMainWindow> main(window == "none" ? nullptr : new KMainWindow);
        if (main) {
            main->setEmbedding(window.startsWith("embedding"));
            if (window == "embedding elsewhere")
                main->setShellApplication(KShellApplicaitons::instance()->application("tabix"));
        }
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

        const QString odd = "https://x.example/a b/%zz?q=1&r=é#f";
        QTest::newRow("signed out: exactly the address") << false << 0 << kPersonal << kPersonal;
        QTest::newRow("signed out: parsed tolerantly")
            << false << 0 << odd << QUrl(odd, QUrl::TolerantMode).toString(QUrl::FullyEncoded);
        QTest::newRow("signed out: empty") << false << 0 << ""
                                           << "";
        QTest::newRow("signed in") << true << 0 << kPersonal << "WRAPPED";
        QTest::newRow("signed in, odd address") << true << 0 << odd << "WRAPPED";
        QTest::newRow("signed in, empty: nothing to wrap") << true << 0 << ""
                                                           << "";
        QTest::newRow("personal centre, signed out") << false << 1 << kPersonal << kPersonal;
        QTest::newRow("enterprise centre, signed out") << false << 2 << kEnterprise << kEnterprise;
        QTest::newRow("personal centre, signed in") << true << 1 << kPersonal << "WRAPPED";
        QTest::newRow("enterprise centre, signed in") << true << 2 << kEnterprise << "WRAPPED";
        QTest::newRow("no such centre") << true << 3 << ""
                                        << "-";
    }

    void opened()
    {
        QFETCH(bool, signedIn);
        QFETCH(int, kind);
        QFETCH(QString, url);
        QFETCH(QString, expected);

        QVERIFY(setState(signedIn ? R"({"IsLogined": true, "Id": "7"})" : "{}"));
        kind ? kxNimboOpenStoreUrl(STORE_URL_TYPE(kind)) : kxOpenAutoLoginUrl(url);
        const QStringList none;
        QCOMPARE(takeOpened(), expected == "-"
                                   ? none
                                   : QStringList(expected == "WRAPPED" ? wrapped(url) : expected));
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
                                          << "0 U " + p + ' ' + e + " -";
        // The store helper asks the client without the signed-in test.
        QTest::newRow("client wraps while signed out")
            << "fake" << QByteArray(R"({"IsLogined": false, "IsCompanyAccount": true})")
            << "https://w.example/"
            << "0 U https://w.example/ https://w.example/ -";
        QTest::newRow("client wraps nothing")
            << "fake" << QByteArray(R"({"IsLogined": true, "IsCompanyAccount": true})") << ""
            << "1 U " + p + ' ' + e + " -";
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
