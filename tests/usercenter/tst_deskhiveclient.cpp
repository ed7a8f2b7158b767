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

enum class Save { Replace, InPlace, RemoveFirst, Remove };

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
        QVERIFY(m_env.isValid());
        m_statePath = m_env.rootPath() + "/state.json";
        qputenv("DESKHIVE_STATE", m_statePath.toUtf8());

        QVERIFY2(KDeskhiveLib::instance()->isLoaded(),
                 qPrintable(KDeskhiveLib::instance()->errorString()));
        m_client = KDeskhiveLib::instance()->nimboClientInstance();
        QVERIFY(m_client);
        QVERIFY(!KNimboClientInstance::isLogined());
    }

    void entryPointsHandOutTheLibrarysObjects()
    {
        KDeskhiveLib* lib = KDeskhiveLib::instance();
        QVERIFY(lib->localPushMessageDispatchInstance() && lib->deskhivePluginController());
        QCOMPARE(lib->nimboClientInstance(), m_client.data());
        // The library's meta-objects describe its objects: what a caller
        // that only has the headers relies on to connect by signature.
        QObject* client = m_client.data();
        QObject* cache = lib->liveStateUpdateCacheInstance();
        QVERIFY(client->inherits("INimboClient"));
        QVERIFY(cache && cache->inherits("ILiveStateUpdateCache"));
        QVERIFY(!client->inherits("ILiveStateUpdateCache"));
    }

    void userInfoFromStateFile_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("logined");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("avatar"); // "@": the state file's folder
        QTest::addColumn<bool>("company");
        QTest::addColumn<QString>("warning");

        QTest::newRow("signed in") << signedIn("Ada", R"(, "UserAvatarImagePath": "/p/a.png",
            "IsCompanyAccount": true)")
                                   << true << "Ada"
                                   << "/p/a.png" << true << "";
        QTest::newRow("relative avatar")
            << signedIn("Ada", R"(, "UserAvatarImagePath": "img/../a.png")") << true << "Ada"
            << "@/a.png" << false << "";
        QTest::newRow("non-ASCII name") << signedIn("Zoë 张") << true << "Zoë 张"
                                        << "" << false << "";
        QTest::newRow("members of the wrong type")
            << QByteArray(R"({"IsLogined": true, "Name": 5, "Id": "id-", "IsCompanyAccount": 1})")
            << true << ""
            << "" << false << "";
        QTest::newRow("signed out keeps no user")
            << QByteArray(R"({"IsLogined": false, "Name": "Ada", "IsCompanyAccount": true})")
            << false << ""
            << "" << false << "";
        QTest::newRow("flag as text")
            << QByteArray(R"({"IsLogined": "true", "Name": "Ada"})") << false << ""
            << "" << false << "";
        QTest::newRow("empty file") << QByteArray() << false << ""
                                    << "" << false << "";
        QTest::newRow("malformed") << QByteArray(R"({"IsLogined": true,)") << false << ""
                                   << "" << false << "is not valid JSON";
        QTest::newRow("array") << QByteArray("[1]") << false << ""
                               << "" << false << "not hold a JSON object";
        QTest::newRow("deep nesting") << QByteArray(5000, '[') << false << ""
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
        QCOMPARE(info["IsLogined"].asBool(), logined);
        QCOMPARE(KNimboClientInstance::isLogined(), logined);
        QCOMPARE(text(info, "Name"), name);
        QCOMPARE(text(info, "Id"), logined ? "id-" + name : QString());
        QCOMPARE(text(info, "UserAvatarImagePath"), avatar.replace('@', m_env.rootPath()));
        QCOMPARE(info["IsCompanyAccount"].asBool(), company);

        if (warning.isEmpty()) {
            QVERIFY2(catcher.warnings().isEmpty(), qPrintable(catcher.warnings().join('\n')));
        } else {
            QCOMPARE(catcher.warnings().size(), 1);
            QVERIFY(catcher.warnings()[0].contains(warning));
            QVERIFY(catcher.warnings()[0].contains(m_statePath));
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

    void queuedSlotSeesTheChange()
    {
        QVERIFY(save(R"({"IsLogined": false})"));
        KSlotCounter counter;
        for (const char* signal : {SIGNAL(LoginStatusChange()), SIGNAL(UserInfoChange())})
            QVERIFY(connect(m_client.data(), signal, &counter, SLOT(onLoginStatusChanged()),
                            Qt::QueuedConnection));
        QVERIFY(save(signedIn("Ada")));
        QTRY_COMPARE(counter.calls, 2);
    }

    void editorSaves_data()
    {
        QTest::addColumn<Save>("first");
        QTest::addColumn<Save>("second");

        const QList<QPair<Save, const char*>> ways = {
            {Save::Replace, "replace"}, {Save::InPlace, "in place"}, {Save::RemoveFirst, "remove"}};
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
        QTest::addColumn<int>("raised"); // index into the signals below, -1 none
        QTest::addColumn<QString>("message");

        QTest::newRow("launch failure") << "failedToLaunchCloudsvrProcess" << 0 << "";
        QTest::newRow("service exit") << "cloudsvrExitWithErrors:disk full" << 1 << "disk full";
        QTest::newRow("message with a colon") << "cloudsvrExitWithErrors:code: 7" << 1 << "code: 7";
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
        const QList<QSignalSpy*> spies{&launch, &exit, &ipc, &rpc};
        auto counts = [&] {
            QList<int> n;
            for (QSignalSpy* spy : spies)
                n << spy->count();
            return n;
        };
        auto once = [&](int times) {
            QList<int> n{0, 0, 0, 0};
            if (raised >= 0)
                n[raised] = times;
            return n;
        };

        // A value that is no name at all is passed over like an unknown name.
        const QByteArray emitList = ", \"emit\": [5, \"" + request.toUtf8() + "\"]";
        KWarningCatcher catcher;
        QVERIFY(save(signedIn("Ada", emitList)));
        QCOMPARE(counts(), once(1));
        QCOMPARE(catcher.warnings().size(), raised < 0 ? 2 : 1);
        QVERIFY(KNimboClientInstance::isLogined());
        if (raised == 1)
            QCOMPARE(exit.at(0).at(0).toString(), message);

        // Once per change: the same content again raises nothing, another
        // change with the same request raises it again.
        QVERIFY(save(signedIn("Ada", emitList), Save::InPlace));
        QCOMPARE(counts(), once(1));
        QVERIFY(save(signedIn("Bob", emitList)));
        QCOMPARE(counts(), once(2));
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

        auto wrap = [&](const QByteArray& user) {
            QString wrapped = "stale";
            if (save(signedIn(user)))
                m_client->getAutoLoginUrl(url, wrapped);
            return wrapped;
        };
        const QString ada = wrap("Ada");
        QVERIFY2(ada.startsWith("https://account.zentooffice.example/autologin?token="),
                 qPrintable(ada));
        const QUrlQuery query{QUrl(ada)};
        QCOMPARE(query.queryItemValue("target", QUrl::FullyDecoded), url);
        QCOMPARE(KNimboClientInstance::getAutoLoginUrl(url), ada);
        // The token tells users apart and stays the same for one user.
        QVERIFY(wrap("Bob") != ada);
        QCOMPARE(wrap("Ada"), ada);
    }

    void noAutoLoginAddress_data()
    {
        QTest::addColumn<QByteArray>("state");
        QTest::addColumn<QString>("url");

        QTest::newRow("signed out")
            << QByteArray(R"({"IsLogined": false})") << "https://c.example/";
        QTest::newRow("no state") << QByteArray() << "https://c.example/";
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
