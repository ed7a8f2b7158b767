// Which application of the suite opens which file, and what reaches the
// suite, the cloud service and the desktop when the helpers hand documents,
// paths and addresses on. Answers that depend on where the program lives and
// what it is called come from probe processes copied into temporary
// directories laid out like the suite's bundle; stub programs record what
// arrives.

#include "commsuitekit.h"
#include "kstubprogram.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"
#include "kwarningcatcher.h"

#include "kingorelongtimedetecthelper.h"
#include "qcommfiletypes.h"
#include "qcommopenfile.h"
#include "qcommprocess.h"
#include "qcommstores.h"

#include <vex/klongtimeblockdetector.h>
#include <vex/kxapplication.h>
#include <vexlite/hostcontrol.h>

#include <QDesktopServices>
#include <QtTest>

using namespace AuthTest;
using namespace QComm;

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
    QStringList parts{getZentoOpenAllSupportTypeList().join(';'),
                      getTabixOpenAllSupportTypeList().join(';'),
                      getSlidexOpenAllSupportTypeList().join(';'), "pdf;epub;mobi"};
    if (!replacement.isEmpty())
        parts[QStringList({"zento", "tabix", "slidex", "pdf"}).indexOf(appType)] = replacement;
    return parts.join('|');
}

// What the probe reports for an open: the result, then the command line.
QString opened(bool failed, const QString& bundle, const QString& target)
{
    return QString(failed ? "true" : "false") + " open -a \"" + bundle + "\" \"" + target + '"';
}

} // namespace

