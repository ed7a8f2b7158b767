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
        // The simulator's own seed: the signed-in demo user.
        QFile seed(QFINDTESTDATA("../../sdk/deskhive/simulator/state.json"));
        QVERIFY(seed.open(QIODevice::ReadOnly));
        QVERIFY(KTestAppDir::write(m_state, seed.readAll()));
        qputenv("DESKHIVE_STATE", m_state.toUtf8());
        QFile shipped(m_bin + "/profile/host.json");
        QVERIFY(shipped.open(QIODevice::ReadOnly));
        m_profile = shipped.readAll();
        m_centre = QJsonDocument::fromJson(m_profile)["product"]["strings"]["PersonalCenterUrl"]
                       .toString();
        QVERIFY(!m_centre.isEmpty());
    }

    // Each run on a fresh copy of the shipped profile, whose per-user store
    // it may write. lines: the output's lines with their blanks run
    // together, in order.
    void runs_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QByteArray>("user");
        QTest::addColumn<QStringList>("lines");

        const auto row = [](const char* tag, const QString& args, const QByteArray& user,
                            const QStringList& lines) {
            QTest::newRow(tag) << args.split(' ') << user << lines;
        };
        const QString goesOn = "Result true (the host goes on)";
        row("the registered classes", "--commands", "",
            {"KUserCenterMenuCommand", "KxOpenPersonalCenterCommand",
             "KEnterpriseCenterTriggerCommand"});
        row("personal centre, demo user", "--command OpenUserCenter", "",
            {"Command OpenUserCenter", goesOn, "Opened " + wrapped("demo-0001", m_centre),
             "User name (none), unchanged"});
        row("user name filled in once", "--command ProcUserRegister --command ProcUserRegister",
            "j\xc3\xb6",
            {"Command ProcUserRegister", goesOn, "Opened nothing", "User name jö, was empty",
             "Command ProcUserRegister", goesOn, "Opened nothing", "User name jö, unchanged"});
        row("keys first, commands last", "--command Nope Server/ReinstallServer", "",
            {"Server/ReinstallServer QString https://jump.zentooffice.example/go/latest_package",
             "Command Nope", goesOn, "Opened nothing", "User name (none), unchanged"});
    }

    void runs()
    {
        QFETCH(QStringList, args);
        QFETCH(QByteArray, user);
        QFETCH(QStringList, lines);

        QProcessEnvironment env;
        env.insert("USER", QString::fromUtf8(user));
        const QString copy = m_env.rootPath() + "/copy-" + QString::number(++m_copies);
        QVERIFY(KTestAppDir::write(copy + "/host.json", m_profile));
        const KTestAppDir::Result run =
            m_app.run(m_bin + "/authinfo", QStringList{"--profile", copy} + args, env);
        QCOMPARE(run.exitCode, 0);
        QStringList shown = run.out.split('\n', Qt::SkipEmptyParts);
        for (QString& line : shown)
            line = line.simplified();
        QCOMPARE(shown, lines);
    }
};

QTEST_GUILESS_MAIN(TestHostCommands)
#include "tst_hostcommands.moc"
