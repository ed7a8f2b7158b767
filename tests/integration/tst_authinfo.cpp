// The built plug-in met as a host meets it: loaded through QLibrary in this
// process, and by the command-line host authinfo, run as a person runs it.

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/ikauthorizationhandler.h>
#include <vexlite/krtauth.h>

#include <QLibrary>
#include <QtTest>

using namespace krt::hostcontrol;

namespace {

// The cells after label on the first line of out that starts with it.
QStringList cells(const QString& out, const QString& label)
{
    for (const QString& line : out.split('\n')) {
        QStringList columns = line.trimmed().split(QRegularExpression("\\s{2,}"));
        if (columns.takeFirst() == label)
            return columns;
    }
    return {"<no line for " + label + '>'};
}

// The parts of a report, in their order: "keys", "Account", "Diagnostics".
QString sections(const QString& out)
{
    QStringList found;
    for (const QString& line : out.split('\n')) {
        const bool key = line.contains('/') && !line.startsWith(' ');
        const QString part = line == "Account" || line == "Diagnostics" ? line : key ? "keys" : "";
        if (!part.isEmpty() && !found.contains(part))
            found << part;
    }
    return found.join(' ');
}

} // namespace

class TestAuthInfo : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KTestAppDir m_app{m_env.rootPath()};
    const QString m_bin = QCoreApplication::applicationDirPath();
    const QString m_state = m_env.rootPath() + "/deskhive-state.json";

    KTestAppDir::Result authinfo(const QStringList& args, const QString& profile = QString(),
                                 const QString& program = QString()) const
    {
        QProcessEnvironment env;
        if (!profile.isNull())
            env.insert(profileEnvironmentVariable(), profile);
        return m_app.run(program.isEmpty() ? m_bin + "/authinfo" : program, args, env);
    }

    bool writeState(const QByteArray& content) const
    {
        QFile file(m_state);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

private slots:
    void initTestCase() { qputenv("DESKHIVE_STATE", m_state.toUtf8()); }

    void init() { m_env.resetHost(); }

    void handlerThroughTheHost()
    {
        QLibrary plugin(m_bin + "/libauthplugin.so");
        QVERIFY2(plugin.load(), qPrintable(plugin.errorString()));
        const auto entry = reinterpret_cast<GetAuthorizationHandlerFunc>(
            plugin.resolve("GetAuthorizationHandler"));
        QVERIFY2(entry, "the plain, unmangled entry point must resolve");
        IKAuthorizationHandler* handler = entry();
        QVERIFY(handler && entry() == handler);
        setProductString("JumpUrl", "https://jump.example/");
        setHandler(handler);
        handler->insertStaticInfo("Product/Seeded", "kept");
        QCOMPARE(krt::auth::getStringInfo("Product/Seeded"), QString("kept"));
        QCOMPARE(krt::auth::getStringInfo("Product/Url/EULA"),
                 QString("https://jump.example/eula"));
        QCOMPARE(krt::auth::getInfo("Product/Url/LauncherPage"),
                 QVariant(QUrl("https://jump.example/launcher_page")));
        QCOMPARE(krt::auth::getBoolInfo("Patent/Anything", true), false);
        QVERIFY(krt::auth::prehook("OpenEnterpriseCenter", false, nullptr));
        QCOMPARE(executedCommands(), QStringList("OpenEnterpriseCenter"));
        setHandler(nullptr);
    }

    void exportsOnlyTheEntryPoint()
    {
        QProcess nm;
        nm.start("nm", {"-D", "--defined-only", m_bin + "/libauthplugin.so"});
        QVERIFY(nm.waitForFinished(30000) && nm.exitCode() == 0);
        QStringList names;
        for (const QString& line : QString::fromLocal8Bit(nm.readAllStandardOutput()).split('\n'))
            names << line.section(' ', 2);
        QCOMPARE(names.join(' ').simplified(), QString("GetAuthorizationHandler"));
    }

    // A copy of authinfo and the plug-in with the shipped profile beside
    // them (the diagnostics write into the profile's stores) and no cloud
    // library: every key, the account and the diagnostics.
    void everythingWithTheShippedProfile()
    {
        QFile shipped(m_bin + "/profile/host.json");
        QVERIFY(m_app.installExecutable("authinfo") && m_app.installExecutable("libauthplugin.so"));
        QVERIFY(shipped.open(QIODevice::ReadOnly));
        const QByteArray profile = shipped.readAll();
        QVERIFY(m_app.writeFile("profile/host.json", profile));
        QVERIFY(writeState(R"({"IsLogined": true, "Name": "Ada"})"));
        const QString out = authinfo({}, "", m_app.filePath("authinfo")).out;
        QCOMPARE(sections(out), QString("keys Account Diagnostics"));
        QCOMPARE(cells(out, "Product/VexName"), QStringList({"QString", "Zento Office"}));
        const QString eula = cells(out, "Product/Url/EULA").value(1);
        QVERIFY2(eula.startsWith("https://") && eula.endsWith("/eula"), qPrintable(eula));
        QCOMPARE(cells(out, "Product/Url/LauncherPage"),
                 QStringList({"QUrl", eula.chopped(4) + "launcher_page"}));
        for (const char* key : {"Product/VexThanksTo", "Product/Url/EmbeddedEULA",
                                "Product/Url/OnlineLanguagePacksConfig", "Product/HomePage",
                                "Product/UserFeedbackPage", "Product/HelpPage",
                                "Product/TechSupportUrl", "Server/ReinstallServer"})
            QCOMPARE(cells(out, key).value(0), QString("QString"));
        QCOMPARE(cells(out, "Cloud library"),
                 QStringList("not found: no " + m_app.filePath("addons/deskhive")));
        QCOMPARE(cells(out, "Signed in") + cells(out, "Name"), QStringList("no"));
        const QJsonObject info = QJsonDocument::fromJson(profile).object()["info"].toObject();
        QCOMPARE(cells(out, "Suite version"), QStringList(info["version"].toString()));
        QCOMPARE(cells(out, "Host user agent"), QStringList(info["userAgent"].toString()));
        const QString root = m_env.homePath() + "/.local/share";
        QCOMPARE(cells(out, "Log"), QStringList(root + "/office6/Deskhive/log"));
        QVERIFY(QFileInfo(root + "/office6/Deskhive/log").isDir());
    }

    void chosenProfileAndKeys_data()
    {
        QTest::addColumn<bool>("byOption");
        QTest::newRow("--profile") << true;
        QTest::newRow("environment") << false;
    }

    void chosenProfileAndKeys()
    {
        QFETCH(bool, byOption);

        setProductString("JumpUrl", "https://elsewhere.example");
        setLanguage("zh_CN");
        const QString dir = m_env.rootPath() + "/chosen";
        QVERIFY(saveProfile(dir));
        const QStringList keys{"Server/ReinstallServer", "Product/VexName", "Support/Anything",
                               "Nope/Nothing"};
        const KTestAppDir::Result run =
            byOption ? authinfo(QStringList{"--profile", dir} + keys) : authinfo(keys, dir);
        QCOMPARE(run.out.count('\n'), keys.size());
        QCOMPARE(cells(run.out, "Server/ReinstallServer"),
                 QStringList({"QString", "https://elsewhere.example/latest_package"}));
        QCOMPARE(cells(run.out, "Product/VexName"),
                 QStringList({"QString", QString::fromUtf8("Zento 办公")}));
        QCOMPARE(cells(run.out, "Support/Anything"), QStringList({"bool", "false"}));
        QCOMPARE(cells(run.out, "Nope/Nothing"), QStringList("null"));
        QVERIFY(run.err.contains("The info Nope/Nothing was not found, the key must be handled!"));
    }

    void account_data()
    {
        QTest::addColumn<QByteArray>("state");
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("parts");
        QTest::addColumn<QString>("values"); // signed in, name, id, avatar, company

        QTest::newRow("signed in")
            << QByteArray(R"({"IsLogined": true, "Name": "Ada Lovelace", "Id": "u-7",
                "UserAvatarImagePath": "/p/ada.png", "IsCompanyAccount": true})")
            << QStringList{"--account"} << "Account"
            << "yes|Ada Lovelace|u-7|/p/ada.png|yes";
        QTest::newRow("signed out, with a key")
            << QByteArray(R"({"IsLogined": false, "Name": "Ada"})")
            << QStringList{"--account", "Product/VexName"} << "keys Account"
            << "no||||no";
    }

    void account()
    {
        QFETCH(QByteArray, state);
        QFETCH(QStringList, args);
        QFETCH(QString, parts);
        QFETCH(QString, values);

        QVERIFY(writeState(state));
        const QString out = authinfo(args).out;
        QCOMPARE(sections(out), parts);
        QCOMPARE(cells(out, "Cloud library"),
                 QStringList("loaded from " + m_bin + "/addons/deskhive/libdeskhive.so"));
        QStringList shown;
        for (const char* label : {"Signed in", "Name", "Id", "Avatar", "Company account"})
            shown << cells(out, label).join(' ');
        QCOMPARE(shown.join('|'), values);
    }

    void unusable_data()
    {
        QTest::addColumn<QStringList>("args"); // "@": this suite's folder
        QTest::addColumn<QString>("reason");

        QTest::newRow("missing plug-in")
            << QStringList{"--plugin", "/nonexistent/libauthplugin.so"} << "No such file";
        QTest::newRow("not a library") << QStringList{"--plugin", "@/notalibrary.so"} << "";
        QTest::newRow("no entry point") << QStringList{"--plugin", m_bin + "/libvexlite.so"}
                                        << "does not export GetAuthorizationHandler";
        QTest::newRow("unreadable profile") << QStringList{"--profile", "@/no-such-profile"} << "";
    }

    void unusable()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, reason);

        QVERIFY(m_app.writeFile("../notalibrary.so", "text, not a library\n"));
        args.replaceInStrings("@", m_env.rootPath());
        const KTestAppDir::Result run = authinfo(args);
        QCOMPARE(run.exitCode, 2);
        QVERIFY(run.out.isEmpty());
        QCOMPARE(run.err.count('\n'), 1);
        QVERIFY2(run.err.contains(args.last()) && run.err.contains(reason), qPrintable(run.err));
    }
};

QTEST_GUILESS_MAIN(TestAuthInfo)
#include "tst_authinfo.moc"
