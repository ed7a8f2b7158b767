// Loads the built plug-in the way the suite does and checks what a host
// sees of it: its entry point, its handler and its exported symbols.

#include "ktestenvironment.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/ikauthorizationhandler.h>
#include <vexlite/krtauth.h>

#include <QCoreApplication>
#include <QLibrary>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

class TestPluginLoad : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    QLibrary m_plugin;
    GetAuthorizationHandlerFunc m_entry = nullptr;

    QString pluginPath() const
    {
        return QCoreApplication::applicationDirPath() + QStringLiteral("/libauthplugin.so");
    }

private slots:
    void initTestCase()
    {
        m_plugin.setFileName(pluginPath());
        QVERIFY2(m_plugin.load(), qPrintable(m_plugin.errorString()));
        m_entry = reinterpret_cast<GetAuthorizationHandlerFunc>(
            m_plugin.resolve("GetAuthorizationHandler"));
        QVERIFY2(m_entry, "the plain, unmangled entry point must resolve");
    }

    void init() { m_env.resetHost(); }

    void entryReturnsOneHandler()
    {
        IKAuthorizationHandler* first = m_entry();
        QVERIFY(first);
        QCOMPARE(m_entry(), first);
        QCOMPARE(m_entry(), first);
    }

    void hostReachesTheHandler()
    {
        krt::hostcontrol::setProductString("JumpUrl", "https://jump.example/");
        krt::hostcontrol::setHandler(m_entry());

        QCOMPARE(krt::auth::getStringInfo("Product/VexName"), QString("Zento Office"));
        QCOMPARE(krt::auth::getStringInfo("Product/Url/EULA"),
                 QString("https://jump.example/eula"));
        QCOMPARE(krt::auth::getInfo("Product/Url/LauncherPage").toUrl(),
                 QUrl("https://jump.example/launcher_page"));
        QCOMPARE(krt::auth::getBoolInfo("Patent/Anything", true), false);
        QVERIFY(krt::auth::prehook("OpenEnterpriseCenter", false, nullptr));
        QCOMPARE(krt::hostcontrol::executedCommands(), QStringList("OpenEnterpriseCenter"));
    }

    void handlerIsTheOneHostsKeep()
    {
        // Information seeded into the handler is seen through every path.
        IKAuthorizationHandler* handler = m_entry();
        handler->insertStaticInfo("Product/Seeded", "kept");
        krt::hostcontrol::setHandler(handler);
        QCOMPARE(krt::auth::getStringInfo("Product/Seeded"), QString("kept"));
        QCOMPARE(m_entry()->getInfo("Product/Seeded"), QVariant("kept"));
    }

    void exportsOnlyWhatHostsUse()
    {
        QProcess nm;
        nm.start(QStringLiteral("nm"), {"-D", "--defined-only", "-C", pluginPath()});
        QVERIFY2(nm.waitForFinished(30000), "nm did not finish");
        QCOMPARE(nm.exitCode(), 0);

        // Hosts need the entry point; everything else stays inside.
        const QRegularExpression allowed(QStringLiteral("^GetAuthorizationHandler$"));
        QStringList exported;
        QStringList unexpected;
        const QStringList lines =
            QString::fromLocal8Bit(nm.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
        for (const QString& line : lines) {
            const QString name = line.section(' ', 2);
            exported << name;
            if (!allowed.match(name).hasMatch())
                unexpected << name;
        }
        QVERIFY(exported.contains("GetAuthorizationHandler"));
        QVERIFY2(unexpected.isEmpty(), qPrintable(unexpected.join(", ")));
    }

    void cleanupTestCase() { krt::hostcontrol::setHandler(nullptr); }
};

QTEST_GUILESS_MAIN(TestPluginLoad)
#include "tst_pluginload.moc"
