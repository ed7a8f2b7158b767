// The login status tip: where it places itself (also at the screen's right
// and bottom edges), its timer, its painting (also of texts that do not fit
// the described box), and the cloud client's four error signals raised
// through the simulator's state file ("emit").

#include "ksimulatorstate.h"
#include "ktestenvironment.h"
#include "kwidgetpixels.h"

#include "kloginstatustipwidget.h"

#include <vex/kresourcescheme.h>
#include <vexlite/hostcontrol.h>

#include <QAccessible>
#include <QScreen>
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

    // A tip on a 60 x 24 button at offset in a shown container whose
    // top-left corner is at `at` on the 800 x 600 offscreen screen.
    KLoginStatusTipWidget* makeTip(QPoint offset = QPoint(), QPoint at = QPoint(100, 50))
    {
        m_container = std::make_unique<QWidget>();
        m_container->setGeometry(QRect(at, QSize(300, 100)));
        m_button = new QWidget(m_container.get());
        m_button->setGeometry(QRect(offset, QSize(60, 24)));
        m_container->show();
        return new KLoginStatusTipWidget(m_button);
    }

    static QImage paint(QWidget* tip) { return KWidgetPixels::paint(tip, Qt::transparent); }
    static QRect ink(const QImage& image)
    {
        return KWidgetPixels::inkBounds(image, Qt::transparent);
    }

