// The plug-in's handler: how information keys are routed, remembered and
// warned about, what it answers for the product and server keys, and how
// named commands reach it.

#include "ktestenvironment.h"
#include "kwarningcatcher.h"

#include "plugin/kxacommonauthhandler.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/krtauth.h>

#include <QtTest>

using namespace krt::hostcontrol;

namespace {

const QString kBase = "https://jump.example/go/";

QStringList notFound(const QString& key)
{
    return {QStringLiteral("The info %1 was not found, the key must be handled!").arg(key)};
}

// Type and value, so that a string "false" never passes for a boolean and
// an empty text never for a null.
QString describe(const QVariant& value)
{
    return value.isNull() ? QStringLiteral("null") : value.typeName() + (':' + value.toString());
}

// Records which group operation a key reached; answers `answer` when it is
// set, else what the base answers.
class KRecordingHandler : public KAuthorizationHandler
{
public:
    QStringList calls;
    QVariant answer;

    QVariant productInfo(const QString& k, const QString& g, const QString& n) override
    {
        return route("product", k, g, n, QVariant());
    }
    QVariant authInfo(const QString& k, const QString& g, const QString& n) override
    {
        return route("auth", k, g, n, KAuthorizationHandler::authInfo(k, g, n));
    }
    QVariant serverInfo(const QString& k, const QString& g, const QString& n) override
    {
        return route("server", k, g, n, QVariant());
    }

private:
    QVariant route(const char* op, const QString& k, const QString& g, const QString& n,
                   const QVariant& base)
    {
        calls << QStringLiteral("%1(%2|%3|%4)").arg(QLatin1String(op), k, g, n);
        return answer.isNull() ? base : answer;
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
        calls << QStringLiteral("pointer %1 %2%3")
                     .arg(name)
                     .arg(data ? int(*static_cast<bool*>(data)) : -1)
                     .arg(extra == &payload ? " payload" : "");
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

    // Each key is asked twice; between the two the group operation's answer
    // (when it has one) and the key's configuration change, so a remembered
    // answer shows as a second answer equal to the first.
    void routing_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("answer");     // of the group operation
        QTest::addColumn<QVariant>("configured"); // in the user layer
        QTest::addColumn<QString>("call");
        QTest::addColumn<int>("calls"); // how often the key was routed
        QTest::addColumn<QVariant>("first");
        QTest::addColumn<QVariant>("second");
        QTest::addColumn<bool>("warns");

        const QVariant none, a("a"), b("b"), cfg("cfg"), no(false);
        const auto row = [](const char* tag, const QString& key, const QVariant& answer,
                            const QVariant& configured, const QString& call, int calls,
                            const QVariant& first, const QVariant& second, bool warns = false) {
            QTest::newRow(tag) << key << answer << configured << call << calls << first << second
                               << warns;
        };
        row("product", "Product/HomePage", a, none, "product(Product/HomePage|Product|HomePage)", 2,
            a, b);
        row("name keeps later separators", "Product/Url/EULA", a, none,
            "product(Product/Url/EULA|Product|Url/EULA)", 2, a, b);
        row("no separator", "Product", a, none, "product(Product|Product|Product)", 2, a, b);
        row("server", "Server/Reinstall", a, none, "server(Server/Reinstall|Server|Reinstall)", 2,
            a, b);
        row("auth: splash is empty text", "Auth/StartupSplashFileName", none, none,
            "auth(Auth/StartupSplashFileName|Auth|StartupSplashFileName)", 2, QString(""),
            QString(""));
        row("group is case-sensitive", "product/HomePage", a, none, "", 0, none, none, true);
        row("nothing answers: one warning", "Auth/Other", none, none, "auth(Auth/Other|Auth|Other)",
            1, none, none, true);
        row("configuration after a null answer", "Product/Custom", none, cfg,
            "product(Product/Custom|Product|Custom)", 1, cfg, cfg);
        row("configuration of an unknown group", "Other/Value", none, cfg, "", 0, cfg, cfg);
        row("support defaults to false", "Support/OnlineHelp", none, none, "", 0, no, no);
        row("patent without a name", "Patent", none, none, "", 0, no, no);
        row("empty key", "", none, none, "", 0, none, none);
    }

