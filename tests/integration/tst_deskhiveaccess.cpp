// The plug-in's access to the suite's cloud library, met as a host meets
// it: a program built with that access code runs from a folder laid out
// for each case, with or without addons/deskhive and whatever it holds.

#include "ktestenvironment.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QUrlQuery>
#include <QtTest>

namespace {

struct Probe
{
    int exitCode = -1;
    QMap<QString, QString> values;
};

const char kSignedIn[] = R"({"IsLogined": true, "Name": "Ada", "Id": "u-7",
                             "UserAvatarImagePath": "ada.png", "IsCompanyAccount": true})";
const char kWrapPrefix[] = "https://account.zentooffice.example/autologin?token=";

} // namespace

class TestDeskhiveAccess : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    int m_layouts = 0;

    static QString binDir() { return QCoreApplication::applicationDirPath(); }

    static bool writeFile(const QString& path, const QByteArray& content)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

    static QString simulator() { return binDir() + "/addons/deskhive/libdeskhive.so"; }

    // A fresh application folder holding a copy of the probe (a copy: the
    // application directory is where the real file is, links resolved) and,
    // in addons/deskhive, library: "none" (no folder), "empty", "text" (a
    // file that is not a library) or the library file to copy there.
    QString layOut(const QString& library)
    {
        const QString app = m_env.rootPath() + QStringLiteral("/app%1").arg(++m_layouts);
        const QString probe = app + "/deskhiveprobe";
        const QString target = app + "/addons/deskhive/libdeskhive.so";
        if (!QDir().mkpath(app) || !QFile::copy(binDir() + "/deskhiveprobe", probe) ||
            !QFile::setPermissions(probe, QFile::permissions(binDir() + "/deskhiveprobe")))
            return QString();
        if (library == "none")
            return app;
        const bool made =
            QDir().mkpath(app + "/addons/deskhive") &&
            (library == "empty" || (library == "text" ? writeFile(target, "not a library\n")
                                                      : QFile::copy(library, target)));
        return made ? app : QString();
    }

    static Probe probe(const QString& app, const QString& url,
                       const QMap<QString, QString>& environment = {})
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.remove("DESKHIVE_STATE");
        for (auto it = environment.begin(); it != environment.end(); ++it)
            env.insert(it.key(), it.value());
        QProcess process;
        process.setProcessEnvironment(env);
        process.start(app + "/deskhiveprobe", {url});
        Probe result;
        if (!process.waitForFinished(30000))
            return result;
        result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        const QStringList lines =
            QString::fromUtf8(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
        for (const QString& line : lines) {
            const int equals = line.indexOf('=');
            if (equals > 0)
                result.values.insert(line.left(equals), line.mid(equals + 1));
        }
        return result;
    }

    static QString objects(const Probe& probe)
    {
        QStringList present;
        for (const char* key : {"dispatch", "client", "cache", "controller"})
            if (probe.values.value(key) == "object")
                present << key;
        return present.join(' ');
    }

