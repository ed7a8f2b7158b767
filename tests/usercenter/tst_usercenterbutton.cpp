// The title area's user-centre command and button on the cloud simulator,
// driven offscreen through real events (enter, moves, leave, presses, keys
// and the host's popup tracking event 32770) and painted into images.
// Without a client object: the cloud library suite's probe; which accounts
// see the button, and its name: the centre suite's.

#include "kpopupdriver.h"
#include "ksimulatorstate.h"
#include "ktestenvironment.h"
#include "kwidgetpixels.h"

#include "kenterprisecentertriggercommand.h"
#include "kusercentermenubutton.h"
#include "kusercentermenucommand.h"
#include "kxopenpersonalcentercommand.h"

#include <vex/kmainwindow.h>
#include <vex/kresourcescheme.h>
#include <vexlite/hostcontrol.h>

#include <QAccessible>
#include <QScreen>
#include <QToolTip>
#include <QtTest>

#include <memory>

using namespace AuthTest;
using KWidgetPixels::near;

using namespace krt::hostcontrol;

namespace {

const QColor kPicture(20, 200, 60);
const QByteArray kPersonal =
    R"({"IsLogined": true, "Name": "Ada", "UserAvatarImagePath": "p.png"})";
const QString kDefault = "res:/resource/zentodeskhive/defaultthumbnail.png";

// The button's own painting over white, at a device pixel ratio.
QImage paint(QWidget* button, qreal ratio = 1)
{
    return KWidgetPixels::paint(button, Qt::white, ratio);
}

bool send(QWidget* widget, QEvent::Type type)
{
    const QPointF at(5, 5);
    if (type == QEvent::Enter) {
        QEnterEvent enter(at, at, widget->mapToGlobal(QPoint(5, 5)));
        return QCoreApplication::sendEvent(widget, &enter);
    }
    if (type == QEvent::MouseMove) {
        QMouseEvent move(type, at, widget->mapToGlobal(QPoint(5, 5)), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        return QCoreApplication::sendEvent(widget, &move);
    }
    QEvent event(type);
    return QCoreApplication::sendEvent(widget, &event);
}

} // namespace

class TestUserCenterButton : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KSimulatorState m_state{m_env.rootPath()};
    std::unique_ptr<KMainWindow> m_window;
    KUserCenterMenuCommand* m_command = nullptr;
    KUserCenterMenuButton* m_button = nullptr;

    // A shown, active main window with the user centre and its two
    // entries, its top-left corner at `at` on the 800 x 600 screen.
    void makeWindow(QPoint at = QPoint(100, 100))
    {
        m_window = std::make_unique<KMainWindow>();
        m_window->setGeometry(QRect(at, QSize(480, 240)));
        m_command = new KUserCenterMenuCommand(m_window.get(), m_window.get());
        m_command->addChild(new KxOpenPersonalCenterCommand(m_window.get(), m_window.get()));
        m_command->addChild(new KEnterpriseCenterTriggerCommand(m_window.get(), m_window.get()));
        m_window->titleCommands()->addChild(m_command);
        m_button = qobject_cast<KUserCenterMenuButton*>(m_window->pocketWidget(m_command));
        m_window->show();
        QApplication::setActiveWindow(m_window.get());
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()) && m_button->isVisible());
    }

    int hoverMenu(const std::function<void(KPopupWidget*)>& whileOpen)
    {
        const auto hover = [this] {
            send(m_button, QEvent::Enter);
            for (int i = 0; i < 3; ++i)
                send(m_button, QEvent::MouseMove);
            QCoreApplication::processEvents();
        };
        return withPopup(m_button, hover, whileOpen);
    }

    QPoint outside() const { return m_window->geometry().bottomRight() + QPoint(60, 60); }

