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
#include <QUrlQuery>
#include <QtTest>

namespace {

enum class Save { Replace, InPlace, RemoveFirst, Remove };

const QString kWrapPrefix = "https://account.zentooffice.example/autologin?token=";

QString text(const Json::Value& info, const char* key)
{
    return info.isObject() && info[key].isString() ? QString::fromStdString(info[key].asString())
                                                   : QStringLiteral("<missing>");
}

QByteArray signedIn(const QByteArray& name, const QByteArray& more = QByteArray())
{
    return "{\"IsLogined\": true, \"Id\": \"id-" + name + "\", \"Name\": \"" + name + '"' + more +
           '}';
}

// What a copy of this program finds beside itself, one answer a line.
int probe(const QString& url)
{
    const KDeskhiveLib& lib = *KDeskhiveLib::instance();
    const QObject* objects[] = {lib.localPushMessageDispatchInstance(), lib.nimboClientInstance(),
                                lib.liveStateUpdateCacheInstance(), lib.deskhivePluginController()};
    const QStringList names{"dispatch", "client", "cache", "controller"};
    QStringList present;
    for (int i = 0; i < names.size(); ++i) {
        if (objects[i])
            present << names[i];
    }
    QTextStream(stdout) << lib.isLoaded() << '\n'
                        << present.join(' ') << '\n'
                        << KNimboClientInstance::isLogined() << '\n'
                        << KNimboClientInstance::getAutoLoginUrl(url) << '\n'
                        << lib.fileName() << '\n'
                        << lib.errorString().simplified() << '\n';
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

    QJsonObject fileOnDisk() const
    {
        QFile file(m_statePath);
        return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                              : QJsonObject();
    }

private slots:
    void initTestCase()
    {
        qputenv("DESKHIVE_STATE", m_statePath.toUtf8());
        QVERIFY2(KDeskhiveLib::instance()->isLoaded(),
                 qPrintable(KDeskhiveLib::instance()->errorString()));
        m_client = KDeskhiveLib::instance()->nimboClientInstance();
        QVERIFY(m_client);
        QVERIFY(!KNimboClientInstance::isLogined());
    }

    // library in addons/deskhive: "-" no folder, "" an empty one, "text" a
    // file that is not a library, else the library to copy there. account:
    // the simulator's state file beside it, or the stand-in client's user
    // information, whose wrapped address is wrapReply.
    void layouts_data()
    {
        QTest::addColumn<QString>("library");
        QTest::addColumn<QByteArray>("account");
        QTest::addColumn<QString>("wrapReply");
        QTest::addColumn<QString>("objects");
        QTest::addColumn<bool>("logined");
        QTest::addColumn<bool>("wrapped");

        const auto row = [](const char* tag, const QString& library, const QByteArray& account,
                            const QString& wrapReply, const char* objects, bool logined) {
            QTest::newRow(tag) << library << account << wrapReply << QString(objects) << logined
                               << (logined && !wrapReply.isEmpty());
        };
        const QString simulator =
            QCoreApplication::applicationDirPath() + "/addons/deskhive/libdeskhive.so";
        const QString fake = FAKE_DESKHIVE_CLIENT_ONLY;
        const QByteArray in = R"({"IsLogined": true})";
        const QString wrap = "https://wrapped.example/auto?t=1";
        row("no addons/deskhive folder", "-", in, wrap, "", false);
        row("empty addons/deskhive folder", "", in, wrap, "", false);
        row("a file that is not a library", "text", in, wrap, "", false);
        row("simulator, state beside it", simulator, signedIn("Ada"), kWrapPrefix,
            "dispatch client cache controller", true);
        row("no NimboClientInstance", FAKE_DESKHIVE_WITHOUT_CLIENT, in, wrap,
            "dispatch cache controller", false);
        row("signed in", fake, in, wrap, "client", true);
        row("signed in, empty wrapped address", fake, in, "", "client", true);
        row("no IsLogined", fake, R"({"Name": "F", "Id": "1"})", wrap, "client", false);
        row("empty object", fake, "{}", wrap, "client", false);
        row("IsLogined false", fake, R"({"IsLogined": false})", wrap, "client", false);
        row("IsLogined as text", fake, R"({"IsLogined": "true"})", wrap, "client", false);
        row("IsLogined as 1", fake, R"({"IsLogined": 1})", wrap, "client", true);
        row("reply is an array", fake, "[true]", wrap, "client", false);
        row("no reply", fake, "", wrap, "client", false);
    }

    void layouts()
    {
        QFETCH(QString, library);
        QFETCH(QByteArray, account);
        QFETCH(QString, wrapReply);
        QFETCH(QString, objects);
        QFETCH(bool, logined);
        QFETCH(bool, wrapped);

        const KTestAppDir app(m_env.rootPath());
        const QString self = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
        QVERIFY(app.installExecutable(self));
        QFile file(library);
        const QString target = "addons/deskhive/libdeskhive.so";
        if (library == "" || library == "text")
            QVERIFY(library == "" ? QDir().mkpath(app.filePath("addons/deskhive"))
                                  : app.writeFile(target, "not a library\n"));
        else if (library != "-")
            QVERIFY(file.open(QIODevice::ReadOnly) && app.writeFile(target, file.readAll()) &&
                    app.writeFile("addons/deskhive/state.json", account));
        QProcessEnvironment env;
        env.insert("DESKHIVE_STATE", ""); // the state file beside the library
        env.insert("FAKE_NIMBO_USERINFO", account);
        env.insert("FAKE_NIMBO_AUTOLOGIN", wrapReply);
        const QString url = "https://jump.example/personal?x=1";
        const KTestAppDir::Result run = app.run(self, {"--probe", url}, env);
        const QStringList out = run.out.split('\n');
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(out.mid(0, 3),
                 QStringList({objects.isEmpty() ? "0" : "1", objects, logined ? "1" : "0"}));
        const QString address = out.value(3);
        QVERIFY2(wrapped ? address.startsWith(wrapReply) && address != url : address == url,
                 qPrintable(address));
        // The handle exists exactly when the folder does, on the folder's
        // absolute path; failing to load says why.
        QCOMPARE(out.value(4).startsWith(app.filePath("addons/deskhive/")), library != "-");
        QCOMPARE(out.value(5).isEmpty(), !objects.isEmpty() || library == "-");
    }

    void userInfoFromStateFile_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("logined");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("avatar"); // "@": the state file's folder
        QTest::addColumn<bool>("company");
        QTest::addColumn<QString>("warning");

        const auto row = [](const char* tag, const QByteArray& content, bool logined,
                            const QString& name = QString(), const QString& avatar = QString(),
                            bool company = false, const QString& warning = QString()) {
            QTest::newRow(tag) << content << logined << name << avatar << company << warning;
        };
        row("signed in",
            signedIn("Ada", R"(, "UserAvatarImagePath": "/p/a.png", "IsCompanyAccount": true)"),
            true, "Ada", "/p/a.png", true);
        row("relative avatar", signedIn("Ada", R"(, "UserAvatarImagePath": "img/../a.png")"), true,
            "Ada", "@/a.png");
        row("non-ASCII name", signedIn("Zoë 张"), true, "Zoë 张");
        row("members of the wrong type",
            R"({"IsLogined": true, "Name": 5, "Id": "id-", "IsCompanyAccount": 1})", true);
        row("signed out keeps no user",
            R"({"IsLogined": false, "Name": "Ada", "IsCompanyAccount": true})", false);
        row("flag as text", R"({"IsLogined": "true", "Name": "Ada"})", false);
        row("empty file", "", false);
        row("malformed", R"({"IsLogined": true,)", false, "", "", false, "is not valid JSON");
        row("array", "[1]", false, "", "", false, "not hold a JSON object");
        row("deep nesting", QByteArray(5000, '['), false, "", "", false, "is not valid JSON");
    }

