// The gallery's screenshot mode: it writes every picture at 100 % and at
// 200 % (the same layout at twice the pixels), and the web dialog in English
// and Chinese, and exits, without a display.

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <QImage>
#include <QtTest>

using namespace AuthTest;

class TestWidgetGallery : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

    // Offscreen, as the suites run.
    KTestAppDir::Result runGallery(const QStringList& args)
    {
        return KTestAppDir(m_env.rootPath())
            .run(QCoreApplication::applicationDirPath() + "/widgetgallery", args);
    }

private slots:
    // Each picture at 100 % and at 200 %, the same layout at twice the pixels.
    void screenshots()
    {
        const QString dir = m_env.rootPath() + "/shots";
        const KTestAppDir::Result result = runGallery({"--screenshots", dir});
        QVERIFY2(result.exitCode == 0, qPrintable(result.err));
        const QImage gallery(dir + "/gallery-100.png");
        QVERIFY(!gallery.isNull());
        QCOMPARE(QImage(dir + "/gallery-200.png").size(), gallery.size() * 2);
        for (const int scale : {1, 2}) {
            const QImage dialog(QString("%1/framedlg-%2.png").arg(dir).arg(scale * 100));
            QCOMPARE(dialog.size(), QSize(600, 300) * scale);
        }

        // The web dialog in both languages, each picture its own (what the
        // dialog draws is the web and widget suites' business); none in a
        // build without a web engine.
        QList<QImage> pages;
        for (const char* name : {"service-en", "service-zh_CN", "offline-en", "offline-zh_CN"}) {
            const QImage page(QString("%1/webdlg-%2.png").arg(dir, name));
            QCOMPARE(page.isNull(), !AUTH_WEB_DIALOG);
            if (!AUTH_WEB_DIALOG)
                continue;
            QCOMPARE(page.size(), QSize(602, 341));
            QVERIFY2(!pages.contains(page), name);
            pages << page;
        }
    }

    void badArguments_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("message");

        QTest::newRow("scale not a number") << QStringList{"--scale", "big"} << "--scale";
        QTest::newRow("folder not writable")
            << QStringList{"--screenshots", "/proc/no-such-dir"} << "cannot create";
    }

    void badArguments()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, message);

        const KTestAppDir::Result result = runGallery(args);
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(message), qPrintable(result.err));
    }
};

QTEST_MAIN(TestWidgetGallery)

#include "tst_widgetgallery.moc"
