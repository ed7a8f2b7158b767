// Documents, files and processes handed to the suite: which application
// opens which extension, the command lines and the bundle each kind of
// program finds, the cloud service start, active clients, addresses and the
// guard around lengthy operations. Starts are observed from probe copies
// laid out like the suite's bundle, with stub programs recording what
// arrives; stored lists are seen by a fresh probe, since this process keeps
// its copies.

#include "kcommtest.h"
#include "kstubprogram.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"

#include "common/kingorelongtimedetecthelper.h"
#include "common/kopencommand.h"
#include "common/qcommfiletypes.h"
#include "common/qcommopenfile.h"
#include "common/qcommprocess.h"
#include "common/qcommstores.h"

#include <vex/klongtimeblockdetector.h>
#include <vex/kxapplication.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/khksoftwaresettings.h>
#include <vexlite/kprocesslaunchermac.h>

#include <QDesktopServices>

#include <stdexcept>

namespace {

const QString kSuite = "Zento Office.app/Contents/MacOS";
const QString kService = "\"Run /InstanceId:ZentoCloudSvr zentocloudsvrimp.dll /nimbowork "
                         "/run_plugin /plugin_name=nimbo /plugin_entry=nimbowork%1.dll "
                         "/start_from=plugin_nimbo %2\"";

QString storeKey(const QString& appType)
{
    return "usercenter/allsupporttype/" + appType + "open";
}

// The built-in lists as the probe reports them, the one of appType replaced
// by a non-empty replacement.
QString listsText(const QString& appType, const QString& replacement)
{
    QStringList parts{QComm::getZentoOpenAllSupportTypeList().join(';'),
                      QComm::getTabixOpenAllSupportTypeList().join(';'),
                      QComm::getSlidexOpenAllSupportTypeList().join(';'), "pdf;epub;mobi"};
    if (!replacement.isEmpty())
        parts[QStringList({"zento", "tabix", "slidex", "pdf"}).indexOf(appType)] = replacement;
    return parts.join('|');
}

// What the probe reports for an open: the result, then the command line.
QString opened(bool failed, const QString& bundle, const QString& target)
{
    return QString(failed ? "true" : "false") + " open -a \"" + bundle + "\" \"" + target + '"';
}

QString vexUrl(const QString& fileId, const QString& fileName)
{
    return "vexnimbo://type=open&fileid=" + fileId +
           "&displayname=" + QString::fromLatin1(fileName.toUtf8().toBase64());
}

} // namespace

class TestQCommOpenFile : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    QStringList m_urls;

public slots:
    // Stands in for the desktop's handler of a URL scheme.
    void recordUrl(const QUrl& url) { m_urls.append(url.toEncoded()); }

