// The stand-in host: layered configuration, the profile file and the
// watchdog of the event loop. The test thread blocks until the watchdog has
// seen what a row expects, so nothing here depends on how fast the machine
// is.

#include "kblockingwait.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <vex/klongtimeblockdetector.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/kdcinfocdetail.h>
#include <vexlite/krtconfigs.h>
#include <vexlite/krtinfo.h>
#include <vexlite/krtproduct.h>
#include <vexlite/kuwpcommonsettings.h>
#include <vexlite/kxuseragentutil.h>

#include <QThread>
#include <QtTest>

using namespace AuthTest;
using namespace krt::hostcontrol;

class TestHost : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    static constexpr int kThreshold = 100;

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
    }

    // What a profile file holds, as the host answers it.
    void profileFile()
    {
        QByteArray json =
            "{ 'product': { 'overseas': true, 'strings': { 'JumpUrl': 'https://j.example/' } },"
            "  'configs': { 'user': { 'Product/HomePage': '', 'Count': 3 } },"
            "  'info': { 'version': '12.1', 'installUuid': 'U', 'hdid': 'H', 'userAgent': 'A',"
            "            'uwpInfoGUID': 'G' }, 'i18n': { 'language': 'zh_CN' } }";
        QVERIFY(KTestAppDir::write(m_env.profilePath() + "/host.json", json.replace('\'', '"')));
        QString error;
        QVERIFY2(loadProfile(m_env.profilePath(), &error), qPrintable(error));
        const QStringList values{krt::product::getString("JumpUrl"),
                                 language(),
                                 krt::configs::getValue("Product/HomePage", 31).typeName(),
                                 krt::configs::getValue("Count", 31).typeName(),
                                 krt::info::version(),
                                 KDcInfoCDetail::getUuid(),
                                 KDcInfoCDetail::getHdid(),
                                 KxUserAgentUtil::getUserAgent(),
                                 krt::KUWPCommonSettings().value("infoGUID").toString()};
        QCOMPARE(values, QStringList({"https://j.example/", "zh_CN", "QString", "int", "12.1", "U",
                                      "H", "A", "G"}));
        QVERIFY(krt::product::isOverseasVersion());
    }

    // Whole numbers are kept as integers where they fit, every other number
    // stays real, whatever its size.
    void profileNumbers_data()
    {
        QTest::addColumn<QByteArray>("number");
        QTest::addColumn<QString>("expected"); // type and text
        QTest::newRow("int") << QByteArray("-8") << "int -8";
        QTest::newRow("beyond int") << QByteArray("4294967296") << "qlonglong 4294967296";
        QTest::newRow("whole, written as a real") << QByteArray("1.5e3") << "int 1500";
        QTest::newRow("beyond a real's precision")
            << QByteArray("9007199254740993") << "qlonglong 9007199254740993";
        QTest::newRow("smallest 64-bit")
            << QByteArray("-9223372036854775808") << "qlonglong -9223372036854775808";
        QTest::newRow("largest 64-bit")
            << QByteArray("9223372036854775807") << "qlonglong 9223372036854775807";
        QTest::newRow("one past the largest")
            << QByteArray("9223372036854775808") << "double 9223372036854776000";
        QTest::newRow("1e19") << QByteArray("1e19") << "double 1e+19";
        QTest::newRow("-1e19") << QByteArray("-1e19") << "double -1e+19";
        QTest::newRow("1e300") << QByteArray("1e300") << "double 1e+300";
        QTest::newRow("fraction") << QByteArray("2.5") << "double 2.5";
    }

    void profileNumbers()
    {
        QFETCH(QByteArray, number);
        QFETCH(QString, expected);

        QVERIFY(KTestAppDir::write(m_env.profilePath() + "/host.json",
                                   R"({"configs": {"builtin": {"a": )" + number + "}}}"));
        QVERIFY(loadProfile(m_env.profilePath()));
        const QVariant value = krt::configs::getValue("a", 1);
        QCOMPARE(value.typeName() + (' ' + value.toString()), expected);
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

        KLongTimeBlockDetector detector;
        detector.setThreshold(kThreshold);
        detector.start();
        const auto count = [&](const QString& kind) {
            return kind == "reported" ? detector.reportCount() : detector.suppressedCount();
        };
        for (const QString& step : steps.split(' ')) {
            const int seen = count(step);
            if (step == "reported" || step == "suppressed")
                QVERIFY(blockUntil([&] { return count(step) > seen; }));
            else if (step == "ignore" || step == "release")
                detector.setIgnored(step == "ignore");
            else if (step == "hold")
                QThread::msleep(2 * kThreshold);
            else if (step == "serve")
                QTest::qWait(5 * kThreshold);
            else
                step == "stop" ? detector.stop() : detector.start();
        }
        QTest::qWait(2 * kThreshold); // every ping answered
        QCOMPARE(detector.reportCount(), reports);
        QCOMPARE(detector.suppressedCount(), suppressed);
        QVERIFY(!detector.isIgnored());
    }
};

QTEST_GUILESS_MAIN(TestHost)
#include "tst_host.moc"