private slots:
    void libraryLayouts_data()
    {
        QTest::addColumn<QString>("library");
        QTest::addColumn<bool>("loaded");
        QTest::addColumn<QString>("objects");

        QTest::newRow("no addons/deskhive folder") << "none" << false << "";
        QTest::newRow("empty addons/deskhive folder") << "empty" << false << "";
        QTest::newRow("a file that is not a library") << "text" << false << "";
        QTest::newRow("simulator without a state file")
            << simulator() << true << "dispatch client cache controller";
        QTest::newRow("library without NimboClientInstance")
            << FAKE_DESKHIVE_WITHOUT_CLIENT << true << "dispatch cache controller";
        QTest::newRow("library with NimboClientInstance only")
            << FAKE_DESKHIVE_CLIENT_ONLY << true << "client";
    }

    void libraryLayouts()
    {
        QFETCH(QString, library);
        QFETCH(bool, loaded);
        QFETCH(QString, objects);

        const QString app = layOut(library);
        QVERIFY(!app.isEmpty());
        const QString url = "https://jump.example/personal?x=1";
        const Probe run = probe(app, url);
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.values.value("loaded"), QString(loaded ? "true" : "false"));
        QCOMPARE(TestDeskhiveAccess::objects(run), objects);

        // The handle exists exactly when the folder does, on the folder's
        // absolute path; failing to load says why.
        if (library == "none")
            QCOMPARE(run.values.value("file"), QString());
        else
            QVERIFY2(run.values.value("file").startsWith(app + "/addons/deskhive/"),
                     qPrintable(run.values.value("file")));
        QCOMPARE(run.values.value("error").isEmpty(), loaded || library == "none");

        // Whatever is missing, nobody is signed in and nothing is wrapped.
        QCOMPARE(run.values.value("logined"), QString("false"));
        QCOMPARE(run.values.value("autologin"), url);
    }

    void simulatorAccount_data()
    {
        QTest::addColumn<bool>("named"); // the state in a file $DESKHIVE_STATE names
        QTest::addColumn<QString>("name");

        QTest::newRow("state beside the library") << false << "Ada";
        QTest::newRow("named state file wins") << true << "Env";
    }

    void simulatorAccount()
    {
        QFETCH(bool, named);
        QFETCH(QString, name);

        const QString app = layOut(simulator());
        QVERIFY(!app.isEmpty());
        const QString addons = app + "/addons/deskhive";
        QVERIFY(writeFile(addons + "/state.json", kSignedIn));
        QMap<QString, QString> environment;
        if (named) {
            environment.insert("DESKHIVE_STATE", app + "/named.json");
            QVERIFY(writeFile(app + "/named.json", R"({"IsLogined": true, "Name": "Env"})"));
        }

        const QString url = QString::fromUtf8("https://jump.example/centre?a=1&b=ü#top");
        const Probe run = probe(app, url, environment);
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.values.value("logined"), QString("true"));
        const QJsonObject info =
            QJsonDocument::fromJson(run.values.value("userinfo").toUtf8()).object();
        QCOMPARE(info.value("Name").toString(), name);
        if (!named)
            QCOMPARE(info.value("UserAvatarImagePath").toString(), addons + "/ada.png");

        const QString wrapped = run.values.value("autologin");
        QVERIFY2(wrapped.startsWith(kWrapPrefix), qPrintable(wrapped));
        QCOMPARE(QUrlQuery(QUrl(wrapped)).queryItemValue("target", QUrl::FullyDecoded), url);
    }

    void accountAnswers_data()
    {
        QTest::addColumn<QString>("userInfo");
        QTest::addColumn<QString>("wrapReply");
        QTest::addColumn<bool>("logined");
        QTest::addColumn<bool>("wrapped");

        const QString wrap = "https://wrapped.example/auto?t=1";
        QTest::newRow("signed in, wrapped") << R"({"IsLogined": true})" << wrap << true << true;
        QTest::newRow("signed in, empty wrapped address") << R"({"IsLogined": true, "Name": "F"})"
                                                          << "" << true << false;
        QTest::newRow("no IsLogined") << R"({"Name": "F", "Id": "1"})" << wrap << false << false;
        QTest::newRow("empty object") << "{}" << wrap << false << false;
        QTest::newRow("IsLogined false") << R"({"IsLogined": false})" << wrap << false << false;
        QTest::newRow("IsLogined as text") << R"({"IsLogined": "true"})" << wrap << false << false;
        QTest::newRow("IsLogined as 1") << R"({"IsLogined": 1})" << wrap << true << true;
        QTest::newRow("reply is an array") << "[true]" << wrap << false << false;
        QTest::newRow("no reply at all") << "" << wrap << false << false;
    }

    void accountAnswers()
    {
        QFETCH(QString, userInfo);
        QFETCH(QString, wrapReply);
        QFETCH(bool, logined);
        QFETCH(bool, wrapped);

        const QString app = layOut(FAKE_DESKHIVE_CLIENT_ONLY);
        QVERIFY(!app.isEmpty());
        const QString url = "https://jump.example/enterprise";
        const Probe run = probe(
            app, url, {{"FAKE_NIMBO_USERINFO", userInfo}, {"FAKE_NIMBO_AUTOLOGIN", wrapReply}});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.values.value("logined"), QString(logined ? "true" : "false"));
        QCOMPARE(run.values.value("autologin"), wrapped ? wrapReply : url);
    }
};

QTEST_GUILESS_MAIN(TestDeskhiveAccess)
#include "tst_deskhiveaccess.moc"
