// Values the helper layer reads once and keeps for the process (identity,
// language, versions, user agents, folder names, sync switches), seen from
// fresh probe processes where this process's caches would hide them.

#include "commsuitekit.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"
#include "kwarningcatcher.h"

#include "qcommcloudnodes.h"
#include "qcommidentity.h"
#include "qcommstores.h"
#include "qcommsyncswitches.h"

#include <vexlite/hostcontrol.h>

#include <QRegularExpression>
#include <QSysInfo>
#include <QtTest>

using namespace AuthTest;
using namespace QComm;

namespace {

const auto kMachine = KHKSoftwareSettings::LocalMachine;
const QString kDeviceKey = "roamingdevice/deviceid";
const QRegularExpression kDeviceId("^UUID-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$");

QString base64(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

} // namespace

class TestCommIdentity : public QObject
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

    void deviceId()
    {
        const QStringList first = probe({"deviceID", "deviceID"});
        QVERIFY2(kDeviceId.match(first.value(0)).hasMatch(), qPrintable(first.value(0)));
        QCOMPARE(probe({"deviceID"}), QStringList{first[0]});
        QCOMPARE(raw().value(kDeviceKey).toString() + ' ' + first.value(1),
                 first[0] + ' ' + first[0]);
        // This process reads it too, and keeps it when the store changes;
        // any stored text is taken as it is.
        QCOMPARE(deviceID(), first[0]);
        raw().setValue(kDeviceKey, "abc");
        QCOMPARE(deviceID(), first[0]);
        QCOMPARE(probe({"deviceID"}), QStringList{"abc"});
        // A store that cannot be written: each process keeps the identifier
        // it made, and says once that it could not store it.
        QVERIFY(QFile::remove(raw().fileName()) && QDir().mkpath(raw().fileName()));
        QString err;
        const QStringList once = probe({"deviceID", "deviceID"}, &err), again = probe({"deviceID"});
        QVERIFY2(kDeviceId.match(once.value(0)).hasMatch() && once.value(1) == once[0],
                 qPrintable(once[0]));
        QVERIFY2(kDeviceId.match(again.value(0)).hasMatch() && again[0] != once[0],
                 qPrintable(again[0]));
        QCOMPARE(err, "auth.common: cannot store the device identifier in " + raw().fileName() +
                          "; it holds for this process only\n");
        const QString uuid = createUuid();
        QVERIFY2(QRegularExpression("^[0-9a-f]{32}$").match(uuid).hasMatch(), qPrintable(uuid));
        QVERIFY(uuid != createUuid());
    }

    // First runs at the same moment on an empty store end with one
    // identifier, the stored one.
    void deviceIdOfFirstRunsAtOnce()
    {
        const QString barrier = m_env.rootPath() + "/barrier";
        QVERIFY(QDir(barrier).removeRecursively() && QDir().mkpath(barrier));
        QStringList errs, ids;
        for (const QStringList& texts :
             runProbesAtOnce(m_appDir, {"--barrier", barrier, "6", "deviceID"}, 6, &errs))
            ids << texts.join(' ');
        const QString stored = raw().value(kDeviceKey).toString();
        QVERIFY2(kDeviceId.match(stored).hasMatch(), qPrintable(stored));
        QCOMPARE(ids.size(), 6);
        ids.removeDuplicates();
        QCOMPARE(ids, QStringList{' ' + stored});
        QCOMPARE(errs.join(""), QString());
    }

