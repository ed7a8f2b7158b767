// Installation identity, language, versions and user agents: the device
// identifier kept across processes, the setup-file fallback beside the
// application, the host's values passed through, and the two cached user
// agents (fresh processes through the probe where a cache would hide a case).

#include "kcommprobe.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"
#include "kwarningcatcher.h"

#include "common/qcommidentity.h"

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
const auto kUser = KHKSoftwareSettings::CurrentUser;

// A value of a store file by its full key path; the device identifier by default.
QVariant stored(const QString& path = "roamingdevice/deviceid",
                KHKSoftwareSettings::HKEY root = kUser)
{
    return QSettings(KHKSoftwareSettings::storeFileName(root), QSettings::IniFormat).value(path);
}

void store(const QString& path, const QVariant& value, KHKSoftwareSettings::HKEY root = kUser)
{
    if (value.isValid())
        QSettings(KHKSoftwareSettings::storeFileName(root), QSettings::IniFormat)
            .setValue(path, value);
}

} // namespace

class TestQCommIdentity : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KTestAppDir m_appDir{m_env.rootPath()};
    KCommProbe m_probe{m_appDir};

    bool isDeviceId(const QString& text) { return kDeviceIdForm.match(text).hasMatch(); }

private slots:
    void initTestCase() { QVERIFY(m_probe.isValid()); }

    void init()
    {
        m_env.resetHost();
        QFile::remove(m_appDir.filePath("cfgs/setup.cfg"));
    }

    void deviceIdIsMadeOnceAndKept()
    {
        const QStringList first = m_probe.runText({"deviceID", "deviceID"});
        QVERIFY2(isDeviceId(first.value(0)), qPrintable(first.value(0)));
        QCOMPARE(first.value(1), first[0]);
        QCOMPARE(stored().toString(), first[0]);
        QCOMPARE(m_probe.runText({"deviceID"}), QStringList{first[0]});

        // This process reads it too, and keeps it even when the store changes.
        QCOMPARE(QComm::deviceID(), first[0]);
        store("roamingdevice/deviceid", "changed");
        QCOMPARE(QComm::deviceID(), first[0]);
    }

    void storedDeviceId_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("any text, no form check") << "abc";
        QTest::newRow("lower-case form") << "UUID-0e6b4d2a-7c91-4f38-b25e-a9d31c8f6047";
        QTest::newRow("non-ASCII") << QString::fromUtf8("设备");
        QTest::newRow("empty text: a new one") << "";
    }

    void storedDeviceId()
    {
        QFETCH(QString, text);
        store("roamingdevice/deviceid", text);
        const QString id = m_probe.runText({"deviceID"}).value(0);
        QVERIFY2(text.isEmpty() ? isDeviceId(id) : id == text, qPrintable(id));
        QCOMPARE(stored().toString(), id);
    }

    void unwritableStoreGivesOneIdPerProcess()
    {
        // A directory where the store file should be: nothing reads or writes.
        QVERIFY(QDir().mkpath(KHKSoftwareSettings::storeFileName(kUser)));
        const QStringList first = m_probe.runText({"deviceID", "deviceID"});
        QVERIFY2(isDeviceId(first.value(0)), qPrintable(first.value(0)));
        QCOMPARE(first.value(1), first[0]);
        const QString second = m_probe.runText({"deviceID"}).value(0);
        QVERIFY2(isDeviceId(second) && second != first[0], qPrintable(second));
    }

    void createUuid()
    {
        const QString a = QComm::createUuid(), b = QComm::createUuid();
        QVERIFY2(QRegularExpression("^[0-9a-f]{32}$").match(a).hasMatch(), qPrintable(a));
        QVERIFY(a != b);
    }

    void langID_data()
    {
        QTest::addColumn<QVariant>("inStore");
        QTest::addColumn<QByteArray>("setupFile");
        QTest::addColumn<int>("expected");
        QTest::addColumn<bool>("setupRead");
        const QByteArray says1028("[Local]\nUILanguage=1028\n");
        const auto row = [](const char* tag, const QVariant& inStore, const QByteArray& setup,
                            int expected, bool setupRead) {
            QTest::newRow(tag) << inStore << setup << expected << setupRead;
        };
        row("stored wins", 1033, says1028, 1033, false);
        row("stored as text", "1041", says1028, 1041, false);
        row("stored 0: setup file", 0, says1028, 1028, true);
        row("nothing stored: setup file", QVariant(), says1028, 1028, true);
        row("stored text no number", "en", says1028, 1028, true);
        row("no setup file", 0, QByteArray(), 2052, true);
        row("setup file without the key", 0, "[Local]\nOther=1\n", 2052, true);
        row("setup value no number", 0, "[Local]\nUILanguage=zh\n", 0, true);
    }

    void langID()
    {
        QFETCH(QVariant, inStore);
        QFETCH(QByteArray, setupFile);
        QFETCH(int, expected);
        QFETCH(bool, setupRead);
        store("Corvane/Office/6.0/Common/Local/UILanguage", inStore);
        if (!setupFile.isNull())
            QVERIFY(m_appDir.writeFile("cfgs/setup.cfg", setupFile));
        QString err;
        QCOMPARE(m_probe.runText({"langID"}, &err), QStringList{QString::number(expected)});
        QCOMPARE(err.count(kCfgsNotice), setupRead ? 1 : 0);
    }

    void setupFileValues()
    {
        QVERIFY(m_appDir.writeFile("cfgs/setup.cfg", "[Local]\nName=漫游 箱\n"));
        QString err;
        QCOMPARE(m_probe.runText({"getNimboCfgsValue", "Local/Name", "d", "getNimboCfgsValue",
                                  "Local/Missing", "d"},
                                 &err),
                 QStringList({QString::fromUtf8("漫游 箱"), "d"}));
        QCOMPARE(err.count(kCfgsNotice), 2);
    }

    void zentoVersion_data()
    {
        QTest::addColumn<QString>("hostVersion");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* tag, const char* host, const char* expected) {
            QTest::newRow(tag) << QString(host) << QString(expected);
        };
        row("passed through", "12.1.0.17890", "12.1.0.17890");
        row("0.0.0.0 replaced", "0.0.0.0", "8.1.0.X");
        row("host without a version", "", "8.1.0.X");
        row("0.0.0.1 passed through", "0.0.0.1", "0.0.0.1");
        row("only the exact text", "0.0.0.0.0", "0.0.0.0.0");
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
        krt::hostcontrol::setInstallUuid("5c1f7e2a-93d4");
        krt::hostcontrol::setHardwareId("8F3A2C71");
        QCOMPARE(QComm::zentoUUID(), QString("5c1f7e2a-93d4"));
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
        store("Corvane/Office/6.0/Common/infoGUID", perUser);
        store("Corvane/Office/6.0/Common/infoGUID", machine, KHKSoftwareSettings::LocalMachine);
        krt::hostcontrol::setUwpCommonValue("infoGUID", uwp);
        QCOMPARE(QComm::zentoGUID(), expected);
    }

    void storedValues_data()
    {
        QTest::addColumn<TextFunction>("read");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("absent");
        const auto row = [](const char* tag, const TextFunction& read, const char* path,
                            const char* absent) {
            QTest::newRow(tag) << read << QString(path) << QString(absent);
        };
        row("distribution source", QComm::zentoDistSrc, "Corvane/Office/6.0/Common/DistSrc", "");
        row("install root", QComm::zentoInstallPath, "Corvane/Office/6.0/Common/InstallRoot", "");
        row("user level", QComm::userLevel, "Corvane/ZentoCloud/usertype", "-1");
    }

    void storedValues()
    {
        QFETCH(TextFunction, read);
        QFETCH(QString, path);
        QFETCH(QString, absent);
        QCOMPARE(read(), absent);
        store(path, QString::fromUtf8("/opt/禅"));
        QCOMPARE(read(), QString::fromUtf8("/opt/禅"));
    }

    void setUserLevel()
    {
        QComm::setUserLevel("3");
        QCOMPARE(QComm::userLevel(), QString("3"));
        QCOMPARE(stored("Corvane/ZentoCloud/usertype").toString(), QString("3"));
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
        QCOMPARE(call() + call(), QString());
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
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("hostVersion");
        QTest::addColumn<QString>("expected");
        // %OS stands for the operating-system label.
        const auto row = [](const char* tag, const QStringList& arguments, const char* host,
                            const char* expected) {
            QTest::newRow(tag) << arguments << QString(host) << QString(expected);
        };
        row("cloud client's prefix", {"1", "zh_CN", "602.1"}, "11.1.0.9999",
            "nimbo/11.1.0.9999 (%OS;U;zh_CN) QtWebkit/602.1 Version/11.1.0.9999");
        row("suite's prefix", {"0", "en_US", "602.1"}, "11.1.0.9999",
            "zento/11.1.0.9999 (%OS;U;en_US) QtWebkit/602.1 Version/11.1.0.9999");
        row("unknown version", {"1", "de_DE", "1"}, "0.0.0.0",
            "nimbo/8.1.0.X (%OS;U;de_DE) QtWebkit/1 Version/8.1.0.X");
        row("empty arguments", {"0", "", ""}, "9.0.0.1",
            "zento/9.0.0.1 (%OS;U;) QtWebkit/ Version/9.0.0.1");
    }

    void webKitUserAgentForms()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, hostVersion);
        QFETCH(QString, expected);
        krt::hostcontrol::setVersion(hostVersion);
        QCOMPARE(m_probe.runText(QStringList("getWebKitUserAgent") + arguments),
                 QStringList{expected.replace("%OS", QComm::getOperationVersion())});
    }

    void hostUserAgentIsFetchedOnceKnown()
    {
        QCOMPARE(QComm::getUserAgent(), QString());
        krt::hostcontrol::setUserAgent("Agent/1");
        QCOMPARE(QComm::getUserAgent("ignored"), QString("Agent/1"));
        krt::hostcontrol::setUserAgent("Agent/2");
        QCOMPARE(QComm::getUserAgent(), QString("Agent/1"));
        QCOMPARE(m_probe.runText({"getUserAgent"}), QStringList{"Agent/2"});
    }
};

QTEST_GUILESS_MAIN(TestQCommIdentity)
#include "tst_qcommidentity.moc"
