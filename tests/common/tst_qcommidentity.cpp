// Values the helpers read from the host and the stores, several of them kept
// for the process: installation identity, language, versions and user
// agents; the names of the cloud folders; the desktop sync switches. Fresh
// probe processes show what a cache would hide here.

#include "kcommtest.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"
#include "kwarningcatcher.h"

#include "common/qcommcloudnodes.h"
#include "common/qcommidentity.h"
#include "common/qcommstores.h"
#include "common/qcommsyncswitches.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/khksoftwaresettings.h>

#include <QRegularExpression>
#include <QSysInfo>

#include <climits>

namespace {

const QString kDeviceKey = "roamingdevice/deviceid";

bool isDeviceId(const QString& text)
{
    return QRegularExpression("^UUID-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$")
        .match(text)
        .hasMatch();
}

QSettings raw(KHKSoftwareSettings::HKEY root = KHKSoftwareSettings::CurrentUser)
{
    return QSettings(KHKSoftwareSettings::storeFileName(root), QSettings::IniFormat);
}

QString base64(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

} // namespace

class TestQCommIdentity : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KTestAppDir m_appDir{m_env.rootPath()};

    QStringList probe(const QStringList& operations, QString* err = nullptr) const
    {
        return runProbe(m_appDir, operations, QString(), err);
    }

private slots:
    void init()
    {
        m_env.resetHost();
        QFile::remove(m_appDir.filePath("cfgs/setup.cfg"));
    }

    // --- identity -------------------------------------------------------

    void deviceIdIsMadeOnceAndKept()
    {
        const QStringList first = probe({"deviceID", "deviceID"});
        QVERIFY2(isDeviceId(first.value(0)), qPrintable(first.value(0)));
        QCOMPARE(probe({"deviceID"}), QStringList{first[0]});
        QCOMPARE(raw().value(kDeviceKey).toString() + ' ' + first.value(1),
                 first[0] + ' ' + first[0]);
        // This process reads it too, and keeps it when the store changes;
        // any stored text is taken as it is.
        QCOMPARE(QComm::deviceID(), first[0]);
        raw().setValue(kDeviceKey, "abc");
        QCOMPARE(QComm::deviceID(), first[0]);
        QCOMPARE(probe({"deviceID"}), QStringList{"abc"});
    }

    void unwritableStoreGivesOneIdPerProcess()
    {
        // A directory where the store file should be: nothing reads or writes.
        QVERIFY(QDir().mkpath(raw().fileName()));
        const QStringList first = probe({"deviceID", "deviceID"});
        QVERIFY2(isDeviceId(first.value(0)) && first.value(1) == first[0], qPrintable(first[0]));
        const QString second = probe({"deviceID"}).value(0);
        QVERIFY2(isDeviceId(second) && second != first[0], qPrintable(second));
        const QString uuid = QComm::createUuid();
        QVERIFY2(QRegularExpression("^[0-9a-f]{32}$").match(uuid).hasMatch(), qPrintable(uuid));
        QVERIFY(uuid != QComm::createUuid());
    }

    void langID_data()
    {
        addColumns<QVariant, QByteArray, QString>({"inStore", "setupFile", "expected"});
        const QByteArray says1028("[Local]\nUILanguage=1028\n");
        addRow("stored wins", QVariant(1033), says1028, "1033");
        addRow("stored 0: setup file", QVariant(0), says1028, "1028 read");
        addRow("stored text no number", QVariant("en"), says1028, "1028 read");
        addRow("nothing stored, no setup file", QVariant(), QByteArray(), "2052 read");
        addRow("setup file without the key", QVariant(0), QByteArray("[Local]\nX=1\n"),
               "2052 read");
    }

    void langID()
    {
        QFETCH(QVariant, inStore);
        QFETCH(QByteArray, setupFile);
        QFETCH(QString, expected);
        if (inStore.isValid())
            raw().setValue("Corvane/Office/6.0/Common/Local/UILanguage", inStore);
        if (!setupFile.isNull())
            QVERIFY(m_appDir.writeFile("cfgs/setup.cfg", setupFile));
        QString err;
        const QString id = probe({"langID"}, &err).join(' ');
        QCOMPARE(err.contains("func getNimboCfgsValue mac not impl!") ? id + " read" : id,
                 expected);
    }