class TestCommLaunch : public QObject
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

    // First of the slots that ask for the lists: this process takes its
    // copies of the built-in lists here.
    void builtinLists()
    {
        const QList<QStringList> lists{
            getZentoOpenAllSupportTypeList(), getTabixOpenAllSupportTypeList(),
            getSlidexOpenAllSupportTypeList(), getPdfOpenAllSupportType()};
        // Duplicates are kept: xls and odc twice in the spreadsheet's list.
        QCOMPARE(QList<qsizetype>({lists[0].size(), lists[1].size(), lists[2].size(),
                                   lists[1].count("xls") + lists[1].count("odc")}),
                 QList<qsizetype>({15, 38, 14, 4}));
        QCOMPARE(lists[3], QStringList({"pdf", "epub", "mobi"}));
        QStringList zento{"stale"}, slidex, tabix, pdf{"stale", "more"};
        getZentoSupportList(zento, slidex, tabix, pdf); // slidex second, tabix third
        QCOMPARE((QList<QStringList>{zento, tabix, slidex, pdf}), lists);
    }

    // A fresh process with the list of type stored (empty: the built-in
    // one): the lists, getAppTypeBySuffix, checkIsVexSupport and
    // checkIsZentoSupport(type).
    void storedLists_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* tag, const char* type, const char* stored,
                            const char* suffix, const char* expected) {
            QTest::newRow(tag) << type << stored << suffix << expected;
        };
        row("TXT: word processor asked first", "tabix", "", "TXT", "zento true true");
        row("csv", "zento", "", "csv", "tabix true false");
        row("Dbf, type and case ignored", "TABIX", "", "Dbf", "tabix true true");
        row("NIMBO stands for all four", "NIMBO", "", "Epub", "pdf true true");
        row("other application type", "other", "", "pdf", "pdf true false");
        row("unknown, with its dot", "nimbo", "", ".docx", " false false");
        row("separators kept: empty suffix", "zento", "a;;b;", "", "zento true true");
        row("txt moves to the spreadsheet", "zento", "odt", "TXT", "tabix true false");
        row("spreadsheet list without csv", "tabix", "docx", "csv", " false false");
        row("stored case kept", "pdf", "PDF;Djvu;", "djvu", "pdf true true");
        row("the presentation's list", "slidex", "key", "KEY", "slidex true true");
        // Letter case beyond ASCII, as QString folds it: one unit at a time;
        // entries of every length, the longest bounding the look-up.
        row("accented capitals", "pdf", "übung", "ÜBUNG", "pdf true true");
        row("Kelvin sign folds to k", "slidex", "kml", "\u212AML", "slidex true true");
        row("final sigma folds as sigma", "pdf", "σς", "ΣΣ", "pdf true true");
        row("dotted capital I is no i", "zento", "i", "\u0130", " false false");
        row("beyond 16 bits: Deseret", "pdf", "\U00010400", "\U00010428", "pdf true true");
        row("in two lists, other case", "pdf", "DOCX", "Docx", "zento true true");
        row("eight letters in capitals", "slidex", "keynotes", "KEYNOTES", "slidex true true");
        row("nine letters, alike but in the middle", "tabix", "abcd1wxyz", "ABCD2WXYZ",
            " false false");
        row("the longest entry", "tabix", "Quarterly-Report", "QUARTERLY-REPORT",
            "tabix true true");
    }

    void storedLists()
    {
        QFETCH(QString, type);
        QFETCH(QString, stored);
        QFETCH(QString, suffix);
        QFETCH(QString, expected);

        const QString lists = listsText(type, stored);
        writeNimboRegValue(storeKey(type), stored);
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

    // Where the launcher is looked for depends on where the program runs and
    // what it is called; what reaches it must be the target, unchanged, and
    // any document goes to the cloud client with its name in Base64.
    void launches_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("bundle");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("fileId");
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("base64");
        const auto row = [](const char* tag, const QString& folder, const char* name,
                            const char* bundle, const char* path, const char* fileId,
                            const char* fileName, const char* base64) {
            QTest::newRow(tag) << folder << name << bundle << path << fileId << fileName << base64;
        };
        const auto layout = [&](const char* tag, const char* folder, const char* name,
                                const char* bundle) {
            row(tag, folder, name, bundle, "/tmp/doc.txt", "id", "a.docx", "YS5kb2N4");
        };
        layout("suite in its bundle", "Zento Office.app/Contents/MacOS", "zentooffice",
               "Zento Office.app");
        layout("helper inside the suite's bundle",
               "Z.app/Contents/SharedSupport/H.app/Contents/MacOS", "nimbohelper", "Z.app");
        layout("name differs in case: a helper", "Z.app/Contents/MacOS", "ZentoOffice",
               "Z.app/Contents/MacOS");
        layout("first marker counts", "A.app/Contents/MacOS/B.app/Contents/MacOS", "zentooffice",
               "A.app");
        row("helper installed flat, unknown extension", "bin", "nimbohelper", "bin", "/a b", "7",
            "notes.xyz", "bm90ZXMueHl6");
        const auto target = [&](const char* tag, const char* path, const char* fileId,
                                const char* fileName, const char* base64) {
            row(tag, kSuite, "zentooffice", "Zento Office.app", path, fileId, fileName, base64);
        };
        target("quotes, semicolons, substitution", "/tmp/it's \"q\";$(touch pwned)",
               "7\";`touch pwned`;\"", "a\"b';$(touch pwned).docx",
               "YSJiJzskKHRvdWNoIHB3bmVkKS5kb2N4");
        target("non-ASCII, newlines, percent signs", "/tmp/报告\ntouch pwned", "%1\n",
               "%2\n会议.docx", "JTIK5Lya6K6uLmRvY3g=");
    }

    void launches()
    {
        QFETCH(QString, folder);
        QFETCH(QString, name);
        QFETCH(QString, bundle);
        QFETCH(QString, path);
        QFETCH(QString, fileId);
        QFETCH(QString, fileName);
        QFETCH(QString, base64);

        const KTestAppDir appDir(m_env.rootPath());
        const KStubProgram launcher(appDir.filePath(bundle + "/zentooffice"),
                                    appDir.filePath("calls"));
        const QString url = "vexnimbo://type=open&fileid=" + fileId + "&displayname=" + base64;
        const QString bundlePath = appDir.filePath(bundle);
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
        const QStringList open{"--guard", "--open-exe", "/tmp/a", "--open-vex", "1", "a"};
        QCOMPARE(
            runProbe(appDir, QStringList{"--name", "zentooffice"} + open, kSuite),
            QStringList({"", "", opened(true, bundle, "/tmp/a"),
                         opened(true, bundle, "vexnimbo://type=open&fileid=1&displayname=YQ==")}));
        const KStubProgram launcher(appDir.filePath("zentooffice"), appDir.filePath("calls"));
        QCOMPARE(runProbe(appDir, QStringList{"--no-app"} + open),
                 QStringList({"", "false ", "false "}));
        QVERIFY(launcher.isValid() && launcher.calls().isEmpty());
    }

    // --- processes and addresses ----------------------------------------

    void cloudService_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("overseas");
        QTest::addColumn<QString>("extra");
        QTest::addColumn<bool>("started");
        QTest::newRow("home edition") << "zentooffice" << false << "" << true;
        QTest::newRow("overseas, shell characters stay in the text")
            << "zentooffice" << true << "\"; touch pwned; $(touch pwned) `touch pwned` '" << true;
        QTest::newRow("helper process starts nothing") << "nimbohelper" << false << "x" << false;
        QTest::newRow("name differs in case") << "ZentoOffice" << false << "x" << false;
    }

    void cloudService()
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
        QCOMPARE(runProbe(appDir, {"--name", name, "--launch", extra}, kSuite).size(), 2);
        QCOMPARE(runProbe(appDir, {"--name", "zentooffice", "--launch", "marker"}, kSuite).size(),
                 2);
        QList<QStringList> calls{{kService.arg(overseas ? "xa" : "", "marker")}};
        if (started)
            calls.append({kService.arg(overseas ? "xa" : "", extra)});
        QVERIFY(service.waitForCalls(calls.size()));
        QCOMPARE(service.calls(), KStubProgram::sorted(calls));
        QVERIFY(!QFileInfo::exists("pwned"));
    }

    // Nothing is started on this platform, quoted or not.
    void createProcessStartsNothing()
    {
        for (const char* program : {"", "/Applications/My App", "\"/Applications/My App\""})
            QVERIFY(!createProcess(program, "--arg", m_env.rootPath()));
        QVERIFY(isSurroundWith("\"a b\"", "\"") && isSurroundWith("\"", "\""));
        QVERIFY(!isSurroundWith("\"a b", "\"") && !isSurroundWith("a b\"", "\""));
        QVERIFY(!isSurroundWith("-x--", "--"));
    }

    // Per-user child keys of the group, whatever they hold; nothing else.
    void clientCount()
    {
        QCOMPARE(getClientCount(), 0);
        for (const char* key : {"userinfo/1/x", "activeclient/count", "activeclient/1/a/b",
                                "activeclient/1/c", "activeclient/2/pid"})
            writeNimboRegValue(key, 1);
        raw(KHKSoftwareSettings::LocalMachine).setValue("Corvane/ZentoCloud/activeclient/3/pid", 1);
        QCOMPARE(getClientCount(), 2);
    }

    // Addresses go to the desktop's handler, parsed tolerantly; Safari is
    // not there on the machines that run this.
    void addresses()
    {
        for (const char* scheme : {"https", "http"})
            QDesktopServices::setUrlHandler(scheme, this, "recordUrl");
        QDesktopServices::setUrlHandler("zentofail", this, "noSuchSlot");
        QVERIFY(openUrl("https://e.com/a?b=1") && openUrl("http://e.com/a b/100%"));
        QVERIFY(!openUrl("") && !openUrl("zentofail://x"));
        QCOMPARE(m_urls, QStringList({"https://e.com/a?b=1", "http://e.com/a%20b/100%25"}));
        QVERIFY(QFileInfo::exists("/Applications/Safari.app") ||
                (!openUrlBySafari("") && !openUrlBySafari("https://e.com")));
    }

    // The guard switches the host's detector off for its life, nested; one
    // constructed with false does nothing at either end.
    void guard()
    {
        KLongTimeBlockDetector* detector =
            static_cast<KxApplication*>(qApp)->longTimeBlockDetector();
        {
            KIngoreLongTimeDetectHelper outer(true);
            {
                KIngoreLongTimeDetectHelper inner(true);
                KIngoreLongTimeDetectHelper off(false);
            }
            QVERIFY(detector->isIgnored());
        }
        QVERIFY(!detector->isIgnored());
        KIngoreLongTimeDetectHelper off(false);
        QVERIFY(!detector->isIgnored());
    }
};

// The guard needs the suite's application object, with its detector.
int main(int argc, char** argv)
{
    KxApplication app(argc, argv);
    TestCommLaunch test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_commlaunch.moc"
