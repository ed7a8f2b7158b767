// The cloud service start, the active-client count, opening addresses and
// the guard around lengthy operations. The service start is observed from
// probe copies laid out like the suite's bundle, with a stub service that
// records the one argument text it receives.

#include "kblockingwait.h"
#include "kcommprobe.h"
#include "kstubprogram.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"

#include "common/kingorelongtimedetecthelper.h"
#include "common/qcommprocess.h"

#include <vex/klongtimeblockdetector.h>
#include <vex/kxapplication.h>
#include <vexlite/khksoftwaresettings.h>
#include <vexlite/kprocesslaunchermac.h>

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QtTest>

#include <stdexcept>

namespace {

const QString kHomeText = "\"Run /InstanceId:ZentoCloudSvr zentocloudsvrimp.dll /nimbowork "
                          "/run_plugin /plugin_name=nimbo /plugin_entry=nimbowork.dll "
                          "/start_from=plugin_nimbo ";
const QString kOverseasText = "\"Run /InstanceId:ZentoCloudSvr zentocloudsvrimp.dll /nimbowork "
                              "/run_plugin /plugin_name=nimbo /plugin_entry=nimboworkxa.dll "
                              "/start_from=plugin_nimbo ";

KLongTimeBlockDetector* detector()
{
    return static_cast<KxApplication*>(qApp)->longTimeBlockDetector();
}

} // namespace

// Stands in for the desktop's handler of a URL scheme.
class KUrlRecorder : public QObject
{
    Q_OBJECT

public:
    QList<QUrl> urls;

public slots:
    void open(const QUrl& url) { urls.append(url); }
};

class TestQCommProcess : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KUrlRecorder m_recorder;

