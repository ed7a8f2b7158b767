// The personal and enterprise centre commands and the addresses they lead
// to, on the simulator beside the executable, its account driven by a state
// file. Without a client, or with one that wraps addresses while nobody is
// signed in: the cloud library suite's probe.

#include "ksimulatorstate.h"
#include "ktestenvironment.h"
#include "kurlcatcher.h"

#include "kenterprisecentertriggercommand.h"
#include "kusercentermenucommand.h"
#include "kxopenpersonalcentercommand.h"
#include "kxopenurl.h"

#include <vex/kmainwindow.h>
#include <vexlite/hostcontrol.h>

#include <QAccessible>
#include <QtTest>

#include <memory>

using namespace AuthTest;

using namespace krt::hostcontrol;

namespace {

const QString kPersonal = "https://account.example/center";
const QString kEnterprise = "https://business.example/admin?x=1";
QStringList g_logged;

void configure(bool simplified, bool intranet)
{
    setProductString("PersonalCenterUrl", kPersonal);
    setProductString("EnterpriseCenterUrl", kEnterprise);
    setFeatureSupported("SimplifiedUserCenter", simplified);
    setFeatureSupported("IntranetVersion", intranet);
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

    // The personal centre, and the user centre with its button's name ("":
    // hidden), the detail and icon that go with it.
    void visibility_data()
    {
        QTest::addColumn<QByteArray>("state");
        QTest::addColumn<bool>("simplified");
        QTest::addColumn<bool>("intranet");
        QTest::addColumn<QString>("window");
        QTest::addColumn<bool>("suspended");
        QTest::addColumn<bool>("visible");
        QTest::addColumn<QString>("button");

        const QByteArray personal = R"({"IsLogined": true, "Name": "P"})";
        const QByteArray company = R"({"IsLogined": true, "IsCompanyAccount": true})";
        const QByteArray out = R"({"IsLogined": false, "IsCompanyAccount": true})";
        const auto row = [](const char* tag, const QByteArray& state, bool simplified,
                            bool intranet, const char* window, bool visible, const char* button,
                            bool suspended = false) {
            QTest::newRow(tag) << state << simplified << intranet << QString(window) << suspended
                               << visible << QString(button);
        };
        const char* unnamed = "User centre";
        row("personal, simplified centre", personal, true, false, "none", true, "P");
        row("personal, no simplified centre", personal, false, false, "none", false, "");
        row("company, no simplified centre", company, false, false, "none", true, unnamed);
        row("company, intranet", company, true, true, "none", false, unnamed);
        row("signed out", out, true, false, "none", false, "");
        // The window that holds the command, not the one activated last.
        row("in an embedding window", company, true, false, "embedding", false, "");
        row("in an embedding window, another newer", company, true, false, "embedding, newer",
            false, "");
        row("another, newer window embedding", company, true, false, "plain, newer embedding", true,
            unnamed);
        row("updates suspended", company, true, false, "none", false, unnamed, true);
    }

    void visibility()
    {
        QFETCH(QByteArray, state);
        QFETCH(bool, simplified);
        QFETCH(bool, intranet);
        QFETCH(QString, window);
        QFETCH(bool, suspended);
        QFETCH(bool, visible);
        QFETCH(QString, button);

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

        KUserCenterMenuCommand centre(main.data(), nullptr);
        QVERIFY(!centre.icon().isNull());
        centre.setVisible(button.isEmpty());
        centre.update();
        QCOMPARE(centre.isVisible(), !button.isEmpty());
        if (button.isEmpty())
            return;
        QCOMPARE(centre.detail(), QString("You have signed in Zento Office."));
        const std::unique_ptr<QWidget> pocket(centre.createPocketWidget(nullptr));
        QCOMPARE(QAccessible::queryAccessibleInterface(pocket.get())->text(QAccessible::Name),
                 button);
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
};

QTEST_MAIN(TestCenterCommands)
#include "tst_centercommands.moc"
