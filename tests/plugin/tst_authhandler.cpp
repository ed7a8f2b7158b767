// The plug-in's handler: how information keys are routed, answered,
// remembered and warned about, and how named commands reach it.

#include "ktestenvironment.h"
#include "kwarningcatcher.h"

#include "kxacommonauthhandler.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/kqtcompat.h>
#include <vexlite/krtauth.h>

#include <QtTest>

using namespace AuthTest;
using namespace krt::hostcontrol;

namespace {

const QString kBase = "https://jump.example/go/";

QStringList notFound(const QString& key)
{
    return {QStringLiteral("The info %1 was not found, the key must be handled!").arg(key)};
}

// Type and value, so that a text "false" never passes for a boolean nor an
// empty text for a null.
QString describe(const QVariant& value)
{
    return KQtCompat::isNull(value) ? QStringLiteral("null")
                                    : value.typeName() + (':' + value.toString());
}

// Answers with the group and the name a product key was routed with.
class KEchoHandler : public KAuthorizationHandler
{
public:
    QVariant productInfo(const QString&, const QString& group, const QString& name) override
    {
        return group + '|' + name;
    }
};

// Records what reaches the pointer form and the command entry.
class KPrehookProbe : public KXaCommonAuthHandler
{
public:
    using KXaCommonAuthHandler::prehook;
    int payload = 0;
    QStringList calls;

    bool prehook(const QString& name, void* data, void* extra) override
    {
        calls << "pointer " + name + (*static_cast<bool*>(data) ? " 1" : " 0") +
                     (extra == &payload ? " payload" : "");
        return false;
    }
    bool prehook(const QString& name, void* data) override
    {
        calls << QStringLiteral("entry %1%2").arg(name, data == &payload ? " payload" : "");
        return name != QLatin1String("Blocked") && KXaCommonAuthHandler::prehook(name, data);
    }
};

} // namespace