private slots:
    void init()
    {
        m_env.resetHost();
        krt::hostcontrol::setDisplayScale(1.0);
        KResourceScheme::install();
    }

    void cleanup() { m_container.reset(); }

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
        // Assistive tools meet it as an alert, named by its message.
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(shown);
        QVERIFY(accessible->role() == QAccessible::AlertMessage &&
                accessible->text(QAccessible::Name) == text);
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

    // scale, the container's top-left, the button's offset in it, the text;
    // where the tip is placed and how many lines the text takes (1: the
    // described box; 0: more than the screen holds).
    void showTip_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<QPoint>("at");
        QTest::addColumn<QPoint>("offset");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("placed");
        QTest::addColumn<int>("lines");

        const QString offline = "abnormal network status, turn to be offline status";
        const auto row = [](const char* tag, qreal scale, QPoint at, QPoint offset,
                            const QString& text, const char* placed, int lines) {
            QTest::newRow(tag) << scale << at << offset << text << QString(placed) << lines;
        };
        const QPoint room(100, 50);
        row("100 %, button away from the origin", 1.0, room, QPoint(30, 10), "HHHH", "described",
            1);
        row("200 %", 2.0, room, QPoint(), "HHHH", "described", 1);
        row("Chinese, 150 %", 1.5, room, QPoint(), "网络异常，已转为离线状态", "described", 1);
        row("long, 100 %", 1.0, room, QPoint(), offline, "described", 2);
        row("long, 150 %", 1.5, room, QPoint(), "IPC errors occured when Get login information",
            "described", 2);
        row("grown at 200 %", 2.0, room, QPoint(), offline, "described", 2);
        row("a word longer than the box", 1.0, room, QPoint(), QString(60, 'W'), "described", 3);
        row("endless", 2.0, room, QPoint(), QString("word ").repeated(4000), "", 0);
        row("right edge", 1.0, QPoint(740, 50), QPoint(), "x", "moved left", 1);
        row("right edge, grown", 2.0, QPoint(700, 50), QPoint(), offline, "moved left", 2);
        // 24 pixels above the screen's bottom (the offscreen screen is 600
        // high on Qt 5, 800 on Qt 6).
        const int low = QGuiApplication::primaryScreen()->availableGeometry().bottom() - 23;
        row("bottom edge", 1.0, QPoint(100, low), QPoint(), "x", "above", 1);
        row("bottom-right corner, grown", 2.0, QPoint(700, low), QPoint(), offline,
            "above, moved left", 2);
    }

    // Placed below the button's position mapped through the button itself
    // (for a button away from its container's origin, shifted by its offset
    // once more), while that is on the screen. Else moved left into the
    // screen, or above the button, the pointer still where it would have
    // been. Where the text fits, the background over the scaled 211 x 53 and
    // the text at 12 px with its baseline at (45, 41), scaled. Where it does
    // not, a wider box, then a line taller for each line it wraps into, the
    // text starting at the same point and kept clear of the edges, the
    // background stretched around it; never taller than the screen.
    void showTip()
    {
        QFETCH(qreal, scale);
        QFETCH(QPoint, at);
        QFETCH(QPoint, offset);
        QFETCH(QString, text);
        QFETCH(QString, placed);
        QFETCH(int, lines);

        krt::hostcontrol::setDisplayScale(scale);
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        KLoginStatusTipWidget* tip = makeTip(offset, at);
        tip->showTip(text);
        QVERIFY(tip->isVisible() && tip->windowType() == Qt::Tool &&
                tip->testAttribute(Qt::WA_TranslucentBackground));
        QVERIFY(screen.contains(tip->geometry()));
        QCOMPARE(tip->sizeHint(), tip->size());
        if (!placed.isEmpty()) {
            const QPoint below = m_button->mapToGlobal(QPoint(0, 24)) + offset;
            const QRect button(m_button->mapToGlobal(QPoint()), m_button->size());
            if (placed == "described")
                QCOMPARE(tip->pos(), below);
            QCOMPARE(tip->x() < below.x(), placed.contains("left"));
            QCOMPARE(tip->y(), placed.contains("above") ? button.top() - tip->height() : below.y());
            // The pointer's middle, where it would have been, and its far end.
            const QImage image = paint(tip);
            const int x = below.x() + int(22 * scale) - tip->x();
            const int near =
                placed.contains("above") ? tip->height() - int(5 * scale) : int(5 * scale);
            const int far = placed.contains("above") ? tip->height() - 1 : 0;
            QVERIFY(qAlpha(image.pixel(x, near)) == 255);
            QVERIFY(qAlpha(image.pixel(x - int(7 * scale), far)) == 0);
            if (placed == "moved left") // and not where it was
                QCOMPARE(qAlpha(image.pixel(int(22 * scale), int(5 * scale))), 0);
        }

        if (placed.contains("above")) // the balloon turned over: its pointer below
            return;
        tip->setBackgroundPixmap("res:/no/such.png");
        const QSize described = QSize(211, 53) * scale;
        const QRect text_ = ink(paint(tip));
        QVERIFY(qAbs(text_.left() - 45 * scale) <= 2 * scale);
        if (lines == 1) {
            QCOMPARE(tip->size(), described);
            QVERIFY(text_.height() <= 13 * scale); // one line of 12 px
            if (text == "HHHH")
                QVERIFY(qAbs(text_.bottom() + 1 - 41 * scale) <= scale);
        } else {
            QVERIFY(tip->width() >= described.width() && tip->width() <= 320 * scale);
            QVERIFY(text_.right() < tip->width() - 8 * scale);
            QVERIFY(text_.bottom() < tip->height() - 8 * scale);
            QVERIFY(text_.top() > 25 * scale);
            const int each = (tip->height() - described.height()) / qMax(1, lines - 1);
            if (lines)
                QVERIFY(tip->height() > described.height() && each > 12 * scale &&
                        each < 20 * scale);
            else
                QVERIFY(tip->height() > screen.height() - 100 && tip->height() <= screen.height());
        }

        tip->setBackgroundPixmap("res:/resource/zentodeskhive/abnormalLogingStatus.png");
        const QImage balloon = paint(tip);
        const int w = balloon.width(), h = balloon.height();
        QCOMPARE(balloon.pixelColor(w - int(8 * scale), int(20 * scale)), QColor(Qt::white));
        QCOMPARE(balloon.pixelColor(w - int(8 * scale), h - int(6 * scale)), QColor(Qt::white));
        QCOMPARE(qAlpha(balloon.pixel(w - int(8 * scale), int(2 * scale))), 0);
        for (const QPoint rim : {QPoint(w / 2, h - 1), QPoint(w - 1, h / 2)}) {
            const QColor colour = balloon.pixelColor(rim);
            QVERIFY(colour.alpha() > 200 && colour.red() < 230);
        }
    }
};

QTEST_MAIN(TestLoginStatusTip)
#include "tst_loginstatustip.moc"
