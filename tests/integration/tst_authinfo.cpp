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

    Run authinfo(const QStringList& args, const QString& profileEnv = QString())
    {
        QProcess process;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(krt::hostcontrol::profileEnvironmentVariable(), profileEnv);
        process.setProcessEnvironment(env);
        process.start(binDir() + "/authinfo", args);
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