    void routing()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, answer);
        QFETCH(QVariant, configured);
        QFETCH(QString, call);
        QFETCH(int, calls);
        QFETCH(QVariant, first);
        QFETCH(QVariant, second);
        QFETCH(bool, warns);

        KWarningCatcher catcher;
        KRecordingHandler handler;
        handler.answer = answer;
        setConfigValue(UserLayer, key, configured);
        QCOMPARE(describe(handler.getInfo(key)), describe(first));
        handler.answer = answer.isNull() ? answer : QVariant("b");
        setConfigValue(UserLayer, key, "changed");
        QCOMPARE(describe(handler.getInfo(key)), describe(second));
        QCOMPARE(handler.calls, QStringList(QVector<QString>(calls, call).toList()));
        QCOMPARE(catcher.warnings(), warns ? notFound(key) : QStringList());
    }

    void seededInfoComesFirst()
    {
        KWarningCatcher catcher;
        KRecordingHandler handler;
        handler.answer = "computed";
        handler.insertStaticInfo("Product/HomePage", "seeded");
        handler.insertStaticInfo("Product/Hidden", QVariant());
        QCOMPARE(handler.getInfo("Product/HomePage"), QVariant("seeded"));
        QVERIFY(handler.getInfo("Product/Hidden").isNull());
        QVERIFY(handler.calls.isEmpty());
        QVERIFY(catcher.warnings().isEmpty());
    }

    // host: values by layer name, "JumpUrl", "overseas", "language".
    void productInfo_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariantMap>("host");
        QTest::addColumn<QVariant>("expected"); // null: not answered, one warning

        const auto row = [](const char* tag, const char* key, const QVariant& expected,
                            const QVariantMap& host = {}) {
            QTest::newRow(tag) << QString(key) << host << expected;
        };
        const auto jump = [](const char* page) { return QVariant(kBase + page); };
        const QVariantMap noBase{{"JumpUrl", ""}}, overseas{{"overseas", true}};
        row("VexName", "Product/VexName", "Zento Office");
        row("VexName translated", "Product/VexName", QString::fromUtf8("Zento 办公"),
            {{"language", "zh_CN"}});
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
        row("TechSupportUrl configured", "Product/TechSupportUrl", "t", {{"server", "t"}});
        row("UserFeedbackPage, user layer", "Product/UserFeedbackPage", jump("user_feedback_page"),
            {{"user", "u"}});
        // Display names: a configured value with text, as it is.
        row("VexName configured", "Product/VexName", "Brand", {{"machine", "Brand"}});
        row("VexName configured empty", "Product/VexName", "Zento Office", {{"machine", ""}});
        row("VexName kept as configured", "Product/VexName", 7, {{"policy", 7}});
        row("VexName, user layer", "Product/VexName", "Zento Office", {{"user", "Mine"}});
        row("VexThanksTo configured", "Product/VexThanksTo", "T", {{"server", "T"}});
        row("EULA is never configured", "Product/Url/EULA", jump("eula"), {{"policy", "x"}});
        // The overseas edition leaves technical support to the fallback,
        // which reads every layer.
        row("overseas TechSupportUrl", "Product/TechSupportUrl", QVariant(), overseas);
        row("overseas TechSupportUrl configured", "Product/TechSupportUrl", "u",
            {{"overseas", true}, {"user", "u"}});
        row("overseas HelpPage", "Product/HelpPage", jump("help_page"), overseas);
        // Without a jump base text answers are missing, the URL is empty.
        row("no base: EULA", "Product/Url/EULA", QVariant(), noBase);
        row("no base: HomePage", "Product/HomePage", QVariant(), noBase);
        row("no base: ReinstallServer", "Server/ReinstallServer", QVariant(), noBase);
        row("no base: LauncherPage", "Product/Url/LauncherPage", QUrl(), noBase);
        row("no base: fallback", "Product/HelpPage", "m", {{"JumpUrl", ""}, {"user", "m"}});
        row("unknown name", "Product/Nope", QVariant());
        row("names are case-sensitive", "Product/homepage", QVariant());
        row("unknown server name", "Server/Other", QVariant());
        row("product name in the auth group", "Auth/HomePage", QVariant());
    }

    void productInfo()
    {
        QFETCH(QString, key);
        QFETCH(QVariantMap, host);
        QFETCH(QVariant, expected);

        setProductString("JumpUrl", host.value("JumpUrl", kBase).toString());
        setOverseasVersion(host.value("overseas").toBool());
        setLanguage(host.value("language", "en_US").toString());
        const QStringList layers{"builtin", "machine", "user", "server", "policy"};
        for (int i = 0; i < layers.size(); ++i) {
            if (host.contains(layers[i]))
                setConfigValue(ConfigLayer(1u << i), key, host[layers[i]]);
        }
        KWarningCatcher catcher;
        KXaCommonAuthHandler handler;
        QCOMPARE(describe(handler.getInfo(key)), describe(expected));
        QCOMPARE(catcher.warnings(), expected.isNull() ? notFound(key) : QStringList());
    }

    void answersFollowTheHost()
    {
        KXaCommonAuthHandler handler;
        setProductString("JumpUrl", "https://one.example/");
        QCOMPARE(handler.getInfo("Product/Url/EULA"), QVariant("https://one.example/eula"));
        QCOMPARE(handler.getInfo("Product/HomePage"), QVariant("https://one.example/home_page"));
        setProductString("JumpUrl", "https://two.example/");
        setConfigValue(MachineLayer, "Product/HomePage", "h");
        QCOMPARE(handler.getInfo("Product/Url/EULA"), QVariant("https://two.example/eula"));
        QCOMPARE(handler.getInfo("Product/HomePage"), QVariant("h"));
        QCOMPARE(handler.cachedInfoCount(), 0);
    }

    void thanksAreTranslated()
    {
        KXaCommonAuthHandler handler;
        const QString english = handler.getInfo("Product/VexThanksTo").toString();
        QVERIFY2(english.contains("FreeType") && english.contains("Hunspell"), qPrintable(english));
        setLanguage("zh_CN");
        const QString chinese = handler.getInfo("Product/VexThanksTo").toString();
        QVERIFY2(chinese.contains(QString::fromUtf8("致谢")), qPrintable(chinese));
    }

    // how: the probe's flag or command entry, a plain handler's flag form,
    // or the host's two forms with the probe as its handler.
    void prehook_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("goesOn");
        QTest::addColumn<QStringList>("calls");

        QTest::newRow("flag form, true") << "flag 1"
                                         << "Cmd" << false << QStringList("pointer Cmd 1 payload");
        QTest::newRow("flag form, false") << "flag 0"
                                          << "Cmd" << false << QStringList("pointer Cmd 0 payload");
        QTest::newRow("command entry goes to the base")
            << "entry"
            << "Cmd" << true << QStringList("entry Cmd payload");
        QTest::newRow("plain handler lets all pass") << "plain"
                                                     << "Cmd" << true << QStringList();
        QTest::newRow("host, flag form")
            << "host flag"
            << "OpenUserCenter" << true << QStringList("entry OpenUserCenter payload");
        QTest::newRow("host, pointer form")
            << "host pointer"
            << "OpenEnterpriseCenter" << true << QStringList("entry OpenEnterpriseCenter payload");
        QTest::newRow("host, stopped")
            << "host flag"
            << "Blocked" << false << QStringList("entry Blocked payload");
    }

    void prehook()
    {
        QFETCH(QString, how);
        QFETCH(QString, name);
        QFETCH(bool, goesOn);
        QFETCH(QStringList, calls);

        KPrehookProbe probe;
        void* payload = &probe.payload;
        KXaCommonAuthHandler plain;
        setHandler(&probe);
        bool result = false;
        if (how.startsWith("flag"))
            result = probe.prehook(name, how.endsWith('1'), payload);
        else if (how == "entry")
            result = probe.prehook(name, payload);
        else if (how == "plain")
            result = plain.prehook(name, true, payload) && plain.prehook(name, payload, payload) &&
                     plain.prehook(name, payload);
        else if (how == "host flag")
            result = krt::auth::prehook(name, false, payload);
        else
            result = krt::auth::prehook(name, payload, nullptr);
        setHandler(nullptr);

        QCOMPARE(result, goesOn);
        QCOMPARE(probe.calls, calls);
        const bool host = how.startsWith("host");
        QCOMPARE(executedCommands(), host && goesOn ? QStringList(name) : QStringList());
    }
};

QTEST_GUILESS_MAIN(TestAuthHandler)
#include "tst_authhandler.moc"