private slots:
    void init()
    {
        m_env.resetHost();
        QDir(m_env.profilePath() + "/stores").removeRecursively();
        QFile::remove(QDir::current().filePath("pwned"));
    }

    // --- the cloud service ----------------------------------------------

    void launchZentocloudsvr_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("overseas");
        QTest::addColumn<QString>("extra");
        QTest::addColumn<QString>("expected"); // empty: nothing started

        const QString shell = "\"; touch pwned; $(touch pwned) `touch pwned` '";
        const QString user = QString::fromUtf8(u8"/user=\u5f20\u4e09");
        QTest::newRow("home edition") << "zentooffice" << false << "" << kHomeText + "\"";
        QTest::newRow("overseas edition") << "zentooffice" << true << "" << kOverseasText + "\"";
        QTest::newRow("extra arguments at the end")
            << "zentooffice" << false << "/login=1 /x" << kHomeText + "/login=1 /x\"";
        QTest::newRow("shell characters stay in the text")
            << "zentooffice" << true << shell << kOverseasText + shell + "\"";
        QTest::newRow("non-ASCII") << "zentooffice" << false << user << kHomeText + user + "\"";
        QTest::newRow("helper process starts nothing")
            << "nimbohelper" << false << "x" << QString();
        QTest::newRow("name differs in case") << "ZentoOffice" << false << "x" << QString();
    }

    void launchZentocloudsvr()
    {
        QFETCH(QString, name);
        QFETCH(bool, overseas);
        QFETCH(QString, extra);
        QFETCH(QString, expected);

        KTestAppDir appDir(m_env.rootPath());
        KCommProbe probe(appDir, "Zento Office.app/Contents/MacOS");
        KStubProgram service(appDir.filePath("Zento Office.app/Contents/SharedSupport/"
                                             "zentocloudsvr.app/Contents/MacOS/zentocloudsvr"),
                             appDir.filePath("calls"));
        QVERIFY(probe.isValid() && service.isValid());

        // A start that must happen follows: one that must not would have
        // been started before it, and is seen along with it.
        const QJsonArray out =
            probe.run({"--name", name, "--overseas", overseas ? "true" : "false", "--launch", extra,
                       "--name", "zentooffice", "--launch", "marker"});
        QCOMPARE(out.size(), 5);

        QList<QStringList> calls;
        if (!expected.isEmpty())
            calls.append(QStringList{expected});
        calls.append(QStringList{(overseas ? kOverseasText : kHomeText) + "marker\""});
        QVERIFY(service.waitForCalls(calls.size()));
        QCOMPARE(service.calls(), KStubProgram::sorted(calls));
        QVERIFY(!QFileInfo::exists(QDir::current().filePath("pwned")));
    }

    void createProcessStartsNothing_data()
    {
        QTest::addColumn<QString>("program"); // @ stands for a program with a space in its path
        QTest::newRow("empty") << "";
        QTest::newRow("with a space, unquoted") << "@";
        QTest::newRow("with a space, quoted") << "\"@\"";
    }

    void createProcessStartsNothing()
    {
        QFETCH(QString, program);

        const KTestAppDir appDir(m_env.rootPath());
        KStubProgram stub(appDir.filePath("My App/My App"), appDir.filePath("calls"));
        QVERIFY(stub.isValid());
        QVERIFY(!QComm::createProcess(program.replace("@", stub.path()), "--arg", appDir.path()));

        // The stub's only run is the one started here.
        QVERIFY(KProcessLauncherMac::LaunchProcessByNSTask(stub.path(), "marker"));
        QVERIFY(stub.waitForCalls(1));
        QCOMPARE(stub.calls(), QList<QStringList>{QStringList{"marker"}});
    }

    void isSurroundWith_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("mark");
        QTest::addColumn<bool>("expected");

        const struct
        {
            const char *tag, *text, *mark;
            bool expected;
        } rows[] = {
            {"quoted", "\"/Applications/My App\"", "\"", true},
            {"opening quote only", "\"/Applications/My App", "\"", false},
            {"closing quote only", "/Applications/My App\"", "\"", false},
            {"the mark alone", "\"", "\"", true},
            {"empty text", "", "\"", false},
            {"empty mark", "abc", "", true},
            {"longer mark, half", "-x--", "--", false},
        };
        for (const auto& r : rows)
            QTest::newRow(r.tag) << QString(r.text) << QString(r.mark) << r.expected;
    }

    void isSurroundWith()
    {
        QFETCH(QString, text);
        QFETCH(QString, mark);
        QFETCH(bool, expected);
        QCOMPARE(QComm::isSurroundWith(text, mark), expected);
    }

    // --- active clients -------------------------------------------------

    void clientCount_data()
    {
        QTest::addColumn<QStringList>("perUser"); // keys below the cloud store
        QTest::addColumn<QStringList>("machineWide");
        QTest::addColumn<int>("expected");

        QTest::newRow("no group") << QStringList{} << QStringList{} << 0;
        QTest::newRow("three clients")
            << QStringList{"activeclient/101/pid", "activeclient/102/pid", "activeclient/103/t"}
            << QStringList{} << 3;
        QTest::newRow("values of the group are no clients")
            << QStringList{"activeclient/count", "activeclient/7/pid"} << QStringList{} << 1;
        QTest::newRow("a client's own keys count once")
            << QStringList{"activeclient/1/a/b", "activeclient/1/c"} << QStringList{} << 1;
        QTest::newRow("other groups")
            << QStringList{"userinfo/1/x", "clouddisk/2/y"} << QStringList{} << 0;
        QTest::newRow("machine-wide clients do not count")
            << QStringList{} << QStringList{"activeclient/1/x", "activeclient/2/x"} << 0;
    }

    void clientCount()
    {
        QFETCH(QStringList, perUser);
        QFETCH(QStringList, machineWide);
        QFETCH(int, expected);

        for (const auto& [root, keys] :
             {std::make_pair(KHKSoftwareSettings::CurrentUser, perUser),
              std::make_pair(KHKSoftwareSettings::LocalMachine, machineWide)}) {
            QSettings file(KHKSoftwareSettings::storeFileName(root), QSettings::IniFormat);
            for (const QString& key : keys)
                file.setValue("Corvane/ZentoCloud/" + key, 1);
        }
        QCOMPARE(QComm::getClientCount(), expected);
    }

    // --- addresses ------------------------------------------------------

    void openUrl_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<bool>("expected");
        QTest::addColumn<QByteArray>("received"); // empty: the handler saw nothing

        const struct
        {
            const char *tag, *url;
            bool expected;
            const char* received;
        } rows[] = {
            {"https", "https://example.com/a?b=1", true, "https://example.com/a?b=1"},
            {"tolerant: space", "https://example.com/a b", true, "https://example.com/a%20b"},
            {"tolerant: stray percent", "http://e.com/100%", true, "http://e.com/100%25"},
            {"mailto", "mailto:a@e.com", true, "mailto:a@e.com"},
            {"empty", "", false, ""},
            {"handler that cannot be reached", "zentofail://x", false, ""},
        };
        for (const auto& r : rows)
            QTest::newRow(r.tag) << QString(r.url) << r.expected << QByteArray(r.received);
    }

    void openUrl()
    {
        QFETCH(QString, url);
        QFETCH(bool, expected);
        QFETCH(QByteArray, received);

        // Only schemes with a handler here: nothing reaches a real browser.
        for (const char* scheme : {"https", "http", "mailto"})
            QDesktopServices::setUrlHandler(scheme, &m_recorder, "open");
        QDesktopServices::setUrlHandler("zentofail", &m_recorder, "noSuchSlot");
        m_recorder.urls.clear();

        QCOMPARE(QComm::openUrl(url), expected);
        QCOMPARE(m_recorder.urls.size(), received.isEmpty() ? 0 : 1);
        if (!received.isEmpty())
            QCOMPARE(m_recorder.urls.first().toEncoded(), received);

        for (const char* scheme : {"https", "http", "mailto", "zentofail"})
            QDesktopServices::unsetUrlHandler(scheme);
    }

    // Safari is not there on the machines that run this.
    void openUrlBySafariNeedsSafari()
    {
        if (QFileInfo::exists("/Applications/Safari.app"))
            QSKIP("Safari is installed here; the test would open it");
        QVERIFY(!QComm::openUrlBySafari(""));
        QVERIFY(!QComm::openUrlBySafari("https://example.com"));
    }

    // --- the guard around lengthy operations ----------------------------

    void guard_data()
    {
        QTest::addColumn<bool>("enable");
        QTest::addColumn<int>("reports");
        QTest::addColumn<int>("suppressed");

        QTest::newRow("guarded") << true << 0 << 1;
        QTest::newRow("guard constructed with false") << false << 1 << 0;
    }

    void guard()
    {
        QFETCH(bool, enable);
        QFETCH(int, reports);
        QFETCH(int, suppressed);

        KLongTimeBlockDetector* watch = detector();
        watch->setThreshold(100);
        QTest::qWait(300);
        const int reportsBefore = watch->reportCount();
        const int suppressedBefore = watch->suppressedCount();
        {
            KIngoreLongTimeDetectHelper guard(enable);
            QCOMPARE(watch->isIgnored(), enable);
            QVERIFY(blockUntil([&] {
                return watch->reportCount() > reportsBefore ||
                       watch->suppressedCount() > suppressedBefore;
            }));
        }
        QVERIFY(!watch->isIgnored());
        QTest::qWait(300);
        watch->setThreshold(KxApplication::kDefaultBlockThreshold);
        QCOMPARE(watch->reportCount() - reportsBefore, reports);
        QCOMPARE(watch->suppressedCount() - suppressedBefore, suppressed);
    }

    void guardsNestAndSurviveExceptions()
    {
        KLongTimeBlockDetector* watch = detector();
        try {
            KIngoreLongTimeDetectHelper outer(true);
            {
                KIngoreLongTimeDetectHelper inner(true);
            }
            QVERIFY(watch->isIgnored());
            throw std::runtime_error("lengthy operation failed");
        } catch (const std::runtime_error&) {
        }
        QVERIFY(!watch->isIgnored());
    }

    void guardWithoutTheHostApplication_data()
    {
        QTest::addColumn<QStringList>("operations");
        QTest::newRow("plain application object") << QStringList{"--guard"};
        QTest::newRow("no application object") << QStringList{"--no-app", "--guard"};
    }

    void guardWithoutTheHostApplication()
    {
        QFETCH(QStringList, operations);
        KTestAppDir appDir(m_env.rootPath());
        KCommProbe probe(appDir, QString());
        QVERIFY(probe.isValid());
        QCOMPARE(probe.run(operations), QJsonArray{QJsonValue::Null});
    }
};

int main(int argc, char** argv)
{
    KxApplication app(argc, argv);
    TestQCommProcess test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_qcommprocess.moc"
