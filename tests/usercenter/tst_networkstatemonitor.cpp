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

private slots:
    // First: the process-wide monitor as it starts, and what the suite
    // connects to by signature.
    void fresh()
    {
        KNetworkStateMonitor* monitor = KNetworkStateMonitor::instance();
        QCOMPARE(KNetworkStateMonitor::instance(), monitor);
        QVERIFY(!monitor->isLogoutDuetoOffLine() && !monitor->isNimboOffLineMode());
        QVERIFY(monitor->checkNetworkStatus());
        const QMetaObject* meta = monitor->metaObject();
        QCOMPARE(meta->methodCount() - meta->methodOffset(), 2);
        const QMetaMethod signal = meta->method(meta->methodOffset());
        const QMetaMethod slot = meta->method(meta->methodOffset() + 1);
        QVERIFY(signal.methodSignature() == "notifyNetworkStatus(bool)" &&
                signal.methodType() == QMetaMethod::Signal);
        QVERIFY(slot.methodSignature() == "onLoginStatusChanged()" &&
                slot.access() == QMetaMethod::Private);
    }

    // Steps in order, each on what the ones before left.
    void sequence_data()
    {
        QTest::addColumn<QString>("step");
        QTest::addColumn<bool>("logoutOffline");
        QTest::addColumn<bool>("offlineMode");
        QTest::addColumn<QString>("announced");

        const auto row = [](const char* tag, const char* step, bool logoutOffline, bool offlineMode,
                            const char* announced = "") {
            QTest::newRow(tag) << QString(step) << logoutOffline << offlineMode
                               << QString(announced);
        };
        row("network lost while signed out", "network off", false, false, "false");
        row("sign in: the network answered", "sign in", false, false, "true");
        row("network lost while signed in", "network off", false, false, "false");
        row("sign out: the network answered", "sign out", false, false, "true");
        row("network lost after signing out", "network off", true, true, "false");
        row("network lost again: no news", "network off", true, true);
        row("not signed in before after all", "last false", false, false);
        row("network back", "network on", false, false, "true");
        row("sign in again", "sign in", false, false);
        row("offline while signed in", "network off", false, false, "false");
        row("signed in before too", "last true", false, true);
    }

    void sequence()
    {
        QFETCH(QString, step);
        QFETCH(bool, logoutOffline);
        QFETCH(bool, offlineMode);
        QFETCH(QString, announced);

        KNetworkStateMonitor* monitor = KNetworkStateMonitor::instance();
        QSignalSpy spy(monitor, SIGNAL(notifyNetworkStatus(bool)));
        if (step == "sign in" || step == "sign out") {
            const bool in = step == "sign in";
            setAccountLogined(in, in ? "Ada" : QString());
            QSignalSpy changed(KDeskhiveLib::instance()->nimboClientInstance(),
                               SIGNAL(LoginStatusChange()));
            QVERIFY(m_state.set(in ? R"({"IsLogined": true})" : R"({"IsLogined": false})"));
            QCOMPARE(changed.count(), 1);
        } else if (step.startsWith("network")) {
            monitor->setNetworkAvailable(step == "network on");
        } else {
            monitor->setLastLoginStatus(step == "last true");
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
