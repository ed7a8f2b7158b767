// The command-line host, run as a person would run it.

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <vexlite/hostcontrol.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QtTest>

namespace {

struct Run
{
    int exitCode = -1;
    QString out;
    QString err;
};

} // namespace

class TestAuthInfo : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

    static QString binDir() { return QCoreApplication::applicationDirPath(); }

    // The account comes from a state file of the suite's own, never the one
    // beside the built simulator.
    QString statePath() const { return m_env.rootPath() + "/deskhive-state.json"; }

    Run authinfo(const QStringList& args, const QString& profileEnv = QString(),
                 const QString& program = binDir() + "/authinfo")
    {
        QProcess process;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(krt::hostcontrol::profileEnvironmentVariable(), profileEnv);
        env.insert("DESKHIVE_STATE", statePath());
        process.setProcessEnvironment(env);
        process.start(program, args);
        Run run;
        if (!process.waitForFinished(30000))
            return run;
        run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        run.out = QString::fromUtf8(process.readAllStandardOutput());
        run.err = QString::fromUtf8(process.readAllStandardError());
        return run;
    }

    // The value column of the line that starts with key.
    static QString valueOf(const QString& out, const QString& key, QString* type = nullptr)
    {
        for (const QString& line : out.split('\n')) {
            const QStringList columns = line.split(QRegularExpression("\\s{2,}"));
            if (columns.size() >= 2 && columns[0] == key) {
                if (type)
                    *type = columns[1];
                return columns.mid(2).join("  ");
            }
        }
        return QStringLiteral("<no line for %1>").arg(key);
    }

    // The value of a line of the account report.
    static QString accountValue(const QString& out, const QString& label)
    {
        const int start = out.indexOf(QStringLiteral("\nAccount\n"));
        if (start < 0 && !out.startsWith(QStringLiteral("Account\n")))
            return QStringLiteral("<no account report>");
        for (const QString& line : out.mid(start + 1).split('\n')) {
            const QStringList columns = line.trimmed().split(QRegularExpression("\\s{2,}"));
            if (columns[0] == label)
                return columns.mid(1).join("  ");
        }
        return QStringLiteral("<no line for %1>").arg(label);
    }

    bool writeState(const QByteArray& content)
    {
        QFile file(statePath());
        return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
               file.write(content) == content.size();
    }

