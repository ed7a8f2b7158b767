// The built plug-in met as a host meets it: through the command-line host
// authinfo, run as a person runs it; what it and the helper layer export,
// and the README's account of that.

#include "ktestappdir.h"
#include "ktestenvironment.h"
#include "kurlcatcher.h"

#include <vexlite/hostcontrol.h>

#include <QJsonDocument>
#include <QtTest>

#include <algorithm>

using namespace AuthTest;
using namespace krt::hostcontrol;

namespace {

// What other modules may use of the plug-in and of the helper layer, row
// by row: the library, the symbols a row covers (a pattern on the
// demangled names), those among them that must be there, and whether the
// row is the web module's. Whole classes come with their meta-object,
// vtable and type information, so that a module can connect to them, derive
// from them and cast to them. What the package's consumer links and the
// helper suites (linked to libauthcommon) call needs no row of its own here.
struct Export
{
    const char* library;
    const char* tag;
    QString pattern;
    QStringList required;
    bool web = false;
};
QList<Export> exportedSurface()
{
    const auto wholeClass = [](const QString& name) {
        return QString("^(non-virtual thunk to )?%1::|^(vtable|typeinfo|typeinfo name) for %1$")
            .arg(name);
    };
    const auto classInfo = [](const QString& name) {
        return QStringList{name + "::staticMetaObject", "vtable for " + name,
                           "typeinfo for " + name, "typeinfo name for " + name};
    };
    const char* plugin = "libauthplugin.so";
    const char* common = "libauthcommon.so";
    QList<Export> surface{
        {plugin, "entry point", "^GetAuthorizationHandler$", {}},
        {plugin, "network monitor", wholeClass("KNetworkStateMonitor"),
         classInfo("KNetworkStateMonitor")},
        {plugin, "frame dialog", wholeClass("KxNimboCustomFrameDlg"),
         classInfo("KxNimboCustomFrameDlg")
             << "KxNimboCustomFrameDlg::KxNimboCustomFrameDlg(QWidget*, QFlags<Qt::WindowType>)"
             << "KxNimboCustomFrameDlg::setTitleColor(QColor const&)"
             << "KxNimboCustomFrameDlg::paintEvent(QPaintEvent*)"},
        {plugin, "web dialog", wholeClass("KxWebDlg"),
         classInfo("KxWebDlg") << "non-virtual thunk to KxWebDlg::~KxWebDlg()", true},
        {plugin,
         "web plug-in registry",
         "^getWebPluginFactoryItems\\(\\)$|^KxWebPluginFactoryItemRegister::|" +
             wholeClass("IKxWebPluginFactoryItem"),
         {"getWebPluginFactoryItems()"},
         true},
        {plugin,
         "local pages",
         "^kx(GetResMuiFile|ResPathToWebUrl|GetWebResMuiFile)\\(",
         {"kxResPathToWebUrl(QString const&)", "kxGetResMuiFile(QString const&, QString const&)"},
         true},
        {plugin,
         "service pages signed in",
         "^kx(OpenAutoLoginUrl|NimboOpenStoreUrl)\\(",
         {"kxOpenAutoLoginUrl(QString const&)", "kxNimboOpenStoreUrl(STORE_URL_TYPE)"}},
        // The layer's own functions begin with "_" and stay inside.
        {common, "helper functions", "^Q?Comm::[A-Za-z]", {}},
        {common, "block detector guard", "^KIngoreLongTimeDetectHelper::", {}},
    };
    // A build without a web engine has no web module: a symbol of its rows
    // would be one too many.
    const auto web = [](const Export& row) { return row.web && !AUTH_WEB_DIALOG; };
    surface.erase(std::remove_if(surface.begin(), surface.end(), web), surface.end());
    return surface;
}

// The names a version script lets out: classes, namespaces and functions,
// without the C++ decoration around them.
QStringList namesInVersionScript(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {"(cannot read " + path + ")"};
    const QString text = QString::fromUtf8(file.readAll())
                             .remove(QRegularExpression(
                                 "/\\*.*\\*/", QRegularExpression::DotMatchesEverythingOption));
    const QString global = text.section("global:", 1).section("local:", 0, 0);
    QStringList names;
    for (QString entry : global.split(';')) {
        entry = entry.remove(QRegularExpression("extern \"C\\+\\+\"|[{}\"]")).trimmed();
        entry.remove(
            QRegularExpression("^((vtable|typeinfo|typeinfo name) for |non-virtual.thunk.to.)"));
        const QString name = entry.section("::", 0, 0).section('(', 0, 0).trimmed();
        if (!name.isEmpty() && !names.contains(name))
            names << name;
    }
    names.sort();
    return names;
}

// The names the README's exports table gives for one library: the first
// column's names in backticks, of the rows whose second column names it.
QStringList namesInReadme(const QString& library)
{
    QFile file(AUTH_SOURCE_DIR "/README.md");
    if (!file.open(QIODevice::ReadOnly))
        return {"(cannot read the README)"};
    const QString text = QString::fromUtf8(file.readAll());
    const QString section =
        text.section("### What the library exports, and why", 1).section("\n#", 0, 0);
    QStringList names;
    for (const QString& line : section.split('\n')) {
        const QStringList cells = line.split('|');
        if (cells.size() < 4 || !cells[2].contains("`" + library + "`"))
            continue;
        QRegularExpressionMatchIterator found =
            QRegularExpression("`([A-Za-z_]\\w*)(\\(\\))?`").globalMatch(cells[1]);
        while (found.hasNext())
            names << found.next().captured(1);
    }
    names.sort();
    return names;
}

} // namespace

