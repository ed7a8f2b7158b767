// The painted widgets: colours and text of the flat button, the rule, the
// three-image button, and the clickable label, through real events and
// painted into images at device pixel ratio 1.

#include "ktestenvironment.h"
#include "kwidgetpixels.h"

#include <kxclickablelabel.h>
#include <kxcustombutton.h>
#include <kxcustomline.h>
#include <kxnimbopixmapbutton.h>

#include <vex/rectutils.h>
#include <vexlite/hostcontrol.h>

#include <QAccessible>
#include <QLineEdit>
#include <QScreen>
#include <QtTest>

using namespace AuthTest;

using namespace KWidgetPixels;

namespace {

// Hover and press through the window, as the mouse would bring them about.
// False when the widget did not end up under the mouse as asked.
bool bringAbout(QWidget* window, QWidget* widget, const QString& state)
{
    const QPoint centre = widget->mapTo(window, widget->rect().center());
    if (state.contains("hover"))
        moveMouse(window, centre);
    if (state.contains("pressed") && state.contains("hover"))
        QTest::mousePress(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, centre);
    else if (state.contains("pressed"))
        QTest::mousePress(widget, Qt::LeftButton, Qt::NoModifier, widget->rect().center());
    if (state == "disabled")
        widget->setEnabled(false);
    return widget->underMouse() == state.contains("hover");
}

} // namespace

class TestKxWidgets : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    QTemporaryDir m_images;

