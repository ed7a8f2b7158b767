// Handing documents and paths to the suite: the command lines as the suite
// writes them, the bundle each kind of program finds, and real starts of a
// stub launcher that show what arrives and that nothing in a name is run.
// Starts happen only from probe copies in temporary directories, never from
// the build's own folder.

#include "kcommprobe.h"
#include "kstubprogram.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"

#include "common/kopencommand.h"
#include "common/qcommopenfile.h"

#include <QDir>
#include <QFileInfo>
#include <QtTest>

#include <algorithm>

namespace {

QString vexUrl(const QString& fileId, const QString& fileName)
{
    return "vexnimbo://type=open&fileid=" + fileId +
           "&displayname=" + QString::fromLatin1(fileName.toUtf8().toBase64());
}

QString openText(const QString& bundle, const QString& target)
{
    return "open -a \"" + bundle + "\" \"" + target + "\"";
}

QList<QStringList> sorted(QList<QStringList> calls)
{
    std::sort(calls.begin(), calls.end(), [](const QStringList& a, const QStringList& b) {
        return a.join('\n') < b.join('\n');
    });
    return calls;
}

} // namespace

class TestQCommOpenFile : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

    bool pwned(const KTestAppDir& appDir) const
    {
        return QFileInfo::exists(QDir::current().filePath("pwned")) ||
               QFileInfo::exists(appDir.filePath("pwned"));
    }