class TestAuthInfo : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KTestAppDir m_app{m_env.rootPath()};
    const QString m_bin = QCoreApplication::applicationDirPath();
    const QString m_state = m_env.rootPath() + "/deskhive-state.json";
    QMap<QString, QStringList> m_symbols; // exported by a library, demangled

private slots:
    void initTestCase()
    {
        // The account comes from a state file of the suite's own; the host
        // profile from a folder of its own, chosen per row.
        qputenv("DESKHIVE_STATE", m_state.toUtf8());
        setProductString("JumpUrl", "https://j.example");
        setLanguage("zh_CN");
        setVersion("12.1.0.17890");
        QVERIFY(saveProfile(m_env.rootPath() + "/chosen"));
    }

    void exports_data()
    {
        QTest::addColumn<QString>("library");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QStringList>("required");
        for (const Export& row : exportedSurface())
            QTest::newRow(row.tag) << row.library << row.pattern << row.required;
    }

    void exports()
    {
        QFETCH(QString, library);
        QFETCH(QString, pattern);
        QFETCH(QStringList, required);

        const QStringList symbols = exportedSymbols(library);
        QVERIFY(!symbols.filter(QRegularExpression(pattern)).isEmpty());
        for (const QString& symbol : required)
            QVERIFY2(symbols.contains(symbol), qPrintable(symbol));
    }

    // Nothing leaves a library but its rows above, and the README's exports
    // table names what its version script lets out, no more and no less.
    void exportsNothingElse_data()
    {
        QTest::addColumn<QString>("library");
        QTest::addColumn<QString>("script");
        QTest::newRow("plug-in") << "libauthplugin" << QString("src/plugin/authplugin.map");
        QTest::newRow("helper layer") << "libauthcommon" << QString("src/common/authcommon.map");
    }

    void exportsNothingElse()
    {
        QFETCH(QString, library);
        QFETCH(QString, script);

        QStringList unclaimed = exportedSymbols(library + ".so");
        QVERIFY(!unclaimed.isEmpty());
        for (const Export& row : exportedSurface())
            unclaimed.erase(
                std::remove_if(unclaimed.begin(), unclaimed.end(),
                               [&](const QString& symbol) {
                                   return QRegularExpression(row.pattern).match(symbol).hasMatch();
                               }),
                unclaimed.end());
        QVERIFY2(unclaimed.isEmpty(), qPrintable(unclaimed.join('\n')));
        const QStringList scripted = namesInVersionScript(AUTH_SOURCE_DIR "/" + script);
        QVERIFY(scripted.size() > 1);
        QCOMPARE(namesInReadme(library), scripted);
    }

    // "@": this suite's folder. profile: given in the environment, else
    // with --profile among args. lines: "label=cells" (two blanks apart) of
    // the report; parts: its parts in their order, with the number of keys.
    void runs_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("profile");
        QTest::addColumn<QByteArray>("state");
        QTest::addColumn<QString>("parts");
        QTest::addColumn<QStringList>("lines");

        const QByteArray ada = R"({"IsLogined": true, "Name": "Ada L", "Id": "u-7",
            "UserAvatarImagePath": "/p/ada.png", "IsCompanyAccount": true})";
        const QStringList everything{
            "Product/VexName=QString  Zento 办公",
            "Product/Url/LauncherPage=QUrl  https://j.example/launcher_page",
            "Server/ReinstallServer=QString  https://j.example/latest_package",
            "Cloud library=loaded from " + m_bin + "/addons/deskhive/libdeskhive.so",
            "Signed in=yes",
            "Name=Ada L",
            "Avatar=/p/ada.png",
            "Company account=yes",
            "Suite version=12.1.0.17890",
            "Log=@/home/.local/share/office6/Deskhive/log"};
        QTest::newRow("everything, verbose") << QStringList{"--profile", "@/chosen", "-v"} << ""
                                             << ada << "keys:11 Account Diagnostics" << everything;
        QTest::newRow("keys, profile from the environment")
            << QStringList{"Server/ReinstallServer", "Support/Anything", "Nope/Nothing"}
            << "@/chosen" << QByteArray() << "keys:3"
            << QStringList{"Server/ReinstallServer=QString  https://j.example/latest_package",
                           "Support/Anything=bool  false", "Nope/Nothing=null"};
        QTest::newRow("account alone, signed out")
            << QStringList{"--account"} << "" << QByteArray(R"({"IsLogined": false, "Name": "A"})")
            << "Account" << QStringList{"Signed in=no", "Name=", "Company account=no"};
        // What the personal centre opens: the shipped profile's address,
        // wrapped by the cloud simulator for the signed-in user.
        QFile shipped(m_bin + "/profile/host.json");
        QVERIFY(shipped.open(QIODevice::ReadOnly));
        const QString centre =
            QJsonDocument::fromJson(shipped.readAll())["product"]["strings"]["PersonalCenterUrl"]
                .toString();
        QTest::newRow("classes, then a command, after the keys")
            << QStringList{"--profile", m_bin + "/profile", "--commands",
                           "--command", "OpenUserCenter",   "Server/ReinstallServer"}
            << "" << ada << "keys:1 classes Command"
            << QStringList{"Server/ReinstallServer=QString  "
                           "https://jump.zentooffice.example/go/latest_package",
                           "KUserCenterMenuCommand=",
                           "KxOpenPersonalCenterCommand=",
                           "KEnterpriseCenterTriggerCommand=",
                           "Result=true (the host goes on)",
                           "Opened=wrapped:" + QUrl::toPercentEncoding(centre),
                           "User name=(none), unchanged"};
    }

    void runs()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, profile);
        QFETCH(QByteArray, state);
        QFETCH(QString, parts);
        QFETCH(QStringList, lines);

        QVERIFY(KTestAppDir::write(m_state, state));
        QProcessEnvironment env;
        if (!profile.isEmpty())
            env.insert(profileEnvironmentVariable(), profile.replace('@', m_env.rootPath()));
        const KTestAppDir::Result run =
            m_app.run(m_bin + "/authinfo", args.replaceInStrings("@", m_env.rootPath()), env);
        // Parts begin at an unindented line: a key with its cells, a report's
        // title, a command class alone, "Command" and its name.
        QStringList found, shown;
        int keys = 0;
        for (const QString& line : run.out.split('\n', Qt::SkipEmptyParts)) {
            QStringList cells = line.trimmed().split(QRegularExpression("\\s{2,}"));
            const QString label = cells.takeFirst();
            QString part = label == "Account" || label == "Diagnostics" ? label
                           : label.startsWith("Command ")               ? "Command"
                           : cells.isEmpty()                            ? "classes"
                                                                        : "keys";
            if (line.startsWith(' '))
                part.clear();
            keys += part == "keys";
            if (!part.isEmpty() && (found.isEmpty() || found.last() != part))
                found << part;
            shown << label + '=' + KUrlCatcher::unwrapped(cells.join("  "));
        }
        QCOMPARE(found.join(' ').replace("keys", "keys:" + QString::number(keys)), parts);
        for (const QString& line : lines)
            QVERIFY2(shown.contains(QString(line).replace('@', m_env.rootPath())),
                     qPrintable(line));
        QCOMPARE(run.err.contains("The info Nope/Nothing was not found, the key must be handled!"),
                 args.contains("Nope/Nothing"));
        // Debug notices of the helpers and of the cloud access, in their own
        // categories, show with -v only.
        for (const QString& notice : {QString("func getNimboCfgsValue mac not impl!"),
                                      "cloud library loaded from " + m_bin + "/addons"})
            QVERIFY2(run.err.contains(notice) == args.contains("-v"), qPrintable(run.err));
    }

    // A data folder that is a file: every directory the client would create
    // is marked, and the run fails (the warnings, once a directory, are the
    // helper suite's).
    void uncreatableDirectories()
    {
        const QString blocked = m_env.rootPath() + "/data-file";
        QVERIFY(KTestAppDir::write(blocked, "x"));
        QProcessEnvironment env;
        env.insert("XDG_DATA_HOME", blocked);
        const KTestAppDir::Result run = m_app.run(m_bin + "/authinfo", {"--diagnostics"}, env);
        QCOMPARE(run.exitCode, 1);
        QStringList marked;
        for (const QString& line : run.out.split('\n').filter("(cannot be created)"))
            marked << line.section(blocked, 1).section("  ", 0, 0);
        QCOMPARE(marked, QStringList({"/nimbo", "/Zento Cloud Files", "/Zento Cloud Files/userdata",
                                      "/office6/Deskhive", "/office6/Deskhive/log",
                                      "/office6/Deskhive/dump", "/nimbo/resource/iconcache"}));
    }

    void unusable_data()
    {
        QTest::addColumn<QStringList>("args"); // "@": this suite's folder
        QTest::addColumn<QString>("reason");

        const auto row = [](const char* tag, const char* option, const QString& value,
                            const char* reason) {
            QTest::newRow(tag) << QStringList{option, value} << QString(reason);
        };
        row("missing plug-in", "--plugin", "/nonexistent/libauthplugin.so", "No such file");
        row("no entry point", "--plugin", m_bin + "/libvexlite.so",
            "does not export GetAuthorizationHandler");
        row("unreadable profile", "--profile", "@/no-such-profile", "");
    }

    void unusable()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, reason);

        const KTestAppDir::Result run =
            m_app.run(m_bin + "/authinfo", args.replaceInStrings("@", m_env.rootPath()));
        QCOMPARE(run.exitCode, 2);
        QVERIFY(run.out.isEmpty());
        QCOMPARE(run.err.count('\n'), 1);
        QVERIFY2(run.err.contains(args.last()) && run.err.contains(reason), qPrintable(run.err));
    }

private:
    // A library's dynamic symbols, demangled.
    QStringList exportedSymbols(const QString& library)
    {
        if (m_symbols.contains(library))
            return m_symbols[library];
        const QString nm = QStandardPaths::findExecutable("nm");
        KTestAppDir::Result run =
            m_app.run(nm, {"-D", "--defined-only", "-C", m_bin + '/' + library});
        return m_symbols[library] = run.out
                                        .remove(QRegularExpression(
                                            "^\\S+ \\S ", QRegularExpression::MultilineOption))
                                        .split('\n', Qt::SkipEmptyParts);
    }
};

QTEST_GUILESS_MAIN(TestAuthInfo)
#include "tst_authinfo.moc"
