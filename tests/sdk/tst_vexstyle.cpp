// The stand-in host's helpers that the plug-in's widgets rest on and that
// its own suites do not pin down: centring, where the display scale comes
// from, the layers of the "res:" scheme and the dialog base's run.
// Screen-dependent answers come from this program run again in probe mode,
// with the screen's DPI or the application folder set up for it.

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <vex/kresourcescheme.h>
#include <vex/kxapplication.h>
#include <vex/kxstyledialog.h>
#include <vex/kzentostyle.h>
#include <vex/rectutils.h>
#include <vexlite/hostcontrol.h>

#include <QPixmap>
#include <QPushButton>
#include <QTextStream>
#include <QtTest>

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
        QFile file(path);
        if (path.endsWith(".png"))
            out << QPixmap(path).width() << 'x' << QPixmap(path).height() << '\n';
        else
            out << (file.open(QIODevice::ReadOnly) ? QString(file.readLine()).trimmed() : "-")
                << '\n';
    }
    return 0;
}

} // namespace

class TestVexStyle : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

    // This program in probe mode, run from the application folder app.
    KTestAppDir::Result probe(const KTestAppDir& app, const QStringList& args,
                              const QString& profile, const QString& fontDpi)
    {
        QProcessEnvironment env;
        // A screen at that logical DPI which Qt leaves to the host to scale
        // for: Qt 5 always does; Qt 6 scales itself unless told not to, and
        // then shows the host a screen at 96 DPI.
        env.insert("QT_FONT_DPI", fontDpi);
        env.insert("QT_ENABLE_HIGHDPI_SCALING", "0");
        env.insert(profileEnvironmentVariable(), profile);
        return app.run(QCoreApplication::applicationName(), QStringList{kProbeOption} + args, env);
    }

private slots:
    void init() { m_env.resetHost(); }

    // Integer centring: an odd leftover goes right and below, a larger
    // content reaches up and left.
    void centerRect_data()
    {
        QTest::addColumn<QRect>("area");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QRect>("expected");
        QTest::newRow("odd leftover")
            << QRect(0, 0, 41, 40) << QSize(20, 19) << QRect(10, 10, 20, 19);
        QTest::newRow("area not at the origin")
            << QRect(100, -50, 10, 10) << QSize(4, 4) << QRect(103, -47, 4, 4);
        QTest::newRow("larger content")
            << QRect(0, 0, 10, 10) << QSize(13, 15) << QRect(-2, -3, 13, 15);
    }

    void centerRect()
    {
        QFETCH(QRect, area);
        QFETCH(QSize, size);
        QFETCH(QRect, expected);
        QCOMPARE(calcCenterRect(area, size), expected);
    }

    // The display scale: the screen's logical DPI in quarter steps, never
    // below 100 %, unless the profile names a usable scale. Then the same
    // relative paths in every layer of "res:": the first layer that has a
    // file wins, for files and images alike. Layers write "which.txt" naming
    // themselves and a "which.png" of their own size; the compiled-in one is
    // 2 x 2. Run in a copy of this program in an application folder of its
    // own, so the "res" folder beside it is the test's.
    void probed_data()
    {
        QTest::addColumn<QString>("fontDpi");
        QTest::addColumn<QString>("profileScale");
        QTest::addColumn<QStringList>("layers");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("expected"); // the scale, then the path's text and image
        const auto row = [](const char* tag, const char* dpi, const char* scale,
                            const QStringList& layers, const char* path, const char* expected) {
            QTest::newRow(tag) << QString(dpi) << QString(scale) << layers << QString(path)
                               << QString(expected);
        };
        row("120 dpi", "120", "", {}, "", "1.25");
        row("never below 100 %", "72", "", {}, "", "1");
        row("profile over screen", "192", "1.5", {}, "", "1.5");
        row("zero follows the screen", "144", "0", {}, "", "1.5");
        row("absurd follows the screen", "192", "1000", {}, "", "2");
        row("profile first", "96", "", {"profile", "app"}, "res:/layers/which", "1 profile 4x4");
        row("then the application", "96", "", {"app"}, "res:/layers/which", "1 app 6x6");
        row("then compiled in", "96", "", {}, "res:/layers/which", "1 qrc 2x2");
        row("missing everywhere", "96", "", {"profile", "app"}, "res:/layers/none", "1 - 0x0");
    }

    void probed()
    {
        QFETCH(QString, fontDpi);
        QFETCH(QString, profileScale);
        QFETCH(QStringList, layers);
        QFETCH(QString, path);
        QFETCH(QString, expected);

        const KTestAppDir app(m_env.rootPath());
        QVERIFY(app.installExecutable(QCoreApplication::applicationName()));
        const QString display = profileScale.isEmpty()
                                    ? ""
                                    : QString(", \"display\": {\"scale\": %1}").arg(profileScale);
        QVERIFY(
            app.writeFile("profile/host.json", QString("{\"i18n\": {}%1}").arg(display).toUtf8()));
        for (const QString& layer : layers) {
            const QString dir = (layer == "app" ? "res" : "profile/res") + QString("/layers/");
            QImage image(layer == "profile" ? 4 : 6, layer == "profile" ? 4 : 6,
                         QImage::Format_ARGB32);
            image.fill(Qt::red);
            QVERIFY(app.writeFile(dir + "which.txt", layer.toUtf8()) &&
                    image.save(app.filePath(dir + "which.png")));
        }
        const QStringList args =
            path.isEmpty() ? QStringList() : QStringList{path + ".txt", path + ".png"};
        const KTestAppDir::Result result = probe(app, args, app.filePath("profile"), fontDpi);
        QCOMPARE(result.out.trimmed().replace('\n', ' ') + ' ' + QString::number(result.exitCode),
                 expected + " 0");
    }

    // exec() runs application-modal. Hiding the window the dialog belongs to
    // ends the run; hiding a window it no longer belongs to does not.
    void dialogFollowsItsWindow_data()
    {
        QTest::addColumn<bool>("reparent");
        QTest::addColumn<bool>("hideFirst");
        QTest::addColumn<bool>("ended");
        QTest::newRow("own window hidden") << false << true << true;
        QTest::newRow("moved, old window hidden") << true << true << false;
        QTest::newRow("moved, new window hidden") << true << false << true;
    }

    void dialogFollowsItsWindow()
    {
        QFETCH(bool, reparent);
        QFETCH(bool, hideFirst);
        QFETCH(bool, ended);

        QWidget first, second;
        QPushButton* button = new QPushButton(&first); // the dialog's parent is a child
        first.show();
        second.show();
        KxStyleDialog* dialog = new KxStyleDialog(button);
        if (reparent)
            dialog->setParent(&second, dialog->windowFlags());
        QSignalSpy rejected(dialog, &QDialog::rejected);
        Qt::WindowModality modality = Qt::NonModal;
        QTimer::singleShot(0, dialog, [&] {
            modality = dialog->windowModality();
            (hideFirst ? first : second).hide();
            if (dialog->isVisible())
                dialog->done(-1);
        });
        // Rejected by the dialog itself, not merely hidden along with the window.
        QCOMPARE(dialog->exec(), ended ? int(QDialog::Rejected) : -1);
        QCOMPARE(rejected.count(), ended ? 1 : 0);
        QCOMPARE(modality, Qt::ApplicationModal);
        delete dialog;
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
