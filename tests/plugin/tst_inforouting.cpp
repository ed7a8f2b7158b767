// How the handler routes information keys: groups, the cache, the
// configuration fallback and the once-per-key warning.

#include "ktestenvironment.h"
#include "kwarningcatcher.h"

#include "plugin/kauthorizationhandler.h"

#include <vexlite/hostcontrol.h>

#include <QtTest>

using namespace krt::hostcontrol;

namespace {

// Records which group operation a key reached and answers what it is told.
class KRecordingHandler : public KAuthorizationHandler
{
public:
    QVariant productInfo(const QString& k, const QString& g, const QString& n) override
    {
        return record("product", k, g, n);
    }
    QVariant authInfo(const QString& k, const QString& g, const QString& n) override
    {
        const QVariant base = KAuthorizationHandler::authInfo(k, g, n);
        record("auth", k, g, n);
        return base;
    }
    QVariant serverInfo(const QString& k, const QString& g, const QString& n) override
    {
        return record("server", k, g, n);
    }

    QStringList calls;
    QVariant answer;

private:
    QVariant record(const char* op, const QString& k, const QString& g, const QString& n)
    {
        calls << QStringLiteral("%1(%2|%3|%4)").arg(QLatin1String(op), k, g, n);
        return answer;
    }
};

QString notFound(const QString& key)
{
    return QStringLiteral("The info %1 was not found, the key must be handled!").arg(key);
}

} // namespace

