// The stand-in host: profile loading, layered configuration, product
// values, the catalogue and the krt::auth wrappers without a plug-in.

#include "ktestenvironment.h"
#include "kwarningcatcher.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/krtauth.h>
#include <vexlite/krtconfigs.h>
#include <vexlite/krti18n.h>
#include <vexlite/krtinfo.h>
#include <vexlite/krtproduct.h>

#include <QDir>
#include <QFile>
#include <QtTest>

using namespace krt::hostcontrol;

class TestVexliteHost : public QObject
{
    Q_OBJECT

private:
    void writeProfile(const QByteArray& json)
    {
        QFile file(QDir(m_env.profilePath()).filePath(QStringLiteral("host.json")));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(json);
    }

    KTestEnvironment m_env;

private slots:
    void init() { m_env.resetHost(); }

    void configLayers_data()
    {
        QTest::addColumn<unsigned>("layers");
        QTest::addColumn<unsigned>("mask");
        QTest::addColumn<QString>("expected");

        // Each layer holds the text of its own name; the highest admitted wins.
        QTest::newRow("all layers, policy wins") << 0x1Fu << 31u << "policy";
        QTest::newRow("all layers, mask 27 still policy") << 0x1Fu << 27u << "policy";
        QTest::newRow("user only, mask 31") << unsigned(UserLayer) << 31u << "user";
        QTest::newRow("user only, mask 27 leaves it out") << unsigned(UserLayer) << 27u << "";
        QTest::newRow("user over machine, mask 31") << 0x06u << 31u << "user";
        QTest::newRow("user over machine, mask 27") << 0x06u << 27u << "machine";
        QTest::newRow("server over user") << 0x0Cu << 31u << "server";
        QTest::newRow("builtin only") << unsigned(BuiltinLayer) << 27u << "builtin";
        QTest::newRow("empty mask") << 0x1Fu << 0u << "";
        QTest::newRow("bits above the layers ignored")
            << unsigned(MachineLayer) << 0xFFFFFFE0u << "";
    }

    void configLayers()
    {
        QFETCH(unsigned, layers);
        QFETCH(unsigned, mask);
        QFETCH(QString, expected);

        const QStringList names{"builtin", "machine", "user", "server", "policy"};
        for (int bit = 0; bit < names.size(); ++bit) {
            if (layers & (1u << bit))
                setConfigValue(ConfigLayer(1u << bit), "Product/HomePage", names[bit]);
        }
        const QVariant value = krt::configs::getValue("Product/HomePage", mask);
        QCOMPARE(value.isNull(), expected.isEmpty());
        QCOMPARE(value.toString(), expected);
    }

    void nullValueRemovesConfig()
    {
        setConfigValue(UserLayer, "k", "v");
        setConfigValue(UserLayer, "k", QVariant());
        QVERIFY(krt::configs::getValue("k", AllLayers).isNull());
    }

    void profileFromFile()
    {
        // Single quotes keep the text readable; they become JSON's double quotes.
        QByteArray json =
            "{ 'product': { 'overseas': true,"
            "               'strings': { 'JumpUrl': 'https://j.example/' },"
            "               'features': { 'SimplifiedUserCenter': true,"
            "                             'IntranetVersion': false } },"
            "  'configs': { 'user': { 'Product/HomePage': '', 'Count': 3,"
            "                         'Ratio': 0.5, 'On': true },"
            "               'server': { 'Product/HelpPage': 'https://help.example/' } },"
            "  'info': { 'version': '12.1.0.17890' },"
            "  'i18n': { 'language': 'zh_CN' } }";
        writeProfile(json.replace('\'', '"'));
        QString error;
        QVERIFY2(loadProfile(m_env.profilePath(), &error), qPrintable(error));

        QCOMPARE(krt::product::getString("JumpUrl"), QString("https://j.example/"));
        QCOMPARE(krt::product::getString("Missing"), QString());
        QVERIFY(krt::product::isOverseasVersion());
        QVERIFY(krt::product::isSupported("SimplifiedUserCenter"));
        QVERIFY(!krt::product::isSupported("IntranetVersion"));
        QVERIFY(!krt::product::isSupported("Unknown"));
        QCOMPARE(krt::info::version(), QString("12.1.0.17890"));
        QCOMPARE(language(), QString("zh_CN"));

        const QVariant empty = krt::configs::getValue("Product/HomePage", 31);
        QVERIFY(!empty.isNull());
        QCOMPARE(empty.toString(), QString(""));
        QCOMPARE(krt::configs::getValue("Count", 31).toString(), QString("3"));
        QCOMPARE(krt::configs::getValue("Count", 31).type(), QVariant::Int);
        QCOMPARE(krt::configs::getValue("Ratio", 31).toDouble(), 0.5);
        QCOMPARE(krt::configs::getValue("On", 31).toBool(), true);
        QCOMPARE(krt::configs::getValue("Product/HelpPage", 27).toString(),
                 QString("https://help.example/"));
    }

