// The stand-in host: layered configuration, the profile file, the
// catalogue, the krt::auth wrappers without a plug-in, and the watchdog of
// the event loop. The test thread blocks until the watchdog has seen what a
// row expects, so nothing here depends on how fast the machine is.

#include "kblockingwait.h"
#include "ktestenvironment.h"

#include <vex/klongtimeblockdetector.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/kdcinfoc.h>
#include <vexlite/kdcinfocdetail.h>
#include <vexlite/krtauth.h>
#include <vexlite/krtconfigs.h>
#include <vexlite/krti18n.h>
#include <vexlite/krtinfo.h>
#include <vexlite/krtproduct.h>
#include <vexlite/kuwpcommonsettings.h>
#include <vexlite/kxuseragentutil.h>

#include <QThread>
#include <QtTest>

using namespace krt::hostcontrol;

namespace {
constexpr int kThreshold = 100;
} // namespace

class TestHost : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KLongTimeBlockDetector m_detector;

    bool writeProfile(const QByteArray& json) const
    {
        QFile file(m_env.profilePath() + "/host.json");
        return file.open(QIODevice::WriteOnly) && file.write(json) == json.size();
    }

    // Serves the loop long enough for every pending ping to be answered.
    void answer() { QTest::qWait(2 * kThreshold); }