    void userInfoFromStateFile()
    {
        QFETCH(QByteArray, content);
        QFETCH(bool, logined);
        QFETCH(QString, name);
        QFETCH(QString, avatar);
        QFETCH(bool, company);
        QFETCH(QString, warning);

        // From a known, different account, so every row is a real change.
        QVERIFY(save(signedIn("Previous")));
        KWarningCatcher catcher;
        QVERIFY(save(content));

        const Json::Value info = KNimboClientInstance::userInfo();
        QCOMPARE(KNimboClientInstance::isLogined(), logined);
        QCOMPARE(text(info, "Name"), name);
        QCOMPARE(text(info, "Id"), logined ? "id-" + name : QString());
        QCOMPARE(text(info, "UserAvatarImagePath"), avatar.replace('@', m_env.rootPath()));
        QCOMPARE(info["IsCompanyAccount"].asBool(), company);
        const QStringList warnings = catcher.warnings();
        QCOMPARE(warnings.size(), warning.isEmpty() ? 0 : 1);
        QVERIFY(warning.isEmpty() ||
                (warnings[0].contains(warning) && warnings[0].contains(m_statePath)));
    }

    void malformedWarnsOncePerContent()
    {
        QVERIFY(save(signedIn("Ada")));
        KWarningCatcher catcher;
        QVERIFY(save("{oops", Save::InPlace));
        QVERIFY(save("{oops", Save::Replace));
        QCOMPARE(catcher.warnings().size(), 1);
        QVERIFY(save("{oops!", Save::InPlace));
        QCOMPARE(catcher.warnings().size(), 2);
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
        QCOMPARE(text(KNimboClientInstance::userInfo(), "Name"), QString("First"));
        QVERIFY(save(signedIn("Second"), second));
        QCOMPARE(text(KNimboClientInstance::userInfo(), "Name"), QString("Second"));
    }

