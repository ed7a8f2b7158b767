// The stand-in host's style helpers, rectangle helpers, "res:" scheme and
// dialog base. Screen-dependent answers come from this program run again in
// probe mode, with the screen's DPI or the application folder set up for it.

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <vex/kresourcescheme.h>
#include <vex/kxapplication.h>
#include <vex/kxstyledialog.h>
#include <vex/kzentostyle.h>
#include <vex/rectutils.h>
#include <vexlite/hostcontrol.h>

#include <QIcon>
#include <QPixmap>
#include <QProxyStyle>
#include <QPushButton>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTextStream>
#include <QtTest>

#include <cmath>

using namespace AuthTest;

using namespace krt::hostcontrol;

namespace {

const char kProbeOption[] = "--probe";

// Probe mode: the display scale, then per argument what the host
// application finds there: the size of a ".png" as a pixmap, else the first
// line of the file ("-" when it does not open).
int runProbe(int argc, char** argv)
{
    KxApplication app(argc, argv);
    QTextStream out(stdout);
    out << KZentoStyle::dpiScale() << '\n';
    for (int i = 2; i < argc; ++i) {
        const QString path = QString::fromLocal8Bit(argv[i]);
        if (path.endsWith(".png")) {
            const QSize size = QPixmap(path).size();
            out << size.width() << 'x' << size.height() << '\n';
            continue;
        }
        QFile file(path);
        out << (file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readLine()).trimmed() : "-")
            << '\n';
    }
    return 0;
}

QImage solidImage(int side, QColor color)
{
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

class AnsweringStyle : public QProxyStyle
{
public:
    AnsweringStyle()
        : QProxyStyle(QStyleFactory::create("Fusion"))
    {}
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override
    {
        ++asked;
        if (type == CT_CustomBase + 7)
            return QSize(70, option ? option->rect.height() : 7);
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    }
    mutable int asked = 0;
};

} // namespace

class TestVexStyle : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

    // This program in probe mode, in place or as copied into `app`.
    KTestAppDir::Result probe(const QStringList& args, const QProcessEnvironment& env,
                              const KTestAppDir* app = nullptr)
    {
        const QStringList all = QStringList{kProbeOption} + args;
        if (app)
            return app->run(QCoreApplication::applicationName(), all, env);
        return KTestAppDir(m_env.rootPath()).run(QCoreApplication::applicationFilePath(), all, env);
    }