private slots:
    void init()
    {
        m_env.resetHost();
        QFile::remove("pwned");
    }

    // --- document types -------------------------------------------------

    // First slot: this process takes its copies of the built-in lists here.
    void builtinLists()
    {
        using namespace QComm;
        const QList<QStringList> lists{
            getZentoOpenAllSupportTypeList(), getTabixOpenAllSupportTypeList(),
            getSlidexOpenAllSupportTypeList(), getPdfOpenAllSupportType()};
        // Duplicates are kept: xls and odc twice in the spreadsheet's list.
        QCOMPARE(QString("%1 %2 %3 %4 %5")
                     .arg(lists[0].size())
                     .arg(lists[1].size())
                     .arg(lists[2].size())
                     .arg(lists[3].join(';'))
                     .arg(lists[1].count("xls") + lists[1].count("odc")),
                 QString("15 38 14 pdf;epub;mobi 4"));
        QStringList zento{"stale"}, slidex, tabix, pdf{"stale", "more"};
        getZentoSupportList(zento, slidex, tabix, pdf); // slidex second, tabix third
        QCOMPARE((QList<QStringList>{zento, tabix, slidex, pdf}), lists);
    }

    // getAppTypeBySuffix, checkIsVexSupport, checkIsZentoSupport(checkType).
    void lookups_data()
    {
        addColumns<QString, QString, QString>({"suffix", "checkType", "expected"});
        addRow("TXT: word processor asked first", "TXT", "tabix", "zento true true");
        addRow("uof, in three lists", "uof", "slidex", "zento true true");
        addRow("csv", "csv", "zento", "tabix true false");
        addRow("Dbf, case ignored", "Dbf", "TABIX", "tabix true true");
        addRow("pptx", "PPTX", "slidex", "slidex true true");
        addRow("NIMBO stands for all four", "Epub", "NIMBO", "pdf true true");
        addRow("other application type", "pdf", "other", "pdf true false");
        addRow("unknown", "xyz", "nimbo", " false false");
        addRow("with its dot", ".docx", "zento", " false false");
    }

    void lookups()
    {
        QFETCH(QString, suffix);
        QFETCH(QString, checkType);
        QFETCH(QString, expected);
        QCOMPARE(QComm::getAppTypeBySuffix(suffix) + ' ' +
                     (QComm::checkIsVexSupport(suffix) ? "true " : "false ") +
                     (QComm::checkIsZentoSupport(checkType, suffix) ? "true" : "false"),
                 expected);
    }

    // A fresh process with one list stored: the lists, and the lookups as
    // above with checkType the stored list's type.
    void storedLists_data()
    {
        addColumns<QString, QString, QString, QString>({"type", "stored", "suffix", "expected"});
        addRow("separators kept: empty suffix", "zento", "a;;b;", "", "zento true true");
        addRow("empty text: built-in list", "zento", "", "", " false false");
        addRow("txt moves to the spreadsheet", "zento", "odt", "TXT", "tabix true false");
        addRow("spreadsheet list without csv", "tabix", "docx", "csv", " false false");
        addRow("stored case kept", "pdf", "PDF;Djvu", "djvu", "pdf true true");
        addRow("empty entries at the end", "slidex", "key;;", "KEY", "slidex true true");
    }

    void storedLists()
    {
        QFETCH(QString, type);
        QFETCH(QString, stored);
        QFETCH(QString, suffix);
        QFETCH(QString, expected);
        const QString lists = listsText(type, stored);
        QComm::writeNimboRegValue(storeKey(type), stored);
        QCOMPARE(runProbe(KTestAppDir(m_env.rootPath()),
                          {"--lists", "--support-list", "--apptype", suffix, "--vex", suffix,
                           "--check", type, suffix}),
                 QStringList({lists, lists}) + expected.split(' '));
    }

    // Each function takes its copies on its own first call: those asked
    // before a change keep the old lists, those asked after see the pdf list
    // of that moment but the other lists as they were first read.
    void eachFunctionCopiesOnItsFirstCall()
    {
        const QString withDjvu = listsText("pdf", "djvu");
        // clang-format off
        QCOMPARE(runProbe(KTestAppDir(m_env.rootPath()), {
            "--apptype", "pdf",
            "--write", storeKey("pdf"), "djvu", "--write", storeKey("zento"), "zzz",
            "--write", storeKey("tabix"), "zzz", "--write", storeKey("slidex"), "zzz",
            "--lists", "--apptype", "djvu", "--vex", "djvu", "--vex", "zzz",
            "--check", "pdf", "djvu", "--check", "nimbo", "mobi", "--support-list",
            "--apptype", "mobi"}),
            QStringList({"pdf", "", "", "", "", withDjvu, "", "true", "false", "true", "false",
                         withDjvu, "pdf"}));
        // clang-format on
    }

    // --- opening files --------------------------------------------------

    void vexCommand_data()
    {
        addColumns<QString, QString, QString>({"fileId", "fileName", "base64"});
        addRow("docx", "f1", "report.docx", "cmVwb3J0LmRvY3g=");
        addRow("unknown extension", "7", "notes.xyz", "bm90ZXMueHl6");
        addRow("non-ASCII name only in Base64", "9", "报告 2024.docx", "5oql5ZGKIDIwMjQuZG9jeA==");
        addRow("%n in the values, one pass", "%3%4", "%1.docx", "JTEuZG9jeA==");
    }

    void vexCommand()
    {
        QFETCH(QString, fileId);
        QFETCH(QString, fileName);
        QFETCH(QString, base64);
        // This suite's folder has no bundle around it: it is the bundle.
        QCOMPARE("false " + QComm::openFileByVexCommand(fileId, fileName),
                 opened(false, QCoreApplication::applicationDirPath(),
                        "vexnimbo://type=open&fileid=" + fileId + "&displayname=" + base64));
        QCOMPARE(KOpenCommand::forSafari("https://e.com/?q=\"2\"").text(),
                 QString("open -a /Applications/Safari.app \"https://e.com/?q=\"2\"\""));
    }

    // Where the launcher is looked for depends on where the program runs and
    // what it is called; what reaches it must be the target, unchanged.
    void launches_data()
    {
        addColumns<QString, QString, QString, QString, QString, QString>(
            {"folder", "name", "bundle", "path", "fileId", "fileName"});
        const auto layout = [](const char* tag, const char* folder, const char* name,
                               const char* bundle) {
            addRow(tag, folder, name, bundle, "/tmp/doc.txt", "id", "a.docx");
        };
        layout("suite in its bundle", "Zento Office.app/Contents/MacOS", "zentooffice",
               "Zento Office.app");
        layout("helper inside the suite's bundle",
               "Z.app/Contents/SharedSupport/H.app/Contents/MacOS", "nimbohelper", "Z.app");
        layout("helper, installed flat", "bin", "nimbohelper", "bin");
        layout("name differs in case: a helper", "Z.app/Contents/MacOS", "ZentoOffice",
               "Z.app/Contents/MacOS");
        layout("first marker counts", "A.app/Contents/MacOS/B.app/Contents/MacOS", "zentooffice",
               "A.app");
        const auto target = [](const char* tag, const char* path, const char* fileId,
                               const char* fileName) {
            addRow(tag, kSuite, "zentooffice", "Zento Office.app", path, fileId, fileName);
        };
        target("quotes and semicolons", "/tmp/it's \"q\";touch pwned", "7\";touch pwned;\"",
               "a\"b';touch pwned.docx");
        target("command substitution", "/tmp/$(touch pwned)", "`touch pwned`",
               "$(touch pwned).docx");
        target("non-ASCII, newlines, percent signs", "/tmp/报告\ntouch pwned", "%1\n",
               "%2\n会议.docx");
    }

    void launches()
    {
        QFETCH(QString, folder);
        QFETCH(QString, name);
        QFETCH(QString, bundle);
        QFETCH(QString, path);
        QFETCH(QString, fileId);
        QFETCH(QString, fileName);
        const KTestAppDir appDir(m_env.rootPath());
        const KStubProgram launcher(appDir.filePath(bundle + "/zentooffice"),
                                    appDir.filePath("calls"));
        const QString url = vexUrl(fileId, fileName), bundlePath = appDir.filePath(bundle);
        QCOMPARE(
            runProbe(appDir, {"--name", name, "--open-exe", path, "--open-vex", fileId, fileName},
                     folder),
            QStringList({"", opened(false, bundlePath, path), opened(false, bundlePath, url)}));
        QVERIFY(launcher.waitForCalls(2));
        QCOMPARE(launcher.calls(), KStubProgram::sorted({QStringList{path}, QStringList{url}}));
        QVERIFY(!QFileInfo::exists("pwned") && !QFileInfo::exists(appDir.filePath("pwned")));
    }

    // No launcher in the bundle: the commands are there, but fail. Without an
    // application object there is no bundle and nothing runs. The guard works
    // with a plain application object, or none.
    void failedOrNoStart()
    {
        const KTestAppDir appDir(m_env.rootPath());
        const QString bundle = appDir.filePath("Zento Office.app");
        QCOMPARE(runProbe(appDir,
                          {"--name", "zentooffice", "--guard", "--open-exe", "/tmp/a", "--open-vex",
                           "1", "a"},
                          kSuite),
                 QStringList({"", "", opened(true, bundle, "/tmp/a"),
                              opened(true, bundle, vexUrl("1", "a"))}));
        const KStubProgram launcher(appDir.filePath("zentooffice"), appDir.filePath("calls"));
        QCOMPARE(runProbe(appDir,
                          {"--no-app", "--guard", "--open-exe", "/tmp/a", "--open-vex", "1", "a"}),
                 QStringList({"", "false ", "false "}));
        QVERIFY(launcher.isValid() && launcher.calls().isEmpty());
    }

    // --- processes and addresses ----------------------------------------

    void launchZentocloudsvr_data()
    {
        addColumns<QString, bool, QString, bool>({"name", "overseas", "extra", "started"});
        addRow("home edition", "zentooffice", false, "", true);
        addRow("overseas edition", "zentooffice", true, "", true);
        addRow("extra arguments at the end", "zentooffice", false, "/login=1 /x", true);
        addRow("shell characters stay in the text", "zentooffice", true,
               "\"; touch pwned; $(touch pwned) `touch pwned` '", true);
        addRow("non-ASCII", "zentooffice", false, "/user=张三", true);
        addRow("helper process starts nothing", "nimbohelper", false, "x", false);
        addRow("name differs in case", "ZentoOffice", false, "x", false);
    }

    void launchZentocloudsvr()
    {
        QFETCH(QString, name);
        QFETCH(bool, overseas);
        QFETCH(QString, extra);
        QFETCH(bool, started);
        const KTestAppDir appDir(m_env.rootPath());
        const KStubProgram service(
            appDir.filePath("Zento Office.app/Contents/SharedSupport/"
                            "zentocloudsvr.app/Contents/MacOS/zentocloudsvr"),
            appDir.filePath("calls"));
        krt::hostcontrol::setOverseasVersion(overseas);
        // A start that must happen follows: one that must not would have
        // been started before it, and is seen along with it.
        QCOMPARE(runProbe(appDir,
                          {"--name", name, "--launch", extra, "--name", "zentooffice", "--launch",
                           "marker"},
                          kSuite)
                     .size(),
                 4);
        QList<QStringList> calls{{kService.arg(overseas ? "xa" : "", "marker")}};
        if (started)
            calls.append({kService.arg(overseas ? "xa" : "", extra)});
        QVERIFY(service.waitForCalls(calls.size()));
        QCOMPARE(service.calls(), KStubProgram::sorted(calls));
        QVERIFY(!QFileInfo::exists("pwned"));
    }

    void createProcessStartsNothing()
    {
        const KTestAppDir appDir(m_env.rootPath());
        const KStubProgram stub(appDir.filePath("My App/My App"), appDir.filePath("calls"));
        for (const QString& program : {QString(), stub.path(), '"' + stub.path() + '"'})
            QVERIFY(!QComm::createProcess(program, "--arg", appDir.path()));
        // The stub's only run is the one started here.
        QVERIFY(KProcessLauncherMac::LaunchProcessByNSTask(stub.path(), "marker"));
        QVERIFY(stub.waitForCalls(1));
        QCOMPARE(stub.calls(), QList<QStringList>{QStringList{"marker"}});
        QVERIFY(QComm::isSurroundWith("\"a b\"", "\"") && QComm::isSurroundWith("\"", "\""));
        QVERIFY(!QComm::isSurroundWith("\"a b", "\"") && !QComm::isSurroundWith("a b\"", "\""));
        QVERIFY(!QComm::isSurroundWith("-x--", "--"));
    }

    // Per-user child keys of the group, whatever they hold; nothing else.
    void clientCount()
    {
        QCOMPARE(QComm::getClientCount(), 0);
        for (const char* key : {"userinfo/1/x", "activeclient/count", "activeclient/1/a/b",
                                "activeclient/1/c", "activeclient/2/pid"})
            QComm::writeNimboRegValue(key, 1);
        QSettings(KHKSoftwareSettings::storeFileName(KHKSoftwareSettings::LocalMachine),
                  QSettings::IniFormat)
            .setValue("Corvane/ZentoCloud/activeclient/3/pid", 1);
        QCOMPARE(QComm::getClientCount(), 2);
    }

    void openUrl_data()
    {
        addColumns<QString, bool, QString>({"url", "expected", "received"}); // empty: nothing seen
        addRow("https", "https://example.com/a?b=1", true, "https://example.com/a?b=1");
        addRow("tolerant", "http://e.com/a b/100%", true, "http://e.com/a%20b/100%25");
        addRow("empty", "", false, "");
        addRow("handler that cannot be reached", "zentofail://x", false, "");
    }

    void openUrl()
    {
        QFETCH(QString, url);
        QFETCH(bool, expected);
        QFETCH(QString, received);
        // Only schemes with a handler here: nothing reaches a real browser.
        for (const char* scheme : {"https", "http"})
            QDesktopServices::setUrlHandler(scheme, this, "recordUrl");
        QDesktopServices::setUrlHandler("zentofail", this, "noSuchSlot");
        m_urls.clear();
        QCOMPARE(QComm::openUrl(url), expected);
        QCOMPARE(m_urls.join(' '), received);
        // Safari is not there on the machines that run this.
        QVERIFY(QFileInfo::exists("/Applications/Safari.app") || !QComm::openUrlBySafari(url));
    }

    // The guard switches the host's detector off for its life, nested and
    // through exceptions; one constructed with false does nothing at either end.
    void guard()
    {
        KLongTimeBlockDetector* detector =
            static_cast<KxApplication*>(qApp)->longTimeBlockDetector();
        try {
            KIngoreLongTimeDetectHelper outer(true);
            {
                KIngoreLongTimeDetectHelper inner(true);
                KIngoreLongTimeDetectHelper off(false);
            }
            QVERIFY(detector->isIgnored());
            throw std::runtime_error("lengthy operation failed");
        } catch (const std::runtime_error&) {
        }
        QVERIFY(!detector->isIgnored());
        KIngoreLongTimeDetectHelper off(false);
        QVERIFY(!detector->isIgnored());
    }
};

int main(int argc, char** argv)
{
    KxApplication app(argc, argv);
    TestQCommOpenFile test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_qcommopenfile.moc"
