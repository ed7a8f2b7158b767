// Installation identity, language, versions and user agents: the device
// identifier kept across processes, the setup-file fallback beside the
// application, the host's values passed through, and the two cached user
// agents (fresh processes through the probe where a cache would hide a case).

#include "kcommprobe.h"
#include "ktestenvironment.h"
#include "kwarningcatcher.h"

#include "common/qcommidentity.h"
#include "common/qcommstores.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/khksoftwaresettings.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSysInfo>
#include <QtTest>

#include <functional>

using TextFunction = std::function<QString()>;
Q_DECLARE_METATYPE(TextFunction)

namespace {

const QRegularExpression
    kDeviceIdForm("^UUID-[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}$");
const QString kCfgsNotice = QStringLiteral("func getNimboCfgsValue mac not impl!");

QSettings* rawStore(KHKSoftwareSettings::HKEY root)
{
    return new QSettings(KHKSoftwareSettings::storeFileName(root), QSettings::IniFormat);
}

QVariant deviceIdInStore()
{
    QScopedPointer<QSettings> store(rawStore(KHKSoftwareSettings::CurrentUser));
    return store->value("roamingdevice/deviceid");
}

void storeRaw(KHKSoftwareSettings::HKEY root, const QString& key, const QVariant& value)
{
    QScopedPointer<QSettings> store(rawStore(root));
    store->setValue(key, value);
}

} // namespace

class TestQCommIdentity : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KCommProbe m_probe{m_env.rootPath()};

    void writeSetupFile(const QByteArray& content)
    {
        QFile::remove(m_probe.appDir().filePath("cfgs/setup.cfg"));
        if (!content.isNull())
            QVERIFY(m_probe.appDir().writeFile("cfgs/setup.cfg", content));
    }

