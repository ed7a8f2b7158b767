// The common helper layer of the cloud-document client. First what this
// process can check about itself: string and path helpers, the directory
// tree with its two user-data roots and the icon cache, the settings-store
// accessors with their fallback and fixed answers, the per-directory list of
// files marked for roaming, and typed reads out of JSON replies. Then what
// depends on the process: values read once and kept for it (identity,
// language, versions, user agents, folder names, sync switches, extension
// lists), and answers that depend on where the program lives and what it is
// called (documents, files and the cloud service handed to the suite). Fresh
// probe processes, copied into temporary application directories laid out
// like the suite's bundle, show what this process's caches would hide; stub
// programs record what arrives.

#include "kstubprogram.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"
#include "kwarningcatcher.h"

#include "common/commpaths.h"
#include "common/commstores.h"
#include "common/commstrings.h"
#include "common/kingorelongtimedetecthelper.h"
#include "common/kopencommand.h"
#include "common/qcommcloudnodes.h"
#include "common/qcommfiletypes.h"
#include "common/qcommidentity.h"
#include "common/qcommjson.h"
#include "common/qcommmanualroaming.h"
#include "common/qcommopenfile.h"
#include "common/qcommpaths.h"
#include "common/qcommprocess.h"
#include "common/qcommstores.h"
#include "common/qcommsyncswitches.h"

#include <json/json.h>
#include <vex/klongtimeblockdetector.h>
#include <vex/kxapplication.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/khksoftwaresettings.h>

#include <QDesktopServices>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSysInfo>
#include <QtTest>

#include <climits>
#include <functional>
#include <limits>
#include <sstream>
#include <tuple>

using Path = std::function<Comm::WideString()>;
Q_DECLARE_METATYPE(Path)
Q_DECLARE_METATYPE(Json::Value)

using namespace Comm;
using namespace QComm;

namespace {

// Data tables one line per row: addColumns<QString, bool>() makes the
// columns, addRow("tag", "a text", true) adds a row, and in the test
// const auto [text, flag] = fetch<QString, bool>() reads the current one.
// Texts become UTF-8 QStrings; every other value must have its column's
// type exactly. Column names are kept as QtTest keeps them: as pointers.
constexpr const char* kColumns[] = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"};

template <typename... T>
void addColumns()
{
    int column = 0;
    (QTest::addColumn<T>(kColumns[column++]), ...);
}

template <typename... T>
void addRow(const char* tag, const T&... values)
{
    (QTest::newRow(tag) << ... << values);
}

template <typename... T, std::size_t... I>
std::tuple<T...> fetch(std::index_sequence<I...>)
{
    return {*static_cast<T*>(QTest::qData(kColumns[I], qMetaTypeId<T>()))...};
}

template <typename... T>
std::tuple<T...> fetch()
{
    return fetch<T...>(std::index_sequence_for<T...>());
}

QString text(bool value)
{
    return value ? "true" : "false";
}

// A settings store of the host as a plain INI file, root 0 by default.
QSettings raw(KHKSoftwareSettings::HKEY root = KHKSoftwareSettings::CurrentUser)
{
    return QSettings(KHKSoftwareSettings::storeFileName(root), QSettings::IniFormat);
}

using ull = unsigned long long;
constexpr ull kMax = std::numeric_limits<ull>::max();
const auto kUser = KHKSoftwareSettings::CurrentUser;
const auto kMachine = KHKSoftwareSettings::LocalMachine;

QString q(const Comm::WideString& text)
{
    return QString::fromStdU16String(text);
}

// The roaming list of dir, read and written as the helpers do.
struct RoamingList : QSettings
{
    explicit RoamingList(const QString& dir)
        : QSettings(dir + "/manualroaming.ini", IniFormat)
    {
        setIniCodec("UTF-8");
        beginGroup("file");
    }
};

Json::Value parse(const char* text)
{
    Json::Value value;
    std::istringstream in(text);
    std::string errors;
    if (!Json::parseFromStream(Json::CharReaderBuilder(), in, &value, &errors))
        qFatal("bad test JSON %s: %s", text, errors.c_str());
    return value;
}

const QString kDeviceKey = "roamingdevice/deviceid";

const QRegularExpression kDeviceId("^UUID-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$");

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

// What the probe reports for an open: the result, then the command line.
QString opened(bool failed, const QString& bundle, const QString& target)
{
    return QString(failed ? "true" : "false") + " open -a \"" + bundle + "\" \"" + target + '"';
}

} // namespace

