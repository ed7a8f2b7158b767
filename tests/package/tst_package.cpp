// The library as another module of the suite gets it: the build installed
// into a temporary prefix and moved elsewhere (so nothing may depend on
// where it was installed), the host run from there, and a small project
// (consumer/) configured with find_package(AuthPlugin), built with this
// build's compiler and flags, and run: against the installed plug-in, then
// against one rebuilt with another private layout.

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <vexlite/hostcontrol.h>

#include <QJsonDocument>
#include <QtTest>

using namespace AuthTest;

namespace {

// Configuring and building a Qt program takes a while on a busy machine.
constexpr int kBuildTimeoutMs = 300000;

} // namespace

class TestPackage : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KTestAppDir m_app{m_env.rootPath()};
    // The installed tree, moved away from where it was installed.
    const QString m_prefix = m_env.rootPath() + "/moved";
    const QString m_appDir = m_prefix + "/lib/zentooffice";
    const QString m_consumerBuild = m_env.rootPath() + "/consumer-build";
    QMap<QString, QString> m_seen; // the consumer's report: subject -> observation

    static QString runpath(const KTestAppDir& app, const QString& file)
    {
        const QString readelf = QStandardPaths::findExecutable("readelf");
        const QString dynamic = app.run(readelf, {"-d", file}).out;
        return QRegularExpression("\\(RUNPATH\\)\\s+Library runpath: \\[([^]]*)\\]")
            .match(dynamic)
            .captured(1);
    }

private slots:
    void initTestCase()
    {
        const QString staged = m_env.rootPath() + "/staged";
        const KTestAppDir::Result install = m_app.run(
            AUTH_CMAKE, {"--install", AUTH_BUILD_DIR, "--prefix", staged}, {}, kBuildTimeoutMs);
        QVERIFY2(install.exitCode == 0, qPrintable(install.out + install.err));
        QVERIFY(QDir().rename(staged, m_prefix));
    }

    // Every binary finds its libraries relative to itself.
    void layout_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("runpath"); // for binaries

        const auto row = [](const char* tag, const QString& path, const char* runpath = "") {
            QTest::newRow(tag) << path << QString(runpath);
        };
        const QString app = "lib/zentooffice/";
        for (const char* binary : {"zentooffice", "authinfo", "libauthplugin.so",
                                   "libauthcommon.so", "libvex.so", "libvexlite.so"})
            row(binary, app + binary, "$ORIGIN");
        row("cloud simulator", app + "addons/deskhive/libdeskhive.so", "$ORIGIN/../..");
        for (const char* file :
             {"addons/deskhive/state.json", "addons/deskhive/avatar.png", "profile/host.json"})
            row(file, app + file);
        for (const char* file :
             {"AuthPluginConfig.cmake", "AuthPluginConfigVersion.cmake", "AuthPluginTargets.cmake"})
            row(file, QString("lib/cmake/AuthPlugin/") + file);
        row("host headers", "include/vex/kxstyledialog.h");
        row("helper headers", "include/authcommon/qcommpaths.h");
    }

    void layout()
    {
        QFETCH(QString, path);
        QFETCH(QString, runpath);

        const QString file = m_prefix + '/' + path;
        QVERIFY2(QFileInfo(file).isFile(), qPrintable(file));
        if (!runpath.isEmpty())
            QCOMPARE(TestPackage::runpath(m_app, file), runpath);
    }

    // The headers of what the library exports, and of nothing else (the web
    // module's only in a build with a web engine).
    void publicHeaders()
    {
        QStringList headers{"authpluginentry.h", "knetworkstatemonitor.h", "kxauthglobal.h",
                            "kxnimbocustomframedlg.h", "kxopenurl.h"};
        if (AUTH_WEB_DIALOG)
            headers << "ikxwebpluginfactoryitem.h"
                    << "kxwebdlg.h"
                    << "kxwebpluginfactoryitemregister.h"
                    << "kxwebresources.h";
        headers.sort();
        QCOMPARE(QDir(m_prefix + "/include/authplugin").entryList(QDir::Files), headers);
    }

    // The package would still work from the build tree while that exists;
    // it must not point there.
    void packageNamesNoBuildPaths()
    {
        QDirIterator files(m_prefix, {"*.cmake", "*.h", "*.json"}, QDir::Files,
                           QDirIterator::Subdirectories);
        int read = 0;
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray text = file.readAll();
            for (const char* tree : {AUTH_BUILD_DIR, AUTH_SOURCE_DIR})
                QVERIFY2(!text.contains(tree), qPrintable(file.fileName() + " names " + tree));
            ++read;
        }
        QVERIFY(read > 10);
    }

    void hostRunsFromTheMovedTree()
    {
        QProcessEnvironment env;
        env.insert(krt::hostcontrol::profileEnvironmentVariable(), m_appDir + "/profile");
        env.insert("DESKHIVE_STATE", m_appDir + "/addons/deskhive/state.json");
        const KTestAppDir::Result run =
            m_app.run(m_appDir + "/authinfo", {"Product/VexName", "--account"}, env);
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.out.contains(QRegularExpression("Product/VexName\\s+QString\\s+Zento Office")),
                 qPrintable(run.out));
        QVERIFY2(run.out.contains("loaded from " + m_appDir + "/addons/deskhive/libdeskhive.so"),
                 qPrintable(run.out));
        QVERIFY2(run.out.contains(QRegularExpression("Name\\s+Demo User")), qPrintable(run.out));
    }

    // Built once against the installed tree and run there; then run again,
    // not rebuilt, on a plug-in whose exported classes have another private
    // layout, which must change nothing the consumer sees.
    void consumerSurvivesAChangedPrivateLayout()
    {
        const QMap<QString, QString> before = seen();
        QVERIFY(!before.isEmpty());
        const QString library = m_appDir + "/libauthplugin.so";
        QVERIFY(QFile::rename(library, library + ".installed"));
        QVERIFY(QFile::copy(AUTH_LAYOUT_PROBE_FILE, library));
        const QMap<QString, QString> after = run();
        QVERIFY(QFile::remove(library) && QFile::rename(library + ".installed", library));
        QCOMPARE(after, before);
    }

    void consumerSees_data()
    {
        QTest::addColumn<QString>("subject");
        QTest::addColumn<QString>("observation");

        const auto row = [](const char* tag, const char* subject, const QString& observation) {
            QTest::newRow(tag) << QString(subject) << observation;
        };
        row("ran to its end", "exit code", "0");
        row("the build's Qt", "qt major version", QString::number(QT_VERSION_MAJOR));
        row("entry point", "entry point", "one handler");
        row("handler", "product name", "Zento Office");
        // The monitor's own rules are its suite's; here, that a module
        // reaches its instance, flags and signal across the library's edge.
        row("monitor by meta-object", "monitor", "KNetworkStateMonitor");
        row("monitor flags", "offline mode, network lost", "yes");
        row("monitor signal", "network changes", "offline,online");
        // A package without a web engine has no web dialog to show.
        const auto web = [](const char* observation) {
            return AUTH_WEB_DIALOG ? QString(observation) : QString("(nothing)");
        };
        row("local page", "offline page", web("qrc:/auth_plugin/mui/default/offline.html"));
        row("dialog's meta-objects", "dialog classes", web("KxWebDlg < KxNimboCustomFrameDlg"));
        row("dialog's type information", "cast to the base", web("yes"));
        // 480x320 inside: one pixel of border each side and the 40-pixel title.
        row("dialog runs", "dialog", web("accepted, shown 482x361"));
        // The registered item's type and another; the override of version().
        row("page asked the bridge", "page saw", web("true false consumer"));
        row("helpers: a path", "log folder", "made, office6/Deskhive/log");
        row("helpers: a store", "store", "42");
        row("helpers: a file type", "file type of xlsx", "tabix");
        QFile profile(m_appDir + "/profile/host.json");
        QVERIFY(profile.open(QIODevice::ReadOnly));
        row("helpers: the user agent", "user agent",
            QJsonDocument::fromJson(profile.readAll())["info"]["userAgent"].toString());
    }

    void consumerSees()
    {
        QFETCH(QString, subject);
        QFETCH(QString, observation);

        QCOMPARE(seen().value(subject, "(nothing)"), observation);
    }