private slots:
    void initTestCase()
    {
        KResourceScheme::install();
        const QString folder = m_state.folder();
        for (const int side : {24, 600}) {
            QImage picture(side, side, QImage::Format_RGB32);
            picture.fill(kPicture);
            QVERIFY(picture.save(folder + (side < 32 ? "/p.png" : "/large.png")));
        }
        QImage huge(4100, 4100, QImage::Format_Mono); // small on disk and in memory
        huge.fill(0);
        QVERIFY(huge.save(folder + "/huge.png"));
        QVERIFY(KTestAppDir::write(folder + "/bad.png", "not a picture"));
        QCOMPARE(QProcess::execute("mkfifo", {folder + "/fifo"}), 0);
    }

    void init()
    {
        m_env.resetHost();
        setDisplayScale(1.0);
        setFeatureSupported("SimplifiedUserCenter", true);
        QCursor::setPos(0, 0);
        QVERIFY(m_state.set(kPersonal));
    }

    void cleanup() { m_window.reset(); }

    void thumbnail_data()
    {
        QTest::addColumn<QByteArray>("state");
        QTest::addColumn<QString>("expected"); // an image, "" for none
        QTest::addColumn<QSize>("size");       // as decoded
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<qreal>("ratio"); // painted at

        const auto row = [](const char* tag, const QByteArray& state, const QString& expected,
                            QSize size = QSize(32, 32), qreal scale = 1, qreal ratio = 1) {
            QTest::newRow(tag) << state << expected << size << scale << ratio;
        };
        const auto picture = [](const char* file) {
            return QByteArray(R"({"IsLogined": true, "UserAvatarImagePath": ")") + file + "\"}";
        };
        row("personal, picture", kPersonal, "PICTURE", QSize(24, 24));
        row("personal, picture, 150 %, device pixel ratio 2", kPersonal, "PICTURE", QSize(24, 24),
            1.5, 2);
        row("personal, no picture", R"({"IsLogined": true})", kDefault);
        row("company, picture", R"({"IsLogined": true, "IsCompanyAccount": true,
                                    "UserAvatarImagePath": "p.png"})",
            "res:/nimbo/zento_plus.png");
        row("signed out, picture", R"({"IsLogined": false, "UserAvatarImagePath": "p.png"})",
            kDefault);
        row("picture unloadable", picture("bad.png"), "", QSize(0, 0));
        // Decoded at the size drawn (16 at 100 %, for up to twice as dense).
        row("large picture", picture("large.png"), "PICTURE");
        // Refused without decoding: the default picture.
        row("too many pixels", picture("huge.png"), kDefault);
        row("a FIFO", picture("fifo"), kDefault);
        row("a folder", picture("."), kDefault);
    }

    // The avatar chosen and decoded, and drawn only when there is one: the
    // whole picture in a square of int(16 x scale) at left + 1, vertically
    // centred; the name beside the picture's room; the button sized by the
    // style's metric.
    void thumbnail()
    {
        QFETCH(QByteArray, state);
        QFETCH(QString, expected);
        QFETCH(QSize, size);
        QFETCH(qreal, scale);
        QFETCH(qreal, ratio);

        setDisplayScale(scale);
        QVERIFY(m_state.set(state));
        KUserCenterMenuButton button(nullptr);
        button.setText("Ada");
        const int text = button.fontMetrics().horizontalAdvance("Ada");
        QCOMPARE(button.sizeHint(),
                 QSize(qRound(25 * scale) + qRound(6 * scale) + text, qRound(28 * scale)));
        button.resize(button.sizeHint());
        button.updateThumbnail();
        const QImage& thumbnail = button.thumbnail();
        QCOMPARE(thumbnail.size(), size);
        if (expected == "PICTURE")
            QVERIFY(near(thumbnail.pixelColor(size.width() / 2, size.height() / 2), kPicture));
        else
            QCOMPARE(thumbnail, QImage(expected));
        const QImage image = paint(&button, ratio);
        const int side = int(16 * scale);
        const QRectF square(1, (button.height() - side) / 2, side, side);
        const auto at = [&](qreal x, qreal y) {
            return image.pixelColor(int(x * ratio), int(y * ratio));
        };
        QCOMPARE(at(square.center().x(), square.center().y()) == Qt::white, thumbnail.isNull());
        if (expected != "PICTURE")
            return;
        for (const QPointF& inside :
             {square.center(), square.topLeft(), square.bottomRight() - QPointF(0.5, 0.5)})
            QVERIFY(near(at(inside.x(), inside.y()), kPicture));
        QVERIFY(near(at(square.right() + 1, square.center().y()), Qt::white));
        QVERIFY(near(at(square.center().x(), square.bottom() + 1), Qt::white));
        QVERIFY(near(at(square.left() + 0.2, square.center().y()), kPicture, 60));
        QRect ink;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = int((square.right() + 2) * ratio); x < image.width(); ++x)
                ink |= near(image.pixelColor(x, y), Qt::white, 60) ? QRect() : QRect(x, y, 1, 1);
        }
        QVERIFY(ink.left() >= int(23 * scale * ratio));
        QVERIFY(qAbs(ink.center().y() - image.height() / 2) <= 2 * ratio);
    }

    // Hover opens the menu once; it stays while the mouse is over the button
    // or the menu, and goes once the mouse has left both, through the host's
    // tracking events.
    void hoverOpensMenu()
    {
        makeWindow();
        QStringList entries;
        bool stayed = false;
        bool heldByButton = false;
        const int shown = hoverMenu([&](KPopupWidget* popup) {
            for (int i = 0; i < popup->entryCount(); ++i)
                entries << popup->entryAt(i)->text();
            QCOMPARE(withPopup(m_button, [&] { m_button->onPopupMenu(); }, {}), 0);
            send(m_button, QEvent::Type(KPopupWidget::PopupTrackEvent)); // not left yet
            heldByButton = popup->isVisible();
            QCursor::setPos(popup->mapToGlobal(popup->entryRect(0).center()));
            send(m_button, QEvent::Leave);
            QTest::qWait(4 * KPopupWidget::TrackInterval);
            stayed = popup->isVisible();
            QCursor::setPos(outside());
            QTRY_VERIFY_WITH_TIMEOUT(!popup->isVisible(), 2000);
        });
        QCOMPARE(shown, 1);
        QCOMPARE(entries, QStringList({"Personal Center", "Enterprise Center"}));
        QVERIFY(heldByButton && stayed);
        // Again, but not while another window is the active one.
        const auto closeSoon = [](KPopupWidget* popup) {
            QTimer::singleShot(0, popup, &QWidget::hide);
        };
        QCOMPARE(hoverMenu(closeSoon), 1);
        KMainWindow other; // another main window: active, but not the button's
        other.show();
        QApplication::setActiveWindow(&other);
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QCOMPARE(hoverMenu(closeSoon), 0);
    }

    void menuPlacement_data()
    {
        QTest::addColumn<QPoint>("at"); // the window's top-left corner
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");

        const auto row = [](const char* tag, QPoint at, const QString& name, const char* expected) {
            QTest::newRow(tag) << at << name << QString(expected);
        };
        row("room", QPoint(0, 100), "Ada", "below");
        row("right edge", QPoint(250, 100), "Ada", "below, moved left");
        // 20 pixels above the screen's bottom (600 high on Qt 5, 800 on Qt 6).
        const int low = QGuiApplication::primaryScreen()->availableGeometry().bottom() - 19;
        row("bottom edge", QPoint(0, low), "Ada", "above");
        row("long name", QPoint(0, 100),
            "Maximilian Alexander Ferdinand von Hohenzollern-Sigmaringen", "below, wrapped");
        row("name wider than the screen", QPoint(250, 100), QString(150, 'W'),
            "below, moved left, wrapped");
    }

    // Below the button, left edges aligned, as long as that is on the
    // screen; else moved left into it, or above the button. A long name
    // wraps in the heading instead of widening the menu; the detail line
    // below it is legible.
    void menuPlacement()
    {
        QFETCH(QPoint, at);
        QFETCH(QString, name);
        QFETCH(QString, expected);

        QVERIFY(m_state.set("{\"IsLogined\": true, \"Name\": \"" + name.toUtf8() + "\"}"));
        makeWindow(at);
        QRect button, placed;
        int entriesTop = 0, detailInk = 255;
        QCOMPARE(hoverMenu([&](KPopupWidget* popup) {
                     button = QRect(m_button->mapToGlobal(QPoint()), m_button->size());
                     placed = popup->geometry();
                     entriesTop = popup->entryRect(0).top();
                     // The detail line's darkest ink, 4.5:1 on white at least.
                     const QImage image = popup->grab().toImage();
                     const int top = 9 + QFontMetrics(popup->font()).height() * 3 / 2;
                     for (int x = 12; x < 160; ++x)
                         detailInk = qMin(detailInk, qGray(image.pixel(x, top)));
                     QTimer::singleShot(0, popup, &QWidget::hide);
                 }),
                 1);
        QVERIFY(QGuiApplication::primaryScreen()->availableGeometry().contains(placed));
        QCOMPARE(placed.left() < button.left(), expected.contains("moved left"));
        QCOMPARE(placed.top(),
                 expected.contains("above") ? button.top() - placed.height() : button.bottom() + 1);
        // Heading and detail: two lines unless the name wraps. The button
        // shows a long name elided.
        const int line = QFontMetrics(m_button->font()).height();
        const bool wrapped = entriesTop - 22 > 2 * line + line / 2;
        QCOMPARE(wrapped, expected.contains("wrapped"));
        QVERIFY(placed.width() <= 360);
        QVERIFY(wrapped || detailInk <= 118);
        QVERIFY(button.width() < 250);
    }

    // Offline: the veil over the last state, the balloon while the mouse is
    // over it, no menu; account changes wait; the command loses its detail.
    void offline()
    {
        makeWindow();
        const QPoint spot(m_button->width() - 3, 2);
        QCOMPARE(paint(m_button).pixelColor(spot), QColor(Qt::white));
        setLogoutDuetoOffLine(true);
        const QImage veiled = paint(m_button);
        const int grey = qRound(139 * 150 / 255.0 + 105); // rgba(139, 139, 139, 150) on white
        QVERIFY(near(veiled.pixelColor(spot), QColor(grey, grey, grey), 2));
        QVERIFY(near(veiled.pixelColor(9, m_button->height() / 2), kPicture));

        send(m_button, QEvent::Enter);
        QVERIFY(m_button->tip()->isVisible() && !m_button->tip()->hideTimer()->isActive());
        QCOMPARE(withPopup(m_button,
                           [&] {
                               QVERIFY(send(m_button, QEvent::MouseMove));
                               QCoreApplication::processEvents();
                           },
                           {}),
                 0);
        send(m_button, QEvent::Leave);
        QVERIFY(!m_button->tip()->isVisible());

        const QImage avatar = m_button->thumbnail();
        QVERIFY(m_state.set(R"({"IsLogined": true, "Name": "Bob", "IsCompanyAccount": true})"));
        QCoreApplication::processEvents();
        m_command->update();
        QCOMPARE(m_command->detail(), QString());
        QVERIFY(m_command->text() == "Ada" && m_command->isVisible());
        m_command->setText("Changed");
        QVERIFY(m_button->text() == "Ada" && m_button->thumbnail() == avatar);
    }

    void activation_data()
    {
        QTest::addColumn<int>("key"); // 0: the assistive tools' action or the press of the row
        QTest::addColumn<QString>("action");
        QTest::addColumn<bool>("offline");
        QTest::addColumn<int>("shown");
        QTest::addColumn<bool>("entry"); // the account service's entry 4 called

        const auto row = [](const char* tag, int key, const QString& action, bool offline,
                            int shown, bool entry = false) {
            QTest::newRow(tag) << key << action << offline << shown << entry;
        };
        row("space", Qt::Key_Space, "", false, 1);
        row("return", Qt::Key_Return, "", false, 1);
        row("enter", Qt::Key_Enter, "", false, 1);
        row("a letter", Qt::Key_A, "", false, 0);
        row("accessible press", 0, QAccessibleActionInterface::pressAction(), false, 1);
        row("accessible show menu", 0, QAccessibleActionInterface::showMenuAction(), false, 1);
        // Signed out by the network: no menu, the balloon says why, by key
        // or by assistive tool alike.
        row("space, offline", Qt::Key_Space, "", true, 0);
        row("accessible press, offline", 0, QAccessibleActionInterface::pressAction(), true, 0);
        // A left press goes to the account service (two empty texts), even
        // offline; other buttons to the base, which leaves them to the parent.
        row("left press", 0, "left press", false, 0, true);
        row("right press", 0, "right press", false, 0);
        row("left press, offline", 0, "left press", true, 0, true);
    }

    // Tab reaches the button; Space, Enter and the assistive tools' actions
    // open the menu, whose entries the arrows and Enter reach. No tool tip,
    // though the command has a detail for one.
    void activation()
    {
        QFETCH(int, key);
        QFETCH(QString, action);
        QFETCH(bool, offline);
        QFETCH(int, shown);
        QFETCH(bool, entry);

        makeWindow();
        auto* edit = new QWidget(m_window.get());
        edit->setFocusPolicy(Qt::StrongFocus);
        m_window->setCentralWidget(edit);
        edit->setFocus();
        QTest::keyClick(edit, Qt::Key_Tab);
        QVERIFY(m_button->hasFocus());
        clearAccountEntryCalls();
        setLogoutDuetoOffLine(offline);
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(m_button);
        QCOMPARE(accessible->role(), QAccessible::ButtonMenu);
        const bool mouse = action.endsWith(" press");
        QVERIFY(accessible->actionInterface()->actionNames().contains(action) || key || mouse);
        const auto press = [&] {
            const Qt::MouseButton which = action == "left press" ? Qt::LeftButton : Qt::RightButton;
            QMouseEvent event(QEvent::MouseButtonPress, QPointF(5, 5),
                              m_button->mapToGlobal(QPoint(5, 5)), which, which, Qt::NoModifier);
            if (mouse) {
                QCoreApplication::sendEvent(m_button, &event);
                QCOMPARE(event.isAccepted(), which == Qt::LeftButton);
            } else if (key) {
                QTest::keyClick(m_button, Qt::Key(key));
            } else {
                accessible->actionInterface()->doAction(action);
            }
            QCoreApplication::processEvents();
        };
        QCOMPARE(withPopup(m_button, press,
                           [&](KPopupWidget*) {
                               for (Qt::Key next : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return})
                                   QTest::keyClick(m_button, next);
                           }),
                 shown);
        QCOMPARE(executedCommands(), shown ? QStringList("OpenEnterpriseCenter") : QStringList());
        const QList<AccountEntryCall> calls = accountEntryCalls();
        QCOMPARE(calls.size(), int(entry));
        if (entry)
            QVERIFY(calls[0].code == 4 && calls[0].first.isEmpty() && calls[0].second.isEmpty());
        QVERIFY(!m_button->isDown() && !m_button->popupWidget());
        QHelpEvent help(QEvent::ToolTip, QPoint(5, 5), m_button->mapToGlobal(QPoint(5, 5)));
        QVERIFY(QCoreApplication::sendEvent(m_button, &help) && !QToolTip::isVisible());
        QCOMPARE(m_button->tip()->isVisible(), offline && !mouse);
        if (offline && !mouse)
            QVERIFY(m_button->tip()->hideTimer()->isActive() &&
                    m_button->tip()->text().startsWith("abnormal network status"));
    }

    // Account changes reach the button queued, and through it the command;
    // sync errors show in its balloon, the cloud process's do not.
    void followsAccount()
    {
        makeWindow();
        QVERIFY(m_state.set(R"({"IsLogined": true, "Name": "Bob", "IsCompanyAccount": true,
                                "emit": ["failedToLaunchCloudsvrProcess"]})"));
        QTRY_COMPARE(m_button->text(), QString("Bob"));
        QCOMPARE(m_button->thumbnail(), QImage("res:/nimbo/zento_plus.png"));
        QVERIFY(!m_button->tip()->isVisible());
        QVERIFY(m_state.set(
            R"({"IsLogined": true, "Name": "Bob", "emit": ["occurRpcErrorsWhenGetUserInf"]})"));
        QVERIFY(m_button->tip()->isVisible() && m_button->tip()->hideTimer()->isActive());
        QVERIFY(m_state.set(R"({"IsLogined": false})"));
        QTRY_VERIFY(!m_command->isVisible() && m_button->isHidden());
    }
};

QTEST_MAIN(TestUserCenterButton)

#include "tst_usercenterbutton.moc"
