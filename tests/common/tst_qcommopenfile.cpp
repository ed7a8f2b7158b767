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
        QTest::addColumn<QString>("base64");

        const struct
        {
            const char *tag, *fileId, *fileName, *base64;
        } rows[] = {
            {"docx", "f1", "report.docx", "cmVwb3J0LmRvY3g="},
            {"pdf, upper case", "F-2", "SCAN.PDF", "U0NBTi5QREY="},
            {"unknown extension", "7", "notes.xyz", "bm90ZXMueHl6"},
            {"no extension", "8", "README", "UkVBRE1F"},
            {"non-ASCII name only in Base64", "9", u8"\u62a5\u544a 2024.docx",
             "5oql5ZGKIDIwMjQuZG9jeA=="},
            {"%n in the values, one pass", "%3%4", "%1.docx", "JTEuZG9jeA=="},
            {"quotes in the id as given", "1\";x;\"", "a\"b.docx", "YSJiLmRvY3g="},
            {"empty", "", "", ""},
        };
        for (const auto& r : rows)
            QTest::newRow(r.tag) << QString(r.fileId) << QString(r.fileName) << QString(r.base64);
    }

    void vexCommand()
    {
        QFETCH(QString, fileId);
        QFETCH(QString, fileName);
        QFETCH(QString, base64);
        // This suite's folder has no bundle around it: it is the bundle.
        const QString url = "vexnimbo://type=open&fileid=" + fileId + "&displayname=" + base64;
        QCOMPARE(QComm::openFileByVexCommand(fileId, fileName),
                 openText(QCoreApplication::applicationDirPath(), url));
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

    // --- real starts of a stub launcher ----------------------------------

    // Where the launcher is looked for depends on where the program runs and
    // what it is called; what reaches it must be the target, unchanged.
    void launches_data()
    {
        QTest::addColumn<QString>("folder"); // where the probe runs from
        QTest::addColumn<QString>("name");   // its application name
        QTest::addColumn<QString>("bundle");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("fileId");
        QTest::addColumn<QString>("fileName");

        const struct
        {
            const char *tag, *folder, *name, *bundle;
        } layouts[] = {
            {"suite in its bundle", "Zento Office.app/Contents/MacOS", "zentooffice",
             "Zento Office.app"},
            {"helper inside the suite's bundle",
             "Z.app/Contents/SharedSupport/H.app/Contents/MacOS", "nimbohelper", "Z.app"},
            {"suite, installed flat", "bin", "zentooffice", "bin"},
            {"helper, installed flat", "bin", "nimbohelper", "bin"},
            {"name differs in case: a helper", "Z.app/Contents/MacOS", "ZentoOffice",
             "Z.app/Contents/MacOS"},
            {"suite name inside SharedSupport", "Z.app/Contents/SharedSupport/H.app/Contents/MacOS",
             "zentooffice", "Z.app/Contents/SharedSupport/H.app"},
            {"first marker counts", "A.app/Contents/MacOS/B.app/Contents/MacOS", "zentooffice",
             "A.app"},
        };
        for (const auto& r : layouts)
            QTest::newRow(r.tag) << QString(r.folder) << QString(r.name) << QString(r.bundle)
                                 << "/tmp/doc.txt"
                                 << "id"
                                 << "a.docx";

        const struct
        {
            const char *tag, *path, *fileId, *fileName;
        } targets[] = {
            {"quotes and semicolons", "/tmp/it's \"q\";touch pwned", "7\";touch pwned;\"",
             "a\"b';touch pwned.docx"},
            {"command substitution", "/tmp/$(touch pwned)", "`touch pwned`", "$(touch pwned).docx"},
            {"non-ASCII", u8"/tmp/\u62a5\u544a/\u4f1a\u8bae.docx", u8"\u4e91-1",
             u8"\u62a5\u544a.docx"},
            {"newlines", "/tmp/a\ntouch pwned", "x\ntouch pwned", "two\nlines.docx"},
            {"percent signs", "/tmp/%1%2", "%1", "%2.docx"},
        };
        for (const auto& r : targets)
            QTest::newRow(r.tag) << "Zento Office.app/Contents/MacOS"
                                 << "zentooffice"
                                 << "Zento Office.app" << QString(r.path) << QString(r.fileId)
                                 << QString(r.fileName);
    }

    void launches()
    {
        QFETCH(QString, folder);
        QFETCH(QString, name);
        QFETCH(QString, bundle);
        QFETCH(QString, path);
        QFETCH(QString, fileId);
        QFETCH(QString, fileName);

        KTestAppDir appDir(m_env.rootPath());
        KCommProbe probe(appDir, folder);
        KStubProgram launcher(appDir.filePath(bundle + "/zentooffice"), appDir.filePath("calls"));
        QVERIFY(probe.isValid() && launcher.isValid());

        const QJsonArray out =
            probe.run({"--name", name, "--open-exe", path, "--open-vex", fileId, fileName});
        QCOMPARE(out.size(), 3);
        const QString bundlePath = appDir.filePath(bundle);
        const QString url = vexUrl(fileId, fileName);
        QCOMPARE(out.at(1).toArray(), (QJsonArray{openText(bundlePath, path), false}));
        QCOMPARE(out.at(2).toArray(), (QJsonArray{openText(bundlePath, url), false}));
        QVERIFY(launcher.waitForCalls(2));
        QCOMPARE(launcher.calls(), KStubProgram::sorted({QStringList{path}, QStringList{url}}));
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