private slots:
    void defaultProfileTable()
    {
        // The profile shipped with the executables, found beside authinfo: in a
        // copy of the application directory, since the diagnostics that follow
        // the table write the device identifier into the profile's stores.
        const KTestAppDir app(m_env.rootPath());
        QVERIFY(app.installExecutable("authinfo") && app.installExecutable("libauthplugin.so"));
        QFile shipped(binDir() + "/profile/host.json");
        QVERIFY(shipped.open(QIODevice::ReadOnly));
        QVERIFY(app.writeFile("profile/host.json", shipped.readAll()));
        QProcessEnvironment env;
        env.insert(krt::hostcontrol::profileEnvironmentVariable(), QString());
        const KTestAppDir::Result result = app.run("authinfo", {}, env);
        const Run run{result.exitCode, result.out, result.err};
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(valueOf(run.out, "Product/VexName"), QString("Zento Office"));

        QString type;
        const QString eula = valueOf(run.out, "Product/Url/EULA", &type);
        QCOMPARE(type, QString("QString"));
        QVERIFY2(eula.startsWith("https://") && eula.endsWith("/eula"), qPrintable(eula));
        QCOMPARE(valueOf(run.out, "Product/Url/LauncherPage", &type),
                 eula.left(eula.size() - 4) + "launcher_page");
        QCOMPARE(type, QString("QUrl"));
        for (const char* key : {"Product/VexThanksTo", "Product/Url/EmbeddedEULA",
                                "Product/Url/OnlineLanguagePacksConfig", "Product/HomePage",
                                "Product/UserFeedbackPage", "Product/HelpPage",
                                "Product/TechSupportUrl", "Server/ReinstallServer"})
            QVERIFY2(!valueOf(run.out, key).startsWith("<no line"), key);
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

        krt::hostcontrol::resetProfile();
        krt::hostcontrol::setProductString("JumpUrl", "https://elsewhere.example");
        krt::hostcontrol::setLanguage("zh_CN");
        const QString dir = m_env.rootPath() + "/chosen";
        QVERIFY(krt::hostcontrol::saveProfile(dir));

        const QStringList keys{"Server/ReinstallServer", "Product/VexName", "Support/Anything",
                               "Nope/Nothing"};
        const Run run =
            byOption ? authinfo(QStringList{"--profile", dir} + keys) : authinfo(keys, dir);
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out.count('\n'), keys.size());
        QCOMPARE(valueOf(run.out, "Server/ReinstallServer"),
                 QString("https://elsewhere.example/latest_package"));
        QCOMPARE(valueOf(run.out, "Product/VexName"), QString::fromUtf8("Zento 办公"));
        QString type;
        QCOMPARE(valueOf(run.out, "Support/Anything", &type), QString("false"));
        QCOMPARE(type, QString("bool"));
        QCOMPARE(valueOf(run.out, "Nope/Nothing", &type), QString(""));
        QCOMPARE(type, QString("null"));
        QVERIFY(run.err.contains("The info Nope/Nothing was not found, the key must be handled!"));
    }

    void accountReport_data()
    {
        QTest::addColumn<QByteArray>("state");
        QTest::addColumn<QStringList>("values"); // signed in, name, id, avatar, company

        QTest::newRow("signed in")
            << QByteArray(R"({"IsLogined": true, "Name": "Ada Lovelace",
            "Id": "u-7", "UserAvatarImagePath": "/p/ada.png", "IsCompanyAccount": true})")
            << QStringList{"yes", "Ada Lovelace", "u-7", "/p/ada.png", "yes"};
        QTest::newRow("signed out") << QByteArray(R"({"IsLogined": false, "Name": "Ada"})")
                                    << QStringList{"no", "", "", "", "no"};
    }

    void accountReport()
    {
        QFETCH(QByteArray, state);
        QFETCH(QStringList, values);

        QVERIFY(writeState(state));
        // With no keys the report follows the whole table.
        const Run run = authinfo({});
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.out.indexOf("Server/ReinstallServer") < run.out.indexOf("\nAccount\n"));
        QCOMPARE(accountValue(run.out, "Cloud library"),
                 "loaded from " + binDir() + "/addons/deskhive/libdeskhive.so");
        const QStringList labels{"Signed in", "Name", "Id", "Avatar", "Company account"};
        for (int i = 0; i < labels.size(); ++i)
            QCOMPARE(accountValue(run.out, labels[i]), values[i]);
    }

    void accountSelection_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<bool>("table");
        QTest::addColumn<bool>("account");

        QTest::newRow("--account alone") << QStringList{"--account"} << false << true;
        QTest::newRow("--account with a key")
            << QStringList{"--account", "Product/VexName"} << true << true;
        QTest::newRow("a key alone") << QStringList{"Product/VexName"} << true << false;
    }

    void accountSelection()
    {
        QFETCH(QStringList, args);
        QFETCH(bool, table);
        QFETCH(bool, account);

        QVERIFY(writeState(R"({"IsLogined": true, "Name": "Ada"})"));
        const Run run = authinfo(args);
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out.contains("Product/VexName"), table);
        QVERIFY(!run.out.contains("Server/ReinstallServer"));
        QCOMPARE(accountValue(run.out, "Name") == "Ada", account);
    }

    void accountWithoutCloudLibrary()
    {
        // A copy of authinfo in a folder without addons/deskhive.
        const QString app = m_env.rootPath() + "/bare-app";
        QVERIFY(QDir().mkpath(app));
        QVERIFY(QFile::copy(binDir() + "/authinfo", app + "/authinfo"));
        QVERIFY(
            QFile::setPermissions(app + "/authinfo", QFile::permissions(binDir() + "/authinfo")));
        QVERIFY(writeState(R"({"IsLogined": true, "Name": "Ada"})"));

        const Run run = authinfo({"--account", "--plugin", binDir() + "/libauthplugin.so"},
                                 binDir() + "/profile", app + "/authinfo");
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(accountValue(run.out, "Cloud library"),
                 "not found: no " + app + "/addons/deskhive");
        QCOMPARE(accountValue(run.out, "Signed in"), QString("no"));
        QCOMPARE(accountValue(run.out, "Name"), QString());
    }

    void unusablePlugin_data()
    {
        QTest::addColumn<QString>("plugin");
        QTest::addColumn<QString>("reason");

        QTest::newRow("missing file") << QString("/nonexistent/libauthplugin.so") << "No such file";
        QTest::newRow("not a library") << QString("notalibrary.so") << "";
        QTest::newRow("no entry point") << binDir() + "/libvexlite.so"
                                        << "does not export GetAuthorizationHandler";
    }

    void unusablePlugin()
    {
        QFETCH(QString, plugin);
        QFETCH(QString, reason);

        if (!plugin.startsWith('/')) {
            plugin = m_env.rootPath() + '/' + plugin;
            QFile file(plugin);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("this is text, not a shared library\n");
        }
        const Run run = authinfo({"--plugin", plugin});
        QCOMPARE(run.exitCode, 2);
        QVERIFY(run.out.isEmpty());
        QCOMPARE(run.err.count('\n'), 1);
        QVERIFY2(run.err.contains(plugin), qPrintable(run.err));
        QVERIFY2(run.err.contains(reason), qPrintable(run.err));
    }

    void unreadableProfile()
    {
        const Run run = authinfo({"--profile", m_env.rootPath() + "/no-such-profile"});
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains("no-such-profile"), qPrintable(run.err));
    }
};

QTEST_GUILESS_MAIN(TestAuthInfo)
#include "tst_authinfo.moc"
