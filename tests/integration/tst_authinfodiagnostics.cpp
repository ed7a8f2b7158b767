// The command-line host's diagnostics report, run as a person would run it:
// what the cloud client's helpers say about the host it was given, and the
// directories they create below the (temporary) user data location.

#include "ktestenvironment.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/khksoftwaresettings.h>

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QtTest>

class TestAuthInfoDiagnostics : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    const QString m_root = m_env.homePath() + "/.local/share";

    QStringList authinfo(const QStringList& args)
    {
        if (!krt::hostcontrol::saveProfile(m_env.profilePath()))
            return {"<profile not saved>"};
        QProcess process;
        process.start(QCoreApplication::applicationDirPath() + "/authinfo", args);
        if (!process.waitForFinished(30000) || process.exitCode() != 0)
            return {"<authinfo failed>"};
        return QString::fromUtf8(process.readAllStandardOutput()).split('\n');
    }

    // The value of the report line that starts with label.
    static QString valueOf(const QStringList& lines, const QString& label)
    {
        for (const QString& line : lines) {
            const QStringList columns = line.trimmed().split(QRegularExpression("\\s{2,}"));
            if (columns.size() == 2 && columns[0] == label)
                return columns[1];
        }
        return QStringLiteral("<no line for %1>").arg(label);
    }

private slots:
    void init()
    {
        m_env.resetHost();
        QDir(m_root).removeRecursively();
        krt::hostcontrol::setVersion("12.1.0.17890");
        krt::hostcontrol::setUserAgent("Agent/7 (test)");
        QSettings store(KHKSoftwareSettings::storeFileName(KHKSoftwareSettings::CurrentUser),
                        QSettings::IniFormat);
        store.setValue("Corvane/Office/6.0/Common/Local/UILanguage", 1041);
    }

    void report_data()
    {
        QTest::addColumn<QVariant>("marker");
        QTest::addColumn<QString>("newLayout");
        QTest::addColumn<QString>("iconCache");
        QTest::newRow("old layout") << QVariant() << "no"
                                    << "/nimbo/resource/iconcache";
        QTest::newRow("new layout") << QVariant(1) << "yes"
                                    << "/Zento Cloud Files/resource/iconcache";
    }

    void report()
    {
        QFETCH(QVariant, marker);
        QFETCH(QString, newLayout);
        QFETCH(QString, iconCache);
        if (marker.isValid()) {
            QSettings store(KHKSoftwareSettings::storeFileName(KHKSoftwareSettings::CurrentUser),
                            QSettings::IniFormat);
            store.setValue("Corvane/ZentoCloud/userinfo/zentocloudfiles", marker);
        }

        const QStringList lines = authinfo({"--diagnostics"});
        QVERIFY2(!lines.join('\n').contains("Product/"), qPrintable(lines.join('\n')));
        QCOMPARE(valueOf(lines, "Suite version"), QString("12.1.0.17890"));
        QCOMPARE(valueOf(lines, "Language identifier"), QString("1041"));
        QCOMPARE(valueOf(lines, "Host user agent"), QString("Agent/7 (test)"));
        const QString webKit = valueOf(lines, "Web engine user agent");
        QVERIFY2(
            QRegularExpression("^zento/12\\.1\\.0\\.17890 \\(.+;U;en_US\\) QtWebkit/\\d+\\.\\d+ "
                               "Version/12\\.1\\.0\\.17890$")
                .match(webKit)
                .hasMatch(),
            qPrintable(webKit));
        QCOMPARE(valueOf(lines, "New user data layout"), newLayout);

        const QVector<QPair<QString, QString>> directories{
            {"App data root", ""},
            {"Nimbo data", "/nimbo"},
            {"Zento Cloud Files", "/Zento Cloud Files"},
            {"User data", "/Zento Cloud Files/userdata"},
            {"Deskhive", "/office6/Deskhive"},
            {"Log", "/office6/Deskhive/log"},
            {"Dump", "/office6/Deskhive/dump"},
            {"Icon cache", iconCache}};
        for (const auto& directory : directories) {
            QCOMPARE(valueOf(lines, directory.first), m_root + directory.second);
            QVERIFY2(QFileInfo(m_root + directory.second).isDir(), qPrintable(directory.first));
        }

        // The device identifier is the store's, the same in the next run.
        const QString id = valueOf(lines, "Device identifier");
        QVERIFY2(id.startsWith("UUID-") && id.size() == 41, qPrintable(id));
        QCOMPARE(valueOf(authinfo({"--diagnostics"}), "Device identifier"), id);
    }

    void placeInTheOutput()
    {
        // After the whole table and the account; not with chosen keys unless asked for.
        const QString all = authinfo({}).join('\n');
        QVERIFY(all.indexOf("Server/ReinstallServer") >= 0);
        QVERIFY(all.indexOf("\nAccount\n") > all.indexOf("Server/ReinstallServer"));
        QVERIFY(all.indexOf("\n\nDiagnostics\n  Suite version") > all.indexOf("\nAccount\n"));
        QVERIFY(!authinfo({"Product/VexName"}).join('\n').contains("Suite version"));
        const QStringList both = authinfo({"--diagnostics", "Product/VexName"});
        QVERIFY(both.value(0).startsWith("Product/VexName"));
        QCOMPARE(valueOf(both, "Suite version"), QString("12.1.0.17890"));
    }
};

QTEST_GUILESS_MAIN(TestAuthInfoDiagnostics)
#include "tst_authinfodiagnostics.moc"