    void errorSignalsFromTheFile_data()
    {
        QTest::addColumn<QString>("request");
        QTest::addColumn<int>("raised"); // index into the signals below, -1 none
        QTest::addColumn<QString>("message");

        QTest::newRow("launch failure") << "failedToLaunchCloudsvrProcess" << 0 << "";
        QTest::newRow("service exit") << "cloudsvrExitWithErrors:code: 7" << 1 << "code: 7";
        QTest::newRow("no message") << "cloudsvrExitWithErrors" << 1 << "";
        QTest::newRow("ipc error") << "occurIpcErrorsWhenGetUserInf" << 2 << "";
        QTest::newRow("rpc error") << "occurRpcErrorsWhenGetUserInf" << 3 << "";
        QTest::newRow("unknown signal") << "nope" << -1 << "";
    }

    void errorSignalsFromTheFile()
    {
        QFETCH(QString, request);
        QFETCH(int, raised);
        QFETCH(QString, message);

        QObject* cache = KDeskhiveLib::instance()->liveStateUpdateCacheInstance();
        QSignalSpy launch(m_client.data(), SIGNAL(failedToLaunchCloudsvrProcess()));
        QSignalSpy exit(m_client.data(), SIGNAL(cloudsvrExitWithErrors(QString)));
        QSignalSpy ipc(cache, SIGNAL(occurIpcErrorsWhenGetUserInf()));
        QSignalSpy rpc(cache, SIGNAL(occurRpcErrorsWhenGetUserInf()));
        const auto counts = [&] {
            return QList<int>{launch.count(), exit.count(), ipc.count(), rpc.count()};
        };
        const auto raisedTimes = [&](int times) {
            QList<int> n{0, 0, 0, 0};
            if (raised >= 0)
                n[raised] = times;
            return n;
        };

        // A value that is no name at all is passed over like an unknown name.
        const QByteArray emitList = ", \"emit\": [5, \"" + request.toUtf8() + "\"]";
        KWarningCatcher catcher;
        QVERIFY(save(signedIn("Ada", emitList)));
        QCOMPARE(counts(), raisedTimes(1));
        QCOMPARE(catcher.warnings().size(), raised < 0 ? 2 : 1);
        QVERIFY(KNimboClientInstance::isLogined());
        QCOMPARE(exit.value(0).value(0).toString(), message);
        // Once per change: the same content again raises nothing, another
        // change with the same request raises it again.
        QVERIFY(save(signedIn("Ada", emitList), Save::InPlace));
        QCOMPARE(counts(), raisedTimes(1));
        QVERIFY(save(signedIn("Bob", emitList)));
        QCOMPARE(counts(), raisedTimes(2));
    }

    void loginAndLogoutWriteTheFile()
    {
        QVERIFY(save(R"({"IsLogined": false})"));
        QSignalSpy login(m_client.data(), SIGNAL(LoginStatusChange()));
        QSignalSpy info(m_client.data(), SIGNAL(UserInfoChange()));
        m_client->login(QVariant());
        QVERIFY(KNimboClientInstance::isLogined());
        QCOMPARE(text(KNimboClientInstance::userInfo(), "Name"), QString("Demo User"));
        QCOMPARE(fileOnDisk().value("Name").toString(), QString("Demo User"));
        // The simulator's own write is not news when it reads the file back.
        QSignalSpy read(m_client.data(), SIGNAL(stateFileRead()));
        QVERIFY(read.wait(5000));
        QCOMPARE(login.count() + info.count(), 2);

        m_client->logout();
        QVERIFY(!KNimboClientInstance::isLogined());
        QCOMPARE(login.count(), 2);
        QCOMPARE(fileOnDisk().value("IsLogined").toBool(true), false);
    }

    void autoLoginAddress_data()
    {
        QTest::addColumn<QString>("url");
        QTest::newRow("plain") << "https://centre.example/personal";
        QTest::newRow("like the wrapper's own query") << "https://c.example/?token=x&target=y#f";
        QTest::newRow("escaped and non-ASCII") << QString::fromUtf8("https://c.example/a%20b/ü 张");
    }

    void autoLoginAddress()
    {
        QFETCH(QString, url);

        const auto wrap = [&](const QByteArray& state) {
            QString wrapped = "stale";
            if (save(state))
                m_client->getAutoLoginUrl(url, wrapped);
            return wrapped;
        };
        const QString ada = wrap(signedIn("Ada"));
        QVERIFY2(ada.startsWith(kWrapPrefix), qPrintable(ada));
        QCOMPARE(QUrlQuery(QUrl(ada)).queryItemValue("target", QUrl::FullyDecoded), url);
        QCOMPARE(KNimboClientInstance::getAutoLoginUrl(url), ada);
        // The token tells users apart and stays the same for one user.
        QVERIFY(wrap(signedIn("Bob")) != ada);
        QCOMPARE(wrap(signedIn("Ada")), ada);
        // Nobody signed in: no wrapped address, the address unchanged.
        QCOMPARE(wrap(R"({"IsLogined": false})"), QString());
        QCOMPARE(KNimboClientInstance::getAutoLoginUrl(url), url);
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
