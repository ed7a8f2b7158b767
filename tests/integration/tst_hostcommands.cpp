// Commands through the command-line host as a person runs it: the classes
// the built plug-in registers with the host, and named commands passed
// through its handler, with what they open and what they make of the suite
// user name. No browser starts: authinfo catches every address.

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace AuthTest;

class TestHostCommands : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KTestAppDir m_app{m_env.rootPath()};
    const QString m_bin = QCoreApplication::applicationDirPath();
    const QString m_state = m_env.rootPath() + "/deskhive-state.json";
    QString m_centre;     // the shipped profile's personal centre
    QByteArray m_profile; // and its host.json
    int m_copies = 0;

    // What the simulator makes of url for the user with this id.
    static QString wrapped(const QString& id, const QString& url)
    {
        const QByteArray token = QCryptographicHash::hash("deskhive-simulator:" + id.toUtf8(),
                                                          QCryptographicHash::Sha256)
                                     .toHex()
                                     .left(16);
        return "https://account.zentooffice.example/autologin?token=" + token +
               "&target=" + QUrl::toPercentEncoding(url);
    }

private slots:
    void initTestCase()
    {
        qputenv("DESKHIVE_STATE", m_state.toUtf8());
        QFile shipped(m_bin + "/profile/host.json");
        QVERIFY(shipped.open(QIODevice::ReadOnly));
        m_profile = shipped.readAll();
        m_centre = QJsonDocument::fromJson(m_profile)["product"]["strings"]["PersonalCenterUrl"]
                       .toString();
        QVERIFY(!m_centre.isEmpty());
    }

    // "COPY": a fresh copy of the profile beside authinfo, per row, for the
    // runs that write into its per-user store; "SHIPPED": that profile
    // itself (whose store is a person's: its user name is not stated).
    // lines: the output's lines with their blanks run together, in order;
    // one ending in "*" stands for any line that starts as it does.
    void runs_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QByteArray>("state");
        QTest::addColumn<QByteArray>("user");
        QTest::addColumn<QStringList>("lines");

        // The simulator's own seed: the signed-in demo user.
        QFile seed(QFINDTESTDATA("../../sdk/deskhive/simulator/state.json"));
        QVERIFY(seed.open(QIODevice::ReadOnly));
        const QByteArray demo = seed.readAll();
        const QStringList shipped{"--profile", "COPY"};

        QTest::newRow("the registered classes")
            << (shipped + QStringList("--commands")) << demo << QByteArray()
            << QStringList{"KUserCenterMenuCommand", "KxOpenPersonalCenterCommand",
                           "KEnterpriseCenterTriggerCommand"};
        QTest::newRow("personal centre, demo user, shipped profile")
            << QStringList{"--profile", "SHIPPED", "--command", "OpenUserCenter"} << demo
            << QByteArray()
            << QStringList{"Command OpenUserCenter", "Result true (the host goes on)",
                           "Opened " + wrapped("demo-0001", m_centre), "User name *"};
        QTest::newRow("user name filled in once")
            << QStringList{"--profile",        "COPY",      "--command",
                           "ProcUserRegister", "--command", "ProcUserRegister"}
            << demo << QByteArray("j\xc3\xb6")
            << QStringList{
                   "Command ProcUserRegister", "Result true (the host goes on)",
                   "Opened nothing",           QString::fromUtf8("User name jö, was empty"),
                   "Command ProcUserRegister", "Result true (the host goes on)",
                   "Opened nothing",           QString::fromUtf8("User name jö, unchanged")};
        QTest::newRow("keys first, commands last")
            << QStringList{"--profile", "COPY", "--command", "Nope", "Server/ReinstallServer"}
            << demo << QByteArray()
            << QStringList{"Server/ReinstallServer QString "
                           "https://jump.zentooffice.example/go/latest_package",
                           "Command Nope", "Result true (the host goes on)", "Opened nothing",
                           "User name (none), unchanged"};
    }

    void runs()
    {
        QFETCH(QStringList, args);
        QFETCH(QByteArray, state);
        QFETCH(QByteArray, user);
        QFETCH(QStringList, lines);

        QVERIFY(KTestAppDir::write(m_state, state));
        QProcessEnvironment env;
        env.insert("USER", QString::fromUtf8(user));
        const QString copy = m_env.rootPath() + "/copy-" + QString::number(++m_copies);
        QVERIFY(KTestAppDir::write(copy + "/host.json", m_profile));
        args.replaceInStrings("COPY", copy).replaceInStrings("SHIPPED", m_bin + "/profile");
        const KTestAppDir::Result run = m_app.run(m_bin + "/authinfo", args, env);
        QCOMPARE(run.exitCode, 0);
        QStringList shown = run.out.split('\n', Qt::SkipEmptyParts);
        for (int i = 0; i < shown.size(); ++i) {
            shown[i] = shown[i].simplified();
            if (i < lines.size() && lines[i].endsWith('*') &&
                shown[i].startsWith(lines[i].chopped(1)))
                shown[i] = lines[i];
        }
        QCOMPARE(shown, lines);
    }
};

QTEST_GUILESS_MAIN(TestHostCommands)
#include "tst_hostcommands.moc"
