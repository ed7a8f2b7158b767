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
        for (const char* top : {"nimbo", "Zento Cloud Files", "office6"})
            QDir(m_root + '/' + top).removeRecursively();
        QFile(m_env.rootPath() + "/file").open(QIODevice::WriteOnly);
    }

    // First of the slots that reach the roots: only the first call creates them.
    void userDataRootsAreKeptForTheProcess()
    {
        QString oldRoot, newRoot, oldAgain, newAgain;
        QComm::getUserDataRootPath(oldRoot, newRoot);
        QCOMPARE(oldRoot, m_root + "/office6/Deskhive");
        QCOMPARE(newRoot, m_root + "/Zento Cloud Files/userdata");
        QVERIFY(QFileInfo(oldRoot).isDir() && QFileInfo(newRoot).isDir());

        init();
        QComm::getUserDataRootPath(oldAgain, newAgain);
        QCOMPARE(oldAgain, oldRoot);
        QCOMPARE(newAgain, newRoot);
        QVERIFY(!QFileInfo::exists(oldRoot) && !QFileInfo::exists(newRoot));
    }

    void appDataRootIsNotCreated()
    {
        QCOMPARE(q(Comm::getAppdataPath()), m_root);
        QCOMPARE(q(Comm::getLocalAppdataPath()), m_root);
        QVERIFY(Comm::getNimboPath().empty());

        const QString elsewhere = m_env.rootPath() + "/elsewhere/share";
        const QByteArray saved = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", elsewhere.toLocal8Bit());
        const QString root = q(Comm::getAppdataPath());
        const bool rootCreated = QFileInfo::exists(elsewhere);
        const QString log = q(Comm::getLogPath()); // brings every level into existence
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
        const auto row = [](const char* tag, const Builder& build, const char* relative) {
            QTest::newRow(tag) << build << QString(relative);
        };
        using namespace Comm;
        row("nimbo", getNimboAppdataPath, "/nimbo");
        row("cloud files", std::bind(getNimboLocalAppdataPath, false), "/Zento Cloud Files");
        row("cloud files, flag", std::bind(getNimboLocalAppdataPath, true), "/Zento Cloud Files");
        row("userdata", std::bind(getNimboUserDataRootPath, false), "/Zento Cloud Files/userdata");
        row("userdata, flag", std::bind(getNimboUserDataRootPath, true),
            "/Zento Cloud Files/userdata");
        row("update", getNimboUpdateRootPath, "/Zento Cloud Files/update");
        row("resource", getNimboResourcePath, "/Zento Cloud Files/resource");
        row("Deskhive", getDeskhivePath, "/office6/Deskhive");
        row("log", getLogPath, "/office6/Deskhive/log");
        row("dump", getDumpPath, "/office6/Deskhive/dump");
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
        QCOMPARE(q(build()), m_root + relative); // and again with the tree in place
    }

    void makeDirectories_data()
    {
        QTest::addColumn<bool>("qtLayer");
        QTest::addColumn<QString>("relative");
        QTest::addColumn<bool>("expected");
        for (const bool qt : {false, true}) {
            const auto row = [qt](const char* tag, const char* relative, bool expected) {
                QTest::addRow("%s%s", qt ? "QComm: " : "Comm: ", tag)
                    << qt << QString::fromUtf8(relative) << expected;
            };
            row("new nested", "new/a/b", true);
            row("exists", "home", true);
            row("non-ASCII", "新/目录", true);
            row("below a file", "file/sub", false);
            row("a file", "file", false);
            row("empty", "", false);
        }
    }

    void makeDirectories()
    {
        QFETCH(bool, qtLayer);
        QFETCH(QString, relative);
        QFETCH(bool, expected);
        const QString path = relative.isEmpty() ? QString() : m_env.rootPath() + '/' + relative;
        QCOMPARE(qtLayer ? QComm::makeDeepPath(path)
                         : Comm::createDeepDirectory(path.toStdU16String()),
                 expected);
        QCOMPARE(QFileInfo(path).isDir(), expected);
    }

    void fileExists()
    {
        QFile(m_env.rootPath() + QString::fromUtf8("/文件.txt")).open(QIODevice::WriteOnly);
        const auto exists = [this](const char* name) {
            return Comm::fileExists((m_env.rootPath() + QString::fromUtf8(name)).utf16());
        };
        QVERIFY(exists("/file") && exists("/home") && exists("/文件.txt"));
        QVERIFY(!exists("/missing"));
        QVERIFY(!Comm::fileExists(nullptr));
        QVERIFY(!Comm::fileExists(QString("").utf16()));
    }

    void newUserData_data()
    {
        QTest::addColumn<QVariant>("marker");
        QTest::addColumn<QString>("version");
        QTest::addColumn<bool>("expected");
        const auto row = [](const char* tag, const QVariant& marker, const char* version,
                            bool expected) {
            QTest::newRow(tag) << marker << QString(version) << expected;
        };
        row("last old version", 1, "9.1.0.4817", false);
        row("next build", 1, "9.1.0.4818", true);
        row("next minor", 1, "9.2.0.0", true);
        row("next patch", 1, "9.1.1.0", true);
        row("next major", 1, "10.0.0.0", true);
        row("older, higher later parts", 1, "9.0.9999.9999", false);
        row("three parts", 1, "9.1.0", false);
        row("five parts", 1, "9.1.0.4818.1", false);
        row("empty part counts as 0", 1, "9.2..0", true);
        row("text part counts as 0", 1, "9.1.0.x", false);
        row("unknown version: 8.1.0.X", 1, "0.0.0.0", false);
        row("marker 0", 0, "10.0.0.0", false);
        row("marker 2", 2, "10.0.0.0", false);
        row("marker as text", "1", "10.0.0.0", true);
        row("marker not a number", "true", "10.0.0.0", false);
        row("no marker", QVariant(), "10.0.0.0", false);
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
        const auto row = [](const char* tag, const char* path, bool expected) {
            QTest::newRow(tag) << QString(path) << expected;
        };
        row("below the new root", "%R/Zento Cloud Files/userdata/u1/a.docx", true);
        row("other letter case", "%R/zento cloud files/USERDATA/a", true);
        row("new root with a separator", "%R/Zento Cloud Files/userdata/", true);
        row("new root itself", "%R/Zento Cloud Files/userdata", false);
        row("sibling of the new root", "%R/Zento Cloud Files/userdata2/a", false);
        row("contained, not at the start", "/mnt/copy%R/Zento Cloud Files/userdata/a", true);
        row("below the old root", "%R/office6/Deskhive/log/x.log", true);
        row("sibling of the old root", "%R/office6/DeskhiveOld/x", false);
        row("elsewhere in the tree", "%R/nimbo/resource/a", false);
        row("relative", "userdata/a", false);
        row("empty", "", false);
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