class TestAuthHandler : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void init() { m_env.resetHost(); }

    // host: configured values by layer name; "JumpUrl" (default kBase),
    // "overseas"; "echo" asks a KEchoHandler instead.
    void answers_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("expected"); // null: unanswered, warned about once
        QTest::addColumn<QVariantMap>("host");

        const auto row = [](const char* tag, const char* key, const QVariant& expected,
                            const QVariantMap& host = {}) {
            QTest::newRow(tag) << QString(key) << expected << host;
        };
        const auto jump = [](const char* page) { return QVariant(kBase + page); };
        const QVariant none;
        const QVariantMap noBase{{"JumpUrl", ""}}, overseas{{"overseas", true}}, echo{{"echo", 1}};
        row("no separator: group and name are the key", "Product", "Product|Product", echo);
        row("group is case-sensitive", "product/HomePage", none, echo);
        row("auth group is case-sensitive", "auth/StartupSplashFileName", none);
        row("empty key, not warned about", "", none, {{"user", "x"}});
        row("splash is empty text", "Auth/StartupSplashFileName", QString(""));
        row("other auth names", "Auth/Other", none);
        row("support defaults to false", "Support/OnlineHelp", false);
        row("patent without a name", "Patent", false);
        row("unknown group: configuration, all layers", "Other/Value", "u", {{"user", "u"}});
        row("VexName", "Product/VexName", "Zento Office");
        row("EmbeddedEULA", "Product/Url/EmbeddedEULA", jump("eula_embedded"));
        row("EULA", "Product/Url/EULA", jump("eula"));
        row("language packs", "Product/Url/OnlineLanguagePacksConfig",
            jump("online_language_packs_config"));
        row("LauncherPage is a URL", "Product/Url/LauncherPage", QUrl(kBase + "launcher_page"));
        row("HomePage", "Product/HomePage", jump("home_page"));
        row("UserFeedbackPage", "Product/UserFeedbackPage", jump("user_feedback_page"));
        row("HelpPage", "Product/HelpPage", jump("help_page"));
        row("TechSupportUrl", "Product/TechSupportUrl", jump("technical_support_page"));
        row("ReinstallServer", "Server/ReinstallServer", jump("latest_package"));
        row("separator added to the base", "Product/Url/EULA", "https://j.example/eula",
            {{"JumpUrl", "https://j.example"}});
        row("tolerant parsing", "Product/Url/EULA", "https://j.example/100%25/eula",
            {{"JumpUrl", "https://j.example/100%"}});
        // Configured-first: any configured value, as text, from every layer
        // but the user's.
        row("HomePage configured", "Product/HomePage", "h", {{"machine", "h"}});
        row("HomePage configured empty", "Product/HomePage", "", {{"builtin", ""}});
        row("HelpPage number as text", "Product/HelpPage", "42", {{"policy", 42}});
        row("UserFeedbackPage, user layer", "Product/UserFeedbackPage", jump("user_feedback_page"),
            {{"user", "u"}});
        // Display names: a configured value with text, as it is.
        row("VexName configured", "Product/VexName", "Brand", {{"machine", "Brand"}});
        row("VexName configured empty", "Product/VexName", "Zento Office", {{"machine", ""}});
        row("VexName kept as configured", "Product/VexName", 7, {{"policy", 7}});
        row("VexName, user layer", "Product/VexName", "Zento Office", {{"user", "Mine"}});
        row("VexThanksTo configured", "Product/VexThanksTo", "T", {{"server", "T"}});
        // The overseas edition leaves technical support to the fallback.
        row("overseas TechSupportUrl", "Product/TechSupportUrl", none, overseas);
        row("overseas TechSupportUrl configured", "Product/TechSupportUrl", "u",
            {{"overseas", true}, {"user", "u"}});
        // Without a jump base text answers are missing, the URL is empty.
        row("no base: EULA", "Product/Url/EULA", none, noBase);
        row("no base: LauncherPage", "Product/Url/LauncherPage", QUrl(), noBase);
        row("no base: fallback", "Product/HelpPage", "m", {{"JumpUrl", ""}, {"user", "m"}});
        row("unknown, case-sensitive name", "Product/homepage", none);
        row("unknown server name", "Server/Other", none);
    }

    void answers()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, expected);
        QFETCH(QVariantMap, host);

        setProductString("JumpUrl", host.value("JumpUrl", kBase).toString());
        setOverseasVersion(host.value("overseas").toBool());
        const QStringList layers{"builtin", "machine", "user", "server", "policy"};
        for (int i = 0; i < layers.size(); ++i) {
            if (host.contains(layers[i]))
                setConfigValue(ConfigLayer(1u << i), key, host[layers[i]]);
        }
        KWarningCatcher catcher;
        KEchoHandler echo;
        KXaCommonAuthHandler plugin;
        KAuthorizationHandler& handler =
            host.contains("echo") ? static_cast<KAuthorizationHandler&>(echo) : plugin;
        QCOMPARE(describe(handler.getInfo(key)), describe(expected));
        QCOMPARE(catcher.warnings(),
                 KQtCompat::isNull(expected) && !key.isEmpty() ? notFound(key) : QStringList());
    }

    // Seeded values, what the configuration answered and what nothing could
    // answer are kept; the group answers follow the host.
    void remembered()
    {
        KWarningCatcher catcher;
        KXaCommonAuthHandler handler;
        handler.insertStaticInfo("Product/HelpPage", "seeded");
        handler.insertStaticInfo("Product/Hidden", QVariant());
        setConfigValue(MachineLayer, "Other/Value", "first");
        const QStringList keys{"Product/HelpPage", "Product/Hidden", "Other/Value",
                               "Support/X",        "Product/Nope",   "Product/Url/EULA"};
        QStringList answers;
        for (const char* base : {"https://one.example/", "https://two.example/"}) {
            setProductString("JumpUrl", base);
            for (const QString& key : keys)
                answers << describe(handler.getInfo(key));
            for (const QString& key : keys)
                setConfigValue(UserLayer, key, "later");
        }
        QCOMPARE(answers, QStringList({"QString:seeded", "null", "QString:first", "bool:false",
                                       "null", "QString:https://one.example/eula", "QString:seeded",
                                       "null", "QString:first", "bool:false", "null",
                                       "QString:https://two.example/eula"}));
        QCOMPARE(catcher.warnings(), notFound("Product/Nope"));
    }

    // how: the probe's flag form, a plain handler's flag form, or the
    // host's two forms with the probe as its handler.
    void prehook_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("goesOn");
        QTest::addColumn<QString>("calls");

        const auto row = [](const char* how, const char* name, bool goesOn, const char* calls) {
            QTest::newRow(how) << QString(how) << QString(name) << goesOn << QString(calls);
        };
        row("flag", "Cmd", false, "pointer Cmd 1 payload");
        row("plain", "Cmd", true, "");
        row("host pointer", "OpenEnterpriseCenter", true, "entry OpenEnterpriseCenter payload");
        row("host stopped", "Blocked", false, "entry Blocked payload");
    }

    void prehook()
    {
        QFETCH(QString, how);
        QFETCH(QString, name);
        QFETCH(bool, goesOn);
        QFETCH(QString, calls);

        KPrehookProbe probe;
        void* payload = &probe.payload;
        setHandler(&probe);
        bool result = false;
        if (how == "flag")
            result = probe.prehook(name, true, payload);
        else if (how == "plain")
            result = KXaCommonAuthHandler().prehook(name, true, payload);
        else if (how == "host pointer")
            result = krt::auth::prehook(name, payload, nullptr);
        else
            result = krt::auth::prehook(name, false, payload);
        setHandler(nullptr);
        QCOMPARE(result, goesOn);
        QCOMPARE(probe.calls.join(','), calls);
        QCOMPARE(executedCommands(),
                 how.startsWith("host ") && goesOn ? QStringList(name) : QStringList());
    }
};

QTEST_GUILESS_MAIN(TestAuthHandler)
#include "tst_authhandler.moc"
