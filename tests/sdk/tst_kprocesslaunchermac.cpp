// The host's process starter: the argument text reaches the program whole,
// as one argument, and nothing in it is run by a shell.

#include "kstubprogram.h"
#include "ktestenvironment.h"

#include <vexlite/kprocesslaunchermac.h>

#include <QDir>
#include <QFileInfo>
#include <QtTest>

class TestKProcessLauncherMac : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    int m_run = 0;

    QString freshDir() { return QDir(m_env.rootPath()).filePath(QString("run%1").arg(++m_run)); }

private slots:
    void argumentTextIsOneArgument_data()
    {
        QTest::addColumn<QString>("text");

        QTest::newRow("plain") << "Run";
        QTest::newRow("empty") << "";
        QTest::newRow("quoted, with spaces") << "\"Run /a /b=c \"";
        QTest::newRow("shell characters") << "x; touch pwned; `touch pwned` $(touch pwned) | &";
        QTest::newRow("newline") << "first\nsecond";
        QTest::newRow("non-ASCII") << QString::fromUtf8(u8"/name=\u4e91\u6587\u6863 caf\u00e9");
    }

    void argumentTextIsOneArgument()
    {
        QFETCH(QString, text);

        const QString dir = freshDir();
        KStubProgram stub(dir + "/Contents/MacOS/svr", dir + "/calls");
        QVERIFY(stub.isValid());

        QVERIFY(KProcessLauncherMac::LaunchProcessByNSTask(stub.path(), text));
        QVERIFY(stub.waitForCalls(1));
        QCOMPARE(stub.calls(), QList<QStringList>{QStringList{text}});
        QVERIFY(!QFileInfo::exists(QDir::current().filePath("pwned")));
    }

    void unstartableProgram_data()
    {
        QTest::addColumn<QString>("executable");
        QTest::newRow("empty path") << "";
        QTest::newRow("missing file") << "/nonexistent/zentocloudsvr";
        QTest::newRow("a directory") << QDir::tempPath();
    }

    void unstartableProgram()
    {
        QFETCH(QString, executable);
        QVERIFY(!KProcessLauncherMac::LaunchProcessByNSTask(executable, "arg"));
    }
};

QTEST_GUILESS_MAIN(TestKProcessLauncherMac)
#include "tst_kprocesslaunchermac.moc"
