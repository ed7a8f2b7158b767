// What depends on the process: values read once and kept for it, and
// answers that depend on where the program lives and what it is called.
// Installation identity, language, versions and user agents; the names of
// the cloud folders; the desktop sync switches; which application opens
// which extension; documents, files and the cloud service handed to the
// suite; active clients, addresses and the guard around lengthy operations.
// Fresh probe processes, copied into temporary application directories
// laid out like the suite's bundle, show what this process's caches would
// hide; stub programs record what arrives.

#include "kcommtest.h"
#include "kstubprogram.h"
#include "ktestappdir.h"
#include "kwarningcatcher.h"

#include "common/kingorelongtimedetecthelper.h"
#include "common/kopencommand.h"
#include "common/qcommcloudnodes.h"
#include "common/qcommfiletypes.h"
#include "common/qcommidentity.h"
#include "common/qcommopenfile.h"
#include "common/qcommprocess.h"
#include "common/qcommstores.h"
#include "common/qcommsyncswitches.h"

#include <vex/klongtimeblockdetector.h>
#include <vex/kxapplication.h>
#include <vexlite/kprocesslaunchermac.h>

#include <QDesktopServices>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSysInfo>

#include <climits>

using namespace QComm;

namespace {

const QString kDeviceKey = "roamingdevice/deviceid";

bool isDeviceId(const QString& text)
{
    return QRegularExpression("^UUID-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$")
        .match(text)
        .hasMatch();
}

QString base64(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

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
// Runs the build's probe program "commprobe" from a copy in folder of appDir:
// a fresh process with empty caches that sees the host as the suite set it up
// (saved to the suite's profile first) and what the suite laid out around it.
// One text per operation, or a single line saying why the probe failed; err
// receives its error output.
QStringList runProbe(const KTestAppDir& appDir, const QStringList& operations,
                     const QString& folder = QString(), QString* err = nullptr)
{
    const QString program = folder.isEmpty() ? "commprobe" : folder + "/commprobe";
    QFile build(QDir(QCoreApplication::applicationDirPath()).filePath("commprobe"));
    if (!build.open(QIODevice::ReadOnly) || !appDir.writeFile(program, build.readAll(), true))
        return {"<probe not installed>"};
    krt::hostcontrol::saveProfile(krt::hostcontrol::profileDir());
    // Names travel as UTF-8 whatever the locale; debug notices are part of
    // what some helpers promise.
    QProcessEnvironment env;
    env.insert("LC_ALL", "C.UTF-8");
    env.insert("QT_LOGGING_RULES", "default.debug=true");
    const KTestAppDir::Result result = appDir.run(program, operations, env);
    if (err)
        *err = result.err;
    if (result.exitCode != 0)
        return {"<probe failed: " + result.err.trimmed() + '>'};
    QStringList texts;
    for (const QString& line : result.out.split('\n', Qt::SkipEmptyParts))
        texts.append(QJsonDocument::fromJson(line.toUtf8()).array().at(0).toString());
    return texts;
}

QString opened(bool failed, const QString& bundle, const QString& target)
{
    return QString(failed ? "true" : "false") + " open -a \"" + bundle + "\" \"" + target + '"';
}

} // namespace

class TestQCommProcess : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KTestAppDir m_appDir{m_env.rootPath()};
    QStringList m_urls;

    QStringList probe(const QStringList& operations, QString* err = nullptr) const
    {
        return runProbe(m_appDir, operations, QString(), err);
    }

public slots:
    // Stands in for the desktop's handler of a URL scheme.
    void recordUrl(const QUrl& url) { m_urls.append(url.toEncoded()); }

private slots:
    void init()
    {
        m_env.resetHost();
        QFile::remove(m_appDir.filePath("cfgs/setup.cfg"));
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
        QCOMPARE(QList<int>({lists[0].size(), lists[1].size(), lists[2].size(),
                             lists[1].count("xls") + lists[1].count("odc")}),
                 QList<int>({15, 38, 14, 4}));
        QCOMPARE(lists[3], QStringList({"pdf", "epub", "mobi"}));
        QStringList zento{"stale"}, slidex, tabix, pdf{"stale", "more"};
        getZentoSupportList(zento, slidex, tabix, pdf); // slidex second, tabix third
        QCOMPARE((QList<QStringList>{zento, tabix, slidex, pdf}), lists);
    }