    void setupFileIsUtf8()
    {
        QVERIFY(m_appDir.writeFile("cfgs/setup.cfg", "[Local]\nName=漫游 箱\n"));
        QCOMPARE(probe({"getNimboCfgsValue", "Local/Name", "getNimboCfgsValue", "Local/X"}),
                 QStringList({"漫游 箱", "-"}));
    }

    void hostAndStoredValues()
    {
        for (const auto& [host, expected] :
             {std::pair("0.0.0.0", "8.1.0.X"), std::pair("0.0.0.1", "0.0.0.1"),
              std::pair("0.0.0.0.0", "0.0.0.0.0")}) {
            krt::hostcontrol::setVersion(host);
            QCOMPARE(QComm::zentoVersion() + ' ' + QComm::nimboVersion(),
                     QString(expected) + ' ' + expected);
        }
        krt::hostcontrol::setInstallUuid("5c1f7e2a-93d4");
        krt::hostcontrol::setHardwareId("8F3A2C71");
        QCOMPARE(QComm::zentoUUID() + ' ' + QComm::zentoHDID(), QString("5c1f7e2a-93d4 8F3A2C71"));
        QCOMPARE(QComm::zentoDistSrc() + QComm::zentoInstallPath() + QComm::userLevel(),
                 QString("-1"));
        raw().setValue("Corvane/Office/6.0/Common/DistSrc", "src");
        raw().setValue("Corvane/Office/6.0/Common/InstallRoot", "/opt/禅");
        QComm::setUserLevel("3");
        QCOMPARE(raw().value("Corvane/ZentoCloud/usertype").toString(), QString("3"));
        QCOMPARE(QComm::zentoDistSrc() + QComm::zentoInstallPath() + QComm::userLevel(),
                 QString("src/opt/禅3"));
#ifdef Q_OS_MACOS
        QCOMPARE(QComm::getOperationVersion(), "macOS " + QSysInfo::productVersion());
#else
        QCOMPARE(QComm::getOperationVersion(), "Linux " + QSysInfo::productVersion());
#endif
    }

    void zentoGUID_data()
    {
        addColumns<QVariant, QVariant, QVariant, QString>(
            {"perUser", "machine", "host", "expected"});
        addRow("per user", QVariant("u"), QVariant("m"), QVariant("w"), "u");
        addRow("machine-wide", QVariant(), QVariant("m"), QVariant("w"), "m");
        addRow("host settings", QVariant(""), QVariant(""), QVariant("w"), "w");
        addRow("nowhere", QVariant(), QVariant(), QVariant(), "");
    }

    void zentoGUID()
    {
        QFETCH(QVariant, perUser);
        QFETCH(QVariant, machine);
        QFETCH(QVariant, host);
        QFETCH(QString, expected);
        for (const auto& [root, value] : {std::pair(KHKSoftwareSettings::CurrentUser, perUser),
                                          std::pair(KHKSoftwareSettings::LocalMachine, machine)})
            if (value.isValid())
                raw(root).setValue("Corvane/Office/6.0/Common/infoGUID", value);
        krt::hostcontrol::setUwpCommonValue("infoGUID", host);
        QCOMPARE(QComm::zentoGUID(), expected);
    }

    void notImplemented()
    {
        KWarningCatcher catcher;
        // In this order (a braced list is evaluated left to right).
        QCOMPARE(QStringList({QComm::userComputerName(), QComm::vexlaunchPath(),
                              QComm::photolaunchPath(), QComm::zentoCenterPath(),
                              QComm::vexlaunchPath()})
                     .join(""),
                 QString());
        QCOMPARE(catcher.warnings(),
                 QStringList({"func userComputerName mac not impl!", "func vexlaunchPath not impl",
                              "func photolaunchPath not impl", "func vexlaunchPath not impl",
                              "func vexlaunchPath not impl"}));
    }

