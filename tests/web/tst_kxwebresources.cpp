// The library's localised pages: its separator and "qrc" rules on top of
// the host's lookup by language folder, and the pages themselves.

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <kxwebresources.h>

#include <vexlite/hostcontrol.h>

#include <QDirIterator>
#include <QtTest>

using namespace AuthTest;

class TestKxWebResources : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void init() { m_env.resetHost(); }

    // The file name first, the directory second; the answer in "/" whatever
    // the directory was written with.
    void muiFile_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("dir"); // "%1": a folder of pages on disk
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("path");

        const auto row = [](const char* tag, const char* language, const char* dir,
                            const char* file, const char* path) {
            QTest::newRow(tag) << QString(language) << QString(dir) << QString(file)
                               << QString(path);
        };
        row("on disk", "zh_CN", "%1/", "a.html", "%1/zh_CN/a.html");
        row("missing", "zh_CN", "%1/", "d.html", "");
        row("resources, backslashes", "zh_CN", ":\\auth_plugin\\mui\\", "offline.html",
            ":/auth_plugin/mui/zh_CN/offline.html");
    }

    void muiFile()
    {
        QFETCH(QString, language);
        QFETCH(QString, dir);
        QFETCH(QString, file);
        QFETCH(QString, path);

        const QString pages = m_env.rootPath() + "/pages";
        QVERIFY(KTestAppDir::write(pages + "/zh_CN/a.html", "<p>x</p>"));
        krt::hostcontrol::setLanguage(language);
        const QString expected = QString(path).replace("%1", pages);
        QCOMPARE(kxGetResMuiFile(file, QString(dir).replace("%1", pages)), expected);
        QVERIFY(expected.isEmpty() || QFile::exists(expected));
    }

    void resPathToWebUrl_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("url");

        QTest::newRow("resource") << ":/auth_plugin/mui/default/offline.html"
                                  << "qrc:/auth_plugin/mui/default/offline.html";
        QTest::newRow("already qrc") << "qrc:/auth_plugin/x.html"
                                     << "qrc:/auth_plugin/x.html";
        QTest::newRow("file path, no scheme added") << "/home/u/x.html"
                                                    << "/home/u/x.html";
        QTest::newRow("colon alone") << ":"
                                     << "qrc:";
        QTest::newRow("empty") << QString() << QString();
    }

    void resPathToWebUrl()
    {
        QFETCH(QString, path);
        QFETCH(QString, url);

        QCOMPARE(kxResPathToWebUrl(path), url);
    }

    void webMuiFile_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("url");

        QTest::newRow("a page") << "offline.html"
                                << "qrc:/auth_plugin/mui/zh_CN/offline.html";
        QTest::newRow("no such page") << "none.html" << QString();
    }

    void webMuiFile()
    {
        QFETCH(QString, file);
        QFETCH(QString, url);

        krt::hostcontrol::setLanguage("zh_CN");
        QCOMPARE(kxGetWebResMuiFile(file), url);
    }

    // Every page stands alone: what it loads is a file of the library's own
    // beside it, never anything from elsewhere; and every language's page has
    // an original in "default".
    void pagesStandAlone()
    {
        // A url() or @import always fails: the pages have no need of either.
        const QRegularExpression reference("(?:src|href)\\s*=\\s*\"([^\"]*)\"|url\\(|@import");
        QDirIterator it(kxWebMuiRoot, {"*.html", "*.css", "*.js"}, QDir::Files,
                        QDirIterator::Subdirectories);
        int pages = 0;
        while (it.hasNext()) {
            const QString path = it.next();
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QString text = QString::fromUtf8(file.readAll());
            for (auto matches = reference.globalMatch(text); matches.hasNext();) {
                const QRegularExpressionMatch match = matches.next();
                const QString target = match.captured(1);
                const QString resolved = QFileInfo(path).dir().filePath(target);
                QVERIFY2(!target.isEmpty() && !target.contains(':') && QFile::exists(resolved),
                         qPrintable(path + ": " + match.captured(0)));
            }
            QVERIFY2(QFile::exists(QString(kxWebMuiRoot) + "default/" + it.fileName()),
                     qPrintable(path));
            pages += path.endsWith(".html");
        }
        QVERIFY(pages >= 2);
    }
};

QTEST_MAIN(TestKxWebResources)

#include "tst_kxwebresources.moc"
