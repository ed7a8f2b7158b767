// The suite's cloud library as the plug-in reaches it. In this process: the
// simulator beside the executable, loaded through KDeskhiveLib, its account
// driven by a state file in a temporary folder, its signals connected by
// signature. In copies of this program run with --probe from folders laid
// out per case: what the access finds when the library is missing, broken,
// lacks entry points or answers oddly (the stand-ins of fakedeskhive.cpp).

#include "ktestappdir.h"
#include "ktestenvironment.h"
#include "kwarningcatcher.h"

#include "usercenter/kdeskhivelib.h"
#include "usercenter/knimboclientinstance.h"

#include <deskhive/livestateupdatecache.h>
#include <deskhive/nimboclient.h>

#include <QPointer>
#include <QSaveFile>
#include <QtTest>

namespace {

enum class Save { Replace, InPlace, RemoveFirst, Remove };

const QString kWrapPrefix = "https://account.zentooffice.example/autologin?token=";

QByteArray signedIn(const QByteArray& name, const QByteArray& more = QByteArray())
{
    return "{\"IsLogined\": true, \"Id\": \"id-" + name + "\", \"Name\": \"" + name + '"' + more +
           '}';
}

// The account as the plug-in sees it: signed in, name, id, avatar, company.
QString account()
{
    const Json::Value info = KNimboClientInstance::userInfo();
    QStringList parts{KNimboClientInstance::isLogined() ? "in" : "out"};
    for (const char* key : {"Name", "Id", "UserAvatarImagePath"})
        parts << QString::fromStdString(info[key].asString());
    return parts.join('|') + (info["IsCompanyAccount"].asBool() ? "|company" : "|");
}

// What a copy of this program finds beside itself, on one line: loaded,
// the objects handed out, signed in, the address given for url.
int probe(const QString& url)
{
    const KDeskhiveLib& lib = *KDeskhiveLib::instance();
    const QObject* objects[] = {lib.localPushMessageDispatchInstance(), lib.nimboClientInstance(),
                                lib.liveStateUpdateCacheInstance(), lib.deskhivePluginController()};
    QStringList present;
    for (int i = 0; i < 4; ++i) {
        if (objects[i])
            present << QString("dispatch client cache controller").section(' ', i, i);
    }
    QTextStream(stdout) << lib.isLoaded() << " | "
                        << (present.isEmpty() ? "none" : present.join(',')) << " | "
                        << KNimboClientInstance::isLogined() << " | "
                        << KNimboClientInstance::getAutoLoginUrl(url) << '\n';
    return 0;
}

} // namespace

Q_DECLARE_METATYPE(Save)

class TestDeskhive : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    QString m_statePath = m_env.rootPath() + "/state.json";
    QPointer<INimboClient> m_client;

    // Saves content and returns once the simulator has looked at the file.
    bool save(const QByteArray& content, Save how = Save::Replace)
    {
        QSignalSpy read(m_client.data(), SIGNAL(stateFileRead()));
        if ((how == Save::RemoveFirst || how == Save::Remove) && QFile::exists(m_statePath) &&
            !QFile::remove(m_statePath))
            return false;
        QSaveFile replacing(m_statePath);
        QFile inPlace(m_statePath);
        QFileDevice& file = how == Save::Replace ? static_cast<QFileDevice&>(replacing) : inPlace;
        if (how != Save::Remove && (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
                                    file.write(content) != content.size() ||
                                    (how == Save::Replace && !replacing.commit())))
            return false;
        inPlace.close();
        return read.wait(5000);
    }

