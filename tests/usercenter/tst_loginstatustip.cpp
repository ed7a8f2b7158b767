// The login status tip: where it places itself, its timer, its painting,
// and the cloud client's four error signals raised through the simulator's
// state file ("emit").

#include "ksimulatorstate.h"
#include "ktestenvironment.h"

#include "kloginstatustipwidget.h"

#include <vex/kresourcescheme.h>
#include <vexlite/hostcontrol.h>

#include <QTimer>
#include <QtTest>

#include <memory>

using namespace AuthTest;

class TestLoginStatusTip : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KSimulatorState m_state{m_env.rootPath()};
    std::unique_ptr<QWidget> m_container;
    QWidget* m_button = nullptr;

    // A tip on a 60 x 24 button at offset in a shown container.
    KLoginStatusTipWidget* makeTip(QPoint offset = QPoint())
    {
        m_container = std::make_unique<QWidget>();
        m_container->setGeometry(100, 50, 300, 100);
        m_button = new QWidget(m_container.get());
        m_button->setGeometry(QRect(offset, QSize(60, 24)));
        m_container->show();
        return new KLoginStatusTipWidget(m_button);
    }

private slots:
    void init()
    {
        m_env.resetHost();
        krt::hostcontrol::setDisplayScale(1.0);
        KResourceScheme::install();
    }

    void cleanup() { m_container.reset(); }

    // Below the button's position mapped through the button itself: for a
    // button away from its container's origin, shifted by its offset once
    // more (at the origin, right below it).
    void placement()
    {
        const QPoint offset(30, 10);
        KLoginStatusTipWidget* tip = makeTip(offset);
        tip->showTip("x");
        QCOMPARE(tip->pos(), m_button->mapToGlobal(QPoint(0, 24)) + offset);
        QVERIFY(tip->isVisible() && tip->windowType() == Qt::Tool &&
                tip->testAttribute(Qt::WA_TranslucentBackground));
    }

    void messages_data()
    {
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<QString>("text");

        QTest::newRow("process did not start")
            << QByteArray("failedToLaunchCloudsvrProcess") << "Failed to launch Nimbo process";
        QTest::newRow("process failed")
            << QByteArray("cloudsvrExitWithErrors:disk full") << "disk full";
        QTest::newRow("IPC error") << QByteArray("occurIpcErrorsWhenGetUserInf")
                                   << "IPC errors occured when Get login information";
        QTest::newRow("RPC error") << QByteArray("occurRpcErrorsWhenGetUserInf")
                                   << "RPC errors occured when Get login information";
    }

    // Each signal shows its message for 8 s, in a tip connected to its
    // object; a tip connected to the other object's signals stays hidden.
    void messages()
    {
        QFETCH(QByteArray, signal);
        QFETCH(QString, text);

        makeTip();
        auto* process = new KLoginStatusTipWidget(m_button);
        process->initLoginStatusOption();
        auto* sync = new KLoginStatusTipWidget(m_button);
        sync->initSyncLoginInfOption();
        QVERIFY(m_state.set("{\"emit\": [\"" + signal + "\"]}"));
        KLoginStatusTipWidget* shown = signal.startsWith("occur") ? sync : process;
        QCOMPARE(shown->text(), text);
        QVERIFY(shown->hideTimer()->isActive() && shown->hideTimer()->interval() == 8000);
        QVERIFY(shown->isVisible() && (process->isVisible() != sync->isVisible()));
    }

    // While it shows, a second message changes neither text nor timer; a
    // new show starts from the full 8 s; running out hides it. clearTimer()
    // leaves a timer that is not running alone and takes a running one away.
    void timer()
    {
        KLoginStatusTipWidget* tip = makeTip();
        QTimer* timer = tip->hideTimer();
        tip->showTipForAWhile("first");
        QTRY_VERIFY(timer->remainingTime() < 7900);
        const int left = timer->remainingTime();
        tip->showTipForAWhile("second");
        tip->showTip("third");
        QVERIFY(tip->text() == "first" && timer->remainingTime() <= left);
        tip->hideTip();
        tip->showTipForAWhile("fourth");
        QVERIFY(tip->text() == "fourth" && timer->remainingTime() > 7900);
        tip->hideTip();
        timer->setInterval(30); // to see it run out
        tip->showTipForAWhile("fifth");
        QTRY_VERIFY(!tip->isVisible());
        QVERIFY(!timer->isActive());
        tip->clearTimer();
        QCOMPARE(tip->hideTimer(), timer);
        tip->showTipForAWhile("sixth");
        const QPointer<QTimer> running = timer;
        tip->clearTimer();
        QVERIFY(!running && !tip->hideTimer());
        tip->hideTip();
        tip->showTipForAWhile("no timer");
        QVERIFY(tip->isVisible());
    }

    void painting_data()
    {
        QTest::addColumn<qreal>("scale");

        QTest::newRow("100 %") << 1.0;
        QTest::newRow("200 %") << 2.0;
    }

    // The background over the scaled 211 x 53; the text at 12 px with its
    // baseline at (45, 41), scaled.
    void painting()
    {
        QFETCH(qreal, scale);

        krt::hostcontrol::setDisplayScale(scale);
        KLoginStatusTipWidget* tip = makeTip();
        QVERIFY(tip->size() == QSize(211, 53) * scale && tip->sizeHint() == tip->size());
        const auto paint = [tip] {
            QImage image(tip->size(), QImage::Format_ARGB32);
            image.fill(Qt::transparent);
            tip->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
            return image;
        };
        tip->setBackgroundPixmap("res:/no/such.png");
        tip->showTip("HHHH");
        const QImage text = paint();
        QRect ink;
        for (int y = 0; y < text.height(); ++y) {
            for (int x = 0; x < text.width(); ++x)
                ink |= qAlpha(text.pixel(x, y)) > 128 ? QRect(x, y, 1, 1) : QRect();
        }
        QVERIFY(qAbs(ink.left() - 45 * scale) <= 2 * scale);
        QVERIFY(qAbs(ink.bottom() + 1 - 41 * scale) <= scale);
        QVERIFY(ink.height() >= 7 * scale && ink.height() <= 10 * scale); // capitals of 12 px

        tip->setBackgroundPixmap("res:/resource/zentodeskhive/abnormalLogingStatus.png");
        const QImage balloon = paint();
        QCOMPARE(balloon.pixelColor(int(150 * scale), int(20 * scale)), QColor(Qt::white));
        QCOMPARE(qAlpha(balloon.pixel(int(150 * scale), int(2 * scale))), 0);
        const QColor rim = balloon.pixelColor(int(150 * scale), balloon.height() - 1);
        QVERIFY(rim.alpha() > 200 && rim.red() < 230);
    }
};

QTEST_MAIN(TestLoginStatusTip)
#include "tst_loginstatustip.moc"
