// Product and server answers of the plug-in's handler: jump addresses,
// configured values and the translated display texts.

#include "ktestenvironment.h"
#include "kwarningcatcher.h"

#include "plugin/kxacommonauthhandler.h"
#include "plugin/kxjumpurl.h"

#include <vexlite/hostcontrol.h>

#include <QtTest>

using namespace krt::hostcontrol;

namespace {

const char kBase[] = "https://jump.example/go";

} // namespace

class TestProductInfo : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void init()
    {
        m_env.resetHost();
        setProductString("JumpUrl", kBase);
    }

    void jumpUrl_data()
    {
        QTest::addColumn<QString>("base");
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("expected");

        QTest::newRow("separator added") << "https://j.example"
                                         << "eula"
                                         << "https://j.example/eula";
        QTest::newRow("no second separator") << "https://j.example/"
                                             << "eula"
                                             << "https://j.example/eula";
        QTest::newRow("base with path") << "https://j.example/go?x="
                                        << "eula"
                                        << "https://j.example/go?x=/eula";
        QTest::newRow("empty page") << "https://j.example"
                                    << ""
                                    << "https://j.example/";
        QTest::newRow("tolerant: stray percent escaped") << "https://j.example"
                                                         << "100%"
                                                         << "https://j.example/100%25";
        QTest::newRow("no base") << ""
                                 << "eula"
                                 << "";
    }

    void jumpUrl()
    {
        QFETCH(QString, base);
        QFETCH(QString, page);
        QFETCH(QString, expected);

        setProductString("JumpUrl", base);
        const QUrl url = kxGetJumpUrl(page);
        QCOMPARE(url.toString(), expected);
        QCOMPARE(url.isEmpty(), expected.isEmpty());
    }

    void convertToJumpUrl()
    {
        QCOMPARE(kxConvertToJumpUrl("https://x.example/a b").toEncoded(),
                 QByteArray("https://x.example/a%20b"));
        QVERIFY(kxConvertToJumpUrl(QString()).isEmpty());
    }

    void table_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("expected");

        const QString base = QString::fromLatin1(kBase) + '/';
        const int str = QMetaType::QString;
        QTest::newRow("VexName") << "Product/VexName" << str << "Zento Office";
        QTest::newRow("EmbeddedEULA")
            << "Product/Url/EmbeddedEULA" << str << base + "eula_embedded";
        QTest::newRow("EULA") << "Product/Url/EULA" << str << base + "eula";
        QTest::newRow("language packs") << "Product/Url/OnlineLanguagePacksConfig" << str
                                        << base + "online_language_packs_config";
        QTest::newRow("LauncherPage is a URL")
            << "Product/Url/LauncherPage" << int(QMetaType::QUrl) << base + "launcher_page";
        QTest::newRow("HomePage") << "Product/HomePage" << str << base + "home_page";
        QTest::newRow("UserFeedbackPage")
            << "Product/UserFeedbackPage" << str << base + "user_feedback_page";
        QTest::newRow("HelpPage") << "Product/HelpPage" << str << base + "help_page";
        QTest::newRow("TechSupportUrl")
            << "Product/TechSupportUrl" << str << base + "technical_support_page";
        QTest::newRow("ReinstallServer")
            << "Server/ReinstallServer" << str << base + "latest_package";
    }

    void table()
    {
        QFETCH(QString, key);
        QFETCH(int, type);
        QFETCH(QString, expected);

        KWarningCatcher catcher;
        KXaCommonAuthHandler handler;
        const QVariant value = handler.getInfo(key);
        QCOMPARE(value.userType(), type);
        QCOMPARE(type == QMetaType::QUrl ? value.toUrl().toString() : value.toString(), expected);
        QVERIFY(catcher.warnings().isEmpty());
        QCOMPARE(handler.cachedInfoCount(), 0);
    }

    void thanksToComesFromCatalogue()
    {
        KXaCommonAuthHandler handler;
        const QString english = handler.getInfo("Product/VexThanksTo").toString();
        for (const char* credit : {"FreeType", "word segmentation", "phonetic annotation",
                                   "simplified/traditional", "Hunspell"})
            QVERIFY2(english.contains(QLatin1String(credit)), credit);

        setLanguage("zh_CN");
        const QString chinese = handler.getInfo("Product/VexThanksTo").toString();
        QVERIFY(chinese.contains(QString::fromUtf8("致谢")));
        QVERIFY(chinese.contains("Hunspell"));
        QCOMPARE(handler.getInfo("Product/VexName").toString(), QString::fromUtf8("Zento 办公"));
    }

    void unknownNames_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("product") << "Product/Nope";
        QTest::newRow("name is case-sensitive") << "Product/homepage";
        QTest::newRow("server") << "Server/Other";
        QTest::newRow("auth") << "Auth/ReinstallServer";
    }

    void unknownNames()
    {
        QFETCH(QString, key);

        KWarningCatcher catcher;
        KXaCommonAuthHandler handler;
        QVERIFY(handler.getInfo(key).isNull());
        QCOMPARE(catcher.warnings().size(), 1);
    }

    // Configured-first keys take any configured text, the empty one too;
    // display names take a configured text only when it is not empty. Both
    // read every layer but the user's.
    void configuredValues_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<unsigned>("layer");
        QTest::addColumn<QVariant>("configured");
        QTest::addColumn<QVariant>("expected");

        const QString base = QString::fromLatin1(kBase) + '/';
        const unsigned machine = MachineLayer, user = UserLayer, policy = PolicyLayer;
        QTest::newRow("HomePage configured")
            << "Product/HomePage" << machine << QVariant("https://home.example/")
            << QVariant("https://home.example/");
        QTest::newRow("HomePage configured empty")
            << "Product/HomePage" << machine << QVariant("") << QVariant("");
        QTest::newRow("HomePage number becomes text")
            << "Product/HomePage" << policy << QVariant(42) << QVariant("42");
        QTest::newRow("HomePage user layer ignored")
            << "Product/HomePage" << user << QVariant("https://mine.example/")
            << QVariant(base + "home_page");
        QTest::newRow("HelpPage configured")
            << "Product/HelpPage" << policy << QVariant("h") << QVariant("h");
        QTest::newRow("UserFeedbackPage empty")
            << "Product/UserFeedbackPage" << machine << QVariant("") << QVariant("");
        QTest::newRow("TechSupportUrl configured")
            << "Product/TechSupportUrl" << machine << QVariant("t") << QVariant("t");
        QTest::newRow("VexName configured")
            << "Product/VexName" << machine << QVariant("Brand") << QVariant("Brand");
        QTest::newRow("VexName empty falls back")
            << "Product/VexName" << machine << QVariant("") << QVariant("Zento Office");
        QTest::newRow("VexName kept as configured")
            << "Product/VexName" << policy << QVariant(7) << QVariant(7);
        QTest::newRow("VexName user layer ignored")
            << "Product/VexName" << user << QVariant("Mine") << QVariant("Zento Office");
        QTest::newRow("VexThanksTo configured")
            << "Product/VexThanksTo" << machine << QVariant("Thanks") << QVariant("Thanks");
        QTest::newRow("EULA is never configured")
            << "Product/Url/EULA" << policy << QVariant("x") << QVariant(base + "eula");
    }

    void configuredValues()
    {
        QFETCH(QString, key);
        QFETCH(unsigned, layer);
        QFETCH(QVariant, configured);
        QFETCH(QVariant, expected);

        KXaCommonAuthHandler handler;
        setConfigValue(ConfigLayer(layer), key, configured);
        const QVariant value = handler.getInfo(key);
        QCOMPARE(value, expected);
        QCOMPARE(value.userType(), expected.userType());
    }

    void answersFollowTheHost()
    {
        KXaCommonAuthHandler handler;
        QCOMPARE(handler.getInfo("Product/Url/EULA").toString(), QString(kBase) + "/eula");
        setProductString("JumpUrl", "https://other.example/");
        QCOMPARE(handler.getInfo("Product/Url/EULA").toString(),
                 QString("https://other.example/eula"));
    }

    void overseasTechSupportGoesToConfiguration()
    {
        setOverseasVersion(true);
        KWarningCatcher catcher;
        KXaCommonAuthHandler handler;
        // The user layer counts here: the fallback reads every layer.
        setConfigValue(UserLayer, "Product/TechSupportUrl", "https://support.example/");
        QCOMPARE(handler.getInfo("Product/TechSupportUrl"), QVariant("https://support.example/"));

        KXaCommonAuthHandler fresh;
        setConfigValue(UserLayer, "Product/TechSupportUrl", QVariant());
        QVERIFY(fresh.getInfo("Product/TechSupportUrl").isNull());
        QCOMPARE(catcher.warnings().size(), 1);
        // The other addresses are the same in both editions.
        QCOMPARE(fresh.getInfo("Product/HelpPage").toString(), QString(kBase) + "/help_page");
    }

    void noJumpBase()
    {
        setProductString("JumpUrl", QString());
        KWarningCatcher catcher;
        KXaCommonAuthHandler handler;

        // Text answers count as missing and fall through to the warning.
        QVERIFY(handler.getInfo("Product/Url/EULA").isNull());
        QVERIFY(handler.getInfo("Server/ReinstallServer").isNull());
        QVERIFY(handler.getInfo("Product/HomePage").isNull());
        QCOMPARE(catcher.warnings().size(), 3);

        // The URL answer is an empty URL, which is an answer.
        const QVariant launcher = handler.getInfo("Product/Url/LauncherPage");
        QVERIFY(!launcher.isNull());
        QCOMPARE(launcher.userType(), int(QMetaType::QUrl));
        QVERIFY(launcher.toUrl().isEmpty());

        // A user-layer value the product table ignores still answers through
        // the general fallback.
        KXaCommonAuthHandler other;
        setConfigValue(UserLayer, "Product/HelpPage", "https://mine.example/");
        QCOMPARE(other.getInfo("Product/HelpPage"), QVariant("https://mine.example/"));
        QCOMPARE(catcher.warnings().size(), 3);
    }
};

QTEST_GUILESS_MAIN(TestProductInfo)
#include "tst_productinfo.moc"
