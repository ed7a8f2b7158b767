// The compiled-in title images through the host's "res:" scheme: sizes,
// their look on the title colour, the @2x companions QIcon picks on a
// high-density screen, and the close image in the frame dialog's title. The
// suite runs on a screen with device pixel ratio 2 (QT_SCALE_FACTOR).

#include "ktestenvironment.h"
#include "kwidgetpixels.h"

#include <kxnimbocustomframedlg.h>
#include <kxnimbopixmapbutton.h>

#include <vex/kresourcescheme.h>

#include <QIcon>
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

    void images_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("maxBytes");

        QTest::newRow("close_normal") << "close_normal" << QSize(20, 20) << 200;
        QTest::newRow("close_hover") << "close_hover" << QSize(20, 20) << 200;
        QTest::newRow("close_sunken") << "close_sunken" << QSize(20, 20) << 200;
        QTest::newRow("logo") << "logo" << QSize(40, 40) << 400;
    }

    // Small files, each with a companion drawn at twice the size.
    void images()
    {
        QFETCH(QString, name);
        QFETCH(QSize, size);
        QFETCH(int, maxBytes);

        const QString path = "res:/images/" + name + ".png";
        QVERIFY(QFile::exists(path));
        QVERIFY(QFileInfo(path).size() <= maxBytes);
        QCOMPARE(QImage(path).size(), size);
        const QImage companion("res:/images/" + name + "@2x.png");
        QCOMPARE(companion.size(), size * 2);
        QCOMPARE(companion.devicePixelRatio(), 2.0);
    }

    // How each image reads on the title colour, at 1x and at 2x (points in
    // 1x coordinates).
    void look_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<QString>("check");

        QTest::newRow("normal cross") << "close_normal" << QPoint(10, 10) << "contrast";
        QTest::newRow("normal around it") << "close_normal" << QPoint(3, 10) << "clear";
        QTest::newRow("hover cross") << "close_hover" << QPoint(10, 10) << "contrast";
        QTest::newRow("hover square") << "close_hover" << QPoint(3, 10) << "lighter";
        QTest::newRow("sunken cross") << "close_sunken" << QPoint(10, 10) << "contrast";
        QTest::newRow("sunken square") << "close_sunken" << QPoint(3, 10) << "darker";
        QTest::newRow("logo mark") << "logo" << QPoint(11, 20) << "orange";
        QTest::newRow("logo letter") << "logo" << QPoint(20, 15) << "contrast";
        QTest::newRow("logo padding") << "logo" << QPoint(4, 20) << "clear";
    }

    void look()
    {
        QFETCH(QString, name);
        QFETCH(QPoint, point);
        QFETCH(QString, check);

        for (const QString& suffix : {QString(), QString("@2x")}) {
            const QImage image = onTitle(QImage("res:/images/" + name + suffix + ".png"));
            const QColor pixel = image.pixelColor(point * (suffix.isEmpty() ? 1 : 2));
            const QString seen = name + suffix + ": " + pixel.name();
            if (check == "contrast")
                QVERIFY2(contrast(pixel, kTitleColor) >= 3, qPrintable(seen));
            else if (check == "clear")
                QVERIFY2(pixel == kTitleColor, qPrintable(seen));
            else if (check == "lighter")
                QVERIFY2(pixel.lightness() >= kTitleColor.lightness() + 20, qPrintable(seen));
            else if (check == "darker")
                QVERIFY2(pixel.lightness() <= kTitleColor.lightness() - 20, qPrintable(seen));
            else
                QVERIFY2(pixel.red() > 200 && pixel.blue() < 100, qPrintable(seen));
        }
    }

    // QIcon takes the @2x companion on this screen, found through "res:".
    void iconPicksCompanion()
    {
        QCOMPARE(qApp->devicePixelRatio(), 2.0);
        const QPixmap pixmap = QIcon("res:/images/close_hover.png").pixmap(QSize(20, 20));
        QCOMPARE(pixmap.devicePixelRatio(), 2.0);
        QCOMPARE(pixmap.toImage().convertToFormat(QImage::Format_ARGB32),
                 QImage(":/images/close_hover@2x.png").convertToFormat(QImage::Format_ARGB32));
    }

    // The title's close button finds its images through "res:/images": the
    // cross in the middle of the close square, at both pixel ratios. It
    // loads them with QPixmap, which keeps the named file (no @2x).
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
        QVERIFY2(qAbs(cross.center().x() - ink.center().x()) <= ratio &&
                     qAbs(cross.center().y() - ink.center().y()) <= ratio &&
                     qAbs(cross.width() - 8 * ratio) <= 2 * ratio,
                 qPrintable(QString("%1,%2 %3x%4")
                                .arg(cross.x())
                                .arg(cross.y())
                                .arg(cross.width())
                                .arg(cross.height())));
        QVERIFY(contrast(image.pixelColor(ink.center()), kTitleColor) >= 3);
    }
};

int main(int argc, char** argv)
{
    qputenv("QT_SCALE_FACTOR", "2");
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication app(argc, argv);
    TestAuthResources test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_authresources.moc"
