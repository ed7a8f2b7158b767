// The frameless frame dialog: geometry at 100 % to 200 %, its pixels at
// device pixel ratio 1, and both ways of closing it through real mouse
// events on its window.

#include "ktestenvironment.h"
#include "kwidgetpixels.h"

#include <kxnimbocustomframedlg.h>
#include <kxnimbocustomframedlgtitle.h>
#include <kxnimbopixmapbutton.h>

#include <vex/kresourcescheme.h>
#include <vexlite/hostcontrol.h>

#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <QtTest>

using namespace AuthTest;

using namespace KWidgetPixels;

namespace {

const QColor kTitleColor("#6C7079");
const QColor kBorderColor("#B2B4BC");

// Where `text` leaves ink when drawn from x = 0, vertically centred in a bar
// of `height`, at the given pixel size: the glyphs' own bearing, to measure
// the dialog's indent against.
QRect referenceInk(const QString& text, QFont font, int pixelSize, int height, QColor fill)
{
    QImage image(600, height, QImage::Format_ARGB32);
    image.fill(fill);
    QPainter painter(&image);
    font.setPixelSize(pixelSize);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRect(0, 0, 600, height), Qt::AlignVCenter | Qt::TextSingleLine, text);
    painter.end();
    return inkBounds(image, fill);
}

class CloseCounter : public QObject
{
public:
    int closes = 0;
    bool eventFilter(QObject*, QEvent* event) override
    {
        closes += event->type() == QEvent::Close;
        return false;
    }
};

} // namespace

