// What the host makes of its command-line arguments (document addresses as
// the helper layer's opening functions build them, file paths, anything
// else), and a second start handing them to the running host.

#include "kdocumentrequest.h"
#include "kinstancemessage.h"
#include "ksingleinstance.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <vexlite/hostcontrol.h>

#include <QLocalSocket>
#include <QProcess>
#include <QSignalSpy>
#include <QtTest>

#include <fcntl.h>
#include <memory>
#include <sys/resource.h>
#include <unistd.h>

using namespace AuthTest;

namespace {

QString address(const QString& scheme, const QByteArray& name, const QString& fileId = "4711")
{
    return scheme + "://type=open&fileid=" + fileId + "&displayname=" + name.toBase64();
}

// A later process's side of the exchange, sent without waiting.
std::unique_ptr<QLocalSocket> send(const QString& socketPath, const QByteArray& bytes)
{
    auto socket = std::make_unique<QLocalSocket>();
    socket->connectToServer(socketPath);
    socket->write(bytes);
    return socket;
}

} // namespace

class TestHostArguments : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    QString m_dir; // notes.txt, "Bericht über.txt" and a folder

    QString key() const { return QDir(m_env.profilePath()).canonicalPath(); }

    // A key of the build tree's desktop entry for the host.
    static QString desktopEntryValue(const QString& key)
    {
        QFile entry(QCoreApplication::applicationDirPath() +
                    "/desktop/example.zentooffice.ZentoOffice.desktop");
        if (!entry.open(QIODevice::ReadOnly | QIODevice::Text))
            return QString();
        const QStringList lines = QString::fromUtf8(entry.readAll()).split('\n');
        const auto line = std::find_if(lines.cbegin(), lines.cend(),
                                       [&](const QString& l) { return l.startsWith(key + '='); });
        return line == lines.cend() ? QString() : line->mid(key.size() + 1);
    }

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

        const auto valid = [](const char* name, const QString& argument, int kind,
                              const QString& title, const QString& forwardable) {
            QTest::newRow(name) << argument << kind << title << forwardable;
        };
        const auto invalid = [](const char* name, const QString& argument) {
            QTest::newRow(name) << argument << int(KDocumentRequest::Invalid) << ""
                                << "";
        };
        const int cloud = KDocumentRequest::CloudDocument;
        const int file = KDocumentRequest::LocalFile;
        const QString report = address("vexnimbo", "Quarterly report.docx");
        valid("vexnimbo", report, cloud, "Quarterly report.docx", report);
        const QString resume = address("VEXZENTO", "简历.docx", "9");
        valid("application scheme, capitals, UTF-8 name", resume, cloud, "简历.docx", resume);
        const QString padded = "vexpdf://type=open&fileid=1&displayname=YWI%3D";
        valid("padding percent-encoded", padded, cloud, "ab", padded);
        valid("relative path", "notes.txt", file, "notes.txt", "DIR/notes.txt");
        valid("absolute path, dot segment", "DIR/folder/../Bericht über.txt", file,
              "Bericht über.txt", "DIR/Bericht über.txt");
        valid("file address", "file://DIR/notes.txt", file, "notes.txt", "DIR/notes.txt");

        invalid("blank", "  ");
        invalid("web address", "https://example.com/a.docx");
        invalid("other type", "vexnimbo://type=edit&fileid=1&displayname=YWI=");
        invalid("no file id", "vexnimbo://type=open&displayname=YWI=");
        invalid("name not Base64", "vexnimbo://type=open&fileid=1&displayname=!!");
        invalid("no name", "vexnimbo://type=open&fileid=1");
        // Decoded whole, then checked.
        for (const QByteArray& name : {QByteArray("\0abc", 4), QByteArray("a\0b", 3),
                                       QByteArray("  "), QByteArray("a\nb"), QByteArray("\xff")})
            invalid(("name " + name.toPercentEncoding()).constData(), address("vexnimbo", name));
        invalid("NUL in the type", "vexnimbo://type=open%00x&fileid=1&displayname=YWI=");
        invalid("NUL in the file id", "vexnimbo://type=open&fileid=%00&displayname=YWI=");
        invalid("missing file", "missing.txt");
        invalid("folder", "folder");
        invalid("device", "/dev/null");
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
    // zentooffice on the same profile, started from the command line or as
    // the desktop starts the handler of an address (its entry's Exec line,
    // %U expanded), hands over the documents among its arguments (paths
    // made absolute), says what it refused, and ends.
    void secondStartForwards_data()
    {
        QTest::addColumn<bool>("desktop");
        QTest::addColumn<QString>("notes"); // how the argument names DIR/notes.txt

        QTest::newRow("command line") << false << "notes.txt";
        QTest::newRow("desktop entry") << true << "file://DIR/notes.txt";
    }

    void secondStartForwards()
    {
        QFETCH(bool, desktop);
        QFETCH(QString, notes);

        QVERIFY(krt::hostcontrol::saveProfile(m_env.profilePath()));
        KSingleInstance running(key());
        QCOMPARE(running.start({}), KSingleInstance::Primary);
        QSignalSpy received(&running, &KSingleInstance::argumentsReceived);

        const QString report = address("vexnimbo", "Quarterly report.docx");
        const QStringList arguments{notes.replace("DIR", m_dir), "junk://x", report};
        QStringList command{QCoreApplication::applicationDirPath() + "/zentooffice", "--profile",
                            m_env.profilePath()};
        if (desktop) {
            command = QProcess::splitCommand(desktopEntryValue("Exec"));
            const int urls = command.indexOf("%U");
            QVERIFY2(urls > 0, qPrintable(command.join(' ')));
            command.removeAt(urls);
        }
        QProcess second;
        second.setWorkingDirectory(m_dir);
        const QString program = command.takeFirst();
        second.start(program, command + arguments);
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

    // -v prints the plug-in's debug notices (its categories hold them back
    // otherwise); without it, no debug notice of anyone's.
    void verbose_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("printed"); // among the lines; empty: no debug line at all

        QTest::newRow("-v") << QStringList{"-v"} << "debug auth.plugin: catalogue for ";
        QTest::newRow("quiet") << QStringList() << "";
    }

    void verbose()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, printed);

        QProcess host;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.insert("QT_MESSAGE_PATTERN", "%{type} %{category}: %{message}");
        host.setProcessEnvironment(env);
        // A walk that cannot start ends just after the plug-in loaded its
        // catalogue, on every build (with or without a web engine).
        host.start(QCoreApplication::applicationDirPath() + "/zentooffice",
                   options + QStringList{"--screenshots", "/proc/no-such-dir"});
        QVERIFY(host.waitForFinished(30000));
        const QString err = QString::fromUtf8(host.readAllStandardError());
        QVERIFY2(err.contains("cannot create /proc/no-such-dir"), qPrintable(err));
        if (printed.isEmpty())
            QVERIFY2(!err.contains("debug "), qPrintable(err));
        else
            QVERIFY2(err.contains(printed), qPrintable(err));
    }

    // Later processes that connect and send nothing, or half a message, hold
    // the host only for a while; one more than it serves at once is turned
    // away, and once they are cut the next gets in.
    void limitsConnections_data()
    {
        QTest::addColumn<QByteArray>("held");

        QTest::newRow("idle") << QByteArray();
        QTest::newRow("half a message") << QByteArray(R"({"open": ["notes.txt")");
    }

    void limitsConnections()
    {
        QFETCH(QByteArray, held);

        KSingleInstance running(key());
        running.setLimits(1, 300);
        QCOMPARE(running.start({}), KSingleInstance::Primary);
        QSignalSpy received(&running, &KSingleInstance::argumentsReceived);
        const auto holder = send(running.socketPath(), held);
        const auto turnedAway = send(running.socketPath(), KInstanceMessage::encode({"a"}));
        QTRY_COMPARE(turnedAway->state(), QLocalSocket::UnconnectedState);
        QVERIFY(!turnedAway->canReadLine());
        QTRY_COMPARE(holder->state(), QLocalSocket::UnconnectedState);
        const auto later = send(running.socketPath(), KInstanceMessage::encode({"b"}));
        QTRY_VERIFY(later->canReadLine());
        QCOMPARE(later->readLine(), QByteArray("ok\n"));
        QCOMPARE(received.size(), 1);
        QCOMPARE(received.first().first().toStringList(), QStringList{"b"});
    }

    // The host's socket fails (accepting with no descriptor left closes it,
    // and deletes its file) or its file is deleted: a later start says a
    // host runs and does not become a second one; the host listens again.
    void listensAgain_data()
    {
        QTest::addColumn<bool>("exhaust");

        QTest::newRow("out of descriptors") << true;
        QTest::newRow("socket file deleted") << false;
    }

    void listensAgain()
    {
        QFETCH(bool, exhaust);

        KSingleInstance running(key());
        running.setWatchInterval(3600 * 1000);
        QCOMPARE(running.start({}), KSingleInstance::Primary);
        QSignalSpy received(&running, &KSingleInstance::argumentsReceived);
        const QString socketPath = running.socketPath();
        if (exhaust) {
            // Room for one descriptor: the connecting client's.
            rlimit saved{};
            QCOMPARE(getrlimit(RLIMIT_NOFILE, &saved), 0);
            const int lowestFree = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
            QVERIFY(lowestFree >= 0);
            ::close(lowestFree);
            rlimit low = saved;
            low.rlim_cur = rlim_t(lowestFree) + 1;
            QCOMPARE(setrlimit(RLIMIT_NOFILE, &low), 0);
            const auto client = send(socketPath, QByteArray());
            const bool closed =
                QTest::qWaitFor([&] { return !QFileInfo::exists(socketPath); }, 5000);
            QCOMPARE(setrlimit(RLIMIT_NOFILE, &saved), 0);
            QVERIFY(closed);
        } else {
            QVERIFY(QFile::remove(socketPath));
        }
        QVERIFY(!QFileInfo::exists(socketPath));

        KSingleInstance rival(key());
        QCOMPARE(rival.start({"x"}), KSingleInstance::Unanswered);
        QVERIFY2(rival.errorString().contains("runs on this profile"),
                 qPrintable(rival.errorString()));
        QVERIFY(!QFileInfo::exists(socketPath));

        running.setWatchInterval(20);
        QTRY_VERIFY(QFileInfo::exists(socketPath));
        const auto later = send(socketPath, KInstanceMessage::encode({"doc"}));
        QTRY_VERIFY(later->canReadLine());
        QCOMPARE(received.first().first().toStringList(), QStringList{"doc"});
    }
};

QTEST_MAIN(TestHostArguments)
#include "tst_hostarguments.moc"
