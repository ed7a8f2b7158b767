// The title area's user-centre command and button on the cloud simulator,
// driven offscreen through real events (enter, moves, leave, presses, keys
// and the host's popup tracking event 32770) and painted into images: the
// avatar, the hover menu, the offline look, the clicks, the command's
// visibility. In copies of this program run with --probe from a folder
// without the cloud library: the same without a client object.

#include "kpopupdriver.h"
#include "ksimulatorstate.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"

#include "kenterprisecentertriggercommand.h"
#include "kloginstatustipwidget.h"
#include "kusercentermenubutton.h"
#include "kusercentermenucommand.h"
#include "kxopenpersonalcentercommand.h"

#include <vex/kmainwindow.h>
#include <vex/kresourcescheme.h>
#include <vex/kzentostyle.h>
#include <vexlite/hostcontrol.h>

#include <QAccessible>
#include <QLineEdit>
#include <QToolTip>
#include <QtTest>

#include <memory>

using namespace AuthTest;

using namespace krt::hostcontrol;

namespace {

const QColor kPicture(20, 200, 60);
const QByteArray kPersonal =
    R"({"IsLogined": true, "Name": "Ada", "UserAvatarImagePath": "pic.png"})";
const QByteArray kCompany = R"({"IsLogined": true, "Name": "Ada", "IsCompanyAccount": true})";

bool near(QColor a, QColor b, int tolerance = 3)
{
    return qAbs(a.red() - b.red()) <= tolerance && qAbs(a.green() - b.green()) <= tolerance &&
           qAbs(a.blue() - b.blue()) <= tolerance;
}

// The button's own painting over white, at a device pixel ratio.
QImage paint(QWidget* button, qreal ratio = 1)
{
    QImage image(button->size() * ratio, QImage::Format_ARGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    button->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    image.setDevicePixelRatio(1);
    return image;
}

void send(QWidget* widget, QEvent::Type type)
{
    if (type == QEvent::Enter) {
        QEnterEvent enter(QPointF(4, 4), QPointF(4, 4), widget->mapToGlobal(QPoint(4, 4)));
        QCoreApplication::sendEvent(widget, &enter);
    } else if (type == QEvent::MouseMove) {
        QMouseEvent move(QEvent::MouseMove, QPointF(5, 5), widget->mapToGlobal(QPoint(5, 5)),
                         Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &move);
    } else {
        QEvent event(type);
        QCoreApplication::sendEvent(widget, &event);
    }
}

// Probe mode, in a folder without the cloud library: whether a signed-in
// looking command shows, and which avatar its button chose.
int probe()
{
    KTestEnvironment env;
    KResourceScheme::install();
    setFeatureSupported("SimplifiedUserCenter", true);
    KUserCenterMenuCommand command(nullptr, nullptr);
    command.setVisible(true);
    command.update();
    std::unique_ptr<QWidget> button(command.createPocketWidget(nullptr));
    const QImage avatar = static_cast<KUserCenterMenuButton*>(button.get())->thumbnail();
    const bool isDefault = avatar == QImage("res:/resource/zentodeskhive/defaultthumbnail.png");
    QTextStream(stdout) << command.isVisible() << ' ' << (isDefault ? "default" : "other") << '\n';
    return 0;
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

    // A shown, active main window with the user centre and its two entries
    // in the title area.
    void makeWindow()
    {
        m_window = std::make_unique<KMainWindow>();
        m_window->setGeometry(100, 100, 480, 240);
        m_command = new KUserCenterMenuCommand(m_window.get(), m_window.get());
        m_command->addChild(new KxOpenPersonalCenterCommand(m_window.get(), m_window.get()));
        m_command->addChild(new KEnterpriseCenterTriggerCommand(m_window.get(), m_window.get()));
        m_window->titleCommands()->addChild(m_command);
        m_button = qobject_cast<KUserCenterMenuButton*>(m_window->pocketWidget(m_command));
        QVERIFY(m_button);
        m_window->show();
        QApplication::setActiveWindow(m_window.get());
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QVERIFY(m_button->isVisible());
    }

    QPoint outside() const { return m_window->geometry().bottomRight() + QPoint(60, 60); }

private slots:
    void initTestCase()
    {
        KResourceScheme::install();
        QImage picture(40, 40, QImage::Format_ARGB32);
        picture.fill(kPicture);
        QVERIFY(picture.save(m_state.folder() + "/pic.png"));
        QVERIFY(KTestAppDir::write(m_state.folder() + "/bad.png", "not a picture"));
        QVERIFY(KDeskhiveLib::instance()->nimboClientInstance());
    }

    void init()
    {
        m_env.resetHost();
        setDisplayScale(1.0);
        setFeatureSupported("SimplifiedUserCenter", true);
        QCursor::setPos(0, 0);
        QVERIFY(m_state.set(kPersonal));
    }

    void cleanup()
    {
        m_window.reset();
        clearAccountEntryCalls();
    }

    void thumbnail_data()
    {
        QTest::addColumn<QByteArray>("state");
        QTest::addColumn<QString>("expected"); // an image path, "" for none

        const QString picture = "PICTURE";
        const QString company = "res:/nimbo/zento_plus.png";
        const QString fallback = "res:/resource/zentodeskhive/defaultthumbnail.png";
        QTest::newRow("personal, picture") << kPersonal << picture;
        QTest::newRow("personal, no picture") << QByteArray(R"({"IsLogined": true})") << fallback;
        QTest::newRow("company, picture")
            << QByteArray(R"({"IsLogined": true, "IsCompanyAccount": true,
                              "UserAvatarImagePath": "pic.png"})")
            << company;
        QTest::newRow("company, no picture") << kCompany << company;
        QTest::newRow("signed out, picture")
            << QByteArray(R"({"IsLogined": false, "UserAvatarImagePath": "pic.png"})") << fallback;
        QTest::newRow("picture missing")
            << QByteArray(R"({"IsLogined": true, "UserAvatarImagePath": "gone.png"})") << "";
        QTest::newRow("picture unloadable")
            << QByteArray(R"({"IsLogined": true, "UserAvatarImagePath": "bad.png"})") << "";
    }

    // The avatar chosen, and drawn only when there is one.
    void thumbnail()
    {
        QFETCH(QByteArray, state);
        QFETCH(QString, expected);

        QVERIFY(m_state.set(state));
        KUserCenterMenuButton button(nullptr);
        button.resize(button.sizeHint());
        button.updateThumbnail();
        if (expected.isEmpty()) {
            QVERIFY(button.thumbnail().isNull());
            QCOMPARE(paint(&button).pixelColor(9, 14), QColor(Qt::white));
            return;
        }
        const QImage wanted(expected == "PICTURE" ? m_state.folder() + "/pic.png" : expected);
        QVERIFY(!wanted.isNull());
        QCOMPARE(button.thumbnail(), wanted);
        QVERIFY(paint(&button).pixelColor(9, 14) != QColor(Qt::white));
    }

    void avatarPainting_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<qreal>("ratio");

        QTest::newRow("100 %") << 1.0 << 1.0;
        QTest::newRow("150 %") << 1.5 << 1.0;
        QTest::newRow("200 %") << 2.0 << 1.0;
        QTest::newRow("device pixel ratio 2") << 1.0 << 2.0;
    }