private slots:
    void initTestCase()
    {
        qputenv("DESKHIVE_STATE", m_statePath.toUtf8());
        QVERIFY2(KDeskhiveLib::instance()->isLoaded(),
                 qPrintable(KDeskhiveLib::instance()->errorString()));
        m_client = KDeskhiveLib::instance()->nimboClientInstance();
        QVERIFY(m_client);
        QCOMPARE(account(), QString("out||||"));
    }

    // library in addons/deskhive: "-" none, "text" a file that is not a
    // library, else the library to copy there. account: the simulator's
    // state file beside it, or the stand-in client's user information, whose
    // wrapped address is wrapReply. expected starts the probe's answer;
    // "URL" stands for the address it asks for.
    void layouts_data()
    {
        QTest::addColumn<QString>("library");
        QTest::addColumn<QByteArray>("account");
        QTest::addColumn<QString>("wrapReply");
        QTest::addColumn<QString>("expected");

        const auto row = [](const char* tag, const QString& library, const QByteArray& account,
                            const char* wrapReply, const QString& expected) {
            QTest::newRow(tag) << library << account << QString(wrapReply) << expected;
        };
        const QString simulator =
            QCoreApplication::applicationDirPath() + "/addons/deskhive/libdeskhive.so";
        const QString fake = FAKE_DESKHIVE_CLIENT_ONLY;
        const QByteArray in = R"({"IsLogined": true})";
        const char* wrap = "https://wrapped.example/?t=1";
        row("no addons/deskhive folder", "-", in, wrap, "0 | none | 0 | URL");
        row("not a library", "text", in, wrap, "0 | none | 0 | URL");
        row("simulator, state beside it", simulator, signedIn("Ada"), "",
            "1 | dispatch,client,cache,controller | 1 | " + kWrapPrefix);
        row("no NimboClientInstance", FAKE_DESKHIVE_WITHOUT_CLIENT, in, wrap,
            "1 | dispatch,cache,controller | 0 | URL");
        row("signed in", fake, in, wrap, "1 | client | 1 | https://wrapped.example/?t=1");
        row("signed in, empty wrapped address", fake, in, "", "1 | client | 1 | URL");
        row("no IsLogined", fake, R"({"Name": "F"})", wrap, "1 | client | 0 | URL");
        row("empty object", fake, "{}", wrap, "1 | client | 0 | URL");
        row("IsLogined as text", fake, R"({"IsLogined": "true"})", wrap, "1 | client | 0 | URL");
        row("reply is an array", fake, "[true]", wrap, "1 | client | 0 | URL");
        row("no reply", fake, "", wrap, "1 | client | 0 | URL");
    }

    void layouts()
    {
        QFETCH(QString, library);
        QFETCH(QByteArray, account);
        QFETCH(QString, wrapReply);
        QFETCH(QString, expected);

        const KTestAppDir app(m_env.rootPath());
        const QString self = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
        const QString target = "addons/deskhive/libdeskhive.so";
        QFile file(library);
        QVERIFY(app.installExecutable(self));
        if (library == "text")
            QVERIFY(app.writeFile(target, "not a library\n"));
        else if (library != "-")
            QVERIFY(file.open(QIODevice::ReadOnly) && app.writeFile(target, file.readAll()) &&
                    app.writeFile("addons/deskhive/state.json", account));
        QProcessEnvironment env;
        env.insert("DESKHIVE_STATE", ""); // the state file beside the library
        env.insert("FAKE_NIMBO_USERINFO", account);
        env.insert("FAKE_NIMBO_AUTOLOGIN", wrapReply);
        const QString url = "https://jump.example/personal?x=1";
        const QString out = app.run(self, {"--probe", url}, env).out;
        expected.replace("URL", url);
        QCOMPARE(out.left(expected.size()), expected);
    }

    void userInfoFromStateFile_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("expected"); // "@": the state file's folder
        QTest::addColumn<QString>("warning");

        const QByteArray company =
            R"(, "UserAvatarImagePath": "/p/a.png", "IsCompanyAccount": true)";
        QTest::newRow("signed in") << signedIn("Ada", company) << "in|Ada|id-Ada|/p/a.png|company"
                                   << "";
        QTest::newRow("relative avatar")
            << signedIn("Ada", R"(, "UserAvatarImagePath": "img/../a.png")")
            << "in|Ada|id-Ada|@/a.png|"
            << "";
        QTest::newRow("non-ASCII name") << signedIn("Zoë 张") << "in|Zoë 张|id-Zoë 张||"
                                        << "";
        QTest::newRow("signed out keeps no user")
            << QByteArray(R"({"IsLogined": false, "Name": "Ada", "IsCompanyAccount": true})")
            << "out||||"
            << "";
        QTest::newRow("flag as text")
            << QByteArray(R"({"IsLogined": "true", "Name": "Ada"})") << "out||||"
            << "";
        QTest::newRow("malformed") << QByteArray(R"({"IsLogined": true,)") << "out||||"
                                   << "is not valid JSON";
        QTest::newRow("array") << QByteArray("[1]") << "out||||"
                               << "not hold a JSON object";
        QTest::newRow("deep nesting") << QByteArray(5000, '[') << "out||||"
                                      << "is not valid JSON";
    }

    void userInfoFromStateFile()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, expected);
        QFETCH(QString, warning);

        // From a known, different account, so every row is a real change.
        QVERIFY(save(signedIn("Previous")));
        KWarningCatcher catcher;
        QVERIFY(save(content));
        QCOMPARE(account(), expected.replace('@', m_env.rootPath()));
        const QStringList warnings = catcher.warnings();
        QCOMPARE(warnings.size(), warning.isEmpty() ? 0 : 1);
        QVERIFY(warning.isEmpty() ||
                (warnings[0].contains(warning) && warnings[0].contains(m_statePath)));
    }

    void signalsFollowTheFile_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after"); // empty: the file is removed
        QTest::addColumn<int>("loginChanges");
        QTest::addColumn<int>("infoChanges");

        const QByteArray out = R"({"IsLogined": false})";
        const QByteArray ada = signedIn("Ada");
        QTest::newRow("sign in") << out << ada << 1 << 1;
        QTest::newRow("sign out") << ada << out << 1 << 1;
        QTest::newRow("other user") << ada << signedIn("Bob") << 0 << 1;
        QTest::newRow("new avatar")
            << ada << signedIn("Ada", R"(, "UserAvatarImagePath": "/b.png")") << 0 << 1;
        QTest::newRow("same account, other layout") << ada << "\n  " + ada + "\n" << 0 << 0;
        QTest::newRow("signed out, other leftovers")
            << out << QByteArray(R"({"IsLogined": false, "Name": "Gone"})") << 0 << 0;
        QTest::newRow("file breaks") << ada << QByteArray("{") << 1 << 1;
        QTest::newRow("file removed") << ada << QByteArray() << 1 << 1;
    }

    void signalsFollowTheFile()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QFETCH(int, loginChanges);
        QFETCH(int, infoChanges);

        KWarningCatcher quiet;
        QVERIFY(save(before));
        QSignalSpy login(m_client.data(), SIGNAL(LoginStatusChange()));
        QSignalSpy info(m_client.data(), SIGNAL(UserInfoChange()));
        QVERIFY(save(after, after.isEmpty() ? Save::Remove : Save::Replace));
        QCOMPARE(login.count(), loginChanges);
        QCOMPARE(info.count(), infoChanges);
    }

    // The second save is seen however the first one left the file.
    void editorSaves_data()
    {
        QTest::addColumn<Save>("first");
        QTest::addColumn<Save>("second");

        const QList<QPair<Save, const char*>> ways = {
            {Save::Replace, "replace"}, {Save::InPlace, "in place"}, {Save::RemoveFirst, "remove"}};
        for (const auto& first : ways) {
            for (const auto& second : ways)
                QTest::addRow("%s, then %s", first.second, second.second)
                    << first.first << second.first;
        }
    }

    void editorSaves()
    {
        QFETCH(Save, first);
        QFETCH(Save, second);

        QVERIFY(save(signedIn("First"), first));
        QCOMPARE(account(), QString("in|First|id-First||"));
        QVERIFY(save(signedIn("Second"), second));
        QCOMPARE(account(), QString("in|Second|id-Second||"));
    }

    void errorSignalsFromTheFile_data()
    {
        QTest::addColumn<QString>("request");
        QTest::addColumn<QString>("raised"); // signal and argument, if any

        QTest::newRow("launch failure") << "failedToLaunchCloudsvrProcess"
                                        << "failedToLaunchCloudsvrProcess()";
        QTest::newRow("service exit") << "cloudsvrExitWithErrors:code: 7"
                                      << "cloudsvrExitWithErrors(QString) code: 7";
        QTest::newRow("no message") << "cloudsvrExitWithErrors"
                                    << "cloudsvrExitWithErrors(QString)";
        QTest::newRow("ipc error") << "occurIpcErrorsWhenGetUserInf"
                                   << "occurIpcErrorsWhenGetUserInf()";
        QTest::newRow("rpc error") << "occurRpcErrorsWhenGetUserInf"
                                   << "occurRpcErrorsWhenGetUserInf()";
        QTest::newRow("unknown signal") << "nope"
                                        << "";
    }

    void errorSignalsFromTheFile()
    {
        QFETCH(QString, request);
        QFETCH(QString, raised);

        QObject* cache = KDeskhiveLib::instance()->liveStateUpdateCacheInstance();
        QSignalSpy launch(m_client.data(), SIGNAL(failedToLaunchCloudsvrProcess()));
        QSignalSpy exit(m_client.data(), SIGNAL(cloudsvrExitWithErrors(QString)));
        QSignalSpy ipc(cache, SIGNAL(occurIpcErrorsWhenGetUserInf()));
        QSignalSpy rpc(cache, SIGNAL(occurRpcErrorsWhenGetUserInf()));
        const auto seen = [&] {
            QStringList names;
            for (QSignalSpy* spy : {&launch, &exit, &ipc, &rpc}) {
                for (const QList<QVariant>& arguments : *spy)
                    names << (spy->signal() + ' ' + arguments.value(0).toString()).trimmed();
            }
            return names;
        };
        const QStringList once = raised.isEmpty() ? QStringList() : QStringList(raised);

        // A value that is no name at all is passed over like an unknown name.
        const QByteArray emitList = ", \"emit\": [5, \"" + request.toUtf8() + "\"]";
        KWarningCatcher catcher;
        QVERIFY(save(signedIn("Ada", emitList)));
        QCOMPARE(seen(), once);
        QCOMPARE(catcher.warnings().size(), raised.isEmpty() ? 2 : 1);
        QCOMPARE(account(), QString("in|Ada|id-Ada||"));
        // Once per change: the same content again raises nothing, another
        // change with the same request raises it again.
        QVERIFY(save(signedIn("Ada", emitList), Save::InPlace));
        QCOMPARE(seen(), once);
        QVERIFY(save(signedIn("Bob", emitList)));
        QCOMPARE(seen(), once + once);
    }
};

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--probe") == 0)
        return probe(QString::fromUtf8(argv[2]));
    TestDeskhive test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_deskhive.moc"