private slots:
    void init() { QFile::remove(QDir::current().filePath("pwned")); }

    // --- command lines, built in this process, nothing run -------------

    void vexCommand_data()
    {
        QTest::addColumn<QString>("fileId");
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("url");

        QTest::newRow("docx") << "f1"
                              << "report.docx"
                              << "vexnimbo://type=open&fileid=f1&displayname=cmVwb3J0LmRvY3g=";
        QTest::newRow("pdf, upper case")
            << "F-2"
            << "SCAN.PDF"
            << "vexnimbo://type=open&fileid=F-2&displayname=U0NBTi5QREY=";
        QTest::newRow("unknown extension")
            << "7"
            << "notes.xyz"
            << "vexnimbo://type=open&fileid=7&displayname=bm90ZXMueHl6";
        QTest::newRow("no extension") << "8"
                                      << "README"
                                      << "vexnimbo://type=open&fileid=8&displayname=UkVBRE1F";
        QTest::newRow("non-ASCII name only in Base64")
            << "9" << QString::fromUtf8(u8"\u62a5\u544a 2024.docx")
            << "vexnimbo://type=open&fileid=9&displayname=5oql5ZGKIDIwMjQuZG9jeA==";
        QTest::newRow("%n in the values, one pass")
            << "%3%4"
            << "%1.docx"
            << "vexnimbo://type=open&fileid=%3%4&displayname=JTEuZG9jeA==";
        QTest::newRow("quotes in the id as given")
            << "1\";x;\""
            << "a\"b.docx"
            << "vexnimbo://type=open&fileid=1\";x;\"&displayname=YSJiLmRvY3g=";
        QTest::newRow("empty") << ""
                               << ""
                               << "vexnimbo://type=open&fileid=&displayname=";
    }

    void vexCommand()
    {
        QFETCH(QString, fileId);
        QFETCH(QString, fileName);
        QFETCH(QString, url);
        // This suite's folder has no bundle around it: it is the bundle.
        QCOMPARE(QComm::openFileByVexCommand(fileId, fileName),
                 openText(QCoreApplication::applicationDirPath(), url));
    }

    void launchExeCommand_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("plain") << "/tmp/a.docx";
        QTest::newRow("spaces and quotes, unescaped") << "/tmp/my \"best\" file.xlsx";
        QTest::newRow("%n, one pass") << "/tmp/%1%2";
        QTest::newRow("empty") << "";
    }

    void launchExeCommand()
    {
        QFETCH(QString, path);
        QCOMPARE(QComm::openFileByLaunchExeCommand(path),
                 openText(QCoreApplication::applicationDirPath(), path));
    }

    void openCommandText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");

        QTest::newRow("suite")
            << KOpenCommand::forSuite("/Applications/Zento Office.app", "x y").text()
            << "open -a \"/Applications/Zento Office.app\" \"x y\"";
        QTest::newRow("suite, %n in both")
            << KOpenCommand::forSuite("/b%2", "t%1").text() << "open -a \"/b%2\" \"t%1\"";
        QTest::newRow("Safari, application unquoted")
            << KOpenCommand::forSafari("https://e.com/?q=1&r=\"2\"").text()
            << "open -a /Applications/Safari.app \"https://e.com/?q=1&r=\"2\"\"";
    }

    void openCommandText()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(text, expected);
    }

    void openCommandProgram()
    {
        const KOpenCommand suite = KOpenCommand::forSuite("/opt/Zento Office", "a;b");
        const KOpenCommand safari = KOpenCommand::forSafari("https://e.com");
#ifdef Q_OS_MACOS
        QCOMPARE(suite.program(), QString("open"));
        QCOMPARE(suite.arguments(), (QStringList{"-a", "/opt/Zento Office", "a;b"}));
        QCOMPARE(safari.program(), QString("open"));
        QCOMPARE(safari.arguments(),
                 (QStringList{"-a", "/Applications/Safari.app", "https://e.com"}));
#else
        QCOMPARE(suite.program(), QString("/opt/Zento Office/zentooffice"));
        QCOMPARE(suite.arguments(), QStringList{"a;b"});
        QCOMPARE(safari.program(), QString("/Applications/Safari.app/Contents/MacOS/Safari"));
        QCOMPARE(safari.arguments(), QStringList{"https://e.com"});
#endif
    }

    // --- the bundle a program finds, seen by its launches ----------------

    void bundleOfTheProgram_data()
    {
        QTest::addColumn<QString>("folder"); // where the probe runs from
        QTest::addColumn<QString>("name");   // its application name
        QTest::addColumn<QString>("bundle");

        QTest::newRow("suite in its bundle") << "Zento Office.app/Contents/MacOS"
                                             << "zentooffice"
                                             << "Zento Office.app";
        QTest::newRow("helper inside the suite's bundle")
            << "Zento Office.app/Contents/SharedSupport/Helper.app/Contents/MacOS"
            << "nimbohelper"
            << "Zento Office.app";
        QTest::newRow("suite, installed flat") << "bin"
                                               << "zentooffice"
                                               << "bin";
        QTest::newRow("helper, installed flat") << "bin"
                                                << "nimbohelper"
                                                << "bin";
        QTest::newRow("name differs in case: a helper") << "Zento Office.app/Contents/MacOS"
                                                        << "ZentoOffice"
                                                        << "Zento Office.app/Contents/MacOS";
        QTest::newRow("suite name inside SharedSupport")
            << "Z.app/Contents/SharedSupport/H.app/Contents/MacOS"
            << "zentooffice"
            << "Z.app/Contents/SharedSupport/H.app";
        QTest::newRow("first marker counts") << "A.app/Contents/MacOS/B.app/Contents/MacOS"
                                             << "zentooffice"
                                             << "A.app";
    }

    void bundleOfTheProgram()
    {
        QFETCH(QString, folder);
        QFETCH(QString, name);
        QFETCH(QString, bundle);

        KTestAppDir appDir(m_env.rootPath());
        KCommProbe probe(appDir, folder);
        KStubProgram launcher(appDir.filePath(bundle + "/zentooffice"), appDir.filePath("calls"));
        QVERIFY(probe.isValid() && launcher.isValid());

        const QJsonArray out =
            probe.run({"--name", name, "--open-exe", "/tmp/doc.txt", "--open-vex", "id", "a.docx"});
        QCOMPARE(out.size(), 3);
        const QString bundlePath = appDir.filePath(bundle);
        QCOMPARE(out.at(1).toArray(), (QJsonArray{openText(bundlePath, "/tmp/doc.txt"), false}));
        QCOMPARE(out.at(2).toArray(),
                 (QJsonArray{openText(bundlePath, vexUrl("id", "a.docx")), false}));
        QVERIFY(launcher.waitForCalls(2));
        QCOMPARE(sorted(launcher.calls()),
                 sorted({QStringList{"/tmp/doc.txt"}, QStringList{vexUrl("id", "a.docx")}}));
    }

    // --- what reaches the launcher --------------------------------------

    void targetsArriveUnchanged_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("fileId");
        QTest::addColumn<QString>("fileName");

        QTest::newRow("quotes and semicolons") << "/tmp/it's \"q\";touch pwned"
                                               << "7\";touch pwned;\""
                                               << "a\"b';touch pwned.docx";
        QTest::newRow("command substitution") << "/tmp/$(touch pwned)"
                                              << "`touch pwned`"
                                              << "$(touch pwned).docx";
        QTest::newRow("non-ASCII")
            << QString::fromUtf8(u8"/tmp/\u62a5\u544a/\u4f1a\u8bae.docx")
            << QString::fromUtf8(u8"\u4e91-1") << QString::fromUtf8(u8"\u62a5\u544a.docx");
        QTest::newRow("newlines") << "/tmp/a\ntouch pwned"
                                  << "x\ntouch pwned"
                                  << "two\nlines.docx";
        QTest::newRow("percent signs") << "/tmp/%1%2"
                                       << "%1"
                                       << "%2.docx";
    }

    void targetsArriveUnchanged()
    {
        QFETCH(QString, path);
        QFETCH(QString, fileId);
        QFETCH(QString, fileName);

        KTestAppDir appDir(m_env.rootPath());
        KCommProbe probe(appDir, "Zento Office.app/Contents/MacOS");
        KStubProgram launcher(appDir.filePath("Zento Office.app/zentooffice"),
                              appDir.filePath("calls"));
        QVERIFY(probe.isValid() && launcher.isValid());

        const QJsonArray out = probe.run(
            {"--name", "zentooffice", "--open-exe", path, "--open-vex", fileId, fileName});
        QCOMPARE(out.size(), 3);
        QCOMPARE(out.at(1).toArray().at(1).toBool(), false);
        QCOMPARE(out.at(2).toArray().at(1).toBool(), false);
        QVERIFY(launcher.waitForCalls(2));
        QCOMPARE(sorted(launcher.calls()),
                 sorted({QStringList{path}, QStringList{vexUrl(fileId, fileName)}}));
        QVERIFY(!pwned(appDir));
    }

    void failedStartIsTrue()
    {
        KTestAppDir appDir(m_env.rootPath());
        KCommProbe probe(appDir, "Zento Office.app/Contents/MacOS");
        QVERIFY(probe.isValid());

        // No launcher in the bundle: the commands are there, but fail.
        const QJsonArray out =
            probe.run({"--name", "zentooffice", "--open-exe", "/tmp/a", "--open-vex", "1", "a"});
        QCOMPARE(out.size(), 3);
        const QString bundle = appDir.filePath("Zento Office.app");
        QCOMPARE(out.at(1).toArray(), (QJsonArray{openText(bundle, "/tmp/a"), true}));
        QCOMPARE(out.at(2).toArray(), (QJsonArray{openText(bundle, vexUrl("1", "a")), true}));
    }

    void withoutApplicationNothingRuns()
    {
        KTestAppDir appDir(m_env.rootPath());
        KCommProbe probe(appDir, QString());
        KStubProgram launcher(appDir.filePath("zentooffice"), appDir.filePath("calls"));
        QVERIFY(probe.isValid() && launcher.isValid());

        const QJsonArray out =
            probe.run({"--no-app", "--open-exe", "/tmp/a", "--open-vex", "1", "a"});
        QCOMPARE(out.size(), 2);
        QCOMPARE(out.at(0).toArray(), (QJsonArray{QString(), false}));
        QCOMPARE(out.at(1).toArray(), (QJsonArray{QString(), false}));
        QVERIFY(launcher.calls().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestQCommOpenFile)
#include "tst_qcommopenfile.moc"