    void userAgents()
    {
        // The web-engine agent is built once, from the first call's arguments.
        krt::hostcontrol::setVersion("12.1.0.17890");
        const QString os = QComm::getOperationVersion();
        const QString zento =
            "zento/12.1.0.17890 (" + os + ";U;en_US) QtWebkit/602.1 Version/12.1.0.17890";
        QCOMPARE(QComm::getWebKitUserAgent(false, "en_US", "602.1"), zento);
        krt::hostcontrol::setVersion("13.0.0.1");
        QCOMPARE(QComm::getWebKitUserAgent(true, "zh_CN", "605.1"), zento);
        QCOMPARE(
            probe({"getWebKitUserAgent", "nimbo", "zh_CN", "605.1"}),
            QStringList{"nimbo/13.0.0.1 (" + os + ";U;zh_CN) QtWebkit/605.1 Version/13.0.0.1"});
        krt::hostcontrol::setVersion("0.0.0.0");
        QCOMPARE(probe({"getWebKitUserAgent", "zento", "", ""}),
                 QStringList{"zento/8.1.0.X (" + os + ";U;) QtWebkit/ Version/8.1.0.X"});

        // The host's agent is fetched once it is known, and then kept.
        QCOMPARE(QComm::getUserAgent(), QString());
        krt::hostcontrol::setUserAgent("Agent/1");
        QCOMPARE(QComm::getUserAgent("ignored"), QString("Agent/1"));
        krt::hostcontrol::setUserAgent("Agent/2");
        QCOMPARE(QComm::getUserAgent(), QString("Agent/1"));
        QCOMPARE(probe({"getUserAgent"}), QStringList{"Agent/2"});
    }

    // --- cloud folder names ---------------------------------------------

    // The names of each run of kinds, joined by "|", in both editions.
    void folderNames_data()
    {
        addColumns<qint64, qint64, QString, QString>(
            {"first", "last", "international", "domestic"});
        addRow(
            "-1 to 17", qint64(-1), qint64(17),
            "|My Cloud|Team Document|Roaming Document|Cloud Backup|Auto Upload Document|Share To "
            "Me|Share With Me|My Share|Share Link|Desktop Backup|微信文档|腾讯文档||应用|备份中心|"
            "Zento网盘|My Cloud|",
            "|我的云文档|团队文档|漫游文档|云端备份|自动上传文档|共享给我|与我共享|我的分享|分享链"
            "接|桌面文档|微信文档|腾讯文档||应用|备份中心|Zento网盘|Zento云文档|");
        addRow("99 to 104", qint64(99), qint64(104),
               "|Personal Space|Roaming Box|Document Roaming|My Nimbo Address|Auto Uploaded",
               "|私人空间|漫游箱|文档漫游|我收到的Nimbo地址|我的设备");
        addRow("106 to 108", qint64(106), qint64(108), "企业文档|桌面|", "企业文档|桌面|");
        addRow("199 to 201", qint64(199), qint64(201), "|Cloud Document Introduction|",
               "|云文档使用简介|");
        addRow("299 to 306", qint64(299), qint64(306),
               "|Invalid|雷达备份|我的桌面|微信接收|QQ接收|我的下载|",
               "|我的文档|雷达备份|我的桌面|微信接收|QQ接收|我的下载|");
        addRow("extremes", qint64(INT_MIN), qint64(INT_MIN), "", "");
        addRow("largest", qint64(INT_MAX), qint64(INT_MAX), "", "");
    }

    void folderNames()
    {
        QFETCH(qint64, first);
        QFETCH(qint64, last);
        QFETCH(QString, international);
        QFETCH(QString, domestic);
        const auto names = [&](bool overseas) {
            krt::hostcontrol::setOverseasVersion(overseas); // asked on every call
            QStringList list;
            for (qint64 kind = first; kind <= last; ++kind)
                list.append(QComm::cloudFileNodeName(QComm::CloudFileNodeType(kind)));
            return list.join('|');
        };
        QCOMPARE(names(true), international);
        QCOMPARE(names(false), domestic);
    }

