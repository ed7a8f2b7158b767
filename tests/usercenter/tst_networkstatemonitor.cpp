// The network state monitor as the suite's other modules use it: its flags
// through sign-in and sign-out (the cloud client's "LoginStatusChange()"
// through the simulator's state file, the host's account through its
// control API) and the network setter; and the user-centre code's own
// question to the host.

#include "ksimulatorstate.h"
#include "ktestenvironment.h"

#include "knetworkstatemonitor.h"
#include "kxactiveaccount.h"

#include <vexlite/hostcontrol.h>

#include <QtTest>

using namespace AuthTest;

using namespace krt::hostcontrol;

class TestNetworkStateMonitor : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KSimulatorState m_state{m_env.rootPath()};

    // A sign-in or sign-out as the monitor hears of it: the host's account
    // changed, then the cloud client's "LoginStatusChange()".
    void signIn(bool in)
    {
        setAccountLogined(in, in ? "Ada" : QString());
        QSignalSpy changed(KDeskhiveLib::instance()->nimboClientInstance(),
                           SIGNAL(LoginStatusChange()));
        QVERIFY(m_state.set(in ? R"({"IsLogined": true})" : R"({"IsLogined": false})"));
        QCOMPARE(changed.count(), 1);
    }

private slots:
    // The process-wide monitor as it starts.
    void initTestCase()
    {
        KNetworkStateMonitor* monitor = KNetworkStateMonitor::instance();
        QCOMPARE(KNetworkStateMonitor::instance(), monitor);
        QVERIFY(!monitor->isLogoutDuetoOffLine() && !monitor->isNimboOffLineMode());
        QVERIFY(monitor->checkNetworkStatus());
    }

    // Steps from a signed-out user on a network that is there: "in" and
    // "out" sign in and out, "on" and "off" set the network, "last" and
    // "first" say whether the user was signed in before the latest change.
    void sequence_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<bool>("logoutOffline");
        QTest::addColumn<bool>("offlineMode");
        QTest::addColumn<QString>("announced"); // by every step

        const auto row = [](const char* tag, const char* steps, bool logoutOffline,
                            bool offlineMode, const char* announced) {
            QTest::newRow(tag) << QString(steps) << logoutOffline << offlineMode
                               << QString(announced);
        };
        row("network lost while signed out", "off", false, false, "false");
        row("sign in: the network answered", "off in", false, false, "false true");
        row("sign in on the network: no news", "in", false, false, "");
        row("network lost while signed in", "in off", false, false, "false");
        row("sign out: the network answered", "in off out", false, false, "false true");
        row("network lost after signing out", "in out off", true, true, "false");
        row("network lost again: no news", "in out off off", true, true, "false");
        row("not signed in before after all", "in out off first", false, false, "false");
        row("network back", "in out off on", false, false, "false true");
        row("signed in before too", "in off last", false, true, "false");
    }

    void sequence()
    {
        QFETCH(QString, steps);
        QFETCH(bool, logoutOffline);
        QFETCH(bool, offlineMode);
        QFETCH(QString, announced);

        // Signed out (the client says so only if someone was signed in).
        KNetworkStateMonitor* monitor = KNetworkStateMonitor::instance();
        setAccountLogined(false);
        QVERIFY(m_state.set(R"({"IsLogined": false})"));
        monitor->setLastLoginStatus(false);
        monitor->setNetworkAvailable(true);
        QSignalSpy spy(monitor, SIGNAL(notifyNetworkStatus(bool)));
        for (const QString& step : steps.split(' ')) {
            if (step == "in" || step == "out")
                signIn(step == "in");
            else if (step == "on" || step == "off")
                monitor->setNetworkAvailable(step == "on");
            else
                monitor->setLastLoginStatus(step == "last");
        }
        QCOMPARE(monitor->isLogoutDuetoOffLine(), logoutOffline);
        QCOMPARE(monitor->isNimboOffLineMode(), offlineMode);
        QVERIFY(monitor->checkNetworkStatus());
        QStringList seen;
        for (const QList<QVariant>& arguments : qAsConst(spy))
            seen << arguments.at(0).toString();
        QCOMPARE(seen.join(' '), announced);
    }

    void hostQuestion_data()
    {
        QTest::addColumn<QString>("app");
        QTest::addColumn<bool>("offline");
        QTest::addColumn<bool>("expected");

        QTest::newRow("signed out by the network") << "zento" << true << true;
        QTest::newRow("signed out by the user") << "zento" << false << false;
        QTest::newRow("no active application") << "" << true << false;
    }

    // What the button asks: the host's active application, not the monitor.
    void hostQuestion()
    {
        QFETCH(QString, app);
        QFETCH(bool, offline);
        QFETCH(bool, expected);

        setActiveApp(app);
        setLogoutDuetoOffLine(offline);
        QCOMPARE(isLogoutDuetoOffLine(), expected);
    }
};

QTEST_MAIN(TestNetworkStateMonitor)
#include "tst_networkstatemonitor.moc"