    // getAppTypeBySuffix, checkIsVexSupport, checkIsZentoSupport(checkType).
    void lookups_data()
    {
        // Columns: suffix, checkType, expected.
        addColumns<QString, QString, QString>();
        addRow("TXT: word processor asked first", "TXT", "tabix", "zento true true");
        addRow("uof, in three lists", "uof", "slidex", "zento true true");
        addRow("csv", "csv", "zento", "tabix true false");
        addRow("Dbf, case ignored", "Dbf", "TABIX", "tabix true true");
        addRow("NIMBO stands for all four", "Epub", "NIMBO", "pdf true true");
        addRow("other application type", "pdf", "other", "pdf true false");
        addRow("unknown", "xyz", "nimbo", " false false");
        addRow("with its dot", ".docx", "zento", " false false");
    }

    void lookups()
    {
        const auto [suffix, checkType, expected] = fetch<QString, QString, QString>();
        QCOMPARE(getAppTypeBySuffix(suffix) + ' ' +
                     (checkIsVexSupport(suffix) ? "true " : "false ") +
                     (checkIsZentoSupport(checkType, suffix) ? "true" : "false"),
                 expected);
    }

    // A fresh process with one list stored: the lists, and the lookups as
    // above with checkType the stored list's type.
    void storedLists_data()
    {
        // Columns: type, stored, suffix, expected.
        addColumns<QString, QString, QString, QString>();
        addRow("separators kept: empty suffix", "zento", "a;;b;", "", "zento true true");
        addRow("empty text: built-in list", "zento", "", "", " false false");
        addRow("txt moves to the spreadsheet", "zento", "odt", "TXT", "tabix true false");
        addRow("spreadsheet list without csv", "tabix", "docx", "csv", " false false");
        addRow("stored case kept", "pdf", "PDF;Djvu;", "djvu", "pdf true true");
        addRow("the presentation's list", "slidex", "key", "KEY", "slidex true true");
    }

    void storedLists()
    {
        const auto [type, stored, suffix, expected] = fetch<QString, QString, QString, QString>();
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
        // Columns: folder, name, bundle, path, fileId, fileName, base64.
        addColumns<QString, QString, QString, QString, QString, QString, QString>();
        const auto layout = [](const char* tag, const char* folder, const char* name,
                               const char* bundle) {
            addRow(tag, folder, name, bundle, "/tmp/doc.txt", "id", "a.docx", "YS5kb2N4");
        };
        layout("suite in its bundle", "Zento Office.app/Contents/MacOS", "zentooffice",
               "Zento Office.app");
        layout("helper inside the suite's bundle",
               "Z.app/Contents/SharedSupport/H.app/Contents/MacOS", "nimbohelper", "Z.app");
        layout("name differs in case: a helper", "Z.app/Contents/MacOS", "ZentoOffice",
               "Z.app/Contents/MacOS");
        layout("first marker counts", "A.app/Contents/MacOS/B.app/Contents/MacOS", "zentooffice",
               "A.app");
        addRow("helper installed flat, unknown extension", "bin", "nimbohelper", "bin", "/a b", "7",
               "notes.xyz", "bm90ZXMueHl6");
        const auto target = [](const char* tag, const char* path, const char* fileId,
                               const char* fileName, const char* base64) {
            addRow(tag, kSuite, "zentooffice", "Zento Office.app", path, fileId, fileName, base64);
        };
        target("quotes and semicolons", "/tmp/it's \"q\";touch pwned", "7\";touch pwned;\"",
               "a\"b';touch pwned.docx", "YSJiJzt0b3VjaCBwd25lZC5kb2N4");
        target("command substitution", "/tmp/$(touch pwned)", "`touch pwned`",
               "$(touch pwned).docx", "JCh0b3VjaCBwd25lZCkuZG9jeA==");
        target("non-ASCII, newlines, percent signs", "/tmp/报告\ntouch pwned", "%1\n",
               "%2\n会议.docx", "JTIK5Lya6K6uLmRvY3g=");
    }

    void launches()
    {
        const auto [folder, name, bundle, path, fileId, fileName, base64] =
            fetch<QString, QString, QString, QString, QString, QString, QString>();
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
        // Columns: name, overseas, extra, started.
        addColumns<QString, bool, QString, bool>();
        addRow("home edition", "zentooffice", false, "", true);
        addRow("overseas edition", "zentooffice", true, "", true);
        addRow("shell characters stay in the text", "zentooffice", true,
               "\"; touch pwned; $(touch pwned) `touch pwned` '", true);
        addRow("helper process starts nothing", "nimbohelper", false, "x", false);
        addRow("name differs in case", "ZentoOffice", false, "x", false);
    }

