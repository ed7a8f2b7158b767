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

    // A button of 60 x 24 at offset inside a shown container at (100, 50).
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
    void initTestCase()
    {
        KResourceScheme::install();
        QVERIFY(KDeskhiveLib::instance()->nimboClientInstance());
    }

    void init()
    {
        m_env.resetHost();
        krt::hostcontrol::setDisplayScale(1.0);
    }

    void cleanup() { m_container.reset(); }

    void placement_data()
    {
        QTest::addColumn<QPoint>("offset");

        QTest::newRow("button at its container's origin") << QPoint(0, 0);
        QTest::newRow("button away from the origin") << QPoint(30, 10);
    }

    // Below the button's position mapped through the button itself: right
    // below it at the origin, shifted by the offset again elsewhere.
    void placement()
    {
        QFETCH(QPoint, offset);

        KLoginStatusTipWidget* tip = makeTip(offset);
        tip->showTip("x");
        QVERIFY(tip->isVisible());
        QCOMPARE(tip->pos(), m_button->mapToGlobal(QPoint(0, 24)) + offset);
        QCOMPARE(tip->size(), QSize(211, 53));
        QVERIFY(tip->windowFlags().testFlag(Qt::FramelessWindowHint) &&
                tip->windowType() == Qt::Tool && tip->testAttribute(Qt::WA_TranslucentBackground));
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

    // Each client signal shows its message for 8 s; a tip connected to the
    // other object's signals stays hidden.
    void messages()
    {
        QFETCH(QByteArray, signal);
        QFETCH(QString, text);

        makeTip();
        auto* both = new KLoginStatusTipWidget(m_button);
        both->initLoginStatusOption();
        both->initSyncLoginInfOption();
        auto* process = new KLoginStatusTipWidget(m_button);
        process->initLoginStatusOption();
        auto* sync = new KLoginStatusTipWidget(m_button);
        sync->initSyncLoginInfOption();
        QVERIFY(m_state.set("{\"emit\": [\"" + signal + "\"], \"n\": \"" + QTest::currentDataTag() +
                            "\"}"));
        QVERIFY(both->isVisible());
        QCOMPARE(both->text(), text);
        QVERIFY(both->hideTimer()->isActive());
        QCOMPARE(both->hideTimer()->interval(), 8000);
        const bool fromProcess = !signal.startsWith("occur");
        QCOMPARE(process->isVisible(), fromProcess);
        QCOMPARE(sync->isVisible(), !fromProcess);
    }

    // While it shows, a second message changes neither text nor timer.
    void secondErrorChangesNothing()
    {
        KLoginStatusTipWidget* tip = makeTip();
        tip->showTipForAWhile("first");
        QTRY_VERIFY(tip->hideTimer()->remainingTime() < 7990);
        const int left = tip->hideTimer()->remainingTime();
        tip->showTipForAWhile("second");
        tip->showTip("third");
        QCOMPARE(tip->text(), QString("first"));
        QVERIFY(tip->hideTimer()->remainingTime() <= left);
    }

    // A new show starts the timer from the full 8 s again; the timer hides.
    void timerRestarts()
    {
        KLoginStatusTipWidget* tip = makeTip();
        tip->showTipForAWhile("first");
        QTRY_VERIFY(tip->hideTimer()->remainingTime() < 7900);
        tip->hideTip();
        tip->showTipForAWhile("second");
        QCOMPARE(tip->text(), QString("second"));
        QVERIFY(tip->hideTimer()->remainingTime() > 7900);
        // Hides when it runs out (shortened here to see it happen).
        tip->hideTip();
        tip->hideTimer()->setInterval(30);
        tip->showTipForAWhile("third");
        QTRY_VERIFY(!tip->isVisible());
        QVERIFY(!tip->hideTimer()->isActive());
        // Without timer it stays.
        tip->showTip("fourth");
        QVERIFY(!tip->hideTimer()->isActive());
        QVERIFY(tip->isVisible());
    }

    void clearTimer_data()
    {
        QTest::addColumn<bool>("running");

        QTest::newRow("running: taken away") << true;
        QTest::newRow("not running: left alone") << false;
    }

    void clearTimer()
    {
        QFETCH(bool, running);

        KLoginStatusTipWidget* tip = makeTip();
        if (running)
            tip->showTipForAWhile("x");
        QPointer<QTimer> timer = tip->hideTimer();
        tip->clearTimer();
        QCOMPARE(timer.isNull(), running);
        QCOMPARE(tip->hideTimer() == nullptr, running);
        // Still shows, with a timer or without one.
        tip->hideTip();
        tip->showTipForAWhile("y");
        QVERIFY(tip->isVisible());
    }

    void painting_data()
    {
        QTest::addColumn<qreal>("scale");

        QTest::newRow("100 %") << 1.0;
        QTest::newRow("200 %") << 2.0;
    }

    // The background over the DPI-scaled 211 x 53, the text at 12 px with
    // its baseline at (45, 41), both scaled.
    void painting()
    {
        QFETCH(qreal, scale);

        krt::hostcontrol::setDisplayScale(scale);
        KLoginStatusTipWidget* tip = makeTip();
        QCOMPARE(tip->size(), QSize(211, 53) * scale);
        QCOMPARE(tip->sizeHint(), QSize(211, 53) * scale);
        const auto paint = [tip] {
            QImage image(tip->size(), QImage::Format_ARGB32);
            image.fill(Qt::transparent);
            tip->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
            return image;
        };
        // Text only where nothing of the background is: over transparency.
        tip->setBackgroundPixmap("res:/no/such.png");
        tip->showTip("HHHH");
        QImage text = paint();
        QRect ink;
        for (int y = 0; y < text.height(); ++y) {
            for (int x = 0; x < text.width(); ++x) {
                if (qAlpha(text.pixel(x, y)) > 128)
                    ink |= QRect(x, y, 1, 1);
            }
        }
        QVERIFY2(qAbs(ink.left() - 45 * scale) <= 2 * scale,
                 qPrintable(QString::number(ink.left())));
        QVERIFY(qAbs(ink.bottom() + 1 - 41 * scale) <= 1 * scale);
        // Capitals of 12 px stand about 9 px high.
        QVERIFY(ink.height() >= 7 * scale && ink.height() <= 10 * scale);

        // The balloon image fills the tip: its white body and grey rim.
        tip->setBackgroundPixmap("res:/resource/zentodeskhive/abnormalLogingStatus.png");
        const QImage balloon = paint();
        QCOMPARE(QColor(balloon.pixel(int(150 * scale), int(20 * scale))), QColor(Qt::white));
        QVERIFY(qAlpha(balloon.pixel(int(150 * scale), int(2 * scale))) == 0);
        const QColor rim = balloon.pixelColor(int(150 * scale), balloon.height() - 1);
        QVERIFY(rim.alpha() > 200 && rim.red() < 230);
    }
};

QTEST_MAIN(TestLoginStatusTip)
#include "tst_loginstatustip.moc"