    // What a fresh process reads: the language (stored, else the setup
    // file's, read through the function the setup file is read with) and the
    // roaming folder's name (stored in Base64, up to a zero byte).
    void readOnce_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QByteArray>("setupFile");
        QTest::addColumn<QString>("expected");
        const QByteArray says1028("[Local]\nUILanguage=1028\n");
        const char* fallback = "自动备份同步";
        const auto row = [](const char* tag, const char* operation, const QVariant& stored,
                            const QByteArray& setupFile, const char* expected) {
            QTest::newRow(tag) << QString(operation) << stored << setupFile << QString(expected);
        };
        row("language stored wins", "langID", 1033, says1028, "1033");
        row("language stored 0: setup file", "langID", "0", says1028, "1028 read");
        row("no language, setup file without the key", "langID", QVariant(), "[Local]\nX=1\n",
            "2052 read");
        row("roaming name: nothing stored", "cloudFileNodeName", QVariant(), "", fallback);
        row("stored roaming name", "cloudFileNodeName", base64("我的漫游"), "", "我的漫游");
        row("roaming name not Base64 at all", "cloudFileNodeName", "!!!", "", fallback);
        row("roaming name up to a zero byte", "cloudFileNodeName", base64({"ab\0cd", 5}), "", "ab");
    }

    void readOnce()
    {
        QFETCH(QString, operation);
        QFETCH(QVariant, stored);
        QFETCH(QByteArray, setupFile);
        QFETCH(QString, expected);

        const QString key = operation == "langID" ? "Corvane/Office/6.0/Common/Local/UILanguage"
                                                  : "Corvane/ZentoCloud/NimboRoamingName";
        if (stored.isValid())
            raw().setValue(key, stored);
        QVERIFY(m_appDir.writeFile("cfgs/setup.cfg", setupFile));
        QString err;
        const QString read = probe({operation}, &err).join(' ');
        QCOMPARE(err.contains("func getNimboCfgsValue mac not impl!") ? read + " read" : read,
                 expected);
    }

    void hostAndStoredValues()
    {
        for (const auto& [host, expected] :
             {std::pair("0.0.0.0", "8.1.0.X"), std::pair("0.0.0.1", "0.0.0.1")}) {
            krt::hostcontrol::setVersion(host);
            QCOMPARE(zentoVersion() + ' ' + nimboVersion(), QString(expected) + ' ' + expected);
        }
        QCOMPARE(zentoDistSrc() + zentoInstallPath() + userLevel(), QString("-1"));
        raw().setValue("Corvane/Office/6.0/Common/DistSrc", "src");
        raw().setValue("Corvane/Office/6.0/Common/InstallRoot", "/opt/禅");
        setUserLevel("3");
        QCOMPARE(raw().value("Corvane/ZentoCloud/usertype").toString(), QString("3"));
        QCOMPARE(zentoDistSrc() + zentoInstallPath() + userLevel(), QString("src/opt/禅3"));
#ifdef Q_OS_MACOS
        QCOMPARE(getOperationVersion(), "macOS " + QSysInfo::productVersion());
#else
        QCOMPARE(getOperationVersion(), "Linux " + QSysInfo::productVersion());
#endif
    }

    // Per user, machine-wide, then the host's settings.
    void installationGuid()
    {
        const QString key = "Corvane/Office/6.0/Common/infoGUID";
        QCOMPARE(zentoGUID(), QString());
        krt::hostcontrol::setUwpCommonValue("infoGUID", "w");
        raw().setValue(key, "");
        QCOMPARE(zentoGUID(), QString("w"));
        raw(kMachine).setValue(key, "m");
        QCOMPARE(zentoGUID(), QString("m"));
        raw().setValue(key, "u");
        QCOMPARE(zentoGUID(), QString("u"));

        KWarningCatcher catcher; // and the functions without an implementation here
        for (const auto& function :
             {userComputerName, vexlaunchPath, photolaunchPath, zentoCenterPath})
            QVERIFY(function().isEmpty());
        QCOMPARE(catcher.warnings(),
                 QStringList({"func userComputerName mac not impl!", "func vexlaunchPath not impl",
                              "func photolaunchPath not impl", "func vexlaunchPath not impl"}));
    }

    void keptForTheProcess()
    {
        // The web-engine agent is built once, from the first call's arguments.
        krt::hostcontrol::setVersion("12.1.0.17890");
        const QString os = getOperationVersion();
        const QString zento =
            "zento/12.1.0.17890 (" + os + ";U;en_US) QtWebkit/602.1 Version/12.1.0.17890";
        QCOMPARE(getWebKitUserAgent(false, "en_US", "602.1"), zento);
        krt::hostcontrol::setVersion("0.0.0.0");
        QCOMPARE(getWebKitUserAgent(true, "zh_CN", "605.1"), zento);
        QCOMPARE(probe({"getWebKitUserAgent", "nimbo", "zh_CN", "605.1"}),
                 QStringList{"nimbo/8.1.0.X (" + os + ";U;zh_CN) QtWebkit/605.1 Version/8.1.0.X"});
        // The host's agent is fetched once it is known.
        QCOMPARE(getUserAgent(), QString());
        krt::hostcontrol::setUserAgent("Agent/1");
        QCOMPARE(getUserAgent("ignored"), QString("Agent/1"));
        krt::hostcontrol::setUserAgent("Agent/2");
        QCOMPARE(getUserAgent(), QString("Agent/1"));
        // The roaming name and the two server switches.
        writeNimboRegValue("NimboRoamingName", base64("甲"));
        writeNimboRegValue("enableDesktopSyncEx", "false");
        writeNimboRegValue("enableV5Metadata", "0");
        QCOMPARE(cloudFileNodeName(NodeRoamingName), QString("甲"));
        QVERIFY(!isDesktopSyncEnable() && !isV5MetadataEnable());
        writeNimboRegValue("NimboRoamingName", base64("乙"));
        writeNimboRegValue("enableDesktopSyncEx", "true");
        writeNimboRegValue("enableV5Metadata", "1");
        QCOMPARE(cloudFileNodeName(NodeRoamingName), QString("甲"));
        QVERIFY(!isDesktopSyncEnable() && !isV5MetadataEnable());
        QCOMPARE(probe({"getUserAgent", "cloudFileNodeName", "syncSwitches"}),
                 QStringList({"Agent/2", "乙", "true true"}));
    }

    // --- cloud folder names ---------------------------------------------

    // The names of each run of kinds, joined by "|", in both editions.
    void folderNames_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        QTest::addColumn<QString>("international");
        QTest::addColumn<QString>("domestic");
        const auto row = [](const char* tag, int first, int last, const char* international,
                            const char* domestic) {
            QTest::newRow(tag) << first << last << international << domestic;
        };
        row("-1 to 17", -1, 17,
            "|My Cloud|Team Document|Roaming Document|Cloud Backup|Auto Upload Document|Share To "
            "Me|Share With Me|My Share|Share Link|Desktop Backup|微信文档|腾讯文档||应用|备份中心|"
            "Zento网盘|My Cloud|",
            "|我的云文档|团队文档|漫游文档|云端备份|自动上传文档|共享给我|与我共享|我的分享|分享链"
            "接|桌面文档|微信文档|腾讯文档||应用|备份中心|Zento网盘|Zento云文档|");
        row("99 to 104", 99, 104,
            "|Personal Space|Roaming Box|Document Roaming|My Nimbo Address|Auto Uploaded",
            "|私人空间|漫游箱|文档漫游|我收到的Nimbo地址|我的设备");
        row("106 to 108", 106, 108, "企业文档|桌面|", "企业文档|桌面|");
        row("199 to 201", 199, 201, "|Cloud Document Introduction|", "|云文档使用简介|");
        row("299 to 306", 299, 306, "|Invalid|雷达备份|我的桌面|微信接收|QQ接收|我的下载|",
            "|我的文档|雷达备份|我的桌面|微信接收|QQ接收|我的下载|");
        row("largest", INT_MAX, INT_MAX, "", "");
    }

    void folderNames()
    {
        QFETCH(int, first);
        QFETCH(int, last);
        QFETCH(QString, international);
        QFETCH(QString, domestic);

        const auto names = [&](bool overseas) {
            krt::hostcontrol::setOverseasVersion(overseas); // asked on every call
            QStringList list;
            for (qint64 kind = first; kind <= last; ++kind)
                list.append(cloudFileNodeName(CloudFileNodeType(kind)));
            return list.join('|');
        };
        QCOMPARE(names(true), international);
        QCOMPARE(names(false), domestic);
    }

    // --- desktop sync switches ------------------------------------------

    void syncSwitches_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<bool>("expected");
        QTest::newRow("nothing stored: user off, server on") << QVariant() << false;
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

        writeNimboUserInfoRegValue("userid", "12345");
        for (const char* name :
             {"usercenter/12345/desksync/switch", "enableDesktopSyncEx", "enableV5Metadata"})
            if (stored.isValid())
                writeNimboRegValue(name, stored);
        QCOMPARE(desktopSyncSwitchOn(), expected);
        const QString server = stored.isValid() && !expected ? "false false" : "true true";
        QCOMPARE(probe({"syncSwitches"}), QStringList{server});
        QVERIFY(!zentoboxDesktopSyncEnable());
    }

    void userSwitchFollowsTheUser()
    {
        writeNimboRegValue("usercenter/12345/desksync/switch", "1");
        writeNimboRegValue("usercenter/777/desksync/switch", "0");
        QVERIFY(!desktopSyncSwitchOn()); // nobody signed in
        writeNimboUserInfoRegValue("userid", "12345");
        QVERIFY(desktopSyncSwitchOn());
        writeNimboUserInfoRegValue("userid", "777");
        QVERIFY(!desktopSyncSwitchOn());
    }
};

QTEST_GUILESS_MAIN(TestCommIdentity)
#include "tst_commidentity.moc"