private slots:
    void init()
    {
        m_env.resetHost();
        KResourceScheme::install();
    }

    void centerRect_data()
    {
        QTest::addColumn<QRect>("area");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QRect>("expected");

        QTest::newRow("even leftover")
            << QRect(0, 0, 40, 40) << QSize(20, 10) << QRect(10, 15, 20, 10);
        QTest::newRow("odd leftover stays right and below")
            << QRect(0, 0, 41, 40) << QSize(20, 19) << QRect(10, 10, 20, 19);
        QTest::newRow("area not at the origin")
            << QRect(100, -50, 10, 10) << QSize(4, 4) << QRect(103, -47, 4, 4);
        QTest::newRow("larger content reaches up and left")
            << QRect(0, 0, 10, 10) << QSize(13, 15) << QRect(-2, -3, 13, 15);
        QTest::newRow("empty size") << QRect(0, 0, 41, 40) << QSize(0, 0) << QRect(20, 20, 0, 0);
    }

    void centerRect()
    {
        QFETCH(QRect, area);
        QFETCH(QSize, size);
        QFETCH(QRect, expected);
        QCOMPARE(calcCenterRect(area, size), expected);
    }

    void cutRect_data()
    {
        QTest::addColumn<int>("left");
        QTest::addColumn<int>("right");
        QTest::addColumn<QRect>("expected");

        QTest::newRow("icon and close square") << 40 << 41 << QRect(40, 0, 519, 40);
        QTest::newRow("nothing") << 0 << 0 << QRect(0, 0, 600, 40);
        QTest::newRow("negative widens") << -5 << -5 << QRect(-5, 0, 610, 40);
        QTest::newRow("more than the width") << 400 << 400 << QRect(400, 0, -200, 40);
    }

    void cutRect()
    {
        QFETCH(int, left);
        QFETCH(int, right);
        QFETCH(QRect, expected);

        QRect rect(0, 0, 600, 40);
        cutRectLeft(rect, left);
        cutRectRight(rect, right);
        QCOMPARE(rect, expected);
        QCOMPARE(rect.isEmpty(), left + right >= 600);
    }

    void scaled_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<qreal>("real");
        QTest::addColumn<QRect>("rect");
        QTest::addColumn<QRect>("expected");

        // Rectangles carry both a point and a size: each part scales alone.
        QTest::newRow("100 %") << 1.0 << 16.0 << QRect(45, 41, 211, 53) << QRect(45, 41, 211, 53);
        QTest::newRow("125 % rounds halves up")
            << 1.25 << 20.0 << QRect(2, 10, 6, 40) << QRect(3, 13, 8, 50);
        QTest::newRow("150 %") << 1.5 << 24.0 << QRect(45, 41, 211, 53) << QRect(68, 62, 317, 80);
        QTest::newRow("150 % negative")
            << 1.5 << 24.0 << QRect(-3, -1, 1, 0) << QRect(-4, -1, 2, 0);
        QTest::newRow("200 %") << 2.0 << 32.0 << QRect(0, 0, 211, 53) << QRect(0, 0, 422, 106);
    }

    void scaled()
    {
        QFETCH(qreal, scale);
        QFETCH(qreal, real);
        QFETCH(QRect, rect);
        QFETCH(QRect, expected);

        setDisplayScale(scale);
        QCOMPARE(KZentoStyle::dpiScale(), scale);
        QCOMPARE(KZentoStyle::dpiScaled(16.0), real);
        QCOMPARE(KZentoStyle::dpiScaledRect(rect), expected);
        QCOMPARE(KZentoStyle::dpiScaledPoint(rect.topLeft()), expected.topLeft());
        QCOMPARE(KZentoStyle::dpiScaledSize(rect.size()), expected.size());
    }

    // Where the scale comes from: the screen's logical DPI in quarter steps,
    // unless the profile or the control API says otherwise.
    void scaleSource_data()
    {
        QTest::addColumn<QString>("fontDpi");
        QTest::addColumn<QString>("profileScale");
        QTest::addColumn<QString>("expected");

        QTest::newRow("100 dpi is 100 %") << "100"
                                          << ""
                                          << "1";
        QTest::newRow("120 dpi") << "120"
                                 << ""
                                 << "1.25";
        QTest::newRow("144 dpi") << "144"
                                 << ""
                                 << "1.5";
        QTest::newRow("192 dpi") << "192"
                                 << ""
                                 << "2";
        QTest::newRow("never below 100 %") << "72"
                                           << ""
                                           << "1";
        QTest::newRow("profile over screen") << "192"
                                             << "1.5"
                                             << "1.5";
        QTest::newRow("zero follows the screen") << "144"
                                                 << "0"
                                                 << "1.5";
        QTest::newRow("absurd follows the screen") << "144"
                                                   << "1000"
                                                   << "1.5";
    }

    void scaleSource()
    {
        QFETCH(QString, fontDpi);
        QFETCH(QString, profileScale);
        QFETCH(QString, expected);

        const QString profile = m_env.rootPath() + "/scale-profile";
        const QString display = profileScale.isEmpty()
                                    ? ""
                                    : QString(", \"display\": { \"scale\": %1 }").arg(profileScale);
        QVERIFY(KTestAppDir::write(profile + "/host.json",
                                   QString("{ \"i18n\": {}%1 }").arg(display).toUtf8()));
        QProcessEnvironment env;
        env.insert("QT_FONT_DPI", fontDpi);
        env.insert(profileEnvironmentVariable(), profile);
        const KTestAppDir::Result result = probe({}, env);
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.out.trimmed(), expected);
    }

    void scaleControl_data()
    {
        QTest::addColumn<qreal>("set");
        QTest::addColumn<qreal>("kept");

        QTest::newRow("150 %") << 1.5 << 1.5;
        QTest::newRow("not a number") << qreal(NAN) << 0.0;
        QTest::newRow("above 8") << 9.0 << 0.0;
    }

    // The override lives in the profile: saved and loaded again it is kept.
    void scaleControl()
    {
        QFETCH(qreal, set);
        QFETCH(qreal, kept);

        setDisplayScale(set);
        QCOMPARE(displayScale(), kept);
        const QString dir = m_env.rootPath() + "/saved-profile";
        QVERIFY(saveProfile(dir));
        setDisplayScale(1.25);
        QVERIFY(loadProfile(dir));
        QCOMPARE(displayScale(), kept);
        // The offscreen screen has 100 logical DPI: 100 % when nothing is set.
        QCOMPARE(KZentoStyle::dpiScale(), kept > 0 ? kept : 1.0);
    }

    void sizeMetric_data()
    {
        QTest::addColumn<bool>("withStyle");
        QTest::addColumn<int>("metric");
        QTest::addColumn<QSize>("expected");
        QTest::addColumn<int>("asked");

        QTest::newRow("application style answers") << true << 7 << QSize(70, 24) << 1;
        QTest::newRow("unknown to style and host") << true << 8 << QSize() << 1;
        QTest::newRow("without a style") << false << 7 << QSize() << 0;
        QTest::newRow("negative, style not asked") << true << -1 << QSize() << 0;
    }

    void sizeMetric()
    {
        QFETCH(bool, withStyle);
        QFETCH(int, metric);
        QFETCH(QSize, expected);
        QFETCH(int, asked);

        AnsweringStyle style;
        QStyleOption option;
        option.rect = QRect(0, 0, 100, 24);
        QCOMPARE(KZentoStyle::sizeMetric(withStyle ? &style : nullptr, metric, &option, nullptr),
                 expected);
        QCOMPARE(style.asked, asked);
        // No option, no widget: still an answer, never a crash.
        const QSize bare =
            KZentoStyle::sizeMetric(withStyle ? &style : nullptr, metric, nullptr, nullptr);
        QCOMPARE(bare.isValid(), expected.isValid());
    }

    // The same relative paths in every layer: the first layer that has a
    // file wins, for files and images alike, however the path is spelt.
    void resourceLayers_data()
    {
        QTest::addColumn<QStringList>("layers");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("expected");

        // Layers write "which.txt" naming themselves and a "which.png" of
        // their own size; the compiled-in one is 2 x 2.
        const QStringList all{"profile", "app"};
        QTest::newRow("profile first") << all << "res:/layers/which"
                                       << "profile 4x4";
        QTest::newRow("then the application") << QStringList{"app"} << "res:/layers/which"
                                              << "app 6x6";
        QTest::newRow("then compiled in") << QStringList() << "res:/layers/which"
                                          << "qrc 2x2";
        QTest::newRow("no slash") << all << "res:layers/which"
                                  << "profile 4x4";
        QTest::newRow("two slashes") << all << "res://layers/which"
                                     << "profile 4x4";
        QTest::newRow("dot segments") << QStringList() << "res:/layers/../layers/which"
                                      << "qrc 2x2";
        QTest::newRow("missing everywhere") << all << "res:/layers/none"
                                            << "- 0x0";
        QTest::newRow("other scheme") << all << "rez:/layers/which"
                                      << "- 0x0";
    }

    // Run in a copy of this program in an application folder of its own, so
    // the "res" folder beside it is the test's.
    void resourceLayers()
    {
        QFETCH(QStringList, layers);
        QFETCH(QString, path);
        QFETCH(QString, expected);

        KTestAppDir app(m_env.rootPath());
        QVERIFY(app.installExecutable(QCoreApplication::applicationName()));
        const QString profile = app.filePath("profile");
        QVERIFY(KTestAppDir::write(profile + "/host.json", "{}"));
        const QMap<QString, QString> roots{{"profile", profile + "/res"},
                                           {"app", app.filePath("res")}};
        for (const QString& layer : layers) {
            const QString dir = roots[layer] + "/layers/";
            QVERIFY(KTestAppDir::write(dir + "which.txt", layer.toUtf8()));
            QVERIFY(solidImage(layer == "profile" ? 4 : 6, Qt::red).save(dir + "which.png"));
        }
        QProcessEnvironment env;
        env.insert(profileEnvironmentVariable(), profile);
        const KTestAppDir::Result result = probe({path + ".txt", path + ".png"}, env, &app);
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.out.section('\n', 1, 2).replace('\n', ' '), expected);
    }

    // exec() runs application-modal. Hiding the window the dialog belongs to
    // ends the run; hiding a window it no longer belongs to does not.
    void dialogFollowsItsWindow_data()
    {
        QTest::addColumn<bool>("reparent");
        QTest::addColumn<bool>("hideFirst");
        QTest::addColumn<int>("result");
        QTest::addColumn<bool>("stillVisible");

        QTest::newRow("own window hidden") << false << true << int(QDialog::Rejected) << false;
        QTest::newRow("moved, old window hidden") << true << true << -1 << true;
        QTest::newRow("moved, new window hidden")
            << true << false << int(QDialog::Rejected) << false;
    }

    void dialogFollowsItsWindow()
    {
        QFETCH(bool, reparent);
        QFETCH(bool, hideFirst);
        QFETCH(int, result);
        QFETCH(bool, stillVisible);

        QWidget first, second;
        QPushButton* button = new QPushButton(&first); // the dialog's parent is a child
        first.show();
        second.show();
        KxStyleDialog* dialog = new KxStyleDialog(button);
        if (reparent)
            dialog->setParent(&second, dialog->windowFlags());
        QWidget* toHide = hideFirst ? &first : &second;
        QSignalSpy rejected(dialog, &QDialog::rejected);
        bool visible = false;
        Qt::WindowModality modality = Qt::NonModal;
        QTimer::singleShot(0, dialog, [&] {
            modality = dialog->windowModality();
            toHide->hide();
            visible = dialog->isVisible();
            if (visible)
                dialog->done(-1);
        });
        QCOMPARE(dialog->exec(), result);
        QCOMPARE(modality, Qt::ApplicationModal);
        QCOMPARE(visible, stillVisible);
        // Rejected by the dialog itself, not merely hidden along with the window.
        QCOMPARE(rejected.count(), stillVisible ? 0 : 1);
        delete dialog;
    }

    void dialogKeys_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<bool>("rejected");

        QTest::newRow("Escape") << int(Qt::Key_Escape) << int(Qt::NoModifier) << true;
        QTest::newRow("Ctrl+Escape") << int(Qt::Key_Escape) << int(Qt::ControlModifier) << false;
    }

    void dialogKeys()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(bool, rejected);

        KxStyleDialog dialog;
        QSignalSpy spy(&dialog, &QDialog::rejected);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QTest::keyClick(&dialog, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(spy.count(), rejected ? 1 : 0);
        QCOMPARE(dialog.isVisible(), !rejected);
    }
};

int main(int argc, char** argv)
{
    if (argc > 1 && qstrcmp(argv[1], kProbeOption) == 0)
        return runProbe(argc, argv);
    KxApplication app(argc, argv);
    TestVexStyle test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_vexstyle.moc"
