// The cloud client's directory tree: every builder's path and the levels it
// creates, the two user-data roots and which layout is in force, the icon
// cache, and the file-system helpers.

#include "ktestenvironment.h"

#include "common/commpaths.h"
#include "common/qcommpaths.h"
#include "common/qcommstores.h"

#include <vexlite/hostcontrol.h>

#include <QDir>
#include <QFile>
#include <QtTest>

#include <functional>

using Builder = std::function<Comm::WideString()>;
Q_DECLARE_METATYPE(Builder)

class TestCommPaths : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    // The parent of the suite's application-data location: XDG_DATA_HOME.
    const QString m_root = m_env.homePath() + "/.local/share";

    static QString q(const Comm::WideString& text) { return QString::fromStdU16String(text); }

private slots:
    void init()
    {
        m_env.resetHost();
        QDir(m_env.profilePath() + "/stores").removeRecursively();
        for (const char* top : {"nimbo", "Zento Cloud Files", "office6"})
            QDir(m_root + '/' + top).removeRecursively();
    }

    // First of the slots that reach the roots: only the first call creates them.
    void userDataRootsAreKeptForTheProcess()
    {
        QString oldRoot, newRoot;
        QComm::getUserDataRootPath(oldRoot, newRoot);
        QCOMPARE(oldRoot, m_root + "/office6/Deskhive");
        QCOMPARE(newRoot, m_root + "/Zento Cloud Files/userdata");
        QVERIFY(QFileInfo(oldRoot).isDir() && QFileInfo(newRoot).isDir());

        QDir(m_root + "/office6").removeRecursively();
        QDir(m_root + "/Zento Cloud Files").removeRecursively();
        QString oldAgain, newAgain;
        QComm::getUserDataRootPath(oldAgain, newAgain);
        QCOMPARE(oldAgain, oldRoot);
        QCOMPARE(newAgain, newRoot);
        QVERIFY(!QFileInfo::exists(oldRoot) && !QFileInfo::exists(newRoot));
    }

    void appDataRootIsNotCreated()
    {
        QCOMPARE(q(Comm::getAppdataPath()), m_root);
        QCOMPARE(q(Comm::getLocalAppdataPath()), m_root);

        const QString elsewhere = m_env.rootPath() + "/elsewhere/share";
        const QByteArray saved = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", elsewhere.toLocal8Bit());
        const QString root = q(Comm::getAppdataPath());
        const bool rootCreated = QFileInfo::exists(elsewhere);
        const QString log = q(Comm::getLogPath());
        qputenv("XDG_DATA_HOME", saved);

        QCOMPARE(root, elsewhere);
        QVERIFY(!rootCreated);
        QCOMPARE(log, elsewhere + "/office6/Deskhive/log");
        QVERIFY(QFileInfo(log).isDir());
    }

    void tree_data()
    {
        QTest::addColumn<Builder>("build");
        QTest::addColumn<QString>("relative");

        using namespace Comm;
        QTest::newRow("nimbo") << Builder(getNimboAppdataPath) << "/nimbo";
        QTest::newRow("cloud files")
            << Builder([] { return getNimboLocalAppdataPath(false); }) << "/Zento Cloud Files";
        QTest::newRow("cloud files, flag set")
            << Builder([] { return getNimboLocalAppdataPath(true); }) << "/Zento Cloud Files";
        QTest::newRow("userdata") << Builder([] { return getNimboUserDataRootPath(false); })
                                  << "/Zento Cloud Files/userdata";
        QTest::newRow("userdata, flag set")
            << Builder([] { return getNimboUserDataRootPath(true); })
            << "/Zento Cloud Files/userdata";
        QTest::newRow("update") << Builder(getNimboUpdateRootPath) << "/Zento Cloud Files/update";
        QTest::newRow("resource") << Builder(getNimboResourcePath) << "/Zento Cloud Files/resource";
        QTest::newRow("Deskhive") << Builder(getDeskhivePath) << "/office6/Deskhive";
        QTest::newRow("log") << Builder(getLogPath) << "/office6/Deskhive/log";
        QTest::newRow("dump") << Builder(getDumpPath) << "/office6/Deskhive/dump";
    }

    void tree()
    {
        QFETCH(Builder, build);
        QFETCH(QString, relative);

        QCOMPARE(q(build()), m_root + relative);
        // Every level exists, and nothing beside the path was made.
        QString level = m_root;
        for (const QString& piece : relative.mid(1).split('/')) {
            QCOMPARE(QDir(level).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList{piece});
            level += '/' + piece;
        }
        QVERIFY(QDir(level).isEmpty());
        // A second call finds the tree in place.
        QCOMPARE(q(build()), m_root + relative);
    }

    void nimboPathIsAlwaysEmpty()
    {
        QVERIFY(Comm::getNimboPath().empty());
        QVERIFY(Comm::getNimboPath().empty());
    }

    void makeDirectories_data()
    {
        QTest::addColumn<bool>("qtLayer");
        QTest::addColumn<QString>("relative");
        QTest::addColumn<bool>("expected");

        for (const bool qtLayer : {false, true}) {
            const QByteArray layer = qtLayer ? "QComm: " : "Comm: ";
            QTest::newRow(layer + "new nested") << qtLayer << "new/a/b" << true;
            QTest::newRow(layer + "exists") << qtLayer << "home" << true;
            QTest::newRow(layer + "non-ASCII") << qtLayer << QString::fromUtf8("新/目录") << true;
            QTest::newRow(layer + "below a file") << qtLayer << "file/sub" << false;
            QTest::newRow(layer + "a file") << qtLayer << "file" << false;
            QTest::newRow(layer + "empty") << qtLayer << "" << false;
        }
    }

    void makeDirectories()
    {
        QFETCH(bool, qtLayer);
        QFETCH(QString, relative);
        QFETCH(bool, expected);

        QFile file(m_env.rootPath() + "/file");
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        const QString path = relative.isEmpty() ? QString() : m_env.rootPath() + '/' + relative;
        const bool made =
            qtLayer ? QComm::makeDeepPath(path) : Comm::createDeepDirectory(path.toStdU16String());
        QCOMPARE(made, expected);
        QCOMPARE(QFileInfo(path).isDir(), expected);
    }

    void fileExists_data()
    {
        QTest::addColumn<QString>("relative");
        QTest::addColumn<bool>("expected");
        QTest::newRow("file") << "file" << true;
        QTest::newRow("directory") << "home" << true;
        QTest::newRow("non-ASCII file") << QString::fromUtf8("文件.txt") << true;
        QTest::newRow("missing") << "missing" << false;
    }

    void fileExists()
    {
        QFETCH(QString, relative);
        QFETCH(bool, expected);
        for (const char* name : {"file", "文件.txt"}) {
            QFile file(m_env.rootPath() + '/' + QString::fromUtf8(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        QCOMPARE(Comm::fileExists((m_env.rootPath() + '/' + relative).utf16()), expected);
    }

    void fileExistsOfNothing()
    {
        QVERIFY(!Comm::fileExists(nullptr));
        QVERIFY(!Comm::fileExists(QString("").utf16()));
    }

    void newUserData_data()
    {
        QTest::addColumn<QVariant>("marker");
        QTest::addColumn<QString>("version");
        QTest::addColumn<bool>("expected");

        QTest::newRow("last old version") << QVariant(1) << "9.1.0.4817" << false;
        QTest::newRow("next build") << QVariant(1) << "9.1.0.4818" << true;
        QTest::newRow("next minor") << QVariant(1) << "9.2.0.0" << true;
        QTest::newRow("next patch") << QVariant(1) << "9.1.1.0" << true;
        QTest::newRow("next major") << QVariant(1) << "10.0.0.0" << true;
        QTest::newRow("older build, higher later parts") << QVariant(1) << "9.0.9999.9999" << false;
        QTest::newRow("older major") << QVariant(1) << "8.99.99.99999" << false;
        QTest::newRow("three parts") << QVariant(1) << "9.1.0" << false;
        QTest::newRow("five parts") << QVariant(1) << "9.1.0.4818.1" << false;
        QTest::newRow("empty part counts as 0") << QVariant(1) << "9.2..0" << true;
        QTest::newRow("text part counts as 0") << QVariant(1) << "9.1.0.x" << false;
        QTest::newRow("unknown version: 8.1.0.X") << QVariant(1) << "0.0.0.0" << false;
        QTest::newRow("marker 0") << QVariant(0) << "10.0.0.0" << false;
        QTest::newRow("marker 2") << QVariant(2) << "10.0.0.0" << false;
        QTest::newRow("marker as text") << QVariant("1") << "10.0.0.0" << true;
        QTest::newRow("marker not a number") << QVariant("true") << "10.0.0.0" << false;
        QTest::newRow("no marker") << QVariant() << "10.0.0.0" << false;
    }

    void newUserData()
    {
        QFETCH(QVariant, marker);
        QFETCH(QString, version);
        QFETCH(bool, expected);

        if (marker.isValid())
            QComm::writeNimboUserInfoRegValue("zentocloudfiles", marker);
        krt::hostcontrol::setVersion(version);
        QCOMPARE(QComm::isNewUserData(), expected);

        // The layout decides where the icon cache lives, and nothing else.
        const QString iconCache = QComm::getNimboIconCachePath();
        QCOMPARE(iconCache, QDir::toNativeSeparators(
                                m_root + (expected ? "/Zento Cloud Files/resource/iconcache"
                                                   : "/nimbo/resource/iconcache")));
        QVERIFY(QFileInfo(iconCache).isDir());
    }

    void inUserDataRoot_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("expected");

        // %R stands for the application-data root.
        QTest::newRow("below the new root") << "%R/Zento Cloud Files/userdata/u1/a.docx" << true;
        QTest::newRow("other letter case") << "%R/zento cloud files/USERDATA/a" << true;
        QTest::newRow("the new root with a separator") << "%R/Zento Cloud Files/userdata/" << true;
        QTest::newRow("the new root itself") << "%R/Zento Cloud Files/userdata" << false;
        QTest::newRow("a sibling of the new root") << "%R/Zento Cloud Files/userdata2/a" << false;
        QTest::newRow("contained, not at the start")
            << "/mnt/copy%R/Zento Cloud Files/userdata/a" << true;
        QTest::newRow("below the old root") << "%R/office6/Deskhive/log/x.log" << true;
        QTest::newRow("a sibling of the old root") << "%R/office6/DeskhiveOld/x" << false;
        QTest::newRow("elsewhere in the tree") << "%R/nimbo/resource/a" << false;
        QTest::newRow("relative") << "userdata/a" << false;
        QTest::newRow("empty") << "" << false;
    }

    void inUserDataRoot()
    {
        QFETCH(QString, path);
        QFETCH(bool, expected);
        QCOMPARE(QComm::isInUserDataRootPath(path.replace("%R", m_root)), expected);
    }
};

QTEST_GUILESS_MAIN(TestCommPaths)
#include "tst_commpaths.moc"