private slots:
    void initTestCase() { QVERIFY(m_probe.isValid()); }

    void init()
    {
        m_env.resetHost();
        QDir(m_env.profilePath() + "/stores").removeRecursively();
    }

    void deviceIdIsMadeOnceAndKept()
    {
        const QStringList first = m_probe.run({"deviceID", "deviceID"});
        QCOMPARE(first.size(), 2);
        QVERIFY2(kDeviceIdForm.match(first[0]).hasMatch(), qPrintable(first[0]));
        QCOMPARE(first[1], first[0]);
        QCOMPARE(deviceIdInStore().toString(), first[0]);
        QCOMPARE(m_probe.run({"deviceID"}), QStringList{first[0]});

        // This process reads it too, and keeps it even when the store changes.
        QCOMPARE(QComm::deviceID(), first[0]);
        storeRaw(KHKSoftwareSettings::CurrentUser, "roamingdevice/deviceid", "changed");
        QCOMPARE(QComm::deviceID(), first[0]);
    }

    void storedDeviceId_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("kept");
        QTest::newRow("any text, no form check") << "abc" << true;
        QTest::newRow("lower-case form") << "UUID-0e6b4d2a-7c91-4f38-b25e-a9d31c8f6047" << true;
        QTest::newRow("non-ASCII") << QString::fromUtf8("设备") << true;
        QTest::newRow("empty text: a new one") << "" << false;
    }

    void storedDeviceId()
    {
        QFETCH(QString, stored);
        QFETCH(bool, kept);
        storeRaw(KHKSoftwareSettings::CurrentUser, "roamingdevice/deviceid", stored);
        const QStringList id = m_probe.run({"deviceID"});
        QCOMPARE(id.size(), 1);
        if (kept)
            QCOMPARE(id[0], stored);
        else
            QVERIFY2(kDeviceIdForm.match(id[0]).hasMatch(), qPrintable(id[0]));
        QCOMPARE(deviceIdInStore().toString(), id[0]);
    }

    void unwritableStoreGivesOneIdPerProcess()
    {
        // A directory where the store file should be: nothing reads or writes.
        QVERIFY(
            QDir().mkpath(KHKSoftwareSettings::storeFileName(KHKSoftwareSettings::CurrentUser)));
        const QStringList first = m_probe.run({"deviceID", "deviceID"});
        QCOMPARE(first.size(), 2);
        QVERIFY2(kDeviceIdForm.match(first[0]).hasMatch(), qPrintable(first[0]));
        QCOMPARE(first[1], first[0]);
        const QStringList second = m_probe.run({"deviceID"});
        QVERIFY2(kDeviceIdForm.match(second.value(0)).hasMatch(), qPrintable(second.value(0)));
        QVERIFY(second[0] != first[0]);
    }

    void createUuid()
    {
        QStringList made;
        for (int i = 0; i < 3; ++i) {
            made << QComm::createUuid();
            QVERIFY2(QRegularExpression("^[0-9a-f]{32}$").match(made.last()).hasMatch(),
                     qPrintable(made.last()));
        }
        made.removeDuplicates();
        QCOMPARE(made.size(), 3);
    }

    void langID_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QByteArray>("setupFile");
        QTest::addColumn<int>("expected");
        QTest::addColumn<bool>("setupRead");

        const QByteArray says1028("[Local]\nUILanguage=1028\n");
        QTest::newRow("stored wins") << QVariant(1033) << says1028 << 1033 << false;
        QTest::newRow("stored as text") << QVariant("1041") << says1028 << 1041 << false;
        QTest::newRow("stored 0: setup file") << QVariant(0) << says1028 << 1028 << true;
        QTest::newRow("nothing stored: setup file") << QVariant() << says1028 << 1028 << true;
        QTest::newRow("stored text no number") << QVariant("en") << says1028 << 1028 << true;
        QTest::newRow("no setup file") << QVariant(0) << QByteArray() << 2052 << true;
        QTest::newRow("setup file without the key")
            << QVariant(0) << QByteArray("[Local]\nOther=1\n") << 2052 << true;
        QTest::newRow("setup value no number")
            << QVariant(0) << QByteArray("[Local]\nUILanguage=zh\n") << 0 << true;
    }

    void langID()
    {
        QFETCH(QVariant, stored);
        QFETCH(QByteArray, setupFile);
        QFETCH(int, expected);
        QFETCH(bool, setupRead);

        if (stored.isValid())
            storeRaw(KHKSoftwareSettings::CurrentUser, "Corvane/Office/6.0/Common/Local/UILanguage",
                     stored);
        writeSetupFile(setupFile);
        QString err;
        QCOMPARE(m_probe.run({"langID"}, &err), QStringList{QString::number(expected)});
        QCOMPARE(err.count(kCfgsNotice), setupRead ? 1 : 0);
    }

    void setupFileValues()
    {
        writeSetupFile(QString::fromUtf8("[Local]\nName=漫游 箱\n").toUtf8());
        QString err;
        QCOMPARE(m_probe.run({"getNimboCfgsValue", "Local/Name", "d", "getNimboCfgsValue",
                              "Local/Missing", "d"},
                             &err),
                 QStringList({QString::fromUtf8("漫游 箱"), "d"}));
        QCOMPARE(err.count(kCfgsNotice), 2);
    }

    void zentoVersion_data()
    {
        QTest::addColumn<QString>("hostVersion");
        QTest::addColumn<QString>("expected");
        QTest::newRow("passed through") << "12.1.0.17890"
                                        << "12.1.0.17890";
        QTest::newRow("0.0.0.0 replaced") << "0.0.0.0"
                                          << "8.1.0.X";
        QTest::newRow("host without a version") << ""
                                                << "8.1.0.X";
        QTest::newRow("0.0.0.1 passed through") << "0.0.0.1"
                                                << "0.0.0.1";
        QTest::newRow("only the exact text") << "0.0.0.0.0"
                                             << "0.0.0.0.0";
    }

    void zentoVersion()
    {
        QFETCH(QString, hostVersion);
        QFETCH(QString, expected);
        krt::hostcontrol::setVersion(hostVersion);
        QCOMPARE(QComm::zentoVersion(), expected);
        QCOMPARE(QComm::nimboVersion(), expected);
    }

    void hostIdentity()
    {
        QCOMPARE(QComm::zentoUUID(), QString());
        QCOMPARE(QComm::zentoHDID(), QString());
        krt::hostcontrol::setInstallUuid("5c1f7e2a-93d4-4b0e-a8f6-2d7b91c4e035");
        krt::hostcontrol::setHardwareId("8F3A2C71");
        QCOMPARE(QComm::zentoUUID(), QString("5c1f7e2a-93d4-4b0e-a8f6-2d7b91c4e035"));
        QCOMPARE(QComm::zentoHDID(), QString("8F3A2C71"));
    }

    void zentoGUID_data()
    {
        QTest::addColumn<QVariant>("perUser");
        QTest::addColumn<QVariant>("machine");
        QTest::addColumn<QVariant>("uwp");
        QTest::addColumn<QString>("expected");
        QTest::newRow("per user") << QVariant("u") << QVariant("m") << QVariant("w") << "u";
        QTest::newRow("machine-wide") << QVariant() << QVariant("m") << QVariant("w") << "m";
        QTest::newRow("host settings") << QVariant() << QVariant() << QVariant("w") << "w";
        QTest::newRow("empty stored text") << QVariant("") << QVariant("") << QVariant("w") << "w";
        QTest::newRow("nowhere") << QVariant() << QVariant() << QVariant() << "";
    }

    void zentoGUID()
    {
        QFETCH(QVariant, perUser);
        QFETCH(QVariant, machine);
        QFETCH(QVariant, uwp);
        QFETCH(QString, expected);
        if (perUser.isValid())
            storeRaw(KHKSoftwareSettings::CurrentUser, "Corvane/Office/6.0/Common/infoGUID",
                     perUser);
        if (machine.isValid())
            storeRaw(KHKSoftwareSettings::LocalMachine, "Corvane/Office/6.0/Common/infoGUID",
                     machine);
        krt::hostcontrol::setUwpCommonValue("infoGUID", uwp);
        QCOMPARE(QComm::zentoGUID(), expected);
    }

    void storedValues_data()
    {
        QTest::addColumn<TextFunction>("read");
        QTest::addColumn<QString>("rawKey");
        QTest::addColumn<QString>("absent");
        QTest::newRow("distribution source")
            << TextFunction(QComm::zentoDistSrc) << "Corvane/Office/6.0/Common/DistSrc"
            << "";
        QTest::newRow("install root")
            << TextFunction(QComm::zentoInstallPath) << "Corvane/Office/6.0/Common/InstallRoot"
            << "";
        QTest::newRow("user level")
            << TextFunction(QComm::userLevel) << "Corvane/ZentoCloud/usertype"
            << "-1";
    }

    void storedValues()
    {
        QFETCH(TextFunction, read);
        QFETCH(QString, rawKey);
        QFETCH(QString, absent);
        QCOMPARE(read(), absent);
        storeRaw(KHKSoftwareSettings::CurrentUser, rawKey, QString::fromUtf8("/opt/禅"));
        QCOMPARE(read(), QString::fromUtf8("/opt/禅"));
    }

    void setUserLevel()
    {
        QComm::setUserLevel("3");
        QCOMPARE(QComm::userLevel(), QString("3"));
        QScopedPointer<QSettings> store(rawStore(KHKSoftwareSettings::CurrentUser));
        QCOMPARE(store->value("Corvane/ZentoCloud/usertype").toString(), QString("3"));
    }

    void operationVersion()
    {
#ifdef Q_OS_MACOS
        const QString system = "macOS ";
#else
        const QString system = "Linux ";
#endif
        QCOMPARE(QComm::getOperationVersion(), system + QSysInfo::productVersion());
    }

    void notImplemented_data()
    {
        QTest::addColumn<TextFunction>("call");
        QTest::addColumn<QString>("message");
        QTest::newRow("computer name")
            << TextFunction(QComm::userComputerName) << "func userComputerName mac not impl!";
        QTest::newRow("launcher") << TextFunction(QComm::vexlaunchPath)
                                  << "func vexlaunchPath not impl";
        QTest::newRow("photo launcher")
            << TextFunction(QComm::photolaunchPath) << "func photolaunchPath not impl";
        QTest::newRow("centre: the launcher's")
            << TextFunction(QComm::zentoCenterPath) << "func vexlaunchPath not impl";
    }

    void notImplemented()
    {
        QFETCH(TextFunction, call);
        QFETCH(QString, message);
        KWarningCatcher catcher;
        QCOMPARE(call(), QString());
        QCOMPARE(call(), QString());
        QCOMPARE(catcher.warnings(), QStringList({message, message}));
    }

    void webKitUserAgentIsBuiltOnce()
    {
        krt::hostcontrol::setVersion("12.1.0.17890");
        const QString expected = "zento/12.1.0.17890 (" + QComm::getOperationVersion() +
                                 ";U;en_US) QtWebkit/602.1 Version/12.1.0.17890";
        QCOMPARE(QComm::getWebKitUserAgent(false, "en_US", "602.1"), expected);
        krt::hostcontrol::setVersion("13.0.0.1");
        QCOMPARE(QComm::getWebKitUserAgent(true, "zh_CN", "605.1"), expected);
    }

    void webKitUserAgentForms_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("webKit");
        QTest::addColumn<QString>("hostVersion");
        QTest::addColumn<QString>("expected");

        // %OS stands for the operating-system label.
        QTest::newRow("cloud client's prefix")
            << "1"
            << "zh_CN"
            << "602.1"
            << "11.1.0.9999"
            << "nimbo/11.1.0.9999 (%OS;U;zh_CN) QtWebkit/602.1 Version/11.1.0.9999";
        QTest::newRow("suite's prefix") << "0"
                                        << "en_US"
                                        << "602.1"
                                        << "11.1.0.9999"
                                        << "zento/11.1.0.9999 (%OS;U;en_US) QtWebkit/602.1 "
                                           "Version/11.1.0.9999";
        QTest::newRow("unknown version")
            << "1"
            << "de_DE"
            << "1"
            << "0.0.0.0"
            << "nimbo/8.1.0.X (%OS;U;de_DE) QtWebkit/1 Version/8.1.0.X";
        QTest::newRow("empty arguments") << "0"
                                         << ""
                                         << ""
                                         << "9.0.0.1"
                                         << "zento/9.0.0.1 (%OS;U;) QtWebkit/ Version/9.0.0.1";
    }

    void webKitUserAgentForms()
    {
        QFETCH(QString, prefix);
        QFETCH(QString, language);
        QFETCH(QString, webKit);
        QFETCH(QString, hostVersion);
        QFETCH(QString, expected);
        krt::hostcontrol::setVersion(hostVersion);
        QCOMPARE(m_probe.run({"getWebKitUserAgent", prefix, language, webKit}),
                 QStringList{expected.replace("%OS", QComm::getOperationVersion())});
    }

    void hostUserAgentIsFetchedOnceKnown()
    {
        QCOMPARE(QComm::getUserAgent(), QString());
        krt::hostcontrol::setUserAgent("Agent/1");
        QCOMPARE(QComm::getUserAgent("ignored"), QString("Agent/1"));
        krt::hostcontrol::setUserAgent("Agent/2");
        QCOMPARE(QComm::getUserAgent(), QString("Agent/1"));
        QCOMPARE(m_probe.run({"getUserAgent"}), QStringList{"Agent/2"});
    }
};

QTEST_GUILESS_MAIN(TestQCommIdentity)
#include "tst_qcommidentity.moc"
