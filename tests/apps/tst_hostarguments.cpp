// What the host makes of its command-line arguments (document addresses as
// the helper layer's opening functions build them, file paths, anything
// else), and a second start handing them to the running host.

#include "kdocumentrequest.h"
#include "ksingleinstance.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <vexlite/hostcontrol.h>

#include <QProcess>
#include <QSignalSpy>
#include <QtTest>

using namespace AuthTest;

namespace {

QString address(const QString& scheme, const QByteArray& name, const QString& fileId = "4711")
{
    return scheme + "://type=open&fileid=" + fileId + "&displayname=" + name.toBase64();
}

} // namespace

class TestHostArguments : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    QString m_dir; // notes.txt, "Bericht über.txt" and a folder

private slots:
    void initTestCase()
    {
        m_dir = m_env.rootPath() + "/docs";
        QVERIFY(KTestAppDir::write(m_dir + "/notes.txt", "Notes\n"));
        QVERIFY(KTestAppDir::write(m_dir + "/Bericht über.txt", "Bericht\n"));
        QVERIFY(QDir().mkpath(m_dir + "/folder"));
    }

    void classifies_data()
    {
        QTest::addColumn<QString>("argument");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("forwardable"); // "DIR/" stands for the documents' folder

        const int cloud = KDocumentRequest::CloudDocument;
        const int file = KDocumentRequest::LocalFile;
        const int invalid = KDocumentRequest::Invalid;
        const QString report = address("vexnimbo", "Quarterly report.docx");
        QTest::newRow("vexnimbo") << report << cloud << "Quarterly report.docx" << report;
        const QString resume = address("VEXZENTO", "简历.docx", "9");
        QTest::newRow("application scheme, capitals, UTF-8 name")
            << resume << cloud << "简历.docx" << resume;
        QTest::newRow("padding percent-encoded")
            << "vexpdf://type=open&fileid=1&displayname=YWI%3D" << cloud << "ab"
            << "vexpdf://type=open&fileid=1&displayname=YWI%3D";
        QTest::newRow("relative path") << "notes.txt" << file << "notes.txt"
                                       << "DIR/notes.txt";
        QTest::newRow("absolute path, dot segment")
            << "DIR/folder/../Bericht über.txt" << file << "Bericht über.txt"
            << "DIR/Bericht über.txt";
        QTest::newRow("file address") << "file://DIR/notes.txt" << file << "notes.txt"
                                      << "DIR/notes.txt";

        QTest::newRow("empty") << "" << invalid << ""
                               << "";
        QTest::newRow("blank") << "  " << invalid << ""
                               << "";
        QTest::newRow("web address") << "https://example.com/a.docx" << invalid << ""
                                     << "";
        QTest::newRow("other type")
            << "vexnimbo://type=edit&fileid=1&displayname=YWI=" << invalid << ""
            << "";
        QTest::newRow("no file id") << "vexnimbo://type=open&displayname=YWI=" << invalid << ""
                                    << "";
        QTest::newRow("name not Base64")
            << "vexnimbo://type=open&fileid=1&displayname=!!" << invalid << ""
            << "";
        QTest::newRow("no name") << "vexnimbo://type=open&fileid=1" << invalid << ""
                                 << "";
        QTest::newRow("missing file") << "missing.txt" << invalid << ""
                                      << "";
        QTest::newRow("folder") << "folder" << invalid << ""
                                << "";
    }

    void classifies()
    {
        QFETCH(QString, argument);
        QFETCH(int, kind);
        QFETCH(QString, title);
        QFETCH(QString, forwardable);

        argument.replace("DIR", m_dir);
        const KDocumentRequest request = KDocumentRequest::fromArgument(argument, m_dir);
        QCOMPARE(int(request.kind()), kind);
        QCOMPARE(request.title(), title);
        QCOMPARE(request.forwardable(), forwardable.replace("DIR", m_dir));
        QCOMPARE(request.error().isEmpty(), request.isValid());
    }

    // The running host is this test, listening as zentooffice does; a second
    // zentooffice on the same profile hands over the documents among its
    // arguments (paths made absolute), says what it refused, and ends.
    void secondStartForwards()
    {
        QVERIFY(krt::hostcontrol::saveProfile(m_env.profilePath()));
        KSingleInstance running(QDir(m_env.profilePath()).canonicalPath());
        QCOMPARE(running.start({}), KSingleInstance::Primary);
        QSignalSpy received(&running, &KSingleInstance::argumentsReceived);

        QProcess second;
        second.setWorkingDirectory(m_dir);
        const QString report = address("vexnimbo", "Quarterly report.docx");
        second.start(QCoreApplication::applicationDirPath() + "/zentooffice",
                     {"--profile", m_env.profilePath(), "notes.txt", "junk://x", report});
        QVERIFY(received.wait(10000));
        QCOMPARE(received.first().first().toStringList(),
                 (QStringList{m_dir + "/notes.txt", report}));
        qRegisterMetaType<QProcess::ExitStatus>();
        QSignalSpy finished(&second, SIGNAL(finished(int, QProcess::ExitStatus)));
        QVERIFY(finished.count() || finished.wait(10000));
        QCOMPARE(second.exitCode(), 0);
        QVERIFY(second.readAllStandardError().contains(
            "junk://x: neither a document address nor a file"));

        // Another profile is another host: nobody listens there.
        KSingleInstance other(m_env.rootPath());
        QCOMPARE(other.start({}), KSingleInstance::Primary);
        QVERIFY(other.socketPath() != running.socketPath());
    }
};

QTEST_MAIN(TestHostArguments)
#include "tst_hostarguments.moc"
