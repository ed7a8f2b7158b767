// What a host hears from the library while a person signs in, opens the
// personal centre and uses the web dialog, online, offline and on the
// bridge page (the reference host's screenshot walk): nothing with Qt's
// default logging but the refusals the library defines, and
// neither the hardware identifier nor a sign-in token even with every
// message of the library on.

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <QJsonDocument>
#include <QRegularExpression>
#include <QtTest>

using namespace AuthTest;

class TestQuietLogging : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    const QString m_bin = QCoreApplication::applicationDirPath();

private slots:
    void walk_data()
    {
        QTest::addColumn<QString>("rules"); // QT_LOGGING_RULES, none when empty
        QTest::addColumn<bool>("silent");

        QTest::newRow("default logging") << "" << true;
        QTest::newRow("every library message") << "auth.*=true" << false;
    }

    void walk()
    {
        QFETCH(QString, rules);
        QFETCH(bool, silent);

        QFile profile(m_bin + "/profile/host.json");
        QVERIFY(profile.open(QIODevice::ReadOnly));
        const QString hardwareId =
            QJsonDocument::fromJson(profile.readAll())["info"]["hdid"].toString();
        QVERIFY(!hardwareId.isEmpty());
        QProcessEnvironment env;
        env.insert("ZENTO_HOST_PROFILE", m_bin + "/profile");
        // QtWebEngine describes its graphics at info level where there is
        // no OpenGL, as on the offscreen platform the walk runs on.
        env.insert("QT_LOGGING_RULES", "qt.webenginecontext.info=false;" + rules);
        const KTestAppDir::Result run = KTestAppDir(m_env.rootPath())
                                            .run(m_bin + "/zentooffice",
                                                 {"--profile", m_bin + "/profile", "--screenshots",
                                                  m_env.rootPath() + "/shots"},
                                                 env, 60000);
        QVERIFY2(run.exitCode == 0, qPrintable(run.err));
        // The warnings the library defines: the bridge page asks for what
        // pages are refused (a key with "..", a file: address). And what
        // QtWebEngine says of the tests' surroundings: its sandbox is off
        // for root, and the offscreen platform has no OpenGL; QtWebEngine 5
        // also has Chromium's own log say it ended the renderer that was
        // sent to the unreachable page's port 0.
        QStringList lines = run.err.split('\n', Qt::SkipEmptyParts);
        const QRegularExpression chromium(R"(^\[\d+:\d+:\d+/\d+\.\d+:ERROR:bad_message\.cc)");
        lines.erase(std::remove_if(lines.begin(), lines.end(),
                                   [&chromium](const QString& line) {
                                       return line.startsWith("Refused ") ||
                                              line == "Sandboxing disabled by user." ||
                                              line == "No suitable graphics backend found" ||
                                              line.contains(chromium);
                                   }),
                    lines.end());
        if (silent)
            QCOMPARE(lines, QStringList());
        QVERIFY2(!run.err.contains(hardwareId) && !run.err.contains("token"), qPrintable(run.err));
    }
};

QTEST_MAIN(TestQuietLogging)
#include "tst_quietlogging.moc"
