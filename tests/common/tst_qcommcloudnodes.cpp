// Names of the cloud client's virtual folders: every kind of the table in
// both editions, the gaps and ends of each range, and the user's roaming
// name, read from the cloud store once per process.

#include "kcommprobe.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"

#include "common/qcommcloudnodes.h"
#include "common/qcommstores.h"

#include <vexlite/hostcontrol.h>

#include <QDir>
#include <QtTest>

#include <climits>

namespace {

QString base64Of(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

} // namespace

class TestQCommCloudNodes : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KTestAppDir m_appDir{m_env.rootPath()};
    KCommProbe m_probe{m_appDir};

private slots:
    void initTestCase() { QVERIFY(m_probe.isValid()); }

    void init() { m_env.resetHost(); }

    void names_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("international");
        QTest::addColumn<QString>("domestic");

        const auto row = [](int kind, const char* international, const char* domestic) {
            QTest::newRow(QByteArray::number(kind))
                << kind << QString::fromUtf8(international) << QString::fromUtf8(domestic);
        };
        const auto single = [&row](int kind, const char* name) { row(kind, name, name); };
        row(0, "My Cloud", "我的云文档");
        row(1, "Team Document", "团队文档");
        row(2, "Roaming Document", "漫游文档");
        row(3, "Cloud Backup", "云端备份");
        row(4, "Auto Upload Document", "自动上传文档");
        row(5, "Share To Me", "共享给我");
        row(6, "Share With Me", "与我共享");
        row(7, "My Share", "我的分享");
        row(8, "Share Link", "分享链接");
        row(9, "Desktop Backup", "桌面文档");
        single(10, "微信文档");
        single(11, "腾讯文档");
        single(12, "");
        single(13, "应用");
        single(14, "备份中心");
        single(15, "Zento网盘");
        row(16, "My Cloud", "Zento云文档");
        row(100, "Personal Space", "私人空间");
        row(101, "Roaming Box", "漫游箱");
        row(102, "Document Roaming", "文档漫游");
        row(103, "My Nimbo Address", "我收到的Nimbo地址");
        row(104, "Auto Uploaded", "我的设备");
        single(106, "企业文档");
        single(107, "桌面");
        row(200, "Cloud Document Introduction", "云文档使用简介");
        row(300, "Invalid", "我的文档");
        single(301, "雷达备份");
        single(302, "我的桌面");
        single(303, "微信接收");
        single(304, "QQ接收");
        single(305, "我的下载");
        for (int gap : {INT_MIN, -1, 17, 50, 99, 108, 150, 199, 201, 250, 299, 306, 1000, INT_MAX})
            single(gap, "");
    }

    void names()
    {
        QFETCH(int, kind);
        QFETCH(QString, international);
        QFETCH(QString, domestic);

        const auto type = static_cast<QComm::CloudFileNodeType>(kind);
        // The edition is asked on every call.
        krt::hostcontrol::setOverseasVersion(true);
        QCOMPARE(QComm::cloudFileNodeName(type), international);
        krt::hostcontrol::setOverseasVersion(false);
        QCOMPARE(QComm::cloudFileNodeName(type), domestic);
    }

    void roamingName_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<bool>("overseas");
        QTest::addColumn<QString>("expected");

        const QString fallback = QString::fromUtf8("自动备份同步");
        const auto row = [](const char* tag, const QVariant& stored, bool overseas,
                            const QString& expected) {
            QTest::newRow(tag) << stored << overseas << expected;
        };
        const QString mine = QString::fromUtf8("我的漫游");
        row("nothing stored", QVariant(), false, fallback);
        row("nothing stored, international", QVariant(), true, fallback);
        row("stored name", base64Of(mine.toUtf8()), false, mine);
        row("stored name, international", base64Of("Sync Box"), true, "Sync Box");
        row("empty text", "", false, fallback);
        row("not Base64 at all", "!!!", false, fallback);
        row("up to a zero byte", base64Of(QByteArray("ab\0cd", 5)), false, "ab");
        row("zero byte first", base64Of(QByteArray("\0ab", 3)), false, fallback);
    }

    void roamingName()
    {
        QFETCH(QVariant, stored);
        QFETCH(bool, overseas);
        QFETCH(QString, expected);
        if (stored.isValid())
            QComm::writeNimboRegValue("NimboRoamingName", stored);
        krt::hostcontrol::setOverseasVersion(overseas);
        QCOMPARE(m_probe.runText({"cloudFileNodeName", "105"}), QStringList{expected});
    }

    void roamingNameIsKeptForTheProcess()
    {
        QComm::writeNimboRegValue("NimboRoamingName", base64Of(QString::fromUtf8("甲").toUtf8()));
        QCOMPARE(QComm::cloudFileNodeName(QComm::NodeRoamingName), QString::fromUtf8("甲"));
        QComm::writeNimboRegValue("NimboRoamingName", base64Of(QString::fromUtf8("乙").toUtf8()));
        QCOMPARE(QComm::cloudFileNodeName(QComm::NodeRoamingName), QString::fromUtf8("甲"));
        QCOMPARE(m_probe.runText({"cloudFileNodeName", "105"}),
                 QStringList{QString::fromUtf8("乙")});
    }
};

QTEST_GUILESS_MAIN(TestQCommCloudNodes)
#include "tst_qcommcloudnodes.moc"