private:
    // The consumer's report, built and run on first use.
    QMap<QString, QString> seen()
    {
        if (m_seen.isEmpty() && build())
            m_seen = run();
        return m_seen;
    }

    bool build()
    {
        QStringList configure{"-S", AUTH_CONSUMER_DIR, "-B", m_consumerBuild, "-G", AUTH_GENERATOR};
        configure << "-DCMAKE_PREFIX_PATH=" + m_prefix << "-DCMAKE_CXX_COMPILER=" AUTH_CXX_COMPILER
                  << "-DCMAKE_BUILD_TYPE=" AUTH_BUILD_TYPE;
        // A sanitized library needs a sanitized program around it.
        const QString sanitize = AUTH_SANITIZE_FLAGS;
        if (!sanitize.isEmpty())
            configure << "-DCMAKE_CXX_FLAGS=" + sanitize << "-DCMAKE_EXE_LINKER_FLAGS=" + sanitize;
        for (const QStringList& args : {configure, QStringList{"--build", m_consumerBuild}}) {
            const KTestAppDir::Result step = m_app.run(AUTH_CMAKE, args, {}, kBuildTimeoutMs);
            if (step.exitCode != 0) {
                qWarning("%s", qPrintable(step.out + step.err));
                return false;
            }
        }
        return true;
    }

    QMap<QString, QString> run()
    {
        QProcessEnvironment env;
        env.insert(krt::hostcontrol::profileEnvironmentVariable(), m_appDir + "/profile");
        const KTestAppDir::Result run = m_app.run(m_consumerBuild + "/consumer", {}, env);
        QMap<QString, QString> seen{{"exit code", QString::number(run.exitCode)}};
        if (run.exitCode != 0)
            qWarning("the consumer failed: %s", qPrintable(run.err));
        for (const QString& line : run.out.split('\n', Qt::SkipEmptyParts))
            seen.insert(line.section(": ", 0, 0), line.section(": ", 1));
        return seen;
    }
};

QTEST_GUILESS_MAIN(TestPackage)
#include "tst_package.moc"