    void cloudService()
    {
        const auto [name, overseas, extra, started] = fetch<QString, bool, QString, bool>();
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
            QVERIFY(!createProcess(program, "--arg", appDir.path()));
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
        QSettings(KHKSoftwareSettings::storeFileName(KHKSoftwareSettings::LocalMachine),
                  QSettings::IniFormat)
            .setValue("Corvane/ZentoCloud/activeclient/3/pid", 1);
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
        QCOMPARE(KOpenCommand::forSafari("https://e.com/?q=\"2\"").text(),
                 QString("open -a /Applications/Safari.app \"https://e.com/?q=\"2\"\""));
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

    // --- identity -------------------------------------------------------

    void deviceId()
    {
        const QStringList first = probe({"deviceID", "deviceID"});
        QVERIFY2(isDeviceId(first.value(0)), qPrintable(first.value(0)));
        QCOMPARE(probe({"deviceID"}), QStringList{first[0]});
        QCOMPARE(raw().value(kDeviceKey).toString() + ' ' + first.value(1),
                 first[0] + ' ' + first[0]);
        // This process reads it too, and keeps it when the store changes;
        // any stored text is taken as it is.
        QCOMPARE(deviceID(), first[0]);
        raw().setValue(kDeviceKey, "abc");
        QCOMPARE(deviceID(), first[0]);
        QCOMPARE(probe({"deviceID"}), QStringList{"abc"});
        // A store that cannot be written: one new identifier per process.
        QVERIFY(QFile::remove(raw().fileName()) && QDir().mkpath(raw().fileName()));
        const QStringList once = probe({"deviceID", "deviceID"}), again = probe({"deviceID"});
        QVERIFY2(isDeviceId(once.value(0)) && once.value(1) == once[0], qPrintable(once[0]));
        QVERIFY2(isDeviceId(again.value(0)) && again[0] != once[0], qPrintable(again[0]));
        const QString uuid = createUuid();
        QVERIFY2(QRegularExpression("^[0-9a-f]{32}$").match(uuid).hasMatch(), qPrintable(uuid));
        QVERIFY(uuid != createUuid());
    }

    void language_data()
    {
        // Columns: inStore, setupFile, expected.
        addColumns<QVariant, QByteArray, QString>();
        const QByteArray says1028("[Local]\nUILanguage=1028\n");
        addRow("stored wins", QVariant(1033), says1028, "1033");
        addRow("stored 0: setup file", QVariant("0"), says1028, "1028 read");
        addRow("nothing stored, no setup file", QVariant(), QByteArray(), "2052 read");
        addRow("setup file without the key", QVariant(0), QByteArray("[Local]\nX=1\n"),
               "2052 read");
    }

    void language()
    {
        const auto [inStore, setupFile, expected] = fetch<QVariant, QByteArray, QString>();
        if (inStore.isValid())
            raw().setValue("Corvane/Office/6.0/Common/Local/UILanguage", inStore);
        if (!setupFile.isNull())
            QVERIFY(m_appDir.writeFile("cfgs/setup.cfg", setupFile));
        QString err;
        const QString id = probe({"langID"}, &err).join(' ');
        QCOMPARE(err.contains("func getNimboCfgsValue mac not impl!") ? id + " read" : id,
                 expected);
    }

    void hostAndStoredValues()
    {
        for (const auto& [host, expected] :
             {std::pair("0.0.0.0", "8.1.0.X"), std::pair("0.0.0.1", "0.0.0.1"),
              std::pair("0.0.0.0.0", "0.0.0.0.0")}) {
            krt::hostcontrol::setVersion(host);
            QCOMPARE(zentoVersion() + ' ' + nimboVersion(), QString(expected) + ' ' + expected);
        }
        QCOMPARE(zentoDistSrc() + zentoInstallPath() + userLevel(), QString("-1"));
        raw().setValue("Corvane/Office/6.0/Common/DistSrc", "src");
        raw().setValue("Corvane/Office/6.0/Common/InstallRoot", "/opt/禅");
        setUserLevel("3");
        QCOMPARE(raw().value("Corvane/ZentoCloud/usertype").toString(), QString("3"));
        QCOMPARE(zentoDistSrc() + zentoInstallPath() + userLevel(), QString("src/opt/禅3"));
#ifdef Q_OS_MACOS
        QCOMPARE(getOperationVersion(), "macOS " + QSysInfo::productVersion());
#else
        QCOMPARE(getOperationVersion(), "Linux " + QSysInfo::productVersion());
#endif
    }

    // Per user, machine-wide, then the host's settings.
    void installationGuid()
    {
        const QString key = "Corvane/Office/6.0/Common/infoGUID";
        QCOMPARE(zentoGUID(), QString());
        krt::hostcontrol::setUwpCommonValue("infoGUID", "w");
        raw().setValue(key, "");
        QCOMPARE(zentoGUID(), QString("w"));
        raw(KHKSoftwareSettings::LocalMachine).setValue(key, "m");
        QCOMPARE(zentoGUID(), QString("m"));
        raw().setValue(key, "u");
        QCOMPARE(zentoGUID(), QString("u"));

        KWarningCatcher catcher; // and the functions without an implementation here
        QCOMPARE(
            QStringList({userComputerName(), vexlaunchPath(), photolaunchPath(), zentoCenterPath()})
                .join(""),
            QString());
        QCOMPARE(catcher.warnings(),
                 QStringList({"func userComputerName mac not impl!", "func vexlaunchPath not impl",
                              "func photolaunchPath not impl", "func vexlaunchPath not impl"}));
    }

    void keptForTheProcess()
    {
        // The web-engine agent is built once, from the first call's arguments.
        krt::hostcontrol::setVersion("12.1.0.17890");
        const QString os = getOperationVersion();
        const QString zento =
            "zento/12.1.0.17890 (" + os + ";U;en_US) QtWebkit/602.1 Version/12.1.0.17890";
        QCOMPARE(getWebKitUserAgent(false, "en_US", "602.1"), zento);
        krt::hostcontrol::setVersion("0.0.0.0");
        QCOMPARE(getWebKitUserAgent(true, "zh_CN", "605.1"), zento);
        QCOMPARE(probe({"getWebKitUserAgent", "nimbo", "zh_CN", "605.1"}),
                 QStringList{"nimbo/8.1.0.X (" + os + ";U;zh_CN) QtWebkit/605.1 Version/8.1.0.X"});
        // The host's agent is fetched once it is known.
        QCOMPARE(getUserAgent(), QString());
        krt::hostcontrol::setUserAgent("Agent/1");
        QCOMPARE(getUserAgent("ignored"), QString("Agent/1"));
        krt::hostcontrol::setUserAgent("Agent/2");
        QCOMPARE(getUserAgent(), QString("Agent/1"));
        // The roaming name and the two server switches.
        writeNimboRegValue("NimboRoamingName", base64("甲"));
        writeNimboRegValue("enableDesktopSyncEx", "false");
        writeNimboRegValue("enableV5Metadata", "0");
        QCOMPARE(cloudFileNodeName(NodeRoamingName), QString("甲"));
        QVERIFY(!isDesktopSyncEnable() && !isV5MetadataEnable());
        writeNimboRegValue("NimboRoamingName", base64("乙"));
        writeNimboRegValue("enableDesktopSyncEx", "true");
        writeNimboRegValue("enableV5Metadata", "1");
        QCOMPARE(cloudFileNodeName(NodeRoamingName), QString("甲"));
        QVERIFY(!isDesktopSyncEnable());
        QVERIFY(!isV5MetadataEnable());
        QCOMPARE(probe({"getUserAgent", "cloudFileNodeName", "syncSwitches"}),
                 QStringList({"Agent/2", "乙", "true true"}));
    }

    // --- cloud folder names ---------------------------------------------

    // The names of each run of kinds, joined by "|", in both editions.
    void folderNames_data()
    {
        // Columns: first, last, international, domestic.
        addColumns<int, int, QString, QString>();
        addRow(
            "-1 to 17", -1, 17,
            "|My Cloud|Team Document|Roaming Document|Cloud Backup|Auto Upload Document|Share To "
            "Me|Share With Me|My Share|Share Link|Desktop Backup|微信文档|腾讯文档||应用|备份中心|"
            "Zento网盘|My Cloud|",
            "|我的云文档|团队文档|漫游文档|云端备份|自动上传文档|共享给我|与我共享|我的分享|分享链"
            "接|桌面文档|微信文档|腾讯文档||应用|备份中心|Zento网盘|Zento云文档|");
        addRow("99 to 104", 99, 104,
               "|Personal Space|Roaming Box|Document Roaming|My Nimbo Address|Auto Uploaded",
               "|私人空间|漫游箱|文档漫游|我收到的Nimbo地址|我的设备");
        addRow("106 to 108", 106, 108, "企业文档|桌面|", "企业文档|桌面|");
        addRow("199 to 201", 199, 201, "|Cloud Document Introduction|", "|云文档使用简介|");
        addRow("299 to 306", 299, 306, "|Invalid|雷达备份|我的桌面|微信接收|QQ接收|我的下载|",
               "|我的文档|雷达备份|我的桌面|微信接收|QQ接收|我的下载|");
        addRow("smallest", INT_MIN, INT_MIN, "", "");
        addRow("largest", INT_MAX, INT_MAX, "", "");
    }

    void folderNames()
    {
        const auto [first, last, international, domestic] = fetch<int, int, QString, QString>();
        const auto names = [&](bool overseas) {
            krt::hostcontrol::setOverseasVersion(overseas); // asked on every call
            QStringList list;
            for (qint64 kind = first; kind <= last; ++kind)
                list.append(cloudFileNodeName(CloudFileNodeType(kind)));
            return list.join('|');
        };
        QCOMPARE(names(true), international);
        QCOMPARE(names(false), domestic);
    }

    void roamingName_data()
    {
        // Columns: stored, overseas, expected.
        addColumns<QVariant, bool, QString>();
        const char* fallback = "自动备份同步";
        addRow("nothing stored", QVariant(), false, fallback);
        addRow("stored name", QVariant(base64("我的漫游")), false, "我的漫游");
        addRow("international", QVariant(base64("Sync Box")), true, "Sync Box");
        addRow("not Base64 at all", QVariant("!!!"), false, fallback);
        addRow("up to a zero byte", QVariant(base64({"ab\0cd", 5})), false, "ab");
        addRow("zero byte first", QVariant(base64({"\0ab", 3})), false, fallback);
    }

    void roamingName()
    {
        const auto [stored, overseas, expected] = fetch<QVariant, bool, QString>();
        if (stored.isValid())
            writeNimboRegValue("NimboRoamingName", stored);
        krt::hostcontrol::setOverseasVersion(overseas);
        QCOMPARE(probe({"cloudFileNodeName"}), QStringList{expected});
    }

    // --- desktop sync switches ------------------------------------------

    void syncSwitches_data()
    {
        // Columns: stored, expected.
        addColumns<QVariant, bool>();
        addRow("nothing stored: user off, server on", QVariant(), false);
        for (const QVariant& off : {QVariant(""), QVariant("0"), QVariant("False"),
                                    QVariant("FALSE"), QVariant(false), QVariant(0)})
            QTest::addRow("off: %s %s", off.typeName(), qPrintable(off.toString())) << off << false;
        for (const char* on : {"no", "0.0", " 0", "1"})
            QTest::addRow("on: %s", on) << QVariant(on) << true;
    }

    // The user's switch is read on every call, the server switches in a
    // fresh process each.
    void syncSwitches()
    {
        const auto [stored, expected] = fetch<QVariant, bool>();
        writeNimboUserInfoRegValue("userid", "12345");
        for (const char* name :
             {"usercenter/12345/desksync/switch", "enableDesktopSyncEx", "enableV5Metadata"})
            if (stored.isValid())
                writeNimboRegValue(name, stored);
        QCOMPARE(desktopSyncSwitchOn(), expected);
        const QString server = stored.isValid() && !expected ? "false false" : "true true";
        QCOMPARE(probe({"syncSwitches"}), QStringList{server});
        QVERIFY(!zentoboxDesktopSyncEnable());
    }

    void userSwitchFollowsTheUser()
    {
        writeNimboRegValue("usercenter/12345/desksync/switch", "1");
        writeNimboRegValue("usercenter/777/desksync/switch", "0");
        QVERIFY(!desktopSyncSwitchOn()); // nobody signed in
        writeNimboUserInfoRegValue("userid", "12345");
        QVERIFY(desktopSyncSwitchOn());
        writeNimboUserInfoRegValue("userid", "777");
        QVERIFY(!desktopSyncSwitchOn());
    }
};

int main(int argc, char** argv)
{
    KxApplication app(argc, argv);
    TestQCommProcess test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_qcommprocess.moc"
