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

#include <QLineEdit>
#include <QtTest>

using namespace AuthTest;

using namespace KWidgetPixels;

namespace {

bool sameColor(QRgb actual, const QColor& expected, int tolerance = 1)
{
    return qAbs(qRed(actual) - expected.red()) <= tolerance &&
           qAbs(qGreen(actual) - expected.green()) <= tolerance &&
           qAbs(qBlue(actual) - expected.blue()) <= tolerance;
}

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

    void init() { m_env.resetHost(); }

    void buttonColour_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<QColor>("expected");

        QTest::newRow("normal") << "normal" << QColor("#7DC04A");
        QTest::newRow("under the mouse") << "hover" << QColor("#97D26B");
        QTest::newRow("pressed") << "pressed" << QColor("#6DA83F");
        QTest::newRow("pressed wins over hover") << "pressed hover" << QColor("#6DA83F");
        // 0.6 of the normal colour over the white it is painted on.
        QTest::newRow("disabled") << "disabled" << QColor(177, 217, 146);
    }

    void buttonColour()
    {
        QFETCH(QString, state);
        QFETCH(QColor, expected);

        QWidget window;
        window.resize(240, 80);
        KxCustomButton* button = new KxCustomButton(&window);
        button->setText("Sign in");
        button->setGeometry(20, 20, 160, 40);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(bringAbout(&window, button, state));

        const QImage image = paint(button, Qt::white);
        for (QPoint corner : {QPoint(1, 1), QPoint(158, 38)})
            QVERIFY2(sameColor(image.pixel(corner), expected),
                     qPrintable(QColor(image.pixel(corner)).name()));
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton);
    }

    // White text in the box of its advance and line height, centred in the
    // contents rectangle; custom colours replace the defaults.
    void buttonText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("centred");

        QTest::newRow("short") << "OK" << QSize(80, 40) << true;
        QTest::newRow("long, clipped") << "Sign in with another account" << QSize(60, 30) << true;
        // The box is measured with the "&" that is not drawn.
        QTest::newRow("mnemonic") << "&Retry" << QSize(120, 60) << false;
    }

    void buttonText()
    {
        QFETCH(QString, text);
        QFETCH(QSize, size);
        QFETCH(bool, centred);

        KxCustomButton button;
        QColor normal("#3B7CF0"), hover("#5A93F5"), pressed("#2F66C7");
        button.setColor(normal, hover, pressed);
        button.setText(text);
        button.resize(size);
        const QImage image = paint(&button, Qt::white);

        const QFontMetrics metrics(button.font());
        const QRect box = calcCenterRect(button.contentsRect(),
                                         QSize(metrics.horizontalAdvance(text), metrics.height()));
        const QRect ink = inkBounds(image, normal);
        QVERIFY(!ink.isNull());
        QVERIFY(box.intersected(button.rect()).contains(ink));
        int brightest = 0;
        for (int y = ink.top(); y <= ink.bottom(); ++y)
            for (int x = ink.left(); x <= ink.right(); ++x)
                brightest = qMax(brightest, qGray(image.pixel(x, y)));
        QCOMPARE(brightest, 255);
        if (centred)
            QVERIFY(qAbs(ink.center().x() - button.rect().center().x()) <= 2);
    }

    void buttonSize_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("margin");

        QTest::newRow("100 %") << 1.0 << 5;
        QTest::newRow("150 %") << 1.5 << 8;
        QTest::newRow("200 %") << 2.0 << 10;
    }

    void buttonSize()
    {
        QFETCH(qreal, scale);
        QFETCH(int, margin);

        krt::hostcontrol::setDisplayScale(scale);
        KxCustomButton button;
        button.setText("&Sign in");
        const QRect text = button.fontMetrics().boundingRect(
            QRect(), Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic, "&Sign in");
        QCOMPARE(button.contentsMargins(), QMargins(margin, margin, margin, margin));
        QCOMPARE(button.minimumSizeHint(), text.size() + QSize(2 * margin, 2 * margin));
        QCOMPARE(button.sizeHint(), button.minimumSizeHint());
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
                QVERIFY2(sameColor(pixel, color.isValid() ? color : Qt::black, 0),
                         qPrintable(QColor(pixel).name()));
            painted += pixel == qRgb(255, 255, 255) ? '.' : '#';
        }
        QCOMPARE(painted, rows);
    }

    // Every state at the normal image's size, centred; pressed shows the
    // normal image, also under the mouse.
    void pixmapButton_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<QColor>("expected");

        QTest::newRow("normal") << "normal" << QColor(Qt::red);
        QTest::newRow("under the mouse") << "hover" << QColor(Qt::green);
        QTest::newRow("pressed shows normal") << "pressed" << QColor(Qt::red);
        QTest::newRow("pressed under the mouse") << "pressed hover" << QColor(Qt::red);
    }

    void pixmapButton()
    {
        QFETCH(QString, state);
        QFETCH(QColor, expected);

        QWidget window;
        window.resize(100, 60);
        KxNimboPixmapButton* button = new KxNimboPixmapButton(m_images.path(), "btn", &window);
        button->setGeometry(10, 10, 30, 30);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(bringAbout(&window, button, state));

        QCOMPARE(button->sizeHint(), QSize(10, 10));
        const QImage image = paint(button, Qt::white);
        QCOMPARE(inkBounds(image, Qt::white), QRect(10, 10, 10, 10));
        QCOMPARE(QColor(image.pixel(10, 10)), expected);
        QCOMPARE(QColor(image.pixel(19, 19)), expected);
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton);
    }

    void pixmapButtonWithoutImages()
    {
        KxNimboPixmapButton button(m_images.path(), "missing");
        QCOMPARE(button.sizeHint(), QSize(0, 0));
        button.resize(30, 30);
        QVERIFY(inkBounds(paint(&button, Qt::white), Qt::white).isNull());
        button.load(m_images.path(), "btn");
        QCOMPARE(button.sizeHint(), QSize(10, 10));
    }

    // The two constructors leave different size policies.
    void pixmapButtonPolicies()
    {
        KxNimboPixmapButton plain;
        KxNimboPixmapButton loaded(m_images.path(), "btn");
        QCOMPARE(plain.sizePolicy(), QSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum));
        QCOMPARE(loaded.sizePolicy(), QPushButton().sizePolicy()); // Minimum, Fixed
    }

    void labelClicks_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<int>("clicks");
        QTest::addColumn<int>("expected");

        QTest::newRow("left") << int(Qt::LeftButton) << 1 << 1;
        QTest::newRow("left twice") << int(Qt::LeftButton) << 2 << 2;
        QTest::newRow("right") << int(Qt::RightButton) << 2 << 0;
        QTest::newRow("middle") << int(Qt::MiddleButton) << 2 << 0;
    }

    void labelClicks()
    {
        QFETCH(int, button);
        QFETCH(int, clicks);
        QFETCH(int, expected);

        KxClickableLabel label;
        label.setText("Forgot your password?");
        QSignalSpy spy(&label, &KxClickableLabel::clicked);
        for (int i = 0; i < clicks; ++i)
            QTest::mouseClick(&label, Qt::MouseButton(button));
        QCOMPARE(spy.count(), expected);
        // A press alone is no click.
        QTest::mousePress(&label, Qt::LeftButton);
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

    // Reached with Tab only when the caller gives it a focus policy; then
    // Space, Return and Enter click.
    void labelKeyboard_data()
    {
        QTest::addColumn<int>("policy");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<int>("expected");

        QTest::newRow("no focus policy")
            << int(Qt::NoFocus) << int(Qt::Key_Space) << int(Qt::NoModifier) << 0;
        QTest::newRow("Tab, Space")
            << int(Qt::TabFocus) << int(Qt::Key_Space) << int(Qt::NoModifier) << 1;
        QTest::newRow("Tab, Return")
            << int(Qt::StrongFocus) << int(Qt::Key_Return) << int(Qt::NoModifier) << 1;
        QTest::newRow("Tab, keypad Enter")
            << int(Qt::StrongFocus) << int(Qt::Key_Enter) << int(Qt::KeypadModifier) << 1;
        QTest::newRow("Ctrl+Space")
            << int(Qt::StrongFocus) << int(Qt::Key_Space) << int(Qt::ControlModifier) << 0;
        QTest::newRow("a letter") << int(Qt::StrongFocus) << int(Qt::Key_A) << int(Qt::NoModifier)
                                  << 0;
    }

    void labelKeyboard()
    {
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
};

QTEST_MAIN(TestKxWidgets)

#include "tst_kxwidgets.moc"
