// The helper layer, as far as this process can check it about itself:
// string and path helpers, the directory tree with its two user-data roots
// and the icon cache, the settings-store accessors with their fallback and
// fixed answers, the per-directory list of files marked for roaming, and
// typed reads out of JSON replies.

#include "commsuitekit.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"
#include "kwarningcatcher.h"

#include "commpaths.h"
#include "commstores.h"
#include "commstrings.h"
#include "qcommjson.h"
#include "qcommmanualroaming.h"
#include "qcommpaths.h"
#include "qcommstores.h"

#include <json/json.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/kqtcompat.h>

#include <QtTest>

#include <functional>
#include <limits>
#include <sstream>

using Path = std::function<Comm::WideString()>;
Q_DECLARE_METATYPE(Path)
Q_DECLARE_METATYPE(Json::Value)

using namespace Comm;
using namespace AuthTest;
using namespace QComm;

namespace {

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
        KQtCompat::setIniUtf8(*this);
        beginGroup("file");
    }
};

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

// The list of dir as any reader of the format reads it: each key of the
// group, decoded from Base64 as Qt does it (other characters skipped), up
// to a zero byte.
QStringList readByOthers(const QString& dir)
{
    QStringList names;
    for (const QString& key : RoamingList(dir).allKeys()) {
        const QString name = QString::fromUtf8(QByteArray::fromBase64(key.toUtf8()).constData());
        if (!name.isEmpty())
            names.append(name);
    }
    return sorted(names);
}

Json::Value parse(const char* text)
{
    Json::Value value;
    std::istringstream in(text);
    std::string errors;
    if (!Json::parseFromStream(Json::CharReaderBuilder(), in, &value, &errors))
        qFatal("bad test JSON %s: %s", text, errors.c_str());
    return value;
}

} // namespace

class TestCommHelpers : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    // The parent of the suite's application-data location: XDG_DATA_HOME.
    const QString m_root = m_env.homePath() + "/.local/share";

