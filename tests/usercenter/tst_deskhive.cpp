// The suite's cloud library as the plug-in reaches it. In this process: the
// simulator beside the executable, loaded through KDeskhiveLib, its account
// driven by a state file in a temporary folder, its signals connected by
// signature. In copies of this program run with --probe from folders laid
// out per case: what the access finds when the library is missing, lacks
// entry points or answers oddly (the stand-in of fakedeskhive.cpp), and what
// the centre commands, the account button and the helpers that open
// addresses make of that.

#include "ktestappdir.h"
#include "ktestenvironment.h"
#include "kurlcatcher.h"
#include "kwarningcatcher.h"

#include "kdeskhivelib.h"
#include "knimboclientinstance.h"
#include "kusercentermenubutton.h"
#include "kusercentermenucommand.h"
#include "kxopenpersonalcentercommand.h"
#include "kxopenurl.h"

#include <vex/kresourcescheme.h>
#include <vexlite/hostcontrol.h>

#include <deskhive/livestateupdatecache.h>
#include <deskhive/nimboclient.h>

#include <QSaveFile>
#include <QtTest>

#include <sys/stat.h>

using namespace AuthTest;

namespace {

enum class Save { Replace, InPlace, RemoveFirst };

const QString kPersonal = "https://account.example/center";
const QString kEnterprise = "https://business.example/admin?x=1";

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

// What a copy of this program finds beside itself, on one line: whether
// the library is loaded and whether each entry point (dispatch, client,
// cache, controller) gives an object, whether someone is signed in, and the
// address given for url. Then, after " | ": whether the personal centre and
// the user centre would show and the button shows the default avatar, and
// what kxOpenAutoLoginUrl(url) and kxNimboOpenStoreUrl of kinds 1, 2 and 3
// open ("-" for nothing).
int probe(const QString& url)
{
    const KDeskhiveLib& lib = *KDeskhiveLib::instance();
    QTextStream out(stdout);
    out << lib.isLoaded() << !!lib.localPushMessageDispatchInstance() << !!lib.nimboClientInstance()
        << !!lib.liveStateUpdateCacheInstance() << !!lib.deskhivePluginController() << ' '
        << KNimboClientInstance::isLogined() << ' ' << KNimboClientInstance::getAutoLoginUrl(url)
        << " |";

    KTestEnvironment env;
    KResourceScheme::install();
    krt::hostcontrol::setProductString("PersonalCenterUrl", kPersonal);
    krt::hostcontrol::setProductString("EnterpriseCenterUrl", kEnterprise);
    krt::hostcontrol::setFeatureSupported("SimplifiedUserCenter", true);
    KxOpenPersonalCenterCommand command(nullptr, nullptr);
    KUserCenterMenuCommand centre(nullptr, nullptr);
    command.update();
    centre.update();
    const std::unique_ptr<QWidget> button(centre.createPocketWidget(nullptr));
    const QImage avatar = static_cast<KUserCenterMenuButton*>(button.get())->thumbnail();
    out << ' ' << command.isVisible() << ' ' << centre.isVisible() << ' '
        << (avatar == QImage("res:/resource/zentodeskhive/defaultthumbnail.png"));
    KUrlCatcher catcher;
    for (int kind : {0, 1, 2, 3}) {
        kind ? kxNimboOpenStoreUrl(STORE_URL_TYPE(kind)) : kxOpenAutoLoginUrl(url);
        const QStringList urls = catcher.take();
        out << ' ' << (urls.isEmpty() ? "-" : urls.join(','));
    }
    out << '\n';
    return 0;
}

} // namespace

Q_DECLARE_METATYPE(Save)

class TestDeskhive : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    QString m_statePath = m_env.rootPath() + "/state.json";
    INimboClient* m_client = nullptr;

    // Saves content and returns once the simulator has looked at the file.
    bool save(const QByteArray& content, Save how = Save::Replace)
    {
        QSignalSpy read(m_client, SIGNAL(stateFileRead()));
        if (how == Save::RemoveFirst && QFile::exists(m_statePath) && !QFile::remove(m_statePath))
            return false;
        QSaveFile replacing(m_statePath);
        QFile inPlace(m_statePath);
        QFileDevice& file = how == Save::Replace ? static_cast<QFileDevice&>(replacing) : inPlace;
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
            file.write(content) != content.size() || (how == Save::Replace && !replacing.commit()))
            return false;
        inPlace.close();
        return read.wait(5000);
    }

