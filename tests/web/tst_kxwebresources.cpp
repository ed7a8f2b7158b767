// The library's localised pages: the host's lookup by language folder, the
// separator and "qrc" rules on top of it, and the pages themselves.

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <kxwebresources.h>

#include <vexlite/hostcontrol.h>
#include <vexlite/krti18n.h>

#include <QDirIterator>
#include <QtTest>

using namespace AuthTest;

class TestKxWebResources : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

    QString pages() const { return m_env.rootPath() + "/pages"; }

private slots:
    void initTestCase()
    {
        for (const char* file :
             {"default/a.html", "default/b.html", "default/c.html", "zh_CN/a.html", "zh/b.html"})
            QVERIFY(KTestAppDir::write(pages() + "/" + file, "<p>x</p>"));
    }

    void init() { m_env.resetHost(); }

    void languageFormats_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<int>("format");
        QTest::addColumn<QString>("answer");

        QTest::newRow("host's code") << "zh_CN" << 0 << "zh_CN";
        QTest::newRow("web") << "zh_CN" << 1 << "zh-CN";
        QTest::newRow("web, English") << "en_US" << 1 << "en-US";
        QTest::newRow("language alone") << "zh_CN" << 2 << "zh";
        QTest::newRow("no country, web") << "de" << 1 << "de";
        QTest::newRow("unknown format") << "zh_CN" << 7 << "zh_CN";
    }

    void languageFormats()
    {
        QFETCH(QString, language);
        QFETCH(int, format);
        QFETCH(QString, answer);

        krt::hostcontrol::setLanguage(language);
        QCOMPARE(krt::i18n::language(format), answer);
    }

    // The language's folder, the bare language's, then "default"; the
    // answer in "/" whatever the directory was written with.
    void muiFile_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("dir"); // "%1": a folder of pages on disk
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("path");

        QTest::newRow("own folder") << "zh_CN"
                                    << "%1/"
                                    << "a.html"
                                    << "%1/zh_CN/a.html";
        QTest::newRow("bare language") << "zh_CN"
                                       << "%1/"
                                       << "b.html"
                                       << "%1/zh/b.html";
        QTest::newRow("default") << "zh_CN"
                                 << "%1/"
                                 << "c.html"
                                 << "%1/default/c.html";
        QTest::newRow("other language") << "en_US"
                                        << "%1"
                                        << "a.html"
                                        << "%1/default/a.html";
        QTest::newRow("missing") << "zh_CN"
                                 << "%1/"
                                 << "d.html"
                                 << "";
        QTest::newRow("no file name") << "zh_CN"
                                      << "%1/"
                                      << ""
                                      << "";
        QTest::newRow("resources") << "zh_CN"
                                   << ":/auth_plugin/mui/"
                                   << "offline.html"
                                   << ":/auth_plugin/mui/zh_CN/offline.html";
        QTest::newRow("resources, backslashes") << "zh_CN"
                                                << ":\\auth_plugin\\mui\\"
                                                << "offline.html"
                                                << ":/auth_plugin/mui/zh_CN/offline.html";
        QTest::newRow("resources, English") << "en_US"
                                            << ":/auth_plugin/mui"
                                            << "offline.html"
                                            << ":/auth_plugin/mui/default/offline.html";
        QTest::newRow("resources, traditional Chinese") << "zh_TW"
                                                        << ":/auth_plugin/mui/"
                                                        << "offline.html"
                                                        << ":/auth_plugin/mui/default/offline.html";
    }

    void muiFile()
    {
        QFETCH(QString, language);
        QFETCH(QString, dir);
        QFETCH(QString, file);
        QFETCH(QString, path);

        krt::hostcontrol::setLanguage(language);
        const QString expected = QString(path).replace("%1", pages());
        QCOMPARE(kxGetResMuiFile(file, QString(dir).replace("%1", pages())), expected);
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
        QTest::newRow("drive path") << "C:/x.html"
                                    << "C:/x.html";
        QTest::newRow("colon alone") << ":"
                                     << "qrc:";
        QTest::newRow("empty") << ""
                               << "";
    }

    void resPathToWebUrl()
    {
        QFETCH(QString, path);
        QFETCH(QString, url);

        QCOMPARE(kxResPathToWebUrl(path), url);
    }

    void webMuiFile_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("url");

        QTest::newRow("English") << "en_US"
                                 << "offline.html"
                                 << "qrc:/auth_plugin/mui/default/offline.html";
        QTest::newRow("Chinese") << "zh_CN"
                                 << "offline.html"
                                 << "qrc:/auth_plugin/mui/zh_CN/offline.html";
        QTest::newRow("no such page") << "zh_CN"
                                      << "none.html"
                                      << "";
    }

    void webMuiFile()
    {
        QFETCH(QString, language);
        QFETCH(QString, file);
        QFETCH(QString, url);

        krt::hostcontrol::setLanguage(language);
        QCOMPARE(kxGetWebResMuiFile(file), url);
    }

    // Every page stands alone (nothing fetched from elsewhere), and every
    // language's page has an original in "default".
    void pagesStandAlone()
    {
        QDirIterator it(kxWebMuiRoot, QDir::Files, QDirIterator::Subdirectories);
        int count = 0;
        while (it.hasNext()) {
            const QString path = it.next();
            QFile page(path);
            QVERIFY(page.open(QIODevice::ReadOnly));
            const QByteArray html = page.readAll().toLower();
            for (const char* fetch : {"http:", "https:", "src=", "<link", "@import", "url("})
                QVERIFY2(!html.contains(fetch), qPrintable(path + ": " + fetch));
            QVERIFY2(QFile::exists(QString(kxWebMuiRoot) + "default/" + it.fileName()),
                     qPrintable(path));
            ++count;
        }
        QVERIFY(count >= 2);
    }
};

QTEST_MAIN(TestKxWebResources)

#include "tst_kxwebresources.moc"
