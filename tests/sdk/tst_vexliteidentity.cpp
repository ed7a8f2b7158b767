// The stand-in host's installation identity and user agent: read from the
// profile's "info" section, set through the control API, kept by a saved
// profile.

#include "ktestenvironment.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/kdcinfoc.h>
#include <vexlite/kdcinfocdetail.h>
#include <vexlite/krtinfo.h>
#include <vexlite/kuwpcommonsettings.h>
#include <vexlite/kxuseragentutil.h>

#include <QDir>
#include <QFile>
#include <QtTest>

#include <functional>

using Getter = std::function<QString()>;
using Setter = std::function<void(const QString&)>;
Q_DECLARE_METATYPE(Getter)
Q_DECLARE_METATYPE(Setter)

namespace {

QString uwpGuid()
{
    return krt::KUWPCommonSettings().value("infoGUID").toString();
}

void setUwpGuid(const QString& value)
{
    krt::hostcontrol::setUwpCommonValue("infoGUID", value);
}

} // namespace

class TestVexliteIdentity : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void init() { m_env.resetHost(); }

    void values_data()
    {
        QTest::addColumn<QString>("infoKey");
        QTest::addColumn<Getter>("get");
        QTest::addColumn<Setter>("set");
        const auto row = [](const char* tag, const char* key, const Getter& get,
                            const Setter& set) {
            QTest::newRow(tag) << QString(key) << get << set;
        };
        using namespace krt::hostcontrol;
        row("installation UUID", "installUuid", KDcInfoCDetail::getUuid, setInstallUuid);
        row("hardware identifier", "hdid", KDcInfoCDetail::getHdid, setHardwareId);
        row("hardware identifier, krt::info", "hdid", krt::info::installHdId, setHardwareId);
        row("distribution channel", "mc", KDcInfoC::getMC, setDistributionChannel);
        row("user agent", "userAgent", KxUserAgentUtil::getUserAgent, setUserAgent);
        row("UWP infoGUID", "uwpInfoGUID", uwpGuid, setUwpGuid);
    }

    void values()
    {
        QFETCH(QString, infoKey);
        QFETCH(Getter, get);
        QFETCH(Setter, set);

        QCOMPARE(get(), QString());

        QFile file(QDir(m_env.profilePath()).filePath("host.json"));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(QStringLiteral("{ \"info\": { \"%1\": \"from file\" } }").arg(infoKey).toUtf8());
        file.close();
        QVERIFY(krt::hostcontrol::loadProfile(m_env.profilePath()));
        QCOMPARE(get(), QString("from file"));

        set(QString::fromUtf8("设置 {A-1}"));
        QCOMPARE(get(), QString::fromUtf8("设置 {A-1}"));
        QVERIFY(krt::hostcontrol::saveProfile(m_env.profilePath()));
        krt::hostcontrol::resetProfile();
        QCOMPARE(get(), QString());
        QVERIFY(krt::hostcontrol::loadProfile(m_env.profilePath()));
        QCOMPARE(get(), QString::fromUtf8("设置 {A-1}"));
    }

    void uwpDefaults()
    {
        const krt::KUWPCommonSettings settings;
        QCOMPARE(settings.value("infoGUID", 42), QVariant(42));
        QVERIFY(!settings.value("infoGUID").isValid());
        QCOMPARE(settings.value("", "x"), QVariant("x"));

        // An empty stored text is a value, not an absence.
        krt::hostcontrol::setUwpCommonValue("infoGUID", "");
        QCOMPARE(settings.value("infoGUID", 42), QVariant(""));
        krt::hostcontrol::setUwpCommonValue("infoGUID", QVariant());
        QCOMPARE(settings.value("infoGUID", 42), QVariant(42));
    }

    void versionFollowsInfo()
    {
        krt::hostcontrol::setVersion("12.1.0.17890");
        QCOMPARE(KDcInfoC::getVersion(), QString("12.1.0.17890"));
    }
};

QTEST_GUILESS_MAIN(TestVexliteIdentity)
#include "tst_vexliteidentity.moc"
