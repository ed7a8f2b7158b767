// The reference host's screenshot walk, run as make run runs it without a
// display: every state saved, and the pictures show what they are named
// after. And a host without its plug-in says so.

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <QImage>
#include <QtTest>

using namespace AuthTest;

namespace {

const QStringList kShots{"signed-in",       "company",    "account-menu",       "offline",
                         "login-error-tip", "signed-out", "account-menu-zh_CN", "offline-zh_CN"};

// The title area's right end, where the user-centre button sits.
QRect titleRightEnd(const QImage& shot)
{
    return QRect(640 - 160, 2, 150, 28).intersected(shot.rect());
}

int countNear(const QImage& image, const QRect& area, QColor color, int tolerance)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const QColor c = image.pixelColor(x, y);
            count += qAbs(c.red() - color.red()) <= tolerance &&
                     qAbs(c.green() - color.green()) <= tolerance &&
                     qAbs(c.blue() - color.blue()) <= tolerance;
        }
    }
    return count;
}

} // namespace

class TestZentoOffice : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    const QString m_bin = QCoreApplication::applicationDirPath();

private slots:
    void screenshotWalk()
    {
        const QString dir = m_env.rootPath() + "/shots";
        QProcessEnvironment env;
        env.insert("QT_QPA_PLATFORM", "offscreen");
        const KTestAppDir::Result run =
            KTestAppDir(m_env.rootPath())
                .run(m_bin + "/zentooffice",
                     {"--profile", m_bin + "/profile", "--screenshots", dir}, env, 60000);
        QVERIFY2(run.exitCode == 0, qPrintable(run.err));
        QStringList expected;
        for (const QString& name : kShots)
            expected << dir + "/" + name + ".png";
        QCOMPARE(run.out.split('\n', Qt::SkipEmptyParts), expected);

        QImage shots[8];
        for (int i = 0; i < kShots.size(); ++i) {
            shots[i] = QImage(expected[i]).convertToFormat(QImage::Format_ARGB32);
            QVERIFY2(shots[i].width() >= 640 && shots[i].height() >= 360, qPrintable(kShots[i]));
        }
        // The company mark's blue, the veil's grey, no button when signed out;
        // menus and balloons reach past the window.
        QVERIFY(countNear(shots[1], titleRightEnd(shots[1]), QColor(0x2F, 0x6F, 0xED), 30) > 20);
        QVERIFY(countNear(shots[3], titleRightEnd(shots[3]), QColor(177, 177, 177), 12) > 500);
        QCOMPARE(countNear(shots[5], titleRightEnd(shots[5]), QColor(0x2F, 0x6F, 0xED), 30), 0);
        for (int i : {2, 3, 4, 6, 7})
            QVERIFY2(shots[i].width() > 640, qPrintable(kShots[i]));
    }

    // Without the plug-in beside it, a clear message and status 2.
    void withoutPlugin()
    {
        const KTestAppDir app(m_env.rootPath());
        QVERIFY(app.installExecutable("zentooffice"));
        QProcessEnvironment env;
        env.insert("QT_QPA_PLATFORM", "offscreen");
        const KTestAppDir::Result run = app.run("zentooffice", {"--screenshots", "x"}, env);
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains("cannot use the plug-in " + app.filePath("libauthplugin.so")),
                 qPrintable(run.err));
    }
};

QTEST_MAIN(TestZentoOffice)
#include "tst_zentooffice.moc"