    // The picture in a square of int(16 x scale) at left + 1, vertically
    // centred; round and smooth-edged at every scale.
    void avatarPainting()
    {
        QFETCH(qreal, scale);
        QFETCH(qreal, ratio);

        setDisplayScale(scale);
        KUserCenterMenuButton button(nullptr);
        button.setText("Ada");
        button.resize(button.sizeHint());
        QCOMPARE(button.height(), qRound(28 * scale));
        button.updateThumbnail();
        const QImage image = paint(&button, ratio);
        const int side = int(16 * scale);
        const QRectF square(1, (button.height() - side) / 2, side, side);
        const auto at = [&](qreal x, qreal y) {
            return image.pixelColor(int(x * ratio), int(y * ratio));
        };
        QVERIFY(near(at(square.center().x(), square.center().y()), kPicture));
        QVERIFY(near(at(square.left() + 1, square.top() + 1), Qt::white));
        QVERIFY(near(at(square.left() + 0.5, square.top() + 0.5), Qt::white));
        QVERIFY(near(at(square.right() + 1, square.center().y()), Qt::white));
        QVERIFY(near(at(square.center().x(), square.bottom() + 1), Qt::white));
        QVERIFY(near(at(square.left() + 0.2, square.center().y()), kPicture, 60));
        // Some pixel on the rim lies between picture and background.
        bool blended = false;
        for (int x = int(square.left() * ratio); x < int(square.center().x() * ratio); ++x) {
            const QColor c = image.pixelColor(x, int((square.top() + side / 5.0) * ratio));
            blended |= !near(c, Qt::white, 20) && !near(c, kPicture, 20);
        }
        QVERIFY(blended);
    }