class TestComm : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    // The parent of the suite's application-data location: XDG_DATA_HOME.
    const QString m_root = m_env.homePath() + "/.local/share";
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
        for (const char* top : {"nimbo", "Zento Cloud Files", "office6"})
            QDir(m_root + '/' + top).removeRecursively();
        QFile::remove(m_appDir.filePath("cfgs/setup.cfg"));
        QFile::remove("pwned");
    }

    // --- strings --------------------------------------------------------

    void pathStrings_data()
    {
        // Columns: path, cut, name; cut: pathRemoveFileSpec.
        addColumns<QString, QString, QString>();
        addRow("file in folder", "/a/b/c.txt", "/a/b", "c.txt");
        addRow("trailing separator", "/a/b/", "/a/b", "");
        addRow("bare name", "file.txt", "", "file.txt");
        addRow("top-level entry", "/a", "", "a");
        addRow("backslash is no separator", "C:\\x.txt", "", "C:\\x.txt");
        addRow("outside the BMP", "/目录/文\U0001F600", "/目录", "文\U0001F600");
    }

    void pathStrings()
    {
        const auto [path, cut, name] = fetch<QString, QString, QString>();
        QCOMPARE(q(getFileName(path.utf16())), name);
        Comm::WideString wide = path.toStdU16String();
        pathRemoveFileSpec(wide);
        QCOMPARE(q(wide), cut);
    }

    void textStrings_data()
    {
        // trimmed: only U+0020 counts
        // Columns: text, from, to, replaced, trimmed.
        addColumns<QString, QString, QString, QString, QString>();
        // A rescan would find "ab" across the inserted "xxa" and what follows.
        addRow("inserted text not searched", "abb", "ab", "xxa", "xxab", "abb");
        addRow("adjacent removals, both ends", "  a--b  c ", "-", "", "  ab  c ", "a--b  c");
        addRow("no overlap", "aaa", "aa", "b", "ba", "aaa");
        addRow("match around the insertion", "aabb", "ab", "", "ab", "aabb");
        addRow("case-sensitive, tabs", " \tx X\t ", "x", "y", " \ty X\t ", "\tx X\t");
        addRow("longer than the text", "    ", "abcde", "x", "    ", "");
        addRow("empty from, no-break space", "\u00a0a ", "", "z", "\u00a0a ", "\u00a0a");
    }

    void textStrings()
    {
        const auto [text, from, to, replaced, trimmed] =
            fetch<QString, QString, QString, QString, QString>();
        Comm::WideString wide = text.toStdU16String();
        QCOMPARE(q(Replace(wide, from.toStdU16String(), to.toStdU16String())), replaced);
        QCOMPARE(q(trimSpace(wide)), trimmed);
        QCOMPARE(q(wide), trimmed); // in place, too
    }

    // --- locations ------------------------------------------------------

    // First of the slots that reach the roots: only the first call creates them.
    void userDataRootsAreKeptForTheProcess()
    {
        QString oldRoot, newRoot, oldAgain, newAgain;
        getUserDataRootPath(oldRoot, newRoot);
        QCOMPARE(oldRoot + '|' + newRoot,
                 m_root + "/office6/Deskhive|" + m_root + "/Zento Cloud Files/userdata");
        QVERIFY(QFileInfo(oldRoot).isDir() && QFileInfo(newRoot).isDir());
        init();
        getUserDataRootPath(oldAgain, newAgain);
        QCOMPARE(oldAgain + '|' + newAgain, oldRoot + '|' + newRoot);
        QVERIFY(!QFileInfo::exists(oldRoot) && !QFileInfo::exists(newRoot));
    }

    void tree_data()
    {
        // Columns: build, relative.
        addColumns<Path, QString>();
        addRow("app data", Path(getAppdataPath), "");
        addRow("local app data", Path(getLocalAppdataPath), "");
        addRow("nimbo", Path(getNimboAppdataPath), "/nimbo");
        addRow("cloud files", Path(std::bind(getNimboLocalAppdataPath, true)),
               "/Zento Cloud Files");
        addRow("userdata", Path(std::bind(getNimboUserDataRootPath, false)),
               "/Zento Cloud Files/userdata");
        addRow("update", Path(getNimboUpdateRootPath), "/Zento Cloud Files/update");
        addRow("resource", Path(getNimboResourcePath), "/Zento Cloud Files/resource");
        addRow("Deskhive", Path(getDeskhivePath), "/office6/Deskhive");
        addRow("log", Path(getLogPath), "/office6/Deskhive/log");
        addRow("dump", Path(getDumpPath), "/office6/Deskhive/dump");
    }

    void tree()
    {
        const auto [build, relative] = fetch<Path, QString>();
        QCOMPARE(q(build()), m_root + relative);
        // Every level exists, and nothing beside the path was made.
        QString level = m_root;
        for (const QString& piece : relative.split('/', Qt::SkipEmptyParts)) {
            QCOMPARE(QDir(level).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList{piece});
            level += '/' + piece;
        }
        QCOMPARE(q(build()), m_root + relative); // and again with the tree in place
        QVERIFY(getNimboPath().empty());
    }

    void makeDirectories()
    {
        const QString root = m_env.rootPath(), file = root + "/file";
        QFile(file).open(QIODevice::WriteOnly);
        for (const bool qt : {false, true}) {
            const auto make = [qt](const QString& path) {
                return qt ? makeDeepPath(path) : createDeepDirectory(path.toStdU16String());
            };
            const QString fresh = root + (qt ? "/qt/新/a" : "/wide/新/a");
            QVERIFY(make(fresh) && QFileInfo(fresh).isDir() && fileExists(fresh.utf16()));
            QVERIFY(make(root) && !make(file + "/sub") && !make(file) && !make(QString()));
        }
        QVERIFY(fileExists(file.utf16()) && !fileExists((file + "/sub").utf16()));
        QVERIFY(!fileExists(nullptr) && !fileExists(QString().utf16()));
        QVERIFY(getFileName(nullptr).empty());
    }

    void newUserData_data()
    {
        // Columns: marker, version, expected.
        addColumns<QVariant, QString, bool>();
        const QVariant one(1);
        addRow("last old version", one, "9.1.0.4817", false);
        addRow("next build", one, "9.1.0.4818", true);
        addRow("next major, marker as text", QVariant("1"), "10.0.0.0", true);
        addRow("older, higher later parts", one, "9.0.9999.9999", false);
        addRow("three parts", one, "9.1.0", false);
        addRow("five parts", one, "9.1.0.4818.1", false);
        addRow("empty part counts as 0", one, "9.2..0", true);
        addRow("unknown version: 8.1.0.X", one, "0.0.0.0", false);
        addRow("marker 2", QVariant(2), "10.0.0.0", false);
        addRow("no marker", QVariant(), "10.0.0.0", false);
    }

    void newUserData()
    {
        const auto [marker, version, expected] = fetch<QVariant, QString, bool>();
        if (marker.isValid())
            writeNimboUserInfoRegValue("zentocloudfiles", marker);
        krt::hostcontrol::setVersion(version);
        QCOMPARE(isNewUserData(), expected);
        // The layout decides where the icon cache lives, and nothing else.
        const QString iconCache = getNimboIconCachePath();
        QCOMPARE(iconCache, QDir::toNativeSeparators(
                                m_root + (expected ? "/Zento Cloud Files/resource/iconcache"
                                                   : "/nimbo/resource/iconcache")));
        QVERIFY(QFileInfo(iconCache).isDir());
    }

    void inUserDataRoot_data()
    {
        // Columns: path, expected; %R: the application-data root.
        addColumns<QString, bool>();
        addRow("below the new root", "%R/Zento Cloud Files/userdata/u1/a.docx", true);
        addRow("other letter case", "%R/zento cloud files/USERDATA/a", true);
        addRow("new root itself", "%R/Zento Cloud Files/userdata", false);
        addRow("sibling of the new root", "%R/Zento Cloud Files/userdata2/a", false);
        addRow("contained, not at the start", "/x%R/Zento Cloud Files/userdata/a", true);
        addRow("below the old root", "%R/office6/Deskhive/log/x.log", true);
    }

    void inUserDataRoot()
    {
        const auto [path, expected] = fetch<QString, bool>();
        QCOMPARE(isInUserDataRootPath(QString(path).replace("%R", m_root)), expected);
    }

    // --- settings stores ------------------------------------------------

    void storesKeepTheirKeyPaths()
    {
        writeNimboRegValue("k", "1");
        writeNimboRegValue("a/b", "k", "2");
        writeNimboUserInfoRegValue("k", "3");
        writeZentoCommonRegValue("k", "4");
        writeDeskhiveRegValue("k", "5");
        writeDeskhiveRegValue("g", "k", "6");
        writeNimboCloudDiskRegValue("k", "7");
        writeNimboNseRegValue("k", "8");
        raw().setValue("Corvane/nimbo/k", 9);
        // Machine-wide values that the stores without a fallback must not see.
        raw(kMachine).setValue("Corvane/ZentoCloud/m", "x");
        raw(kMachine).setValue("Corvane/ZentoCloud/userinfo/m", "x");
        QCOMPARE(readNimboRegValue("k", "") + readNimboRegValue("a/b", "k", "") +
                     readNimboUserInfoRegValue("k", "") + readZentoCommonRegValue("k", "") +
                     readDeskhiveRegValue("k", "") + readDeskhiveRegValue("g", "k", "") +
                     readNimboCloudDiskRegValue("k", "") + readNimboNseRegValue("k", "") +
                     readOldNimboRegValue("k", "") + readNimboRegValue("m", "") +
                     readNimboUserInfoRegValue("m", ""),
                 QString("123456789"));
        QStringList keys = raw().allKeys();
        keys.sort();
        QCOMPARE(keys.join(' ').remove("Corvane/"),
                 QString("Office/6.0/Common/k Office/6.0/plugins/deskhive/g/k "
                         "Office/6.0/plugins/deskhive/k ZentoCloud/Nse/k ZentoCloud/a/b/k "
                         "ZentoCloud/clouddisk/k ZentoCloud/k ZentoCloud/userinfo/k nimbo/k"));
        QCOMPARE(makeIniKey("a", "b") + makeIniKey("", "k"), QString("/a/b//k"));
    }

    // The suite-common and plug-in stores (both forms) read per user first;
    // every read is text.
    void machineFallback_data()
    {
        // Columns: perUser, machineWide, defaultValue, expected.
        addColumns<QVariant, QVariant, QVariant, QString>();
        const QVariant none;
        addRow("neither: default", none, none, QVariant("x"), "x");
        addRow("integer default", none, none, QVariant(0), "0");
        addRow("machine only, empty default", none, QVariant(7), QVariant(""), "7");
        addRow("machine only, default hides it", none, QVariant("v"), QVariant("x"), "x");
        addRow("per user wins", QVariant(true), QVariant("m"), none, "true");
        addRow("empty per-user text defers", QVariant(""), QVariant("m"), QVariant("x"), "m");
        addRow("both empty", QVariant(""), QVariant(""), QVariant("x"), "");
    }

    void machineFallback()
    {
        const auto [perUser, machineWide, defaultValue, expected] =
            fetch<QVariant, QVariant, QVariant, QString>();
        for (const char* path : {"Common", "plugins/deskhive", "plugins/deskhive/g"}) {
            for (const auto& [root, value] :
                 {std::pair(kUser, perUser), std::pair(kMachine, machineWide)})
                if (value.isValid())
                    raw(root).setValue(QString("Corvane/Office/6.0/%1/k").arg(path), value);
        }
        QCOMPARE(readZentoCommonRegValue("k", defaultValue), expected);
        QCOMPARE(readDeskhiveRegValue("k", defaultValue), expected);
        QCOMPARE(readDeskhiveRegValue("g", "k", defaultValue), expected);
    }

    void removeUsesTheNativeFileOfThePath()
    {
        writeNimboUserInfoRegValue("userid", "12345");
        QSettings native("Corvane\\ZentoCloud\\userinfo", QSettings::NativeFormat);
        native.setValue("userid", "99");
        native.setValue("other", "kept");
        native.sync();
        removeNimboUserInfoRegValue("userid");
        // The store keeps its value; only the native file lost the key.
        QCOMPARE(readNimboUserInfoRegValue("userid", ""), QString("12345"));
        QCOMPARE(native.allKeys(), QStringList{"other"});
        QCOMPARE(QFileInfo(native.fileName()).absolutePath(), QDir::currentPath());
    }

    // The wide accessors share the user-info store; the raw registry
    // functions are inert, with fixed answers.
    void wideAccessors()
    {
        QCOMPARE(readRegNumValue(kUser, u"p", u"n", 7u), 0u); // deliberately not 7
        QCOMPARE(readRegNumValue(kUser, u"", u"n", 7) + readRegNumValue(kUser, u"p", u"", 7), 14u);
        QVERIFY(readRegStrValue(kMachine, u"p", u"n", u"d") == u"d");
        QVERIFY(!writeRegStrValue(kUser, u"p", u"n", u"x") &&
                !writeRegNumValue(kUser, u"p", u"n", 1));
        QVERIFY(!QFileInfo::exists(raw().fileName()));
        writeNimboUserInfoRegValue(u"n", 1u);
        writeNimboUserInfoRegValue(u"name", u"张三");
        QCOMPARE(readNimboUserInfoRegValue(u"n", 0u) + readNimboUserInfoRegValue(u"x", 5u), 6);
        QVERIFY(readNimboUserInfoRegValue(u"x", u"d") == u"d");
        QCOMPARE(readNimboUserInfoRegValue("name", ""), QString("张三")); // the same store
    }

    // --- manual roaming list --------------------------------------------

    void roamingRoundTrip_data()
    {
        // Columns: path, key.
        addColumns<QString, QString>();
        addRow("plain", "/home/u/a.docx", "L2hvbWUvdS9hLmRvY3g=");
        addRow("non-ASCII", "/文档/报告 2024.docx", "L+aWh+ahoy/miqXlkYogMjAyNC5kb2N4");
        // Keys with "/" and "+": the INI file must not split them into groups.
        addRow("key with / and +", "/d/???~~~", "L2QvPz8/fn5+");
    }

    void roamingRoundTrip()
    {
        const auto [path, key] = fetch<QString, QString>();
        const QString dir = m_env.rootPath() + "/list-" + QTest::currentDataTag();
        const uint before = QDateTime::currentDateTimeUtc().toSecsSinceEpoch();
        QVERIFY(QDir().mkpath(dir) && getManualRoamingFiles(dir).isEmpty());
        addManualRoamingFiles(dir, path);
        QCOMPARE(getManualRoamingFiles(dir), QStringList{path});
        QCOMPARE(RoamingList(dir).allKeys(), QStringList{key});
        QVERIFY(RoamingList(dir).value(key).toUInt() >= before);
        delManualRoamingFiles(dir, path);
        QCOMPARE(getManualRoamingFiles(dir), QStringList());
    }

    // Edits keep the other entries; the reader skips keys it cannot use;
    // without a directory there is no list.
    void roamingEdits()
    {
        const QString dir = m_env.rootPath() + "/list-edits";
        {
            RoamingList list(dir);
            for (const char* key : {"L2E=", "L2I=", "L2M="}) // "/a", "/b", "/c"
                list.setValue(key, 1000);
            list.setValue("L2M", 2);      // "/c" again, without padding
            list.setValue("!!!", 3);      // decodes to nothing
            list.setValue("AA==", 4);     // a zero byte only
            list.setValue("L2VmAGdo", 5); // "/ef", cut at its zero byte
            list.endGroup();
            list.setValue("other/ZA==", 6); // "d", outside the group
        }
        addManualRoamingFiles(dir, "/a"); // marked again: a new time
        delManualRoamingFiles(dir, "/never-added");
        delManualRoamingFiles(dir, "/b");
        addManualRoamingFiles(dir, QString::fromUtf16(u"/d\0e", 4)); // up to the zero
        for (const auto& edit : {addManualRoamingFiles, delManualRoamingFiles})
            edit("", "/c");
        QStringList files = getManualRoamingFiles(dir);
        files.sort();
        QCOMPARE(files, QStringList({"/a", "/c", "/d", "/ef"}));
        QVERIFY(RoamingList(dir).value("L2E=").toUInt() > 1000u);
        QCOMPARE(RoamingList(dir).value("L2M=").toUInt(), 1000u);
        QVERIFY(getManualRoamingFiles("").isEmpty() && !QFileInfo::exists("manualroaming.ini") &&
                !QFileInfo::exists("/manualroaming.ini"));
    }

    // --- JSON values ----------------------------------------------------

    // jsonValue2String, and jsonValue2uint64 with the default 77.
    void jsonValues_data()
    {
        // Columns: value, text, number.
        addColumns<Json::Value, QString, ull>();
        addRow("null", Json::Value(), "dflt", 77ull);
        addRow("negative int", Json::Value(-1), "-1", kMax);
        addRow("uint64 max", Json::Value(Json::UInt64(kMax)), "18446744073709551615", kMax);
        addRow("real 0.1", Json::Value(0.1), "0.1", 0ull);
        addRow("real, six significant digits", Json::Value(1234567.8), "1.23457e+06", 1234567ull);
        addRow("negative real toward zero", Json::Value(-3.9), "-3.9", ull(-3));
        addRow("real 1e19, unsigned range", Json::Value(1e19), "1e+19", 10000000000000000000ull);
        addRow("string", Json::Value("42"), "42", 42ull);
        addRow("string, not a number", Json::Value("hé 世界"), "hé 世界", 0ull);
        addRow("empty string is not the default", Json::Value(""), "", 0ull);
        addRow("false", Json::Value(false), "false", 77ull);
        addRow("array", parse("[1, 2]"), "dflt", 77ull);
        addRow("object, compact with line end", parse(R"({ "b": "x", "a": 1 })"),
               "{\"a\":1,\"b\":\"x\"}\n", 77ull);
    }

    void jsonValues()
    {
        const auto [value, text, number] = fetch<Json::Value, QString, ull>();
        QCOMPARE(jsonValue2String(value, "dflt"), text);
        QCOMPARE(jsonValue2StdString(value, "dflt"), text.toStdString());
        QCOMPARE(jsonValue2uint64(value, 77), number);
        // An element or a member reads as the value itself; past the end or
        // missing, the default; an object is no array.
        Json::Value array(Json::arrayValue), object(Json::objectValue);
        array.append(value);
        object["k"] = value;
        QCOMPARE(QStringList(
                     {jsonArray2String(array, 0, "dflt"), jsonArray2String(array, 1, "dflt"),
                      jsonArray2String(object, 0, "dflt"), jsonObject2String(object, "k", "dflt")}),
                 QStringList({text, "dflt", "dflt", text}));
        QCOMPARE(jsonObject2Unint64(object, "k", 77), number);
        QCOMPARE(toByteArray("é世"), QByteArray("\xc3\xa9\xe4\xb8\x96"));
    }

    // Members by key, defaults "dflt", 9 and false or true; the expected
    // results of jsonObject2String, jsonGetString, jsonObject2Unint64 and
    // jsonGetBool (both defaults), joined by spaces.
    void jsonMembers_data()
    {
        // Columns: object, key, expected.
        addColumns<Json::Value, QString, QString>();
        const Json::Value user = parse(R"({ "Name": "Ann", "Id": "12", "big": 1234567.0,
            "IsLogined": true, "nil": null, "list": [1], "obj": { "k": "v" }, "名字": "张三" })");
        addRow("text", user, "Name", "Ann Ann 0 false true");
        addRow("real: jsonGetString has the library format it", user, "big",
               "1.23457e+06 1234567.0 1234567 true true");
        addRow("true", user, "IsLogined", "true true 9 true true");
        addRow("null member: the library's reading", user, "nil", "dflt  9 false false");
        addRow("array member", user, "list", "dflt dflt 9 false true");
        addRow("object member", user, "obj", "{\"k\":\"v\"}\n dflt 9 false true");
        addRow("missing, case-sensitive", user, "name", "dflt dflt 9 false true");
        addRow("non-ASCII key", user, "名字", "张三 张三 0 false true");
        addRow("null container", Json::Value(), "Name", "dflt dflt 9 false true");
        addRow("array container", parse(R"([{"Name": 1}])"), "Name", "dflt dflt 9 false true");
    }

    void jsonMembers()
    {
        const auto [object, key, expected] = fetch<Json::Value, QString, QString>();
        QCOMPARE(QStringList(
                     {jsonObject2String(object, key, "dflt"), jsonGetString(object, key, "dflt"),
                      QString::number(jsonObject2Unint64(object, key, 9)),
                      text(jsonGetBool(object, key, false)), text(jsonGetBool(object, key, true))})
                     .join(' '),
                 expected);
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
        QCOMPARE(getAppTypeBySuffix(suffix) + ' ' + text(checkIsVexSupport(suffix)) + ' ' +
                     text(checkIsZentoSupport(checkType, suffix)),
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
        raw(kMachine).setValue("Corvane/ZentoCloud/activeclient/3/pid", 1);
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
        QVERIFY2(kDeviceId.match(first.value(0)).hasMatch(), qPrintable(first.value(0)));
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
        QVERIFY2(kDeviceId.match(once.value(0)).hasMatch() && once.value(1) == once[0],
                 qPrintable(once[0]));
        QVERIFY2(kDeviceId.match(again.value(0)).hasMatch() && again[0] != once[0],
                 qPrintable(again[0]));
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
        raw(kMachine).setValue(key, "m");
        QCOMPARE(zentoGUID(), QString("m"));
        raw().setValue(key, "u");
        QCOMPARE(zentoGUID(), QString("u"));

        KWarningCatcher catcher; // and the functions without an implementation here
        for (const auto& function :
             {userComputerName, vexlaunchPath, photolaunchPath, zentoCenterPath})
            QVERIFY(function().isEmpty());
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
        QVERIFY(!isDesktopSyncEnable() && !isV5MetadataEnable());
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
    TestComm test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_comm.moc"
