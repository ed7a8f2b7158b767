// The compiled-in title images through the host's "res:" scheme: sizes,
// their @2x companions, their look on the title colour, and the close image
// in the frame dialog's title. The suite runs on a screen with device pixel
// ratio 2 (QT_SCALE_FACTOR).

#include "ktestenvironment.h"
#include "kwidgetpixels.h"

#include <kxnimbocustomframedlg.h>
#include <kxnimbopixmapbutton.h>

#include <vex/kresourcescheme.h>
#include <vexlite/kqtcompat.h>

#include <QPainter>
#include <QtTest>

using namespace AuthTest;

using namespace KWidgetPixels;

namespace {

const QColor kTitleColor("#6C7079");

qreal luminance(QColor color)
{
    const auto channel = [](qreal c) {
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(color.redF()) + 0.7152 * channel(color.greenF()) +
           0.0722 * channel(color.blueF());
}

// The contrast ratio of two colours as accessibility guidelines define it.
qreal contrast(QColor a, QColor b)
{
    const qreal la = luminance(a), lb = luminance(b);
    return (qMax(la, lb) + 0.05) / (qMin(la, lb) + 0.05);
}

// The image pixel for pixel over the title colour.
QImage onTitle(QImage image)
{
    image.setDevicePixelRatio(1);
    QImage composed(image.size(), QImage::Format_ARGB32);
    composed.fill(kTitleColor);
    QPainter(&composed).drawImage(0, 0, image);
    return composed;
}

} // namespace

class TestAuthResources : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void init()
    {
        m_env.resetHost();
        KResourceScheme::install();
    }

    // Small files, each with a companion drawn at twice the size, and how
    // each reads on the title colour at both sizes (points at 1x): the
    // cross stands out, the hover square is lighter, the pressed one darker.
    void images_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("side");    // and at most ten bytes per pixel of it
        QTest::addColumn<QPoint>("mark"); // stands out
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<QString>("check");

        const QPoint cross(10, 10), square(3, 10);
        QTest::newRow("close_normal") << "close_normal" << 20 << cross << square << "clear";
        QTest::newRow("close_hover") << "close_hover" << 20 << cross << square << "lighter";
        QTest::newRow("close_sunken") << "close_sunken" << 20 << cross << square << "darker";
        QTest::newRow("logo") << "logo" << 40 << QPoint(20, 15) << QPoint(11, 20) << "orange";
    }

    void images()
    {
        QFETCH(QString, name);
        QFETCH(int, side);
        QFETCH(QPoint, mark);
        QFETCH(QPoint, point);
        QFETCH(QString, check);

        const QString path = "res:/images/" + name + ".png";
        QVERIFY(QFileInfo(path).size() > 0 && QFileInfo(path).size() <= side * 10);
        for (const int ratio : {1, 2}) {
            QImage image(ratio == 1 ? path : "res:/images/" + name + "@2x.png");
            QCOMPARE(image.size(), QSize(side, side) * ratio);
            QCOMPARE(image.devicePixelRatio(), qreal(ratio));
            image = onTitle(image);
            const QColor marked = image.pixelColor(mark * ratio),
                         pixel = image.pixelColor(point * ratio);
            const QString seen = name + ": " + marked.name() + ' ' + pixel.name();
            QVERIFY2(contrast(marked, kTitleColor) >= 3, qPrintable(seen));
            if (check == "clear")
                QVERIFY2(pixel == kTitleColor, qPrintable(seen));
            else if (check == "lighter")
                QVERIFY2(pixel.lightness() >= kTitleColor.lightness() + 20, qPrintable(seen));
            else if (check == "darker")
                QVERIFY2(pixel.lightness() <= kTitleColor.lightness() - 20, qPrintable(seen));
            else
                QVERIFY2(pixel.red() > 200 && pixel.blue() < 100, qPrintable(seen));
        }
    }

    // The title's close button finds its images through "res:/images": the
    // cross in the middle of the close square, at both pixel ratios, pixel
    // for pixel the file for the ratio painted at (the @2x one at 2x), on a
    // screen of ratio 2 either way.
    void titleCloseImage_data()
    {
        QTest::addColumn<qreal>("ratio");
        QTest::newRow("1x") << 1.0;
        QTest::newRow("2x") << 2.0;
    }

    void titleCloseImage()
    {
        QFETCH(qreal, ratio);

        KxNimboCustomFrameDlg dialog;
        dialog.setTitleColor(kTitleColor);
        dialog.resize(600, 300);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QCOMPARE(dialog.findChild<KxNimboPixmapButton*>()->sizeHint(), QSize(20, 20));
        const QImage image = paint(&dialog, Qt::magenta, ratio);
        const QRect square(559, 0, 41, 40);
        const QRect ink(QPoint(square.left() * ratio, 0), square.size() * ratio);
        // The cross's 8 x 8 pixels (at 1x) in the middle of the square.
        const QRect cross = inkBounds(image, kTitleColor, ink);
        QString seen;
        QDebug(&seen) << cross;
        QVERIFY2(qAbs(cross.center().x() - ink.center().x()) <= ratio &&
                     qAbs(cross.center().y() - ink.center().y()) <= ratio &&
                     qAbs(cross.width() - 8 * ratio) <= 2 * ratio,
                 qPrintable(seen));
        QVERIFY(contrast(image.pixelColor(ink.center()), kTitleColor) >= 3);
        const QImage file = onTitle(QImage(ratio == 1 ? "res:/images/close_normal.png"
                                                      : "res:/images/close_normal@2x.png"));
        const QPoint origin = cross.topLeft() - inkBounds(file, kTitleColor).topLeft();
        QVERIFY(image.copy(QRect(origin, file.size())) == file);
    }
};

int main(int argc, char** argv)
{
    qputenv("QT_SCALE_FACTOR", "2");
    KQtCompat::useHighDpiPixmaps();
    QApplication app(argc, argv);
    TestAuthResources test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_authresources.moc"
