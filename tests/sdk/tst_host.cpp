// The stand-in host beyond what the plug-in's suites exercise: numbers in
// the profile file, and the watchdog of the event loop that the helpers'
// guard switches off. The test thread blocks until the watchdog has seen
// what a row expects, so nothing here depends on how fast the machine is.

#include "kblockingwait.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <vex/klongtimeblockdetector.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/krtconfigs.h>

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

    // Whole numbers are kept as integers where they fit, every other number
    // stays real, whatever its size.
    void profileNumbers_data()
    {
        QTest::addColumn<QByteArray>("number");
        QTest::addColumn<QString>("expected"); // type and text
        const auto row = [](const char* number, const char* expected) {
            QTest::newRow(number) << QByteArray(number) << QString(expected);
        };
        row("-8", "int -8");
        row("1.5e3", "int 1500");                                      // whole, written as a real
        row("9007199254740993", "qlonglong 9007199254740993");         // beyond a real's precision
        row("-9223372036854775808", "qlonglong -9223372036854775808"); // smallest 64-bit
        row("9223372036854775808", "double 9223372036854776000");      // one past the largest
        row("-1e19", "double -1e+19");
        row("1e300", "double 1e+300");
        row("2.5", "double 2.5");
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
    // counted one more such block, "stop" and "start" the watchdog.
    void blocks_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<int>("reports");
        QTest::addColumn<int>("suppressed");
        QTest::newRow("one report per block") << "reported hold hold" << 1 << 0;
        QTest::newRow("nested guards, one released twice")
            << "release ignore ignore suppressed release hold release" << 0 << 1;
        QTest::newRow("block outlasting its guard")
            << "ignore suppressed release reported" << 1 << 1;
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
