// The watchdog of the application's event loop: one report per block, none
// while the loop runs, and ignoring that nests and never reports the part of
// a block it covered. The test thread blocks until the detector has seen what
// a row expects, so nothing here depends on how fast the machine is.

#include "kblockingwait.h"

#include <vex/klongtimeblockdetector.h>

#include <QDeadlineTimer>
#include <QThread>
#include <QtTest>

namespace {
constexpr int kThreshold = 100;
} // namespace

class TestKLongTimeBlockDetector : public QObject
{
    Q_OBJECT

    KLongTimeBlockDetector m_detector;

    // Serves the loop long enough for every pending ping to be answered.
    void answer() { QTest::qWait(2 * kThreshold); }

private slots:
    void initTestCase()
    {
        m_detector.setThreshold(kThreshold);
        QCOMPARE(m_detector.threshold(), kThreshold);
        m_detector.start();
        QVERIFY(m_detector.isRunning());
    }

    void init()
    {
        while (m_detector.isIgnored())
            m_detector.setIgnored(false);
        answer();
    }

    void blocks_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<int>("reports");
        QTest::addColumn<int>("suppressed");

        QTest::newRow("unguarded block") << QStringList{"untilReported", "answer"} << 1 << 0;
        QTest::newRow("one report per block")
            << QStringList{"untilReported", "hold", "hold", "answer"} << 1 << 0;
        QTest::newRow("two blocks")
            << QStringList{"untilReported", "answer", "untilReported", "answer"} << 2 << 0;
        QTest::newRow("loop kept running") << QStringList{"serve"} << 0 << 0;
        QTest::newRow("guarded block")
            << QStringList{"ignore", "untilSuppressed", "hold", "release", "answer"} << 0 << 1;
        QTest::newRow("block outlasting its guard")
            << QStringList{"ignore", "untilSuppressed", "release", "untilReported", "answer"} << 1
            << 1;
        QTest::newRow("nested guards, inner one released")
            << QStringList{"ignore", "ignore", "untilSuppressed", "release",
                           "hold",   "hold",   "release",         "answer"}
            << 0 << 1;
        QTest::newRow("release without a guard changes nothing")
            << QStringList{"release", "ignore", "untilSuppressed", "release", "answer"} << 0 << 1;
        QTest::newRow("guard around a running loop")
            << QStringList{"ignore", "serve", "release", "serve"} << 0 << 0;
    }

    void blocks()
    {
        QFETCH(QStringList, steps);
        QFETCH(int, reports);
        QFETCH(int, suppressed);

        const int reportsBefore = m_detector.reportCount();
        const int suppressedBefore = m_detector.suppressedCount();
        for (const QString& step : steps) {
            if (step == "ignore") {
                m_detector.setIgnored(true);
            } else if (step == "release") {
                m_detector.setIgnored(false);
            } else if (step == "untilReported") {
                const int seen = m_detector.reportCount();
                QVERIFY(blockUntil([&] { return m_detector.reportCount() > seen; }));
            } else if (step == "untilSuppressed") {
                const int seen = m_detector.suppressedCount();
                QVERIFY(blockUntil([&] { return m_detector.suppressedCount() > seen; }));
            } else if (step == "hold") {
                QThread::msleep(2 * kThreshold);
            } else if (step == "serve") {
                const QDeadlineTimer deadline(5 * kThreshold);
                while (!deadline.hasExpired())
                    QTest::qWait(10);
            } else if (step == "answer") {
                answer();
            }
        }
        QCOMPARE(m_detector.reportCount() - reportsBefore, reports);
        QCOMPARE(m_detector.suppressedCount() - suppressedBefore, suppressed);
        QVERIFY(!m_detector.isIgnored());
    }

    void reportReachesTheLoopAfterTheBlock()
    {
        QList<int> received;
        connect(&m_detector, &KLongTimeBlockDetector::blockDetected, this,
                [&](int milliseconds) { received.append(milliseconds); });
        const int seen = m_detector.reportCount();
        QVERIFY(blockUntil([&] { return m_detector.reportCount() > seen; }));
        QVERIFY(received.isEmpty()); // queued to this thread, which is still blocked
        QTRY_COMPARE(received.size(), 1);
        QVERIFY(received.first() >= kThreshold);
        disconnect(&m_detector, nullptr, this, nullptr);
        answer();
    }

    void stoppedDetectorReportsNothing()
    {
        m_detector.stop();
        QVERIFY(!m_detector.isRunning());
        const int seen = m_detector.reportCount();
        QThread::msleep(3 * kThreshold);
        QCOMPARE(m_detector.reportCount(), seen);

        m_detector.start();
        QVERIFY(blockUntil([&] { return m_detector.reportCount() > seen; }));
        answer();
    }

    void destroyedWhileAPingIsPending()
    {
        auto* detector = new KLongTimeBlockDetector;
        detector->setThreshold(1);
        detector->start();
        QThread::msleep(20);
        delete detector; // its unanswered pings must not reach a dead object
        QTest::qWait(20);
    }
};

QTEST_GUILESS_MAIN(TestKLongTimeBlockDetector)
#include "tst_klongtimeblockdetector.moc"
