// The stand-in host: layered configuration, the profile file, the
// krt::auth wrappers without a plug-in, and the watchdog of
// the event loop. The test thread blocks until the watchdog has seen what a
// row expects, so nothing here depends on how fast the machine is.

#include "kblockingwait.h"
#include "ktestenvironment.h"

#include <vex/klongtimeblockdetector.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/kdcinfoc.h>
#include <vexlite/kdcinfocdetail.h>
#include <vexlite/krtauth.h>
#include <vexlite/krtconfigs.h>
#include <vexlite/krtinfo.h>
#include <vexlite/krtproduct.h>
#include <vexlite/kuwpcommonsettings.h>
#include <vexlite/kxuseragentutil.h>

#include <QThread>
#include <QtTest>

using namespace krt::hostcontrol;

class TestHost : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KLongTimeBlockDetector m_detector;
    static constexpr int kThreshold = 100;

    bool writeProfile(const QByteArray& json) const
    {
        QFile file(m_env.profilePath() + "/host.json");
        return file.open(QIODevice::WriteOnly) && file.write(json) == json.size();
    }

private slots:
    void init() { m_env.resetHost(); }

    void configLayers_data()
    {
        QTest::addColumn<unsigned>("layers");
        QTest::addColumn<unsigned>("mask");
        QTest::addColumn<QString>("expected");

        // Each layer holds the text of its own name; the highest admitted wins.
        QTest::newRow("policy over all") << 0x1Fu << 27u << "policy";
        QTest::newRow("user over machine, mask 31") << 0x06u << 31u << "user";
        QTest::newRow("user left out by mask 27") << 0x06u << 27u << "machine";
        QTest::newRow("server over user") << 0x0Cu << 31u << "server";
        QTest::newRow("builtin only") << 0x01u << 27u << "builtin";
        QTest::newRow("bits above the layers") << 0x02u << 0xFFFFFFE0u << "";
    }

    void configLayers()
    {
        QFETCH(unsigned, layers);
        QFETCH(unsigned, mask);
        QFETCH(QString, expected);

        const QStringList names{"builtin", "machine", "user", "server", "policy"};
        for (int bit = 0; bit < names.size(); ++bit) {
            if (layers & (1u << bit))
                setConfigValue(ConfigLayer(1u << bit), "k", names[bit]);
        }
        QCOMPARE(krt::configs::getValue("k", mask).toString(), expected);
        QCOMPARE(krt::configs::getValue("k", mask).isNull(), expected.isEmpty());
        setConfigValue(PolicyLayer, "k", QVariant()); // a null value removes it
        QVERIFY(!krt::configs::getValue("k", PolicyLayer).isValid());
    }

    // What a profile file holds, and the same again after it was saved
    // elsewhere, emptied and loaded from there.
    void profileRoundTrip()
    {
        QByteArray json =
            "{ 'product': { 'overseas': true, 'strings': { 'JumpUrl': 'https://j.example/' },"
            "    'features': { 'SimplifiedUserCenter': true, 'IntranetVersion': false } },"
            "  'configs': { 'user': { 'Product/HomePage': '', 'Count': 3 },"
            "               'server': { 'Product/HelpPage': 'h' } },"
            "  'info': { 'version': '12.1.0.17890', 'installUuid': 'U', 'hdid': 'H', 'mc': 'M',"
            "            'userAgent': 'A', 'uwpInfoGUID': 'G' },"
            "  'i18n': { 'language': 'zh_CN' } }";
        QVERIFY(writeProfile(json.replace('\'', '"')));
        const QString saved = m_env.rootPath() + "/saved";
        for (const QString& dir : {m_env.profilePath(), saved}) {
            QString error;
            QVERIFY2(loadProfile(dir, &error), qPrintable(error));
            const QStringList values{krt::product::getString("JumpUrl"),
                                     krt::product::getString("Missing"),
                                     language(),
                                     krt::configs::getValue("Product/HomePage", 31).typeName(),
                                     krt::configs::getValue("Count", 31).typeName(),
                                     krt::configs::getValue("Product/HelpPage", 27).toString(),
                                     krt::info::version(),
                                     KDcInfoC::getVersion(),
                                     KDcInfoCDetail::getUuid(),
                                     KDcInfoCDetail::getHdid(),
                                     krt::info::installHdId(),
                                     KDcInfoC::getMC(),
                                     KxUserAgentUtil::getUserAgent(),
                                     krt::KUWPCommonSettings().value("infoGUID").toString()};
            QCOMPARE(values,
                     QStringList({"https://j.example/", "", "zh_CN", "QString", "int", "h",
                                  "12.1.0.17890", "12.1.0.17890", "U", "H", "H", "M", "A", "G"}));
            QVERIFY(krt::product::isOverseasVersion());
            QVERIFY(krt::product::isSupported("SimplifiedUserCenter"));
            QVERIFY(!krt::product::isSupported("IntranetVersion"));
            QVERIFY(!krt::product::isSupported("Unknown"));
            QVERIFY(saveProfile(saved, &error));
            resetProfile();
        }
    }

    void loading_data()
    {
        QTest::addColumn<QString>("dir");        // "": the suite's profile folder
        QTest::addColumn<QByteArray>("content"); // written to its host.json unless empty
        QTest::addColumn<QString>("error");      // part of the error; "": loads
        QTest::newRow("shipped") << QCoreApplication::applicationDirPath() + "/profile"
                                 << QByteArray() << "";
        QTest::newRow("missing file") << "" << QByteArray() << "cannot read host profile";
        QTest::newRow("array") << "" << QByteArray("[1, 2]") << "is not a JSON object";
    }

    void loading()
    {
        QFETCH(QString, dir);
        QFETCH(QByteArray, content);
        QFETCH(QString, error);

        if (dir.isEmpty()) {
            dir = m_env.profilePath();
            QFile::remove(dir + "/host.json");
            QVERIFY(content.isEmpty() || writeProfile(content));
        }
        setProductString("JumpUrl", "https://stale.example/");
        QString message;
        QCOMPARE(loadProfile(dir, &message), error.isEmpty());
        QVERIFY2(message.contains(error) && message.contains(error.isEmpty() ? "" : dir),
                 qPrintable(message));
        // A failed load leaves an empty host, not the previous state.
        QCOMPARE(krt::product::getString("JumpUrl").isEmpty(), !error.isEmpty());
    }

    void wrappersWithoutHandler()
    {
        QVERIFY(krt::auth::getInfo("Product/VexName").isNull());
        QCOMPARE(krt::auth::getStringInfo("Product/VexName", "fallback"), QString("fallback"));
        QCOMPARE(krt::auth::getIntInfo("Auth/Anything", 7), 7);
        QCOMPARE(krt::auth::getBoolInfo("Support/Anything", true), true);
        // With nobody to ask, the host goes on with every command.
        QVERIFY(krt::auth::prehook("OpenUserCenter", false, nullptr));
        QVERIFY(krt::auth::prehook("OpenEnterpriseCenter", nullptr, nullptr));
        QCOMPARE(executedCommands(), QStringList({"OpenUserCenter", "OpenEnterpriseCenter"}));
    }

    // Steps: "ignore"/"release" switch ignoring, "hold" blocks for two
    // thresholds, "reported"/"suppressed" block until the watchdog has
    // counted one more such block, "serve" keeps the loop running, "stop"
    // and "start" the watchdog.
    void blocks_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<int>("reports");
        QTest::addColumn<int>("suppressed");

        QTest::newRow("unguarded block") << "reported" << 1 << 0;
        QTest::newRow("one report per block") << "reported hold hold" << 1 << 0;
        QTest::newRow("loop kept running") << "serve" << 0 << 0;
        QTest::newRow("nested guards") << "ignore ignore suppressed release hold release" << 0 << 1;
        QTest::newRow("block outlasting its guard")
            << "ignore suppressed release reported" << 1 << 1;
        QTest::newRow("release without a guard") << "release ignore suppressed release" << 0 << 1;
        QTest::newRow("stopped") << "stop hold hold start" << 0 << 0;
    }

    void blocks()
    {
        QFETCH(QString, steps);
        QFETCH(int, reports);
        QFETCH(int, suppressed);

        m_detector.setThreshold(kThreshold);
        m_detector.start();
        QTest::qWait(2 * kThreshold); // every pending ping answered
        const int reportsBefore = m_detector.reportCount();
        const int suppressedBefore = m_detector.suppressedCount();
        const auto count = [&](const QString& kind) {
            return kind == "reported" ? m_detector.reportCount() : m_detector.suppressedCount();
        };
        for (const QString& step : steps.split(' ')) {
            const int seen = count(step);
            if (step == "reported" || step == "suppressed")
                QVERIFY(blockUntil([&] { return count(step) > seen; }));
            else if (step == "ignore" || step == "release")
                m_detector.setIgnored(step == "ignore");
            else if (step == "hold")
                QThread::msleep(2 * kThreshold);
            else if (step == "serve")
                QTest::qWait(5 * kThreshold);
            else
                step == "stop" ? m_detector.stop() : m_detector.start();
        }
        QTest::qWait(2 * kThreshold);
        QCOMPARE(m_detector.reportCount() - reportsBefore, reports);
        QCOMPARE(m_detector.suppressedCount() - suppressedBefore, suppressed);
        QVERIFY(!m_detector.isIgnored());
    }
};

QTEST_GUILESS_MAIN(TestHost)
#include "tst_host.moc"