private slots:
    void initTestCase()
    {
        // Distinct solid images per state; the hover one smaller, as it is
        // drawn at the normal one's size anyway.
        const QList<QPair<QString, QColor>> files{{"/btn_normal.png", Qt::red},
                                                  {"/btn_hover.png", Qt::green},
                                                  {"/btn_sunken.png", Qt::blue}};
        for (const auto& file : files) {
            QImage image(file.first.contains("hover") ? QSize(4, 4) : QSize(10, 10),
                         QImage::Format_ARGB32);
            image.fill(file.second);
            QVERIFY(image.save(m_images.path() + file.first));
        }
    }

    void init()
    {
        m_env.resetHost();
        // The pointer away from where the windows open, wherever a row before
        // left it: Qt 6 enters a widget shown under it.
        QCursor::setPos(QGuiApplication::primaryScreen()->availableGeometry().bottomRight());
    }

    // Both painted buttons in each state, brought about through the window
    // as the mouse would: the flat button's colour (pressed wins over hover;
    // disabled at 0.6 over the white it is painted on), and the image button
    // at the normal image's size, centred, pressed showing the normal image
    // even under the mouse.
    void states_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<QColor>("colour");
        QTest::addColumn<QColor>("image");

        QTest::newRow("normal") << "normal" << QColor("#7DC04A") << QColor(Qt::red);
        QTest::newRow("under the mouse") << "hover" << QColor("#97D26B") << QColor(Qt::green);
        QTest::newRow("pressed") << "pressed" << QColor("#6DA83F") << QColor(Qt::red);
        QTest::newRow("pressed under the mouse")
            << "pressed hover" << QColor("#6DA83F") << QColor(Qt::red);
        QTest::newRow("disabled") << "disabled" << QColor(177, 217, 146) << QColor(Qt::red);
    }

    void states()
    {
        QFETCH(QString, state);
        QFETCH(QColor, colour);
        QFETCH(QColor, image);

        for (const bool flat : {true, false}) {
            QWidget window;
            window.resize(240, 80);
            QPushButton* button = flat ? static_cast<QPushButton*>(new KxCustomButton(&window))
                                       : new KxNimboPixmapButton(m_images.path(), "btn", &window);
            button->setText(flat ? "Sign in" : "");
            button->setGeometry(20, 20, flat ? 160 : 30, flat ? 40 : 30);
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            QVERIFY(bringAbout(&window, button, state));
            const QImage painted = paint(button, Qt::white);
            QTest::mouseRelease(window.windowHandle(), Qt::LeftButton);
            if (flat) {
                for (QPoint corner : {QPoint(1, 1), QPoint(158, 38)})
                    QVERIFY2(near(painted.pixel(corner), colour),
                             qPrintable(QColor(painted.pixel(corner)).name()));
            } else {
                QCOMPARE(inkBounds(painted, Qt::white), QRect(10, 10, 10, 10));
                QCOMPARE(QColor(painted.pixel(10, 10)), image);
                QCOMPARE(QColor(painted.pixel(19, 19)), image);
            }
        }
    }

    // White text in the box of its advance and line height, centred in the
    // contents rectangle, or wrapped where it is narrower than the text;
    // custom colours replace the defaults. Margins and
    // size hints (the text measured with the "&" that is not drawn) follow
    // the display scale.
    void buttonText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("margin");

        QTest::newRow("short, 100 %") << "OK" << QSize(80, 40) << 1.0 << 5;
        QTest::newRow("long, narrow, 200 %")
            << "Sign in with another account" << QSize(160, 100) << 2.0 << 10;
        QTest::newRow("one long word, narrow") << QString(30, 'W') << QSize(120, 80) << 1.0 << 5;
        QTest::newRow("mnemonic, 150 %") << "&Retry" << QSize(120, 60) << 1.5 << 8;
    }

    void buttonText()
    {
        QFETCH(QString, text);
        QFETCH(QSize, size);
        QFETCH(qreal, scale);
        QFETCH(int, margin);

        krt::hostcontrol::setDisplayScale(scale);
        KxCustomButton button;
        QColor normal("#3B7CF0"), hover("#5A93F5"), pressed("#2F66C7");
        button.setColor(normal, hover, pressed);
        button.setText(text);
        const QRect bounds = button.fontMetrics().boundingRect(
            QRect(), Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic, text);
        QCOMPARE(button.contentsMargins(), QMargins(margin, margin, margin, margin));
        QCOMPARE(button.minimumSizeHint(), bounds.size() + QSize(2 * margin, 2 * margin));
        QCOMPARE(button.sizeHint(), button.minimumSizeHint());
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&button);
        QVERIFY(accessible->role() == QAccessible::Button &&
                accessible->text(QAccessible::Name) == QString(text).remove('&'));

        button.resize(size);
        const QImage image = paint(&button, Qt::white);
        const QFontMetrics metrics(button.font());
        const QRect box = calcCenterRect(button.contentsRect(),
                                         QSize(metrics.horizontalAdvance(text), metrics.height()));
        const QRect ink = inkBounds(image, normal);
        // Where it does not fit, wrapped into the contents rectangle.
        const bool fits = box.width() <= button.contentsRect().width();
        QVERIFY(!ink.isNull() && (fits ? box : button.contentsRect()).contains(ink));
        QCOMPARE(ink.height() > metrics.height(), !fits);
        int brightest = 0;
        for (int y = ink.top(); y <= ink.bottom(); ++y)
            for (int x = ink.left(); x <= ink.right(); ++x)
                brightest = qMax(brightest, qGray(image.pixel(x, y)));
        QCOMPARE(brightest, 255);
        if (!text.contains('&'))
            QVERIFY(qAbs(ink.center().x() - button.rect().center().x()) <= 2);
    }

    // Which rows of the column in the middle the rule paints ('#'): the pen
    // is the inner height wide and centred on the top margin.
    void line_data()
    {
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("top"); // -1: the frame's own margins, 1 on each side
        QTest::addColumn<int>("bottom");
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QString>("rows");

        QTest::newRow("natural height, default black") << 3 << -1 << -1 << QColor() << ".#.";
        QTest::newRow("thick pen reaches above") << 4 << -1 << -1 << QColor() << "##..";
        QTest::newRow("own top margin") << 6 << 2 << 0 << QColor(Qt::red) << "####..";
        QTest::newRow("bottom margin thins the pen") << 6 << 0 << 4 << QColor(Qt::red) << "#.....";
    }

    void line()
    {
        QFETCH(int, height);
        QFETCH(int, top);
        QFETCH(int, bottom);
        QFETCH(QColor, color);
        QFETCH(QString, rows);

        KxCustomLine line;
        if (top >= 0)
            line.setContentsMargins(0, top, 0, bottom);
        if (color.isValid())
            line.setLineColor(color);
        line.resize(40, height);
        const QImage image = paint(&line, Qt::white);
        QString painted;
        for (int y = 0; y < height; ++y) {
            const QRgb pixel = image.pixel(20, y);
            if (pixel != qRgb(255, 255, 255))
                QVERIFY2(near(pixel, color.isValid() ? color : Qt::black, 0),
                         qPrintable(QColor(pixel).name()));
            painted += pixel == qRgb(255, 255, 255) ? '.' : '#';
        }
        QCOMPARE(painted, rows);
    }

    // Missing files: size hint 0 x 0 and nothing painted, until a load
    // finds them. The two constructors leave different size policies.
    void pixmapButtonLoading()
    {
        KxNimboPixmapButton button(m_images.path(), "missing");
        QCOMPARE(button.sizeHint(), QSize(0, 0));
        button.resize(30, 30);
        QVERIFY(inkBounds(paint(&button, Qt::white), Qt::white).isNull());
        button.load(m_images.path(), "btn");
        QCOMPARE(button.sizeHint(), QSize(10, 10));
        QCOMPARE(button.sizePolicy(), QPushButton().sizePolicy()); // Minimum, Fixed
        QCOMPARE(KxNimboPixmapButton().sizePolicy(),
                 QSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum));
    }

    // Left releases click, others do not; a press alone is no
    // click. Assistive tools see a link, named by its text, and can click. From the keyboard (not
    // in the description: for people who do not use a mouse) it is reached with Tab only when the
    // caller gives it a focus policy; then Space, Return and Enter click.
    void labelActivation_data()
    {
        QTest::addColumn<int>("button"); // 0: the keys of a row
        QTest::addColumn<int>("policy");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<int>("expected");
        const auto keys = [](const char* tag, Qt::FocusPolicy policy, Qt::Key key,
                             Qt::KeyboardModifiers modifiers, int expected) {
            QTest::newRow(tag) << 0 << int(policy) << int(key) << int(modifiers) << expected;
        };
        QTest::newRow("left twice") << int(Qt::LeftButton) << 0 << 0 << 0 << 2;
        QTest::newRow("right twice") << int(Qt::RightButton) << 0 << 0 << 0 << 0;
        keys("no focus policy", Qt::NoFocus, Qt::Key_Space, Qt::NoModifier, 0);
        keys("Tab, keypad Enter", Qt::StrongFocus, Qt::Key_Enter, Qt::KeypadModifier, 1);
        keys("Ctrl+Space", Qt::StrongFocus, Qt::Key_Space, Qt::ControlModifier, 0);
        keys("a letter", Qt::StrongFocus, Qt::Key_A, Qt::NoModifier, 0);
        QTest::newRow("assistive tool's press") << 0 << int(Qt::NoFocus) << -1 << 0 << 1;
    }

    void labelActivation()
    {
        QFETCH(int, button);
        QFETCH(int, policy);
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(int, expected);

        QWidget window;
        QLineEdit* edit = new QLineEdit(&window);
        KxClickableLabel* label = new KxClickableLabel(&window);
        label->setText("Forgot your password?");
        label->move(0, 40);
        label->setFocusPolicy(Qt::FocusPolicy(policy));
        QSignalSpy spy(label, &KxClickableLabel::clicked);
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(label);
        QVERIFY(accessible->role() == QAccessible::Link &&
                accessible->text(QAccessible::Name) == label->text());
        if (key < 0) {
            accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
            QCOMPARE(spy.count(), expected);
            return;
        }
        if (button) {
            for (int i = 0; i < 2; ++i)
                QTest::mouseClick(label, Qt::MouseButton(button));
            QTest::mousePress(label, Qt::LeftButton);
            QCOMPARE(spy.count(), expected);
            return;
        }
        window.show();
        QApplication::setActiveWindow(&window);
        QVERIFY(QTest::qWaitForWindowActive(&window));
        edit->setFocus();
        QTest::keyClick(&window, Qt::Key_Tab);
        QCOMPARE(label->hasFocus(), policy != Qt::NoFocus);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key),
                        Qt::KeyboardModifiers(modifiers));
        QCOMPARE(spy.count(), expected);
    }

    // Arrow after leaving, even where the parent shows another cursor.
    void labelCursor()
    {
        QWidget parent;
        parent.setCursor(Qt::WaitCursor);
        KxClickableLabel* label = new KxClickableLabel(&parent);
        QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QCoreApplication::sendEvent(label, &enter);
        QCOMPARE(label->cursor().shape(), Qt::PointingHandCursor);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(label, &leave);
        QCOMPARE(label->cursor().shape(), Qt::ArrowCursor);
        QVERIFY(label->testAttribute(Qt::WA_SetCursor));
    }
};

QTEST_MAIN(TestKxWidgets)

#include "tst_kxwidgets.moc"
