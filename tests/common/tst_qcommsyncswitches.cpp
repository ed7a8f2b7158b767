// Desktop sync switches: the text-to-boolean rule, the user's switch read
// on every call, and the two server switches kept for the process.

#include "kcommprobe.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"

#include "common/qcommstores.h"
#include "common/qcommsyncswitches.h"

#include <vexlite/khksoftwaresettings.h>

#include <QDir>
#include <QtTest>

class TestQCommSyncSwitches : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KTestAppDir m_appDir{m_env.rootPath()};
    KCommProbe m_probe{m_appDir};

private slots:
    void initTestCase() { QVERIFY(m_probe.isValid()); }

    void init() { m_env.resetHost(); }

    void textToBoolean_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<bool>("userSwitch");
        QTest::addColumn<bool>("serverSwitches");
        const auto row = [](const char* tag, const QVariant& stored, bool expected) {
            QTest::newRow(tag) << stored << expected << expected;
        };
        QTest::newRow("nothing stored: user off, server on") << QVariant() << false << true;
        row("empty", "", false);
        row("0", "0", false);
        row("false", "false", false);
        row("False", "False", false);
        row("FALSE", "FALSE", false);
        row("stored boolean false", false, false);
        row("stored integer 0", 0, false);
        row("no", "no", true);
        row("off", "off", true);
        row("0.0", "0.0", true);
        row(" 0", " 0", true);
        row("1", "1", true);
        row("true", "true", true);
    }

    // The user's switch is read afresh on every call, so one process sees
    // every row; the server switches are read in a fresh process each.
    void textToBoolean()
    {
        QFETCH(QVariant, stored);
        QFETCH(bool, userSwitch);
        QFETCH(bool, serverSwitches);

        QComm::writeNimboUserInfoRegValue("userid", "12345");
        if (stored.isValid()) {
            for (const char* name :
                 {"usercenter/12345/desksync/switch", "enableDesktopSyncEx", "enableV5Metadata"})
                QComm::writeNimboRegValue(name, stored);
        }
        QCOMPARE(QComm::desktopSyncSwitchOn(), userSwitch);
        const QString text = serverSwitches ? "true" : "false";
        QCOMPARE(m_probe.runText({"isDesktopSyncEnable", "isV5MetadataEnable"}),
                 QStringList({text, text}));
        QVERIFY(!QComm::zentoboxDesktopSyncEnable());
    }

    void userSwitchFollowsTheUser()
    {
        QComm::writeNimboRegValue("usercenter/12345/desksync/switch", "1");
        QComm::writeNimboRegValue("usercenter/777/desksync/switch", "0");
        QVERIFY(!QComm::desktopSyncSwitchOn()); // nobody signed in
        QComm::writeNimboUserInfoRegValue("userid", "12345");
        QVERIFY(QComm::desktopSyncSwitchOn());
        QComm::writeNimboUserInfoRegValue("userid", "777");
        QVERIFY(!QComm::desktopSyncSwitchOn());
        QComm::writeNimboUserInfoRegValue("userid", "999"); // no switch of their own
        QVERIFY(!QComm::desktopSyncSwitchOn());

        // The value name nests below the cloud store's key path.
        QSettings raw(KHKSoftwareSettings::storeFileName(KHKSoftwareSettings::CurrentUser),
                      QSettings::IniFormat);
        QCOMPARE(raw.value("Corvane/ZentoCloud/usercenter/12345/desksync/switch"), QVariant("1"));
    }

    void serverSwitchesAreKeptForTheProcess()
    {
        QComm::writeNimboRegValue("enableDesktopSyncEx", "false");
        QComm::writeNimboRegValue("enableV5Metadata", "0");
        QVERIFY(!QComm::isDesktopSyncEnable() && !QComm::isV5MetadataEnable());
        QComm::writeNimboRegValue("enableDesktopSyncEx", "true");
        QComm::writeNimboRegValue("enableV5Metadata", "1");
        QVERIFY(!QComm::isDesktopSyncEnable());
        QVERIFY(!QComm::isV5MetadataEnable());
        QCOMPARE(m_probe.runText({"isDesktopSyncEnable", "isV5MetadataEnable"}),
                 QStringList({"true", "true"}));
    }
};

QTEST_GUILESS_MAIN(TestQCommSyncSwitches)
#include "tst_qcommsyncswitches.moc"
