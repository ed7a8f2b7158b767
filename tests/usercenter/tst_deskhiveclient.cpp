// The cloud client as the plug-in reaches it: the simulator beside this
// executable, loaded through KDeskhiveLib, its account driven by a state
// file in a temporary folder, its signals connected by signature.

#include "ktestenvironment.h"
#include "kwarningcatcher.h"

#include "usercenter/kdeskhivelib.h"
#include "usercenter/knimboclientinstance.h"

#include <deskhive/livestateupdatecache.h>
#include <deskhive/nimboclient.h>

#include <QDir>
#include <QFile>
#include <QPointer>
#include <QSaveFile>
#include <QUrlQuery>
#include <QtTest>

#include <json/value.h>

namespace {

enum class Save { Replace, InPlace, RemoveFirst };

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

} // namespace

Q_DECLARE_METATYPE(Save)

// Stands for a widget that listens the way the user-centre button does.
class KSlotCounter : public QObject
{
    Q_OBJECT

public:
    int calls = 0;

public slots:
    void onLoginStatusChanged() { ++calls; }
};

class TestDeskhiveClient : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    QString m_statePath;
    QPointer<INimboClient> m_client;

    // Saves content and returns once the simulator has looked at the file.
    bool save(const QByteArray& content, Save how = Save::Replace)
    {
        QSignalSpy read(m_client.data(), SIGNAL(stateFileRead()));
        if (how == Save::RemoveFirst && QFile::exists(m_statePath) && !QFile::remove(m_statePath))
            return false;
        if (how == Save::Replace) {
            QSaveFile file(m_statePath);
            if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() ||
                !file.commit())
                return false;
        } else {
            QFile file(m_statePath);
            if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
                file.write(content) != content.size())
                return false;
        }
        return read.wait(5000);
    }

    bool removeState()
    {
        QSignalSpy read(m_client.data(), SIGNAL(stateFileRead()));
        return QFile::remove(m_statePath) && read.wait(5000);
    }

    Json::Value fileOnDisk() const
    {
        QFile file(m_statePath);
        if (!file.open(QIODevice::ReadOnly))
            return Json::Value();
        const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
        Json::Value value(Json::objectValue);
        value["IsLogined"] = object.value("IsLogined").toBool();
        value["Name"] = object.value("Name").toString().toStdString();
        return value;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_env.isValid());
        const QString dir = m_env.rootPath() + "/deskhive";
        QVERIFY(QDir().mkpath(dir));
        m_statePath = dir + "/state.json";
        qputenv("DESKHIVE_STATE", m_statePath.toUtf8());

        QVERIFY2(KDeskhiveLib::instance()->isLoaded(),
                 qPrintable(KDeskhiveLib::instance()->errorString()));
        m_client = KDeskhiveLib::instance()->nimboClientInstance();
        QVERIFY(m_client);
        QVERIFY(!KNimboClientInstance::isLogined());
    }

    void objectsShareTheInterfaceMetaObjects_data()
    {
        QTest::addColumn<QString>("object");
        QTest::addColumn<QString>("signal");

        QTest::newRow("login status") << "client"
                                      << "LoginStatusChange()";
        QTest::newRow("user info") << "client"
                                   << "UserInfoChange()";
        QTest::newRow("launch failure") << "client"
                                        << "failedToLaunchCloudsvrProcess()";
        QTest::newRow("service errors") << "client"
                                        << "cloudsvrExitWithErrors(QString)";
        QTest::newRow("ipc errors") << "cache"
                                    << "occurIpcErrorsWhenGetUserInf()";
        QTest::newRow("rpc errors") << "cache"
                                    << "occurRpcErrorsWhenGetUserInf()";
    }

    void objectsShareTheInterfaceMetaObjects()
    {
        QFETCH(QString, object);
        QFETCH(QString, signal);

        KDeskhiveLib* lib = KDeskhiveLib::instance();
        QVERIFY(lib->localPushMessageDispatchInstance());
        QVERIFY(lib->deskhivePluginController());
        QCOMPARE(lib->nimboClientInstance(), m_client.data());

        QObject* target = object == "client" ? static_cast<QObject*>(lib->nimboClientInstance())
                                             : lib->liveStateUpdateCacheInstance();
        QVERIFY(target);
        // One meta-object per interface class in the process: casts work on
        // objects made by the other library, and signatures are found.
        if (object == "client")
            QCOMPARE(qobject_cast<INimboClient*>(target), m_client.data());
        else
            QVERIFY(qobject_cast<ILiveStateUpdateCache*>(target));
        QVERIFY(target->metaObject()->indexOfSignal(qPrintable(signal)) >= 0);
    }

    void userInfoFromStateFile_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("logined");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("avatar");
        QTest::addColumn<bool>("company");
        QTest::addColumn<QString>("warning");

        // "@" in avatar stands for the state file's folder.
        QTest::newRow("signed in")
            << signedIn("Ada", R"(, "UserAvatarImagePath": "/pics/a.png")") << true << "Ada"
            << "/pics/a.png" << false << "";
        QTest::newRow("relative avatar beside the state")
            << signedIn("Ada", R"(, "UserAvatarImagePath": "img/../a.png")") << true << "Ada"
            << "@/a.png" << false << "";
        QTest::newRow("company account")
            << signedIn("Co", R"(, "IsCompanyAccount": true)") << true << "Co"
            << "" << true << "";
        QTest::newRow("non-ASCII name") << signedIn("Zoë 张") << true << "Zoë 张"
                                        << "" << false << "";
        QTest::newRow("name of the wrong type")
            << QByteArray(R"({"IsLogined": true, "Name": 5, "Id": "id-"})") << true << ""
            << "" << false << "";
        QTest::newRow("signed out keeps no user")
            << QByteArray(R"({"IsLogined": false, "Name": "Ada", "IsCompanyAccount": true})")
            << false << ""
            << "" << false << "";
        QTest::newRow("flag as text")
            << QByteArray(R"({"IsLogined": "true", "Name": "Ada"})") << false << ""
            << "" << false << "";
        QTest::newRow("no flag") << QByteArray(R"({"Name": "Ada"})") << false << ""
                                 << "" << false << "";
        QTest::newRow("empty file") << QByteArray() << false << ""
                                    << "" << false << "";
        QTest::newRow("malformed") << QByteArray(R"({"IsLogined": true,)") << false << ""
                                   << "" << false << "is not valid JSON";
        QTest::newRow("array") << QByteArray("[1, 2]") << false << ""
                               << "" << false << "does not hold a JSON object";
        QTest::newRow("deep nesting") << QByteArray(5000, '[') << false << ""
                                      << "" << false << "is not valid JSON";
        QTest::newRow("binary") << QByteArray("\x00\xff\xfe{", 4) << false << ""
                                << "" << false << "is not valid JSON";
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
        QVERIFY(info.isObject());
        QCOMPARE(info["IsLogined"].asBool(), logined);
        QCOMPARE(KNimboClientInstance::isLogined(), logined);
        QCOMPARE(text(info, "Name"), name);
        // Rows that sign in name the user "id-<name>"; nobody signed in has no id.
        QCOMPARE(text(info, "Id"), logined ? "id-" + name : QString());
        QCOMPARE(text(info, "UserAvatarImagePath"),
                 avatar.replace('@', QFileInfo(m_statePath).absolutePath()));
        QCOMPARE(info["IsCompanyAccount"].asBool(), company);

        const QStringList warnings = catcher.warnings();
        if (warning.isEmpty()) {
            QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
        } else {
            QCOMPARE(warnings.size(), 1);
            QVERIFY2(warnings[0].contains(warning) && warnings[0].contains(m_statePath),
                     qPrintable(warnings[0]));
        }
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
        QVERIFY(!KNimboClientInstance::isLogined());
    }

    void signalsFollowTheFile_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<int>("loginChanges");
        QTest::addColumn<int>("infoChanges");

        const QByteArray out = R"({"IsLogined": false})";
        QTest::newRow("sign in") << out << signedIn("Ada") << 1 << 1;
        QTest::newRow("sign out") << signedIn("Ada") << out << 1 << 1;
        QTest::newRow("other user") << signedIn("Ada") << signedIn("Bob") << 0 << 1;
        QTest::newRow("new avatar")
            << signedIn("Ada") << signedIn("Ada", R"(, "UserAvatarImagePath": "/b.png")") << 0 << 1;
        QTest::newRow("becomes a company account")
            << signedIn("Ada") << signedIn("Ada", R"(, "IsCompanyAccount": true)") << 0 << 1;
        QTest::newRow("same account, other layout")
            << signedIn("Ada") << "\n  " + signedIn("Ada") + "\n"
            << 0 << 0;
        QTest::newRow("signed out, other leftovers")
            << out << QByteArray(R"({"IsLogined": false, "Name": "Gone"})") << 0 << 0;
        QTest::newRow("file breaks") << signedIn("Ada") << QByteArray("{") << 1 << 1;
        QTest::newRow("file removed") << signedIn("Ada") << QByteArray("<removed>") << 1 << 1;
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
        QVERIFY(after == "<removed>" ? removeState() : save(after));
        QCOMPARE(login.count(), loginChanges);
        QCOMPARE(info.count(), infoChanges);
    }

    void queuedSlotSeesTheNewAccount()
    {
        QVERIFY(save(R"({"IsLogined": false})"));
        KSlotCounter counter;
        bool loginedInSlot = false;
        QVERIFY(connect(m_client.data(), SIGNAL(LoginStatusChange()), &counter,
                        SLOT(onLoginStatusChanged()), Qt::QueuedConnection));
        QVERIFY(connect(m_client.data(), SIGNAL(UserInfoChange()), &counter,
                        SLOT(onLoginStatusChanged()), Qt::QueuedConnection));
        connect(m_client.data(), &INimboClient::UserInfoChange, &counter,
                [&] { loginedInSlot = KNimboClientInstance::isLogined(); });

        QVERIFY(save(signedIn("Ada")));
        QTRY_COMPARE(counter.calls, 2);
        QVERIFY(loginedInSlot);
        QCOMPARE(text(KNimboClientInstance::userInfo(), "Name"), QString("Ada"));
    }

    void editorSaves_data()
    {
        QTest::addColumn<Save>("first");
        QTest::addColumn<Save>("second");

        const QList<QPair<Save, const char*>> ways = {
            {Save::Replace, "replace"},
            {Save::InPlace, "in place"},
            {Save::RemoveFirst, "remove and create"},
        };
        for (const auto& first : ways)
            for (const auto& second : ways)
                QTest::addRow("%s, then %s", first.second, second.second)
                    << first.first << second.first;
    }

    void editorSaves()
    {
        QFETCH(Save, first);
        QFETCH(Save, second);

        // The second save is seen however the first one left the file.
        QVERIFY(save(signedIn("First"), first));
        QCOMPARE(text(KNimboClientInstance::userInfo(), "Name"), QString("First"));
        QVERIFY(save(signedIn("Second"), second));
        QCOMPARE(text(KNimboClientInstance::userInfo(), "Name"), QString("Second"));
    }

    void errorSignalsFromTheFile_data()
    {
        QTest::addColumn<QString>("request");
        QTest::addColumn<QString>("object");
        QTest::addColumn<QString>("signal");
        QTest::addColumn<QString>("message");

        QTest::newRow("launch failure") << "failedToLaunchCloudsvrProcess"
                                        << "client"
                                        << "failedToLaunchCloudsvrProcess()"
                                        << "";
        QTest::newRow("service exit with message") << "cloudsvrExitWithErrors:disk full"
                                                   << "client"
                                                   << "cloudsvrExitWithErrors(QString)"
                                                   << "disk full";
        QTest::newRow("message with a colon") << "cloudsvrExitWithErrors:code: 7"
                                              << "client"
                                              << "cloudsvrExitWithErrors(QString)"
                                              << "code: 7";
        QTest::newRow("service exit without message") << "cloudsvrExitWithErrors"
                                                      << "client"
                                                      << "cloudsvrExitWithErrors(QString)"
                                                      << "";
        QTest::newRow("ipc error") << "occurIpcErrorsWhenGetUserInf"
                                   << "cache"
                                   << "occurIpcErrorsWhenGetUserInf()"
                                   << "";
        QTest::newRow("rpc error") << "occurRpcErrorsWhenGetUserInf"
                                   << "cache"
                                   << "occurRpcErrorsWhenGetUserInf()"
                                   << "";
    }

    void errorSignalsFromTheFile()
    {
        QFETCH(QString, request);
        QFETCH(QString, object);
        QFETCH(QString, signal);
        QFETCH(QString, message);

        QObject* client = m_client.data();
        QObject* cache = KDeskhiveLib::instance()->liveStateUpdateCacheInstance();
        QVERIFY(cache);
        struct Watched
        {
            QObject* object;
            const char* signal;
        };
        const Watched all[] = {
            {client, SIGNAL(failedToLaunchCloudsvrProcess())},
            {client, SIGNAL(cloudsvrExitWithErrors(QString))},
            {cache, SIGNAL(occurIpcErrorsWhenGetUserInf())},
            {cache, SIGNAL(occurRpcErrorsWhenGetUserInf())},
        };
        QList<QSharedPointer<QSignalSpy>> spies;
        QSharedPointer<QSignalSpy> wanted;
        for (const Watched& w : all) {
            spies << QSharedPointer<QSignalSpy>::create(w.object, w.signal);
            if (w.object == (object == "client" ? client : cache) &&
                QByteArray(w.signal).mid(1) == signal.toLatin1())
                wanted = spies.last();
        }
        QVERIFY(wanted);

        const QByteArray content = signedIn("Ada", ", \"emit\": [\"" + request.toUtf8() + "\"]");
        QVERIFY(save(content));
        QCOMPARE(wanted->count(), 1);
        if (signal.contains("QString"))
            QCOMPARE(wanted->at(0).at(0).toString(), message);
        for (const auto& spy : spies)
            QCOMPARE(spy->count(), spy == wanted ? 1 : 0);

        // Once per change: saving the same content again raises nothing,
        // another change with the same request raises it again.
        QVERIFY(save(content, Save::InPlace));
        QCOMPARE(wanted->count(), 1);
        QVERIFY(save(signedIn("Bob", ", \"emit\": [\"" + request.toUtf8() + "\"]")));
        QCOMPARE(wanted->count(), 2);
    }

    void unknownRequestsAreReported()
    {
        KWarningCatcher catcher;
        QSignalSpy failed(m_client.data(), SIGNAL(failedToLaunchCloudsvrProcess()));
        QVERIFY(save(
            signedIn("Ada", R"(, "emit": ["noSuchSignal", 5, "failedToLaunchCloudsvrProcess"])")));
        QCOMPARE(failed.count(), 1);
        QCOMPARE(catcher.warnings().size(), 2);
        QVERIFY(catcher.warnings().join('\n').contains("noSuchSignal"));
        QVERIFY(KNimboClientInstance::isLogined());
    }

    void loginAndLogoutWriteTheFile()
    {
        QVERIFY(save(R"({"IsLogined": false})"));
        QSignalSpy login(m_client.data(), SIGNAL(LoginStatusChange()));
        QSignalSpy info(m_client.data(), SIGNAL(UserInfoChange()));

        m_client->login(QVariant());
        QVERIFY(KNimboClientInstance::isLogined());
        QCOMPARE(text(KNimboClientInstance::userInfo(), "Name"), QString("Demo User"));
        QCOMPARE(login.count(), 1);
        QCOMPARE(info.count(), 1);
        QCOMPARE(fileOnDisk()["IsLogined"].asBool(), true);
        QCOMPARE(QString::fromStdString(fileOnDisk()["Name"].asString()), QString("Demo User"));

        // The simulator's own write is not news when it reads the file back.
        QSignalSpy read(m_client.data(), SIGNAL(stateFileRead()));
        QVERIFY(read.wait(5000));
        QCOMPARE(login.count(), 1);
        QCOMPARE(info.count(), 1);

        m_client->logout();
        QVERIFY(!KNimboClientInstance::isLogined());
        QCOMPARE(login.count(), 2);
        QCOMPARE(fileOnDisk()["IsLogined"].asBool(), false);
    }

    void autoLoginAddress_data()
    {
        QTest::addColumn<QString>("url");

        QTest::newRow("plain") << "https://centre.example/personal";
        QTest::newRow("query and fragment") << "https://centre.example/p?a=1&b=2#top";
        QTest::newRow("looks like the wrapper's own query")
            << "https://centre.example/?token=x&target=y";
        QTest::newRow("escaped and non-ASCII") << QString::fromUtf8("https://c.example/a%20b/ü 张");
        QTest::newRow("not an address") << "just words";
    }

    void autoLoginAddress()
    {
        QFETCH(QString, url);

        QVERIFY(save(signedIn("Ada")));
        QString wrapped = "stale";
        m_client->getAutoLoginUrl(url, wrapped);
        QVERIFY2(wrapped.startsWith("https://account.zentooffice.example/autologin?token="),
                 qPrintable(wrapped));
        const QUrlQuery query{QUrl(wrapped)};
        QCOMPARE(query.queryItemValue("target", QUrl::FullyDecoded), url);
        QVERIFY(
            QRegularExpression("^[0-9a-f]{16}$").match(query.queryItemValue("token")).hasMatch());
        QCOMPARE(KNimboClientInstance::getAutoLoginUrl(url), wrapped);
    }

    void autoLoginTokenIsPerUser()
    {
        auto token = [this](const QByteArray& user) {
            QString wrapped;
            if (save(signedIn(user)))
                m_client->getAutoLoginUrl("https://c.example/", wrapped);
            return QUrlQuery(QUrl(wrapped)).queryItemValue("token");
        };
        const QString ada = token("Ada");
        QVERIFY(!ada.isEmpty());
        QVERIFY(token("Bob") != ada);
        QCOMPARE(token("Ada"), ada);
    }

    void noAutoLoginAddress_data()
    {
        QTest::addColumn<QByteArray>("state");
        QTest::addColumn<QString>("url");

        QTest::newRow("signed out")
            << QByteArray(R"({"IsLogined": false})") << "https://centre.example/";
        QTest::newRow("no state") << QByteArray() << "https://centre.example/";
        QTest::newRow("signed in, empty address") << signedIn("Ada") << "";
    }

    void noAutoLoginAddress()
    {
        QFETCH(QByteArray, state);
        QFETCH(QString, url);

        QVERIFY(save(state));
        QString wrapped = "stale";
        m_client->getAutoLoginUrl(url, wrapped);
        QCOMPARE(wrapped, QString());
        QCOMPARE(KNimboClientInstance::getAutoLoginUrl(url), url);
    }
};

QTEST_GUILESS_MAIN(TestDeskhiveClient)
#include "tst_deskhiveclient.moc"
