// Desktop sync switches: the text-to-boolean rule, the user's switch read
// on every call, and the two server switches kept for the process.

#include "kcommprobe.h"
#include "ktestenvironment.h"

#include "common/qcommstores.h"
#include "common/qcommsyncswitches.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/khksoftwaresettings.h>

#include <QDir>
#include <QtTest>

class TestQCommSyncSwitches : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KCommProbe m_probe{m_env.rootPath()};

private slots:
    void initTestCase() { QVERIFY(m_probe.isValid()); }

    void init()
    {
        m_env.resetHost();
        QDir(m_env.profilePath() + "/stores").removeRecursively();
    }

    void textToBoolean_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<bool>("expected");
        QTest::newRow("empty") << QVariant("") << false;
        QTest::newRow("0") << QVariant("0") << false;
        QTest::newRow("false") << QVariant("false") << false;
        QTest::newRow("False") << QVariant("False") << false;
        QTest::newRow("FALSE") << QVariant("FALSE") << false;
        QTest::newRow("stored boolean false") << QVariant(false) << false;
        QTest::newRow("stored integer 0") << QVariant(0) << false;
        QTest::newRow("no") << QVariant("no") << true;
        QTest::newRow("off") << QVariant("off") << true;
        QTest::newRow("0.0") << QVariant("0.0") << true;
        QTest::newRow(" 0") << QVariant(" 0") << true;
        QTest::newRow("1") << QVariant("1") << true;
        QTest::newRow("true") << QVariant("true") << true;
    }

    // The user's switch is read afresh on every call, so one process sees
    // every row; the server switches follow the same rule in fresh processes.
    void textToBoolean()
    {
        QFETCH(QVariant, stored);
        QFETCH(bool, expected);

        QComm::writeNimboUserInfoRegValue("userid", "12345");
        QComm::writeNimboRegValue("usercenter/12345/desksync/switch", stored);
        QCOMPARE(QComm::desktopSyncSwitchOn(), expected);

        QComm::writeNimboRegValue("enableDesktopSyncEx", stored);
        QComm::writeNimboRegValue("enableV5Metadata", stored);
        const QString text = expected ? "true" : "false";
        QCOMPARE(m_probe.run({"isDesktopSyncEnable", "isV5MetadataEnable"}),
                 QStringList({text, text}));
    }

    void nothingStored()
    {
        QCOMPARE(m_probe.run({"isDesktopSyncEnable", "isV5MetadataEnable"}),
                 QStringList({"true", "true"}));
        QVERIFY(!QComm::desktopSyncSwitchOn());
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
        QCOMPARE(raw.value("Corvane/ZentoCloud/usercenter/12345/desksync/switch").toString(),
                 QString("1"));
    }

    void serverSwitchesAreKeptForTheProcess()
    {
        QComm::writeNimboRegValue("enableDesktopSyncEx", "false");
        QComm::writeNimboRegValue("enableV5Metadata", "0");
        QVERIFY(!QComm::isDesktopSyncEnable());
        QVERIFY(!QComm::isV5MetadataEnable());
        QComm::writeNimboRegValue("enableDesktopSyncEx", "true");
        QComm::writeNimboRegValue("enableV5Metadata", "1");
        QVERIFY(!QComm::isDesktopSyncEnable());
        QVERIFY(!QComm::isV5MetadataEnable());
        QCOMPARE(m_probe.run({"isDesktopSyncEnable", "isV5MetadataEnable"}),
                 QStringList({"true", "true"}));
    }
};

QTEST_GUILESS_MAIN(TestQCommSyncSwitches)
#include "tst_qcommsyncswitches.moc"