    void roamingName_data()
    {
        addColumns<QVariant, bool, QString>({"stored", "overseas", "expected"});
        const char* fallback = "自动备份同步";
        addRow("nothing stored", QVariant(), false, fallback);
        addRow("stored name", QVariant(base64("我的漫游")), false, "我的漫游");
        addRow("international", QVariant(base64("Sync Box")), true, "Sync Box");
        addRow("empty text", QVariant(""), false, fallback);
        addRow("not Base64 at all", QVariant("!!!"), false, fallback);
        addRow("up to a zero byte", QVariant(base64({"ab\0cd", 5})), false, "ab");
        addRow("zero byte first", QVariant(base64({"\0ab", 3})), false, fallback);
    }

    void roamingName()
    {
        QFETCH(QVariant, stored);
        QFETCH(bool, overseas);
        QFETCH(QString, expected);
        if (stored.isValid())
            QComm::writeNimboRegValue("NimboRoamingName", stored);
        krt::hostcontrol::setOverseasVersion(overseas);
        QCOMPARE(probe({"cloudFileNodeName"}), QStringList{expected});
    }

    void roamingNameIsKeptForTheProcess()
    {
        QComm::writeNimboRegValue("NimboRoamingName", base64("甲"));
        QCOMPARE(QComm::cloudFileNodeName(QComm::NodeRoamingName), QString("甲"));
        QComm::writeNimboRegValue("NimboRoamingName", base64("乙"));
        QCOMPARE(QComm::cloudFileNodeName(QComm::NodeRoamingName), QString("甲"));
        QCOMPARE(probe({"cloudFileNodeName"}), QStringList{"乙"});
    }

    // --- desktop sync switches ------------------------------------------

    void syncSwitches_data()
    {
        addColumns<QVariant, bool>({"stored", "expected"});
        addRow("nothing stored: user off, server on", QVariant(), false);
        for (const QVariant& off : {QVariant(""), QVariant("0"), QVariant("False"),
                                    QVariant("FALSE"), QVariant(false), QVariant(0)})
            QTest::addRow("off: %s %s", off.typeName(), qPrintable(off.toString())) << off << false;
        for (const char* on : {"no", "0.0", " 0", "1"})
            QTest::addRow("on: %s", on) << QVariant(on) << true;
    }

    // The user's switch is read on every call, the server switches in a
    // fresh process each.
    void syncSwitches()
    {
        QFETCH(QVariant, stored);
        QFETCH(bool, expected);
        QComm::writeNimboUserInfoRegValue("userid", "12345");
        for (const char* name :
             {"usercenter/12345/desksync/switch", "enableDesktopSyncEx", "enableV5Metadata"})
            if (stored.isValid())
                QComm::writeNimboRegValue(name, stored);
        QCOMPARE(QComm::desktopSyncSwitchOn(), expected);
        const QString server = stored.isValid() && !expected ? "false false" : "true true";
        QCOMPARE(probe({"syncSwitches"}), QStringList{server});
        QVERIFY(!QComm::zentoboxDesktopSyncEnable());
    }

    void switchesFollowTheUserButNotTheServer()
    {
        QComm::writeNimboRegValue("usercenter/12345/desksync/switch", "1");
        QComm::writeNimboRegValue("usercenter/777/desksync/switch", "0");
        QVERIFY(!QComm::desktopSyncSwitchOn()); // nobody signed in
        QComm::writeNimboUserInfoRegValue("userid", "12345");
        QVERIFY(QComm::desktopSyncSwitchOn());
        QComm::writeNimboUserInfoRegValue("userid", "777");
        QVERIFY(!QComm::desktopSyncSwitchOn());
        QCOMPARE(raw().value("Corvane/ZentoCloud/usercenter/12345/desksync/switch"), QVariant("1"));

        QComm::writeNimboRegValue("enableDesktopSyncEx", "false");
        QComm::writeNimboRegValue("enableV5Metadata", "0");
        QVERIFY(!QComm::isDesktopSyncEnable() && !QComm::isV5MetadataEnable());
        QComm::writeNimboRegValue("enableDesktopSyncEx", "true");
        QComm::writeNimboRegValue("enableV5Metadata", "1");
        QVERIFY(!QComm::isDesktopSyncEnable());
        QVERIFY(!QComm::isV5MetadataEnable());
        QCOMPARE(probe({"syncSwitches"}), QStringList{"true true"});
    }
};

QTEST_GUILESS_MAIN(TestQCommIdentity)
#include "tst_qcommidentity.moc"