    void sizeHint_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<qreal>("scale");

        QTest::newRow("a name") << "Ada Lovelace" << 1.0;
        QTest::newRow("no name") << "" << 1.0;
        QTest::newRow("a name at 150 %") << "Ada" << 1.5;
    }

    // Through the style's user-panel metric: the text's width and 28.
    void sizeHint()
    {
        QFETCH(QString, name);
        QFETCH(qreal, scale);

        setDisplayScale(scale);
        KUserCenterMenuButton button(nullptr);
        button.setText(name);
        const int text = button.fontMetrics().horizontalAdvance(name);
        const int gap = text > 0 ? qRound(6 * scale) : 0;
        QCOMPARE(button.sizeHint(), QSize(qRound(25 * scale) + gap + text, qRound(28 * scale)));
    }

    // Resting on the button opens the account menu once; it stays while the
    // mouse is over the menu and goes once the mouse has left both, through
    // the host's tracking events. Then the button opens it again.
    void hoverOpensMenu()
    {
        makeWindow();
        QStringList entries;
        bool stayedOverMenu = false;
        const auto hover = [&] {
            QCursor::setPos(m_button->mapToGlobal(QPoint(5, 5)));
            send(m_button, QEvent::Enter);
            for (int i = 0; i < 3; ++i)
                send(m_button, QEvent::MouseMove);
            QCoreApplication::processEvents();
            QCoreApplication::processEvents();
        };
        const int shown = withPopup(m_button, hover, [&](KPopupWidget* popup) {
            for (int i = 0; i < popup->entryCount(); ++i)
                entries << popup->entryAt(i)->text();
            send(m_button, QEvent::MouseMove);
            QCoreApplication::processEvents();
            QCursor::setPos(popup->mapToGlobal(popup->entryRect(0).center()));
            send(m_button, QEvent::Leave);
            QTest::qWait(4 * KPopupWidget::TrackInterval);
            stayedOverMenu = popup->isVisible();
            QCursor::setPos(outside());
            QTRY_VERIFY_WITH_TIMEOUT(!popup->isVisible(), 2000);
        });
        QCOMPARE(shown, 1);
        QCOMPARE(entries, QStringList({"Personal Center", "Enterprise Center"}));
        QVERIFY(stayedOverMenu);
        const auto rest = [&] {
            send(m_button, QEvent::MouseMove);
            QCoreApplication::processEvents();
        };
        QCOMPARE(withPopup(m_button, rest, [](KPopupWidget* popup) { popup->hide(); }), 1);
    }

    void trackingEvent_data()
    {
        QTest::addColumn<bool>("overButton");
        QTest::addColumn<bool>("overMenu");
        QTest::addColumn<bool>("closes");

        QTest::newRow("left both") << false << false << true;
        QTest::newRow("over the menu") << false << true << false;
        QTest::newRow("still over the button") << true << false << false;
    }

    // One event 32770, sent while the menu is open.
    void trackingEvent()
    {
        QFETCH(bool, overButton);
        QFETCH(bool, overMenu);
        QFETCH(bool, closes);

        makeWindow();
        bool visible = true;
        withPopup(
            m_button,
            [&] {
                send(m_button, QEvent::Enter);
                send(m_button, QEvent::MouseMove);
                QCoreApplication::processEvents();
            },
            [&](KPopupWidget* popup) {
                if (!overButton)
                    send(m_button, QEvent::Leave);
                QCursor::setPos(overMenu ? popup->mapToGlobal(QPoint(3, popup->height() - 3))
                                         : outside());
                send(m_button, QEvent::Type(KPopupWidget::PopupTrackEvent));
                visible = popup->isVisible();
                popup->hide();
            });
        QCOMPARE(visible, !closes);
        // Without a menu open it is nothing to the button.
        send(m_button, QEvent::Leave);
        send(m_button, QEvent::Type(KPopupWidget::PopupTrackEvent));
    }

    // Opening again from inside the open menu, or hovering a window that is
    // not the active one, opens nothing.
    void noSecondMenu()
    {
        makeWindow();
        int inner = 0;
        const int shown = withPopup(
            m_button,
            [&] {
                send(m_button, QEvent::MouseMove);
                QCoreApplication::processEvents();
            },
            [&](KPopupWidget* popup) {
                inner = withPopup(
                    m_button, [&] { m_button->onPopupMenu(); }, [](KPopupWidget*) {});
                popup->hide();
            });
        QCOMPARE(shown, 1);
        QCOMPARE(inner, 0);

        QWidget other;
        other.show();
        QApplication::setActiveWindow(&other);
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QCOMPARE(withPopup(
                     m_button,
                     [&] {
                         send(m_button, QEvent::MouseMove);
                         QCoreApplication::processEvents();
                     },
                     [](KPopupWidget* popup) { popup->hide(); }),
                 0);
    }

    // Offline: the veil over the last state, the balloon while the mouse is
    // over it, no menu; the command keeps its text and loses its detail.
    void offline()
    {
        makeWindow();
        const QPoint spot(m_button->width() - 3, 2);
        QCOMPARE(paint(m_button).pixelColor(spot), QColor(Qt::white));
        const QString name = m_button->text();
        setLogoutDuetoOffLine(true);
        const QImage veiled = paint(m_button);
        // rgba(139, 139, 139, 150) over white.
        const int grey = qRound(139 * 150 / 255.0 + 255 * (105 / 255.0));
        QVERIFY2(near(veiled.pixelColor(spot), QColor(grey, grey, grey), 2),
                 qPrintable(veiled.pixelColor(spot).name()));
        QVERIFY(near(veiled.pixelColor(9, m_button->height() / 2), kPicture));

        send(m_button, QEvent::Enter);
        KLoginStatusTipWidget* tip = m_button->tip();
        QVERIFY(tip->isVisible());
        QCOMPARE(tip->text(), QString("abnormal network status, turn to be offline status"));
        QVERIFY(!tip->hideTimer()->isActive());
        QCOMPARE(withPopup(
                     m_button,
                     [&] {
                         QMouseEvent move(QEvent::MouseMove, QPointF(5, 5),
                                          m_button->mapToGlobal(QPoint(5, 5)), Qt::NoButton,
                                          Qt::NoButton, Qt::NoModifier);
                         QVERIFY(QCoreApplication::sendEvent(m_button, &move));
                         QCoreApplication::processEvents();
                     },
                     [](KPopupWidget* popup) { popup->hide(); }),
                 0);
        send(m_button, QEvent::Leave);
        QVERIFY(!tip->isVisible());

        // The account changes meanwhile: the button and command stay as they were.
        const QImage avatar = m_button->thumbnail();
        QVERIFY(m_state.set(R"({"IsLogined": true, "Name": "Bob", "IsCompanyAccount": true})"));
        QCoreApplication::processEvents();
        m_command->setDetail("old");
        m_command->update();
        QCOMPARE(m_command->detail(), QString());
        QCOMPARE(m_command->text(), name);
        QVERIFY(m_command->isVisible());
        m_command->setText("Changed");
        QCOMPARE(m_button->text(), name);
        QCOMPARE(m_button->thumbnail(), avatar);
    }

    void clicks_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<bool>("offline");
        QTest::addColumn<bool>("toService");

        for (bool offline : {false, true}) {
            const QByteArray tag = offline ? ", offline" : "";
            QTest::newRow("left" + tag) << int(Qt::LeftButton) << offline << true;
            QTest::newRow("right" + tag) << int(Qt::RightButton) << offline << false;
            QTest::newRow("middle" + tag) << int(Qt::MiddleButton) << offline << false;
        }
    }

    // A left press goes to the account service (entry 4, two empty texts),
    // signed in or not, offline too; other buttons to the base, which
    // leaves them to the parent.
    void clicks()
    {
        QFETCH(int, button);
        QFETCH(bool, offline);
        QFETCH(bool, toService);

        makeWindow();
        setLogoutDuetoOffLine(offline);
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5),
                          m_button->mapToGlobal(QPoint(5, 5)), Qt::MouseButton(button),
                          Qt::MouseButton(button), Qt::NoModifier);
        QCoreApplication::sendEvent(m_button, &press);
        QCOMPARE(press.isAccepted(), toService);
        const QList<AccountEntryCall> calls = accountEntryCalls();
        QCOMPARE(calls.size(), toService ? 1 : 0);
        if (toService) {
            QCOMPARE(calls[0].code, 4);
            QVERIFY(calls[0].first.isEmpty() && calls[0].second.isEmpty());
        }
        QVERIFY(!m_button->isDown());
        QVERIFY(!m_button->popupWidget());
    }

    // No tool tip, though the command has a detail for one.
    void noToolTip()
    {
        makeWindow();
        QVERIFY(!m_command->detail().isEmpty());
        QHelpEvent help(QEvent::ToolTip, QPoint(5, 5), m_button->mapToGlobal(QPoint(5, 5)));
        QVERIFY(QCoreApplication::sendEvent(m_button, &help));
        QCoreApplication::processEvents();
        QVERIFY(!QToolTip::isVisible());
    }

    void keyboard_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("shown");

        QTest::newRow("space") << int(Qt::Key_Space) << 1;
        QTest::newRow("return") << int(Qt::Key_Return) << 1;
        QTest::newRow("enter") << int(Qt::Key_Enter) << 1;
        QTest::newRow("a letter") << int(Qt::Key_A) << 0;
    }

    // Tab reaches the button; Space and Enter open the menu, whose entries
    // the arrows and Enter then reach.
    void keyboard()
    {
        QFETCH(int, key);
        QFETCH(int, shown);

        makeWindow();
        auto* edit = new QLineEdit(m_window.get());
        m_window->setCentralWidget(edit);
        edit->setFocus();
        QTRY_VERIFY(edit->hasFocus());
        for (int i = 0; i < 3 && !m_button->hasFocus(); ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(m_button->hasFocus());
        clearExecutedCommands();
        const int opened = withPopup(
            m_button,
            [&] {
                QTest::keyClick(m_button, Qt::Key(key));
                QCoreApplication::processEvents();
            },
            [&](KPopupWidget* popup) {
                QTest::keyClick(m_button, Qt::Key_Down);
                QTest::keyClick(m_button, Qt::Key_Down);
                QTest::keyClick(m_button, Qt::Key_Return);
                QVERIFY(!popup->isVisible());
            });
        QCOMPARE(opened, shown);
        QCOMPARE(executedCommands(), shown ? QStringList("OpenEnterpriseCenter") : QStringList());
    }

    void accessibleName_data()
    {
        QTest::addColumn<QByteArray>("state");
        QTest::addColumn<QString>("name");

        QTest::newRow("the user's name") << kPersonal << "Ada";
        QTest::newRow("no name") << QByteArray(R"({"IsLogined": true})") << "User centre";
    }

    void accessibleName()
    {
        QFETCH(QByteArray, state);
        QFETCH(QString, name);

        QVERIFY(m_state.set(state));
        makeWindow();
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(m_button);
        QVERIFY(accessible);
        QCOMPARE(accessible->text(QAccessible::Name), name);
    }

    // An account change reaches the button (queued) and, through it, the
    // command: name and avatar follow the state file.
    void followsAccount()
    {
        makeWindow();
        QCOMPARE(m_button->text(), QString("Ada"));
        QVERIFY(m_state.set(R"({"IsLogined": true, "Name": "Bob", "IsCompanyAccount": true})"));
        QTRY_COMPARE(m_button->text(), QString("Bob"));
        QCOMPARE(m_button->thumbnail(), QImage("res:/nimbo/zento_plus.png"));
        QVERIFY(m_state.set(R"({"IsLogined": false})"));
        QTRY_VERIFY(!m_command->isVisible());
        QVERIFY(m_button->isHidden());
    }

    // A sync error shows in the button's balloon for a while; the cloud
    // process's failures are not the button's to show.
    void syncErrorsInBalloon()
    {
        makeWindow();
        KLoginStatusTipWidget* tip = m_button->tip();
        QVERIFY(m_state.set(R"({"IsLogined": true, "Name": "Ada", "UserAvatarImagePath": "pic.png",
                                "emit": ["failedToLaunchCloudsvrProcess"]})"));
        QVERIFY(!tip->isVisible());
        QVERIFY(m_state.set(R"({"IsLogined": true, "Name": "Ada", "UserAvatarImagePath": "pic.png",
                                "emit": ["occurRpcErrorsWhenGetUserInf"]})"));
        QVERIFY(tip->isVisible());
        QCOMPARE(tip->text(), QString("RPC errors occured when Get login information"));
        QVERIFY(tip->hideTimer()->isActive());
    }

    void visibility_data()
    {
        QTest::addColumn<QByteArray>("state");
        QTest::addColumn<bool>("simplified");
        QTest::addColumn<bool>("embedding");
        QTest::addColumn<bool>("visible");

        const QByteArray out = R"({"IsLogined": false, "Name": "Ada", "IsCompanyAccount": true})";
        QTest::newRow("personal, simplified centre") << kPersonal << true << false << true;
        QTest::newRow("personal, no simplified centre") << kPersonal << false << false << false;
        QTest::newRow("company, no simplified centre") << kCompany << false << false << true;
        QTest::newRow("signed out") << out << true << false << false;
        QTest::newRow("signed out, nothing known") << QByteArray("{}") << true << false << false;
        QTest::newRow("embedding window") << kCompany << true << true << false;
    }

    // Visible exactly for a signed-in user of a product with a centre for
    // the account, outside embedding windows; the name and detail set.
    void visibility()
    {
        QFETCH(QByteArray, state);
        QFETCH(bool, simplified);
        QFETCH(bool, embedding);
        QFETCH(bool, visible);

        QVERIFY(m_state.set(state));
        setFeatureSupported("SimplifiedUserCenter", simplified);
        KMainWindow window;
        window.setEmbedding(embedding);
        KUserCenterMenuCommand command(&window, &window);
        QCOMPARE(command.icon().pixmap(16).toImage().convertToFormat(QImage::Format_ARGB32),
                 QIcon("res:/resource/zentodeskhive/defaultthumbnail.png")
                     .pixmap(16)
                     .toImage()
                     .convertToFormat(QImage::Format_ARGB32));
        command.setVisible(!visible);
        command.update();
        QCOMPARE(command.isVisible(), visible);
        if (visible) {
            QCOMPARE(command.text(), QString("Ada"));
            QCOMPARE(command.detail(), QString("You have signed in Zento Office."));
        }
    }

    // Without a client object the command hides and the button shows the
    // default avatar.
    void withoutClient()
    {
        const KTestAppDir app(m_env.rootPath());
        const QString self = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
        QVERIFY(app.installExecutable(self));
        const KTestAppDir::Result run = app.run(self, {"--probe"});
        QCOMPARE(run.out.trimmed(), QString("0 default"));
    }

    // A copy carries the properties and clones of the entries.
    void cloning()
    {
        makeWindow();
        QObject parent;
        std::unique_ptr<KCommand> copy(m_command->clone(&parent, m_window.get()));
        QCOMPARE(copy->metaObject(), m_command->metaObject());
        QCOMPARE(copy->text(), m_command->text());
        QCOMPARE(copy->childCount(), 2);
        QVERIFY(copy->childAt(0) != m_command->childAt(0));
        QCOMPARE(copy->childAt(1)->metaObject(), m_command->childAt(1)->metaObject());
    }
};

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    if (argc == 2 && qstrcmp(argv[1], "--probe") == 0)
        return probe();
    TestUserCenterButton test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_usercenterbutton.moc"