class TestKxFrameDlg : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void init()
    {
        m_env.resetHost();
        KResourceScheme::install();
    }

    // Sizes of the title go through the display scale; the border and the
    // margins beside and below it stay one pixel. Left of the close square
    // the bar holds the title colour (black when never set) and nothing but
    // the icon and the text, which starts at the indent after the icon (plus
    // the glyph's own bearing) at the title's font size.
    void frame_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("icon");          // side of a title icon, 0 for none
        QTest::addColumn<QColor>("titleColor"); // invalid: never set
        QTest::addColumn<int>("titleHeight");
        QTest::addColumn<int>("indent");
        QTest::addColumn<int>("fontPixels");
        QTest::addColumn<QString>("text");

        const QString hello = "Hello Zento";
        QTest::newRow("100 %, colour never set") << 1.0 << 0 << QColor() << 40 << 10 << 15 << hello;
        QTest::newRow("100 % with icon") << 1.0 << 24 << kTitleColor << 40 << 10 << 15 << hello;
        QTest::newRow("125 %, halves rounded")
            << 1.25 << 0 << kTitleColor << 50 << 13 << 18 << hello;
        QTest::newRow("200 % with icon") << 2.0 << 24 << kTitleColor << 80 << 20 << 30 << hello;
        QTest::newRow("long title")
            << 1.0 << 0 << kTitleColor << 40 << 10 << 15 << QString(100, 'W');
    }

    void frame()
    {
        QFETCH(qreal, scale);
        QFETCH(int, icon);
        QFETCH(QColor, titleColor);
        QFETCH(int, titleHeight);
        QFETCH(int, indent);
        QFETCH(int, fontPixels);
        QFETCH(QString, text);

        krt::hostcontrol::setDisplayScale(scale);
        KxNimboCustomFrameDlg dialog;
        dialog.setWindowTitle(text);
        if (titleColor.isValid())
            dialog.setTitleColor(titleColor);
        QCOMPARE(dialog.titleColor(), titleColor);
        QPixmap pixmap(icon, icon);
        pixmap.fill(Qt::red);
        if (icon)
            dialog.setTitleIcon(pixmap);
        QVBoxLayout* layout = new QVBoxLayout(&dialog);
        layout->setContentsMargins(0, 0, 0, 0);
        QWidget* content = new QWidget;
        layout->addWidget(content);
        dialog.resize(600, 300);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));

        auto* title = dialog.findChild<KxNimboCustomFrameDlgTitle*>();
        QCOMPARE(title->geometry(), QRect(0, 0, 600, titleHeight));
        const int closeLeft = 600 - titleHeight - 1;
        const auto* close = title->findChild<KxNimboPixmapButton*>();
        QCOMPARE(close->geometry(), QRect(closeLeft, 0, titleHeight + 1, titleHeight));
        // Never in the tab chain; named for assistive tools.
        QCOMPARE(close->focusPolicy(), Qt::NoFocus);
        QCOMPARE(close->accessibleName(), QString("Close"));
        QCOMPARE(dialog.contentsMargins(), QMargins(1, titleHeight, 1, 1));
        QCOMPARE(content->geometry(), QRect(1, titleHeight, 598, 300 - titleHeight - 1));

        const QImage image = paint(&dialog, Qt::magenta);
        // One-pixel border on the outermost pixels below the title, white inside.
        QVERIFY(
            inkBounds(image, Qt::white, QRect(1, titleHeight, 598, 299 - titleHeight)).isNull());
        for (const QRect& edge :
             {QRect(0, titleHeight, 1, 300 - titleHeight),
              QRect(599, titleHeight, 1, 300 - titleHeight), QRect(0, 299, 600, 1)})
            QVERIFY(inkBounds(image, kBorderColor, edge).isNull());
        const QColor fill = titleColor.isValid() ? titleColor : QColor(Qt::black);
        if (text.size() > 50) {
            // Cut at the close square: the text area loses the bar's height
            // on the right, so it keeps the square's first column. A gap
            // between two glyphs may fall just before the cut. The square
            // has no image here: this suite has no compiled-in resources.
            const int right = inkBounds(image, fill, QRect(0, 0, 600, titleHeight)).right();
            QVERIFY2(right <= closeLeft && right >= closeLeft - 9,
                     qPrintable(QString::number(right)));
            return;
        }
        const QRect ink = inkBounds(image, fill, QRect(icon, 0, closeLeft - icon, titleHeight));
        const QRect expected =
            referenceInk(dialog.windowTitle(), title->font(), fontPixels, titleHeight, fill);
        QCOMPARE(ink, expected.translated(icon + indent, 0));
        QCOMPARE(inkBounds(image, fill, QRect(0, 0, closeLeft, titleHeight)),
                 ink | QRect(0, 0, icon, icon));
        QCOMPARE(QColor(image.pixel(0, 0)), icon ? QColor(Qt::red) : fill);
        QCOMPARE(QColor(image.pixel(icon, 0)), fill);
    }

    // Presses and releases through the dialog's window at 100 %: a click on
    // the close button, or a release inside the close square (x 559 to 599,
    // y 0 to 39) after a press elsewhere on the title, closes it once.
    void closing_data()
    {
        QTest::addColumn<QPoint>("press");
        QTest::addColumn<QPoint>("release");
        QTest::addColumn<int>("closes");

        QTest::newRow("click on the button") << QPoint(580, 20) << QPoint(580, 20) << 1;
        QTest::newRow("title, then the square's left edge")
            << QPoint(100, 20) << QPoint(559, 0) << 1;
        QTest::newRow("title, then the far corner") << QPoint(100, 20) << QPoint(599, 39) << 1;
        QTest::newRow("title, then beside the square") << QPoint(100, 20) << QPoint(558, 20) << 0;
        QTest::newRow("button pressed, released away") << QPoint(580, 20) << QPoint(300, 20) << 0;
        QTest::newRow("press on the body") << QPoint(100, 100) << QPoint(580, 20) << 0;
    }

    void closing()
    {
        QFETCH(QPoint, press);
        QFETCH(QPoint, release);
        QFETCH(int, closes);

        KxNimboCustomFrameDlg dialog;
        dialog.resize(600, 300);
        CloseCounter counter;
        dialog.installEventFilter(&counter);
        QSignalSpy rejected(&dialog, &QDialog::rejected);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));

        QWindow* window = dialog.windowHandle();
        QTest::mouseMove(window, press);
        QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, press);
        QTest::mouseMove(window, release);
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, release);
        QCOMPARE(counter.closes, closes);
        QCOMPARE(rejected.count(), closes);
        QCOMPARE(dialog.isVisible(), closes == 0);
    }

    // Shown without a position of its own, the dialog sits centred on its
    // parent's window (no frame, no window manager: the offscreen platform),
    // or on the screen, inside the screen's available area; where the
    // program moved it, it stays.
    void placement_data()
    {
        QTest::addColumn<QRect>("parent"); // relative to the available area; null: none
        QTest::addColumn<QPoint>("moved"); // null: not moved
        QTest::addColumn<QString>("expected");

        QTest::newRow("on its parent's window") << QRect(100, 50, 600, 500) << QPoint() << "parent";
        QTest::newRow("on the screen") << QRect() << QPoint() << "screen";
        QTest::newRow("where the program put it")
            << QRect(100, 50, 600, 500) << QPoint(40, 30) << "moved";
        QTest::newRow("parent in the corner")
            << QRect(-200, -200, 300, 300) << QPoint() << "inside";
    }

    void placement()
    {
        QFETCH(QRect, parent);
        QFETCH(QPoint, moved);
        QFETCH(QString, expected);

        const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
        QWidget window;
        window.setGeometry(parent.translated(available.topLeft()));
        if (!parent.isNull())
            window.show();
        KxNimboCustomFrameDlg dialog(parent.isNull() ? nullptr : &window);
        dialog.resize(400, 300);
        if (!moved.isNull())
            dialog.move(moved);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        const QRect placed = dialog.frameGeometry();
        if (expected == "parent")
            QCOMPARE(placed.center(), window.frameGeometry().center());
        else if (expected == "screen")
            QCOMPARE(placed.center(), available.center());
        else if (expected == "moved")
            QCOMPARE(placed.topLeft(), moved);
        else
            QVERIFY(available.contains(placed));
    }
};

QTEST_MAIN(TestKxFrameDlg)

#include "tst_kxframedlg.moc"