private slots:
    void initTestCase()
    {
        qputenv("DESKHIVE_STATE", m_statePath.toUtf8());
        m_client = KDeskhiveLib::instance()->nimboClientInstance();
        QVERIFY2(m_client, qPrintable(KDeskhiveLib::instance()->errorString()));
        QCOMPARE(account(), QString("out||||"));
    }

    // library: the one to copy to addons/deskhive; "-" no such folder, ""
    // the folder alone, "text" a text file in the library's place. account:
    // the simulator's state file beside it ("<fifo>" a named pipe, "<link>"
    // content: a link to a file holding content), or the stand-in client's
    // user information, whose wrapped address is wrapReply.
    // expected starts the probe's answer; "URL": the address it asks for,
    // "P" and "E" the personal and enterprise centres.
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
        const QString fake = FAKE_DESKHIVE;
        const QByteArray in = R"({"IsLogined": true})";
        const char* wrap = "https://wrapped.example/?t=1";
        row("no addons/deskhive folder", "-", in, wrap, "00000 0 URL | 0 0 1 URL P E -");
        row("a text file, not a library", "text", in, wrap, "00000 0 URL");
        row("simulator, state beside it (a link)", simulator, "<link>" + signedIn("Ada"), "",
            "11111 1 https://account.zentooffice.example/autologin?token=");
        row("simulator, state a pipe nobody writes to", simulator, "<fifo>", "", "11111 0 URL");
        row("signed in", fake, in, wrap, "10100 1 https://wrapped.example/?t=1");
        row("signed in, empty wrapped address", fake, in, "", "10100 1 URL");
        row("no IsLogined", fake, R"({"Name": "F"})", wrap, "10100 0 URL");
        // The store helper asks the client without the signed-in test; the
        // button shows the company's mark.
        row("client wraps while signed out", fake,
            R"({"IsLogined": false, "IsCompanyAccount": true})", wrap,
            "10100 0 URL | 0 0 0 URL " + QString(wrap) + ' ' + wrap + " -");
        row("IsLogined as text", fake, R"({"IsLogined": "true"})", wrap, "10100 0 URL");
    }

    void layouts()
    {
        QFETCH(QString, library);
        QFETCH(QByteArray, account);
        QFETCH(QString, wrapReply);
        QFETCH(QString, expected);

        const KTestAppDir app(m_env.rootPath());
        const QString self = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
        QFile file(library);
        QVERIFY(app.installExecutable(self));
        const QString state = app.filePath("addons/deskhive/state.json");
        if (library != "-")
            QVERIFY(QDir().mkpath(QFileInfo(state).path()));
        if (account == "<fifo>")
            QVERIFY(mkfifo(QFile::encodeName(state).constData(), 0600) == 0);
        else if (account.startsWith("<link>"))
            QVERIFY(app.writeFile("real.json", account.mid(6)) &&
                    QFile::link(app.filePath("real.json"), state));
        else if (library != "-")
            QVERIFY(app.writeFile("addons/deskhive/state.json", account));
        if (library == "text")
            QVERIFY(app.writeFile("addons/deskhive/libdeskhive.so", "not a library\n"));
        else if (library != "-" && !library.isEmpty())
            QVERIFY(file.open(QIODevice::ReadOnly) &&
                    app.writeFile("addons/deskhive/libdeskhive.so", file.readAll()));
        QProcessEnvironment env;
        env.insert("DESKHIVE_STATE", ""); // the state file beside the library
        env.insert("FAKE_NIMBO_USERINFO", account);
        env.insert("FAKE_NIMBO_AUTOLOGIN", wrapReply);
        const QString url = "https://jump.example/personal?x=1";
        const QString out = app.run(self, {"--probe", url}, env).out;
        expected.replace("URL", url).replace(" P ", ' ' + kPersonal + ' ');
        expected.replace(" E ", ' ' + kEnterprise + ' ');
        QCOMPARE(out.left(expected.size()), expected);
    }

    // Each row saves before, then after, and sees what the simulator made
    // of after: the account, the signals raised (":argument" for the one
    // that has one) and the warnings (each naming the state file).
    void stateFile_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<QString>("user"); // as account() gives it
        QTest::addColumn<QString>("raised");
        QTest::addColumn<QStringList>("warnings");
        QTest::addColumn<Save>("first");
        QTest::addColumn<Save>("second");

        const auto row = [](const QByteArray& tag, const QByteArray& before,
                            const QByteArray& after, const char* user, const char* raised,
                            const QStringList& warnings = {}, Save first = Save::Replace,
                            Save second = Save::Replace) {
            QTest::newRow(tag.constData()) << before << after << QString(user) << QString(raised)
                                           << warnings << first << second;
        };
        const QByteArray out = R"({"IsLogined": false})", ada = signedIn("Ada");
        const char* both = "LoginStatusChange, UserInfoChange";
        const char* adaUser = "in|Ada|id-Ada||";
        row("sign in", out,
            signedIn("Ada", R"(, "UserAvatarImagePath": "/a", "IsCompanyAccount": true)"),
            "in|Ada|id-Ada|/a|company", both);
        row("other user", ada, signedIn("Zoë 张"), "in|Zoë 张|id-Zoë 张||", "UserInfoChange");
        row("sign out keeps no user", ada,
            R"({"IsLogined": false, "Name": "A", "IsCompanyAccount": true})", "out||||", both);
        row("same account, other layout", ada, "\n  " + ada + "\n", adaUser, "");
        row("flag as text", ada, R"({"IsLogined": "true"})", "out||||", both);
        row("malformed", ada, R"({"IsLogined": true,)", "out||||", both, {"is not valid JSON"});
        const auto emitting = [](const QByteArray& name, const QByteArray& requests) {
            return signedIn(name, ", \"emit\": [" + requests + "]");
        };
        const QByteArray launch = emitting("Ada", R"("failedToLaunchCloudsvrProcess")");
        row("client signals", ada,
            emitting("Ada", R"("failedToLaunchCloudsvrProcess", "cloudsvrExitWithErrors:code: 7")"),
            adaUser, "failedToLaunchCloudsvrProcess, cloudsvrExitWithErrors:code: 7");
        row("cache signals, not a signal name", ada,
            emitting("Ada", R"("occurIpcErrorsWhenGetUserInf", "occurRpcErrorsWhenGetUserInf", 5)"),
            adaUser, "occurIpcErrorsWhenGetUserInf, occurRpcErrorsWhenGetUserInf",
            {"not a signal name"});
        row("request again, same content", launch, launch, adaUser, "", {}, Save::Replace,
            Save::InPlace);
        row("request again, other content", launch, launch + ' ', adaUser,
            "failedToLaunchCloudsvrProcess");
        // However an editor saves, the next save is seen.
        row("in place, then remove", signedIn("First"), signedIn("Second"), "in|Second|id-Second||",
            "UserInfoChange", {}, Save::InPlace, Save::RemoveFirst);
        row("remove, then in place", signedIn("First"), signedIn("Second"), "in|Second|id-Second||",
            "UserInfoChange", {}, Save::RemoveFirst, Save::InPlace);
    }

    void stateFile()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QFETCH(QString, user);
        QFETCH(QString, raised);
        QFETCH(QStringList, warnings);
        QFETCH(Save, first);
        QFETCH(Save, second);

        QVERIFY(save(before, first));
        QObject* cache = KDeskhiveLib::instance()->liveStateUpdateCacheInstance();
        QSignalSpy login(m_client, SIGNAL(LoginStatusChange()));
        QSignalSpy info(m_client, SIGNAL(UserInfoChange()));
        QSignalSpy launch(m_client, SIGNAL(failedToLaunchCloudsvrProcess()));
        QSignalSpy exit(m_client, SIGNAL(cloudsvrExitWithErrors(QString)));
        QSignalSpy ipc(cache, SIGNAL(occurIpcErrorsWhenGetUserInf()));
        QSignalSpy rpc(cache, SIGNAL(occurRpcErrorsWhenGetUserInf()));
        KWarningCatcher catcher;
        QVERIFY(save(after, second));
        QStringList seen;
        for (QSignalSpy* spy : {&login, &info, &launch, &exit, &ipc, &rpc}) {
            for (const QList<QVariant>& arguments : *spy)
                seen << QString(spy->signal()).section('(', 0, 0) +
                            (arguments.isEmpty() ? "" : ':' + arguments[0].toString());
        }
        QCOMPARE(seen.join(", "), raised);
        QCOMPARE(account(), user);
        const QStringList caught = catcher.warnings();
        QCOMPARE(caught.size(), warnings.size());
        for (int i = 0; i < caught.size(); ++i)
            QVERIFY2(caught[i].contains(warnings[i]) && caught[i].contains(m_statePath),
                     qPrintable(caught[i]));
    }
};

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--probe") == 0)
        return probe(QString::fromUtf8(argv[2]));
    TestDeskhive test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_deskhive.moc"
