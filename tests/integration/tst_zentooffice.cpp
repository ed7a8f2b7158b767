// The reference host's screenshot walk, run as make run runs it without a
// display: every state saved, and the pictures show what they are named
// after. And a host without its plug-in says so.

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <QImage>
#include <QtTest>

using namespace AuthTest;

namespace {

// A build without a web engine has no Welcome page to take.
const QStringList kShots =
    QStringList{"signed-in", "company",         "account-menu",
                "offline",   "login-error-tip", "signed-out"} +
    (AUTH_WEB_DIALOG ? QStringList{"webdlg-online", "webdlg-offline", "bridge-page"}
                     : QStringList()) +
    QStringList{"developer-panel", "account-menu-zh_CN", "offline-zh_CN"};

// The launcher page's band, behind its heading.
const QColor kLauncherBand(0xE3, 0xEC, 0xFB);

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
        // No display: the suites run offscreen, and so does what they start.
        const QString dir = m_env.rootPath() + "/shots";
        const KTestAppDir::Result run =
            KTestAppDir(m_env.rootPath())
                .run(m_bin + "/zentooffice",
                     {"--profile", m_bin + "/profile", "--screenshots", dir}, {}, 60000);
        QVERIFY2(run.exitCode == 0, qPrintable(run.err));
        QStringList expected;
        for (const QString& name : kShots)
            expected << dir + "/host-" + name + ".png";
        QCOMPARE(run.out.split('\n', Qt::SkipEmptyParts), expected);

        QHash<QString, QImage> shot;
        for (int i = 0; i < kShots.size(); ++i) {
            shot[kShots[i]] = QImage(expected[i]).convertToFormat(QImage::Format_ARGB32);
            QVERIFY2(shot[kShots[i]].width() >= 640 && shot[kShots[i]].height() >= 400,
                     qPrintable(kShots[i]));
        }
        // The company mark's blue, the veil's grey, no button when signed out;
        // menus and balloons reach past the window.
        const QColor blue(0x2F, 0x6F, 0xED);
        QVERIFY(countNear(shot["company"], titleRightEnd(shot["company"]), blue, 30) > 20);
        QVERIFY(countNear(shot["offline"], titleRightEnd(shot["offline"]), QColor(177, 177, 177),
                          12) > 500);
        QCOMPARE(countNear(shot["signed-out"], titleRightEnd(shot["signed-out"]), blue, 30), 0);
        for (const char* name :
             {"account-menu", "offline", "login-error-tip", "account-menu-zh_CN", "offline-zh_CN"})
            QVERIFY2(shot[name].width() > 640, name);
        // The launcher page from the local server, and the offline page when
        // the pages cannot be reached; the panel beside the document.
        if (AUTH_WEB_DIALOG) {
            const QImage& online = shot["webdlg-online"];
            QVERIFY(countNear(online, online.rect(), kLauncherBand, 6) > 20000);
            QCOMPARE(
                countNear(shot["webdlg-offline"], shot["webdlg-offline"].rect(), kLauncherBand, 6),
                0);
        } else {
            // A build without a web module does not call its absence a fault.
            QVERIFY2(!run.err.contains("no Welcome page"), qPrintable(run.err));
        }
        QVERIFY(shot["developer-panel"].width() > 1000);
    }

    // Without the plug-in beside it, a clear message and status 2.
    void withoutPlugin()
    {
        const KTestAppDir app(m_env.rootPath());
        QVERIFY(app.installExecutable("zentooffice"));
        const KTestAppDir::Result run = app.run("zentooffice", {"--screenshots", "x"});
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains("cannot use the plug-in " + app.filePath("libauthplugin.so")),
                 qPrintable(run.err));
    }
};

QTEST_MAIN(TestZentoOffice)
#include "tst_zentooffice.moc"