class TestInfoRouting : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void init() { m_env.resetHost(); }

    void routing_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("call");

        QTest::newRow("product") << "Product/HomePage"
                                 << "product(Product/HomePage|Product|HomePage)";
        QTest::newRow("name keeps later separators")
            << "Product/Url/EULA"
            << "product(Product/Url/EULA|Product|Url/EULA)";
        QTest::newRow("no separator: group and name are the key")
            << "Product"
            << "product(Product|Product|Product)";
        QTest::newRow("empty name") << "Product/"
                                    << "product(Product/|Product|)";
        QTest::newRow("auth") << "Auth/Token"
                              << "auth(Auth/Token|Auth|Token)";
        QTest::newRow("server") << "Server/ReinstallServer"
                                << "server(Server/ReinstallServer|Server|ReinstallServer)";
        QTest::newRow("group is case-sensitive") << "product/HomePage"
                                                 << "";
        QTest::newRow("unknown group") << "Other/HomePage"
                                       << "";
        QTest::newRow("support has no operation") << "Support/Foo"
                                                  << "";
        QTest::newRow("empty group") << "/HomePage"
                                     << "";
    }

    void routing()
    {
        QFETCH(QString, key);
        QFETCH(QString, call);

        KWarningCatcher catcher;
        KRecordingHandler handler;
        handler.getInfo(key);
        QCOMPARE(handler.calls, call.isEmpty() ? QStringList() : QStringList(call));
    }

    void emptyKey()
    {
        KWarningCatcher catcher;
        KRecordingHandler handler;
        handler.insertStaticInfo(QString(), "seeded");
        const int before = handler.cachedInfoCount();

        QVERIFY(handler.getInfo(QString()).isNull());
        QVERIFY(handler.getInfo("").isNull());
        QVERIFY(handler.calls.isEmpty());
        QVERIFY(catcher.warnings().isEmpty());
        QCOMPARE(handler.cachedInfoCount(), before);
    }

    void warnsOncePerKey()
    {
        KWarningCatcher catcher;
        KRecordingHandler handler;

        QVERIFY(handler.getInfo("Product/Nothing").isNull());
        QCOMPARE(catcher.warnings(), QStringList(notFound("Product/Nothing")));
        QCOMPARE(handler.calls.size(), 1);

        // The null is remembered: no second warning, no second routing, and
        // a value configured later is not seen either.
        setConfigValue(UserLayer, "Product/Nothing", "late");
        QVERIFY(handler.getInfo("Product/Nothing").isNull());
        QCOMPARE(catcher.warnings().size(), 1);
        QCOMPARE(handler.calls.size(), 1);

        QVERIFY(handler.getInfo("Other/Nothing").isNull());
        QCOMPARE(catcher.warnings().last(), notFound("Other/Nothing"));
        QCOMPARE(handler.cachedInfoCount(), 2);
    }

    void supportAndPatentDefaultToFalse_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("support") << "Support/OnlineHelp";
        QTest::newRow("patent") << "Patent/Notice";
        QTest::newRow("support without name") << "Support";
    }

    void supportAndPatentDefaultToFalse()
    {
        QFETCH(QString, key);

        KWarningCatcher catcher;
        KRecordingHandler handler;
        const QVariant first = handler.getInfo(key);
        QCOMPARE(first.type(), QVariant::Bool);
        QCOMPARE(first.toBool(), false);

        // Cached: a value configured afterwards does not change the answer.
        setConfigValue(MachineLayer, key, true);
        QCOMPARE(handler.getInfo(key), QVariant(false));
        QVERIFY(catcher.warnings().isEmpty());
        QCOMPARE(handler.cachedInfoCount(), 1);
    }

    void configurationAnswersAndIsCached_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<unsigned>("layer");

        QTest::newRow("unknown group, user layer") << "Other/Value" << unsigned(UserLayer);
        QTest::newRow("product name nobody answers") << "Product/Custom" << unsigned(PolicyLayer);
        QTest::newRow("support configured true") << "Support/OnlineHelp" << unsigned(BuiltinLayer);
    }

    void configurationAnswersAndIsCached()
    {
        QFETCH(QString, key);
        QFETCH(unsigned, layer);

        KWarningCatcher catcher;
        KRecordingHandler handler;
        setConfigValue(ConfigLayer(layer), key, "configured");
        QCOMPARE(handler.getInfo(key), QVariant("configured"));

        setConfigValue(ConfigLayer(layer), key, "changed");
        QCOMPARE(handler.getInfo(key), QVariant("configured"));
        QVERIFY(catcher.warnings().isEmpty());
    }

    void routedAnswersAreNotCached()
    {
        KRecordingHandler handler;
        handler.answer = "first";
        QCOMPARE(handler.getInfo("Product/HomePage"), QVariant("first"));
        handler.answer = "second";
        QCOMPARE(handler.getInfo("Product/HomePage"), QVariant("second"));
        QCOMPARE(handler.calls.size(), 2);
        QCOMPARE(handler.cachedInfoCount(), 0);
    }

    void nullRoutedAnswerFallsBackToConfiguration()
    {
        KRecordingHandler handler;
        handler.answer = QString(); // a null string counts as no answer
        setConfigValue(UserLayer, "Product/HomePage", "https://configured.example/");
        QCOMPARE(handler.getInfo("Product/HomePage"), QVariant("https://configured.example/"));
    }

    void staticInfoComesFirst()
    {
        KRecordingHandler handler;
        handler.answer = "computed";
        handler.insertStaticInfo("Product/HomePage", "seeded");
        QCOMPARE(handler.getInfo("Product/HomePage"), QVariant("seeded"));
        handler.insertStaticInfo("Product/HomePage", "replaced");
        QCOMPARE(handler.getInfo("Product/HomePage"), QVariant("replaced"));
        QVERIFY(handler.calls.isEmpty());

        // A seeded null is an answer too: returned without routing or warning.
        KWarningCatcher catcher;
        handler.insertStaticInfo("Product/Hidden", QVariant());
        QVERIFY(handler.getInfo("Product/Hidden").isNull());
        QVERIFY(handler.calls.isEmpty());
        QVERIFY(catcher.warnings().isEmpty());
    }

    void startupSplashIsEmptyText()
    {
        KWarningCatcher catcher;
        KAuthorizationHandler handler;
        const QVariant splash = handler.getInfo("Auth/StartupSplashFileName");
        QCOMPARE(splash.type(), QVariant::String);
        QCOMPARE(splash.toString(), QString(""));
        QVERIFY(catcher.warnings().isEmpty());

        QVERIFY(handler.getInfo("Auth/Other").isNull());
        QCOMPARE(catcher.warnings(), QStringList(notFound("Auth/Other")));
    }
};

QTEST_GUILESS_MAIN(TestInfoRouting)
#include "tst_inforouting.moc"