    void badProfiles_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("writeFile");
        QTest::addColumn<QString>("errorPart");

        QTest::newRow("missing file") << QByteArray() << false << "cannot read host profile";
        QTest::newRow("not json") << QByteArray("{ product: ") << true << "is not a JSON object";
        QTest::newRow("array") << QByteArray("[1, 2]") << true << "is not a JSON object";
    }

    void badProfiles()
    {
        QFETCH(QByteArray, content);
        QFETCH(bool, writeFile);
        QFETCH(QString, errorPart);

        QFile::remove(QDir(m_env.profilePath()).filePath("host.json"));
        if (writeFile)
            writeProfile(content);
        setProductString("JumpUrl", "https://stale.example/");

        QString error;
        QVERIFY(!loadProfile(m_env.profilePath(), &error));
        QVERIFY2(error.contains(errorPart), qPrintable(error));
        QVERIFY2(error.contains(m_env.profilePath()), qPrintable(error));
        // A failed load leaves an empty host, not the previous state.
        QCOMPARE(krt::product::getString("JumpUrl"), QString());
        QCOMPARE(krt::info::version(), QString("0.0.0.0"));
    }

    void saveAndLoadRoundTrip()
    {
        setProductString("JumpUrl", "https://j.example/");
        setFeatureSupported("IntranetVersion", true);
        setOverseasVersion(true);
        setConfigValue(PolicyLayer, "Product/VexName", "Brand");
        setLanguage("zh_CN");
        setVersion("9.1.0.4818");
        const QString other = m_env.rootPath() + "/saved";
        QString error;
        QVERIFY2(saveProfile(other, &error), qPrintable(error));

        resetProfile();
        QVERIFY(loadProfile(other, &error));
        QCOMPARE(profileDir(), QDir(other).absolutePath());
        QCOMPARE(krt::product::getString("JumpUrl"), QString("https://j.example/"));
        QVERIFY(krt::product::isSupported("IntranetVersion"));
        QVERIFY(krt::product::isOverseasVersion());
        QCOMPARE(krt::configs::getValue("Product/VexName", 0x10).toString(), QString("Brand"));
        QCOMPARE(language(), QString("zh_CN"));
        QCOMPARE(krt::info::version(), QString("9.1.0.4818"));
    }

    void catalogue_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("expected");

        QTest::newRow("English") << "en_US"
                                 << "Zento Office";
        QTest::newRow("Chinese") << "zh_CN" << QString::fromUtf8("Zento 办公");
        QTest::newRow("Chinese, country-less") << "zh" << QString::fromUtf8("Zento 办公");
        QTest::newRow("no catalogue") << "fr_FR"
                                      << "Zento Office";
    }

    void catalogue()
    {
        QFETCH(QString, language);
        QFETCH(QString, expected);

        KWarningCatcher catcher;
        setLanguage(language);
        QCOMPARE(krt::kCachedTr("vex_vexcomm", "Zento Office", "_vex_vexProductName", -1),
                 expected);
        // Unknown texts come back as their source.
        QCOMPARE(krt::kCachedTr("vex_vexcomm", "Not in the catalogue", "_x", -1),
                 QString("Not in the catalogue"));
    }

    void catalogueFollowsLanguageChange()
    {
        setLanguage("zh_CN");
        const QString chinese =
            krt::kCachedTr("vex_vexcomm", "Zento Office", "_vex_vexProductName");
        setLanguage("en_US");
        const QString english =
            krt::kCachedTr("vex_vexcomm", "Zento Office", "_vex_vexProductName");
        QVERIFY(chinese != english);
        QCOMPARE(english, QString("Zento Office"));
    }

    void wrappersWithoutHandler()
    {
        QVERIFY(krt::auth::getInfo("Product/VexName").isNull());
        QCOMPARE(krt::auth::getStringInfo("Product/VexName", "fallback"), QString("fallback"));
        QCOMPARE(krt::auth::getIntInfo("Auth/Anything", 7), 7);
        QCOMPARE(krt::auth::getBoolInfo("Support/Anything", true), true);

        // With nobody to ask, the host goes on with every command.
        QVERIFY(krt::auth::prehook("OpenUserCenter", false, nullptr));
        QVERIFY(krt::auth::prehook("OpenEnterpriseCenter", nullptr, nullptr));
        QCOMPARE(executedCommands(), QStringList({"OpenUserCenter", "OpenEnterpriseCenter"}));
    }
};

QTEST_GUILESS_MAIN(TestVexliteHost)
#include "tst_vexlitehost.moc"
