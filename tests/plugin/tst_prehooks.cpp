// Named commands through the handler's pre-hooks, as the host passes them:
// what each does to the suite user name, what it opens, and that every one
// goes on, with the user information and its strings given back on every
// path, failures of the host's own objects included.

#include "ksimulatorstate.h"
#include "ktestenvironment.h"
#include "kurlcatcher.h"
#include "kwarningcatcher.h"

#include "kxacommonauthhandler.h"

#include <vex/ikuserinformation.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/krtauth.h>

#include <QtTest>

using namespace AuthTest;

using namespace krt::hostcontrol;

namespace {

const QString kCenter = "https://account.example/center?a=1";

// The plug-in's handler, with a base entry that would stop every command:
// the common pre-hook must reach the base directly, not through the table.
class KChainProbe : public KXaCommonAuthHandler
{
public:
    using KXaCommonAuthHandler::prehook;
    QStringList reached;
    bool prehook(const QString& name, void*, void*) override
    {
        reached << name;
        return false;
    }
};

// References the host's user information holds besides the host's own.
unsigned long extraReferences()
{
    IKUserInformation* info = nullptr;
    if (!XSucceeded(vex_GetUserInformation(&info)))
        return 0;
    info->AddRef();
    const unsigned long refs = info->Release();
    info->Release();
    return refs - 2;
}

} // namespace

class TestPrehooks : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KSimulatorState m_state{m_env.rootPath()};
    KUrlCatcher m_urls;

private slots:
    void init()
    {
        m_env.resetHost();
        m_urls.take();
    }

    // name: the stored suite user name before ("unset": none stored).
    // user: the bytes of "USER" ("unset": not in the environment).
    // opened: "wrapped" the configured centre, signed in; "" nothing.
    void commands_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("user");
        QTest::addColumn<int>("fault");
        QTest::addColumn<bool>("signedIn");
        QTest::addColumn<QString>("expectedName");
        QTest::addColumn<QString>("opened");

        const int none = NoUserInformationFault;
        const auto row = [](const char* tag, const char* command, const char* name,
                            const QByteArray& user, const QString& expectedName,
                            const char* opened = "", int fault = NoUserInformationFault,
                            bool signedIn = false) {
            QTest::newRow(tag) << QString(command) << QString(name) << user << fault << signedIn
                               << expectedName << QString(opened);
        };
        const char* reg = "ProcUserRegister";
        const char* centre = "OpenUserCenter";
        row("register: empty name filled in", reg, "", "ada", "ada");
        row("register: a name of one letter is kept", reg, "k", "ada", "k");
        row("register: USER unset", reg, "unset", "unset", "");
        row("register: USER in UTF-8", reg, "", "J\xc3\xb6rg \xe5\xbc\xa0",
            QString::fromUtf8("Jörg 张"));
        row("register: no user information", reg, "", "ada", "", "", UserInformationUnavailable);
        row("register: name unreadable, set anyway", reg, "kept", "ada", "ada", "",
            UserNameUnreadable);
        row("register: writing throws", reg, "", "ada", "", "", UserNameWriteThrows);
        row("register from the cloud: never", "ProcUserRegisterFromCloudSrv", "", "ada", "");
        row("register: case-sensitive", "procuserregister", "", "ada", "");
        // The configured centre, opened as the centre suite's rows say
        // (wrapped here, since someone is signed in).
        row("user centre", centre, "", "ada", "", "wrapped", none, true);
        row("user centre: case-sensitive", "openusercenter", "", "ada", "");
        row("enterprise centre: the host's", "OpenEnterpriseCenter", "", "ada", "", "", none, true);
    }

    void commands()
    {
        QFETCH(QString, command);
        QFETCH(QString, name);
        QFETCH(QByteArray, user);
        QFETCH(int, fault);
        QFETCH(bool, signedIn);
        QFETCH(QString, expectedName);
        QFETCH(QString, opened);

        if (name != "unset")
            setSuiteUserName(name);
        if (user == "unset")
            qunsetenv("USER");
        else
            qputenv("USER", user);
        setProductString("PersonalCenterUrl", kCenter);
        QVERIFY(m_state.set(signedIn ? R"({"IsLogined": true, "Id": "u-1"})" : "{}"));
        const unsigned long refs = extraReferences();
        const int strings = XSysStringLiveCount();
        setUserInformationFault(UserInformationFault(fault));

        KChainProbe handler;
        setHandler(&handler);
        KWarningCatcher catcher;
        const bool goOn = krt::auth::prehook(command, false, nullptr);
        setHandler(nullptr);
        setUserInformationFault(NoUserInformationFault);

        QVERIFY(goOn);
        QVERIFY(handler.reached.isEmpty());
        QCOMPARE(executedCommands(), QStringList(command));
        QCOMPARE(suiteUserName(), expectedName);
        QCOMPARE(extraReferences(), refs);
        QCOMPARE(XSysStringLiveCount(), strings);
        QCOMPARE(catcher.warnings().size(), fault == UserNameWriteThrows ? 1 : 0);
        QCOMPARE(m_urls.take(), opened.isEmpty()
                                    ? QStringList()
                                    : QStringList("wrapped:" + QUrl::toPercentEncoding(kCenter)));
    }
};

QTEST_MAIN(TestPrehooks)
#include "tst_prehooks.moc"
