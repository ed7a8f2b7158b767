// What a host hears from the library while a user signs in, opens the
// personal centre and uses a web dialog (quiethost): nothing with Qt's
// default logging, and no secret even with every message of the library
// turned on.

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <QtTest>

using namespace AuthTest;

namespace {

const char kHardwareId[] = "HD-7F3A9C21-QUIET";

} // namespace

class TestQuietLogging : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void run_data()
    {
        QTest::addColumn<QString>("rules"); // QT_LOGGING_RULES, none when empty
        QTest::addColumn<bool>("silent");

        QTest::newRow("default logging") << "" << true;
        QTest::newRow("every library message") << "auth.*=true" << false;
    }

    void run()
    {
        QFETCH(QString, rules);
        QFETCH(bool, silent);

        const QString state = m_env.rootPath() + "/deskhive-state.json";
        QVERIFY(KTestAppDir::write(state, R"({"IsLogined": false})"));
        QVERIFY(KTestAppDir::write(m_env.profilePath() + "/host.json", "{}"));
        QProcessEnvironment env;
        env.insert("DESKHIVE_STATE", state);
        if (!rules.isEmpty())
            env.insert("QT_LOGGING_RULES", rules);
        const KTestAppDir::Result run =
            KTestAppDir(m_env.rootPath())
                .run(QCoreApplication::applicationDirPath() + "/quiethost", {kHardwareId}, env);
        QVERIFY2(run.exitCode == 0, qPrintable(run.err));
        // The offscreen platform's own notice when the dialog fixes its size.
        QStringList lines = run.err.split('\n', Qt::SkipEmptyParts);
        lines.removeAll("This plugin does not support propagateSizeHints()");
        if (silent)
            QCOMPARE(lines, QStringList());
        for (const char* secret : {kHardwareId, "s3cret", "wrapped"})
            QVERIFY2(!run.err.contains(secret), qPrintable(run.err));
    }
};

QTEST_MAIN(TestQuietLogging)
#include "tst_quietlogging.moc"