private slots:
    void init()
    {
        m_env.resetHost();
        for (const char* top : {"nimbo", "Zento Cloud Files", "office6"})
            QDir(m_root + '/' + top).removeRecursively();
    }

    // --- strings --------------------------------------------------------

    // getFileName, pathRemoveFileSpec (cut), Replace and trimSpace (in place
    // and returned); only U+0020 is trimmed, and inserted text is not
    // searched again.
    void strings_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("cut");
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("replaced");
        QTest::addColumn<QString>("trimmed");
        const auto row = [](const char* tag, const char* text, const char* name, const char* cut,
                            const char* from, const char* to, const char* replaced,
                            const char* trimmed) {
            QTest::newRow(tag) << text << name << cut << from << to << replaced << trimmed;
        };
        row("file in folder", "/a/b/c.txt", "c.txt", "/a/b", "b/", "", "/a/c.txt", "/a/b/c.txt");
        row("trailing separator", "/a/b/", "", "/a/b", "/", "", "ab", "/a/b/");
        row("bare name, backslash", "C:\\x.txt", "C:\\x.txt", "", "ab", "x", "C:\\x.txt",
            "C:\\x.txt");
        row("top-level entry", "/a", "a", "", "/", "", "a", "/a");
        // A rescan behind the start of the insertion would find "ab" again.
        row("inserted text not searched", "abb", "abb", "", "ab", "xxa", "xxab", "abb");
        row("match around a removal", " aabb", " aabb", "", "ab", "", " ab", "aabb");
        row("case-sensitive, tabs kept", " \tx X\t ", " \tx X\t ", "", "x", "y", " \ty X\t ",
            "\tx X\t");
        row("spaces only, empty from", "    ", "    ", "", "", "z", "    ", "");
    }

    void strings()
    {
        QFETCH(QString, text);
        QFETCH(QString, name);
        QFETCH(QString, cut);
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, replaced);
        QFETCH(QString, trimmed);

        QCOMPARE(q(getFileName(text.utf16())), name);
        Comm::WideString wide = text.toStdU16String();
        pathRemoveFileSpec(wide);
        QCOMPARE(q(wide), cut);
        wide = text.toStdU16String();
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

    // Each builder's path, made level by level with nothing beside it. A
    // directory that cannot be made: the path all the same, and one warning
    // per directory and process, naming it and why ("@": a data folder of
    // the row's own, with a file at blocker below it).
    void tree_data()
    {
        QTest::addColumn<Path>("build");
        QTest::addColumn<QString>("relative");
        QTest::addColumn<QString>("blocker"); // null: nothing in the way
        QTest::addColumn<QStringList>("warnings");
        const auto row = [](const char* tag, const Path& build, const char* relative,
                            const QString& blocker = QString(), const QStringList& warnings = {}) {
            QTest::newRow(tag) << build << QString(relative) << blocker << warnings;
        };
        const auto warning = [](const char* dir, const char* blocker) {
            return QString("auth.common: cannot create the directory @%1: @%2 is not a directory")
                .arg(dir, blocker);
        };
        row("app data", getAppdataPath, "");
        row("local app data", getLocalAppdataPath, "");
        row("nimbo", getNimboAppdataPath, "/nimbo");
        row("cloud files", std::bind(getNimboLocalAppdataPath, true), "/Zento Cloud Files");
        row("userdata", std::bind(getNimboUserDataRootPath, false), "/Zento Cloud Files/userdata");
        row("update", getNimboUpdateRootPath, "/Zento Cloud Files/update");
        row("resource", getNimboResourcePath, "/Zento Cloud Files/resource");
        row("Deskhive", getDeskhivePath, "/office6/Deskhive");
        row("log", getLogPath, "/office6/Deskhive/log");
        row("dump", getDumpPath, "/office6/Deskhive/dump");
        row("data folder is a file", getLogPath, "/office6/Deskhive/log", "",
            {warning("/office6/Deskhive", ""), warning("/office6/Deskhive/log", "")});
        row("last level only", getDumpPath, "/office6/Deskhive/dump", "/office6/Deskhive/dump",
            {warning("/office6/Deskhive/dump", "/office6/Deskhive/dump")});
        row("icon cache", [] { return getNimboIconCachePath().toStdU16String(); },
            "/nimbo/resource/iconcache", "/nimbo/resource",
            {warning("/nimbo/resource/iconcache", "/nimbo/resource")});
    }

    void tree()
    {
        QFETCH(Path, build);
        QFETCH(QString, relative);
        QFETCH(QString, blocker);
        QFETCH(QStringList, warnings);

        const QString root =
            blocker.isNull() ? m_root : m_env.rootPath() + "/data-" + QTest::currentDataTag();
        QVERIFY(blocker.isNull() || KTestAppDir::write(root + blocker, "x"));
        qputenv("XDG_DATA_HOME", root.toUtf8());
        KWarningCatcher catcher;
        const QString path = q(build()), again = q(build());
        qputenv("XDG_DATA_HOME", m_root.toUtf8());
        QCOMPARE(path + '|' + again, root + relative + '|' + root + relative);
        QCOMPARE(catcher.warnings(), warnings.replaceInStrings("@", root));
        QString level = m_root; // every level made, nothing beside it
        for (const QString& piece :
             blocker.isNull() ? relative.split('/', Qt::SkipEmptyParts) : QStringList()) {
            QCOMPARE(QDir(level).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList{piece});
            level += '/' + piece;
        }
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
        QVERIFY(!fileExists(nullptr) && !fileExists(QString().utf16()) &&
                getFileName(nullptr).empty());
    }

    void newUserData_data()
    {
        QTest::addColumn<QVariant>("marker");
        QTest::addColumn<QString>("version");
        QTest::addColumn<bool>("expected");
        const QVariant one(1);
        QTest::newRow("last old version") << one << "9.1.0.4817" << false;
        QTest::newRow("next build") << one << "9.1.0.4818" << true;
        QTest::newRow("next major, marker as text") << QVariant("1") << "10.0.0.0" << true;
        QTest::newRow("older, higher later parts") << one << "9.0.9999.9999" << false;
        QTest::newRow("three parts") << one << "9.1.0" << false;
        QTest::newRow("five parts") << one << "9.1.0.4818.1" << false;
        QTest::newRow("empty part counts as 0") << one << "9.2..0" << true;
        QTest::newRow("marker 2") << QVariant(2) << "10.0.0.0" << false;
        QTest::newRow("no marker") << QVariant() << "10.0.0.0" << false;
    }

    void newUserData()
    {
        QFETCH(QVariant, marker);
        QFETCH(QString, version);
        QFETCH(bool, expected);

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
        // %R: the application-data root.
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("expected");
        QTest::newRow("below the new root") << "%R/Zento Cloud Files/userdata/u1/a.docx" << true;
        QTest::newRow("other letter case") << "%R/zento cloud files/USERDATA/a" << true;
        QTest::newRow("sibling of the new root") << "%R/Zento Cloud Files/userdata2/a" << false;
        QTest::newRow("contained, not at the start") << "/x%R/Zento Cloud Files/userdata/a" << true;
        QTest::newRow("below the old root") << "%R/office6/Deskhive/log/x.log" << true;
    }

    void inUserDataRoot()
    {
        QFETCH(QString, path);
        QFETCH(bool, expected);

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
        QCOMPARE(sorted(raw().allKeys()).join(' ').remove("Corvane/"),
                 QString("Office/6.0/Common/k Office/6.0/plugins/deskhive/g/k "
                         "Office/6.0/plugins/deskhive/k ZentoCloud/Nse/k ZentoCloud/a/b/k "
                         "ZentoCloud/clouddisk/k ZentoCloud/k ZentoCloud/userinfo/k nimbo/k"));
        QCOMPARE(makeIniKey("a", "b") + makeIniKey("", "k"), QString("/a/b//k"));
    }

    // The suite-common and plug-in stores (both forms) read per user first;
    // every read is text.
    void machineFallback_data()
    {
        QTest::addColumn<QVariant>("perUser");
        QTest::addColumn<QVariant>("machineWide");
        QTest::addColumn<QVariant>("defaultValue");
        QTest::addColumn<QString>("expected");
        const QVariant none;
        QTest::newRow("neither: integer default") << none << none << QVariant(0) << "0";
        QTest::newRow("machine only, empty default") << none << QVariant(7) << QVariant("") << "7";
        QTest::newRow("machine only, default hides it")
            << none << QVariant("v") << QVariant("x") << "x";
        QTest::newRow("per user wins") << QVariant(true) << QVariant("m") << none << "true";
        QTest::newRow("empty per-user text defers")
            << QVariant("") << QVariant("m") << QVariant("x") << "m";
    }

    void machineFallback()
    {
        QFETCH(QVariant, perUser);
        QFETCH(QVariant, machineWide);
        QFETCH(QVariant, defaultValue);
        QFETCH(QString, expected);

        for (const char* path : {"Common", "plugins/deskhive", "plugins/deskhive/g"}) {
            for (const auto& [root, value] :
                 {std::pair(kUser, perUser), std::pair(kMachine, machineWide)})
                if (value.isValid())
                    raw(root).setValue(QString("Corvane/Office/6.0/%1/k").arg(path), value);
        }
        QCOMPARE(readZentoCommonRegValue("k", defaultValue) +
                     readDeskhiveRegValue("k", defaultValue) +
                     readDeskhiveRegValue("g", "k", defaultValue),
                 expected + expected + expected);
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

    // Every path comes back from the list as it went in, for this reader and
    // any other of the format, and goes again when removed.
    void roamingRoundTrip_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("key"); // as the file holds it
        QTest::newRow("non-ASCII") << "/文档/报告 2024.docx"
                                   << "L+aWh+ahoy/miqXlkYogMjAyNC5kb2N4";
        // Keys with "/" and "+": the INI file must not split them into groups.
        QTest::newRow("key with / and +") << "/d/???~~~"
                                          << "L2QvPz8/fn5+";
        // The settings class drops a key's last "/"; a "=" after it keeps it.
        QTest::newRow("key ending in /") << "/x/ab?"
                                         << "L3gvYWI/=";
        QTest::newRow("every plane, zero bits last")
            << QString::fromUtf8("/\u00bf\U0010ffff\uffff\x7f") << QString();
    }

    void roamingRoundTrip()
    {
        QFETCH(QString, path);
        QFETCH(QString, key);

        const QString dir = m_env.rootPath() + "/list-" + QTest::currentDataTag();
        const uint before = QDateTime::currentDateTimeUtc().toSecsSinceEpoch();
        QVERIFY(QDir().mkpath(dir) && getManualRoamingFiles(dir).isEmpty());
        addManualRoamingFiles(dir, path);
        QCOMPARE(getManualRoamingFiles(dir), QStringList{path});
        QCOMPARE(readByOthers(dir), QStringList{path});
        const QStringList keys = RoamingList(dir).allKeys();
        QVERIFY(key.isEmpty() ? keys.size() == 1 : keys == QStringList{key});
        QVERIFY(RoamingList(dir).value(keys.value(0)).toUInt() >= before);
        delManualRoamingFiles(dir, path);
        QCOMPARE(getManualRoamingFiles(dir) + RoamingList(dir).allKeys(), QStringList());
    }

    // A damaged list: keys that decode to no text are no entries; an add
    // invents none, for this reader or any other, and keeps every entry.
    void roamingDamaged_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("entries"); // before the add, sorted
        QTest::newRow("unclosed group") << QByteArray("[file/\nW=1\n") << QStringList();
        QTest::newRow("unclosed group after entries")
            << QByteArray("[file]\nL2E%3D=1\nL2I=2\n[file/\nW=3\n[other]\nx=4\n")
            << QStringList({"/a", "/b"});
        QTest::newRow("keys that are not UTF-8 text")
            << QByteArray("[file]\n%2FW=1\nwyg%3D=2\nL2E%3D=3\n") << QStringList{"/a"};
    }

    void roamingDamaged()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, entries);

        const QString dir = m_env.rootPath() + "/list-" + QTest::currentDataTag();
        QVERIFY(KTestAppDir::write(dir + "/manualroaming.ini", content));
        const QStringList others = readByOthers(dir);
        QCOMPARE(sorted(getManualRoamingFiles(dir)), entries);
        addManualRoamingFiles(dir, "/new");
        QCOMPARE(sorted(getManualRoamingFiles(dir)), sorted(entries << "/new"));
        const QStringList after = readByOthers(dir);
        QVERIFY(after.contains("/new"));
        for (const QString& name : after)
            QVERIFY2(name == "/new" || others.contains(name), qPrintable(name));
    }

    // A value the settings class would rebuild from binary data, however it
    // is spelt, leaves the file unread and unchanged (a damaged one could end
    // the program); other tagged values are read as usual.
    void roamingBinaryValues_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("entries");
        // A list that claims 4 billion items (found by fuzzing).
        QTest::newRow("huge list length")
            << QByteArray::fromBase64(
                   "W2ZpbGVdDT0yCltmaWxlL10KYW50KApjPUBWYXJpYW50KFwwXDAACf////9ceDdmKQo=")
            << QStringList();
        QTest::newRow("hex escape")
            << QByteArray("[file]\nL2E%3D=\\x40Variant(\\0)\n") << QStringList();
        QTest::newRow("octal escape, another group")
            << QByteArray("[file]\nL2E%3D=1\n[x]\ny=\"@\\0126ariant(\"\n") << QStringList();
        QTest::newRow("quoted, continued")
            << QByteArray("[file]\nL2E%3D=\"@Va\"ri\\\n ant(\n") << QStringList();
        QTest::newRow("rectangle")
            << QByteArray("[file]\nL2E%3D=@Rect(1 2 3 4)\n") << QStringList{"/a"};
    }

    void roamingBinaryValues()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, entries);

        const QString dir = m_env.rootPath() + "/list-" + QTest::currentDataTag();
        QVERIFY(KTestAppDir::write(dir + "/manualroaming.ini", content));
        QCOMPARE(getManualRoamingFiles(dir), entries);
        addManualRoamingFiles(dir, "/new");
        delManualRoamingFiles(dir, "/a");
        QFile file(dir + "/manualroaming.ini");
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll() == content, entries.isEmpty());
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
        for (const auto& edit : {addManualRoamingFiles, delManualRoamingFiles}) {
            edit("", "/c");
            edit(dir, QString::fromUtf16(u"\0/c", 3)); // no path: the list stays
        }
        QCOMPARE(sorted(getManualRoamingFiles(dir)), QStringList({"/a", "/c", "/d", "/ef"}));
        QVERIFY(RoamingList(dir).value("L2E=").toUInt() > 1000u);
        QCOMPARE(RoamingList(dir).value("L2M=").toUInt(), 1000u);
        QVERIFY(getManualRoamingFiles("").isEmpty() && !QFileInfo::exists("manualroaming.ini") &&
                !QFileInfo::exists("/manualroaming.ini"));
    }

    // --- JSON values ----------------------------------------------------

    // jsonValue2String, and jsonValue2uint64 with the default 77.
    void jsonValues_data()
    {
        QTest::addColumn<Json::Value>("value");
        QTest::addColumn<QString>("text");
        QTest::addColumn<ull>("number");
        QTest::newRow("null") << Json::Value() << "dflt" << 77ull;
        QTest::newRow("negative int") << Json::Value(-1) << "-1" << kMax;
        QTest::newRow("uint64 max")
            << Json::Value(Json::UInt64(kMax)) << "18446744073709551615" << kMax;
        QTest::newRow("real 0.1") << Json::Value(0.1) << "0.1" << 0ull;
        QTest::newRow("real, six significant digits")
            << Json::Value(1234567.8) << "1.23457e+06" << 1234567ull;
        QTest::newRow("negative real toward zero") << Json::Value(-3.9) << "-3.9" << ull(-3);
        QTest::newRow("real 1e19, unsigned range")
            << Json::Value(1e19) << "1e+19" << 10000000000000000000ull;
        QTest::newRow("string") << Json::Value("42") << "42" << 42ull;
        QTest::newRow("string, not a number") << Json::Value("hé 世界") << "hé 世界" << 0ull;
        QTest::newRow("string led by byte-order marks, kept")
            << Json::Value("\xEF\xBB\xBF\xEF\xBB\xBFx") << QStringLiteral("\uFEFF\uFEFFx") << 0ull;
        QTest::newRow("false") << Json::Value(false) << "false" << 77ull;
        QTest::newRow("array") << parse("[1, 2]") << "dflt" << 77ull;
        QTest::newRow("object, compact with line end")
            << parse(R"({ "b": "x", "a": 1 })") << "{\"a\":1,\"b\":\"x\"}\n"
            << 77ull;
    }

    void jsonValues()
    {
        QFETCH(Json::Value, value);
        QFETCH(QString, text);
        QFETCH(ull, number);

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
        QTest::addColumn<Json::Value>("object");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* tag, const Json::Value& object, const char* key,
                            const QString& expected) {
            QTest::newRow(tag) << object << key << expected;
        };
        const Json::Value user = parse(R"({ "Name": "Ann", "big": 1234567.0, "IsLogined": true,
            "nil": null, "obj": { "k": "v" }, "名字": "张三", "mark": "\ufeffA" })");
        row("text", user, "Name", "Ann Ann 0 false true");
        row("real: jsonGetString has the library format it", user, "big",
            "1.23457e+06 1234567.0 1234567 true true");
        row("true", user, "IsLogined", "true true 9 true true");
        row("null member: the library's reading", user, "nil", "dflt  9 false false");
        row("object member", user, "obj", "{\"k\":\"v\"}\n dflt 9 false true");
        row("missing, case-sensitive", user, "name", "dflt dflt 9 false true");
        row("non-ASCII key", user, "名字", "张三 张三 0 false true");
        row("leading byte-order mark kept", user, "mark",
            QStringLiteral("\uFEFFA \uFEFFA 0 false true"));
        row("null container", Json::Value(), "Name", "dflt dflt 9 false true");
        row("array container", parse(R"([{"Name": 1}])"), "Name", "dflt dflt 9 false true");
    }

    void jsonMembers()
    {
        QFETCH(Json::Value, object);
        QFETCH(QString, key);
        QFETCH(QString, expected);

        QCOMPARE(QStringList(
                     {jsonObject2String(object, key, "dflt"), jsonGetString(object, key, "dflt"),
                      QString::number(jsonObject2Unint64(object, key, 9)),
                      text(jsonGetBool(object, key, false)), text(jsonGetBool(object, key, true))})
                     .join(' '),
                 expected);
    }
};

QTEST_GUILESS_MAIN(TestCommHelpers)
#include "tst_commhelpers.moc"