private slots:
    void init() { m_env.resetHost(); }

    void configLayers_data()
    {
        QTest::addColumn<unsigned>("layers");
        QTest::addColumn<unsigned>("mask");
        QTest::addColumn<QString>("expected");

        // Each layer holds the text of its own name; the highest admitted wins.
        QTest::newRow("all layers, policy wins") << 0x1Fu << 27u << "policy";
        QTest::newRow("user only, mask 31") << unsigned(UserLayer) << 31u << "user";
        QTest::newRow("user only, mask 27 leaves it out") << unsigned(UserLayer) << 27u << "";
        QTest::newRow("user over machine, mask 31") << 0x06u << 31u << "user";
        QTest::newRow("user over machine, mask 27") << 0x06u << 27u << "machine";
        QTest::newRow("server over user") << 0x0Cu << 31u << "server";
        QTest::newRow("builtin only") << unsigned(BuiltinLayer) << 27u << "builtin";
        QTest::newRow("empty mask") << 0x1Fu << 0u << "";
        QTest::newRow("bits above the layers") << unsigned(MachineLayer) << 0xFFFFFFE0u << "";
    }

    void configLayers()
    {
        QFETCH(unsigned, layers);
        QFETCH(unsigned, mask);
        QFETCH(QString, expected);

        const QStringList names{"builtin", "machine", "user", "server", "policy"};
        for (int bit = 0; bit < names.size(); ++bit) {
            if (layers & (1u << bit))
                setConfigValue(ConfigLayer(1u << bit), "k", names[bit]);
        }
        const QVariant value = krt::configs::getValue("k", mask);
        QCOMPARE(value.isNull(), expected.isEmpty());
        QCOMPARE(value.toString(), expected);
        setConfigValue(PolicyLayer, "k", QVariant()); // a null value removes it
        QCOMPARE(krt::configs::getValue("k", PolicyLayer), QVariant());
    }

    // What a profile file holds, and the same again after it was saved
    // elsewhere, emptied and loaded from there.
    void profileRoundTrip()
    {
        QByteArray json =
            "{ 'product': { 'overseas': true, 'strings': { 'JumpUrl': 'https://j.example/' },"
            "    'features': { 'SimplifiedUserCenter': true, 'IntranetVersion': false } },"
            "  'configs': { 'user': { 'Product/HomePage': '', 'Count': 3 },"
            "               'server': { 'Product/HelpPage': 'h' } },"
            "  'info': { 'version': '12.1.0.17890', 'installUuid': 'U', 'hdid': 'H', 'mc': 'M',"
            "            'userAgent': 'A', 'uwpInfoGUID': 'G' },"
            "  'i18n': { 'language': 'zh_CN' } }";
        QVERIFY(writeProfile(json.replace('\'', '"')));
        const QString saved = m_env.rootPath() + "/saved";
        for (const QString& dir : {m_env.profilePath(), saved}) {
            QString error;
            QVERIFY2(loadProfile(dir, &error), qPrintable(error));
            QCOMPARE(krt::product::getString("JumpUrl"), QString("https://j.example/"));
            QCOMPARE(krt::product::getString("Missing"), QString());
            QVERIFY(krt::product::isOverseasVersion());
            QVERIFY(krt::product::isSupported("SimplifiedUserCenter"));
            QVERIFY(!krt::product::isSupported("IntranetVersion"));
            QVERIFY(!krt::product::isSupported("Unknown"));
            QVERIFY(!krt::configs::getValue("Product/HomePage", 31).isNull()); // empty text
            QCOMPARE(krt::configs::getValue("Count", 31), QVariant(3));
            QCOMPARE(krt::configs::getValue("Product/HelpPage", 27), QVariant("h"));
            QCOMPARE(language(), QString("zh_CN"));
            const QStringList identity{krt::info::version(),
                                       KDcInfoC::getVersion(),
                                       KDcInfoCDetail::getUuid(),
                                       KDcInfoCDetail::getHdid(),
                                       krt::info::installHdId(),
                                       KDcInfoC::getMC(),
                                       KxUserAgentUtil::getUserAgent(),
                                       krt::KUWPCommonSettings().value("infoGUID").toString()};
            QCOMPARE(identity,
                     QStringList({"12.1.0.17890", "12.1.0.17890", "U", "H", "H", "M", "A", "G"}));
            QVERIFY(saveProfile(saved, &error));
            resetProfile();
            QCOMPARE(krt::product::getString("JumpUrl"), QString());
        }
    }

    void badProfiles_data()
    {
        QTest::addColumn<QByteArray>("content"); // empty: no file
        QTest::addColumn<QString>("errorPart");

        QTest::newRow("missing file") << QByteArray() << "cannot read host profile";
        QTest::newRow("not json") << QByteArray("{ product: ") << "is not a JSON object";
        QTest::newRow("array") << QByteArray("[1, 2]") << "is not a JSON object";
    }

    void badProfiles()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, errorPart);

        QFile::remove(m_env.profilePath() + "/host.json");
        QVERIFY(content.isEmpty() || writeProfile(content));
        setProductString("JumpUrl", "https://stale.example/");
        QString error;
        QVERIFY(!loadProfile(m_env.profilePath(), &error));
        QVERIFY2(error.contains(errorPart) && error.contains(m_env.profilePath()),
                 qPrintable(error));
        // A failed load leaves an empty host, not the previous state.
        QCOMPARE(krt::product::getString("JumpUrl"), QString());
        QCOMPARE(krt::info::version(), QString("0.0.0.0"));
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

        // The answer kept for another language must not stick.
        setLanguage(language == "en_US" ? "zh_CN" : "en_US");
        krt::kCachedTr("vex_vexcomm", "Zento Office", "_vex_vexProductName");
        setLanguage(language);
        QCOMPARE(krt::kCachedTr("vex_vexcomm", "Zento Office", "_vex_vexProductName"), expected);
        QCOMPARE(krt::kCachedTr("vex_vexcomm", "Not in the catalogue", "_x"),
                 QString("Not in the catalogue"));
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

    void blocks_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<int>("reports");
        QTest::addColumn<int>("suppressed");

        QTest::newRow("unguarded block") << QStringList{"untilReported", "answer"} << 1 << 0;
        QTest::newRow("one report per block")
            << QStringList{"untilReported", "hold", "hold", "answer"} << 1 << 0;
        QTest::newRow("loop kept running") << QStringList{"serve"} << 0 << 0;
        QTest::newRow("nested guards, inner one released")
            << QStringList{"ignore", "ignore", "untilSuppressed", "release",
                           "hold",   "hold",   "release",         "answer"}
            << 0 << 1;
        QTest::newRow("block outlasting its guard")
            << QStringList{"ignore", "untilSuppressed", "release", "untilReported", "answer"} << 1
            << 1;
        QTest::newRow("release without a guard changes nothing")
            << QStringList{"release", "ignore", "untilSuppressed", "release", "answer"} << 0 << 1;
        QTest::newRow("stopped") << QStringList{"stop", "hold", "hold", "start", "answer"} << 0
                                 << 0;
    }

    void blocks()
    {
        QFETCH(QStringList, steps);
        QFETCH(int, reports);
        QFETCH(int, suppressed);

        m_detector.setThreshold(kThreshold);
        m_detector.start();
        answer();
        const int reportsBefore = m_detector.reportCount();
        const int suppressedBefore = m_detector.suppressedCount();
        for (const QString& step : steps) {
            const int seen =
                step == "untilReported" ? m_detector.reportCount() : m_detector.suppressedCount();
            if (step.startsWith("until"))
                QVERIFY(blockUntil([&] {
                    return (step == "untilReported" ? m_detector.reportCount()
                                                    : m_detector.suppressedCount()) > seen;
                }));
            else if (step == "ignore" || step == "release")
                m_detector.setIgnored(step == "ignore");
            else if (step == "hold")
                QThread::msleep(2 * kThreshold);
            else if (step == "stop")
                m_detector.stop();
            else if (step == "start")
                m_detector.start();
            else if (step == "answer")
                answer();
            else if (step == "serve")
                QTest::qWait(5 * kThreshold);
        }
        QCOMPARE(m_detector.reportCount() - reportsBefore, reports);
        QCOMPARE(m_detector.suppressedCount() - suppressedBefore, suppressed);
        QVERIFY(!m_detector.isIgnored());
    }
};

QTEST_GUILESS_MAIN(TestHost)
#include "tst_host.moc"
