// The per-directory list of files marked for roaming by hand: round trips of
// any path through the INI file, also into a second process, the times of
// marking, removal, and what the reader makes of keys it did not write.

#include "kcommprobe.h"
#include "ktestenvironment.h"

#include "common/qcommmanualroaming.h"

#include <QDateTime>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

#include <memory>

class TestQCommManualRoaming : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    KCommProbe m_probe{m_env.rootPath()};
    QString m_dir;

    std::unique_ptr<QSettings> listFile() const
    {
        auto file = std::make_unique<QSettings>(m_dir + "/manualroaming.ini", QSettings::IniFormat);
        file->setIniCodec("UTF-8");
        file->beginGroup("file");
        return file;
    }

    static QString keyOf(const QString& path) { return path.toUtf8().toBase64(); }
    static uint now() { return uint(QDateTime::currentDateTimeUtc().toSecsSinceEpoch()); }

    static QStringList sorted(QStringList list)
    {
        list.sort();
        return list;
    }

private slots:
    void initTestCase() { QVERIFY(m_probe.isValid()); }

    void init()
    {
        m_dir = m_env.rootPath() + "/list-" + QTest::currentDataTag() + "-" +
                QTest::currentTestFunction();
        QDir(m_dir).removeRecursively();
        QVERIFY(QDir().mkpath(m_dir));
    }

    void roundTrip_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("key");

        QTest::newRow("plain") << "/home/u/a.docx"
                               << "L2hvbWUvdS9hLmRvY3g=";
        QTest::newRow("non-ASCII") << QString::fromUtf8("/文档/报告 2024.docx")
                                   << keyOf(QString::fromUtf8("/文档/报告 2024.docx"));
        // Keys with "/" and "+": the INI file must not split them into groups.
        QTest::newRow("key with / and +") << "/d/???~~~"
                                          << "L2QvPz8/fn5+";
        QTest::newRow("INI syntax in the path")
            << "/x/[file] a=b;c#d" << keyOf("/x/[file] a=b;c#d");
        QTest::newRow("backslashes") << "C:\\Users\\u\\a.xlsx" << keyOf("C:\\Users\\u\\a.xlsx");
        QTest::newRow("outside the BMP")
            << QString::fromUtf8("/\U0001F600.pdf") << keyOf(QString::fromUtf8("/\U0001F600.pdf"));
        QTest::newRow("long") << "/" + QString(400, 'n') << keyOf("/" + QString(400, 'n'));
    }

    void roundTrip()
    {
        QFETCH(QString, path);
        QFETCH(QString, key);

        const uint before = now();
        QComm::addManualRoamingFiles(m_dir, path);
        const uint after = now();

        QCOMPARE(QComm::getManualRoamingFiles(m_dir), QStringList{path});
        const auto file = listFile();
        QCOMPARE(file->allKeys(), QStringList{key});
        const uint marked = file->value(key).toUInt();
        QVERIFY(marked >= before && marked <= after);

        // Another process reads the same list.
        const QStringList read = m_probe.run({"getManualRoamingFiles", m_dir});
        QCOMPARE(read.size(), 1);
        QCOMPARE(QJsonDocument::fromJson(read[0].toUtf8()).array().toVariantList(),
                 QVariantList{path});

        QComm::delManualRoamingFiles(m_dir, path);
        QCOMPARE(QComm::getManualRoamingFiles(m_dir), QStringList());
    }

    void listOfAnotherProcess()
    {
        const QString path = QString::fromUtf8("/共享/a b.pptx");
        QCOMPARE(m_probe.run({"addManualRoamingFiles", m_dir, path}), QStringList{"done"});
        QCOMPARE(QComm::getManualRoamingFiles(m_dir), QStringList{path});
    }

    void markingAgainRenewsTheTime()
    {
        listFile()->setValue(keyOf("/a"), 1000u);
        const uint before = now();
        QComm::addManualRoamingFiles(m_dir, "/a");
        QCOMPARE(QComm::getManualRoamingFiles(m_dir), QStringList{"/a"});
        const auto file = listFile();
        QCOMPARE(file->allKeys().size(), 1);
        QVERIFY(file->value(keyOf("/a")).toUInt() >= before);
    }

    void removalLeavesTheOthers()
    {
        for (const char* path : {"/a", "/b", "/c"})
            listFile()->setValue(keyOf(path), 1000u + uint(path[1]));
        QComm::delManualRoamingFiles(m_dir, "/never-added");
        QComm::delManualRoamingFiles(m_dir, "/b");
        QCOMPARE(sorted(QComm::getManualRoamingFiles(m_dir)), QStringList({"/a", "/c"}));
        const auto file = listFile();
        QCOMPARE(file->value(keyOf("/a")).toUInt(), 1000u + 'a');
        QCOMPARE(file->value(keyOf("/c")).toUInt(), 1000u + 'c');
    }

    void pathIsTakenUpToAZero()
    {
        QComm::addManualRoamingFiles(m_dir, QString::fromUtf16(u"/ab\0cd", 6));
        QCOMPARE(QComm::getManualRoamingFiles(m_dir), QStringList{"/ab"});
        QComm::delManualRoamingFiles(m_dir, QString::fromUtf16(u"/ab\0xy", 6));
        QCOMPARE(QComm::getManualRoamingFiles(m_dir), QStringList());
    }

    void readerSkipsWhatItCannotUse()
    {
        {
            const auto file = listFile();
            file->setValue("YQ==", 1u);     // "a"
            file->setValue("YQ", 2u);       // "a" again, without padding
            file->setValue("!!!", 3u);      // decodes to nothing
            file->setValue("AA==", 4u);     // a zero byte only
            file->setValue("YWIAY2Q=", 5u); // "ab", cut at its zero byte
            file->endGroup();
            file->setValue("other/ZA==", 6u); // "d", outside the group
        }
        QCOMPARE(sorted(QComm::getManualRoamingFiles(m_dir)), QStringList({"a", "ab"}));
    }

    void missingOrUnreadableList()
    {
        QCOMPARE(QComm::getManualRoamingFiles(m_dir), QStringList());
        QCOMPARE(QComm::getManualRoamingFiles(m_env.rootPath() + "/no/such/dir"), QStringList());
        QVERIFY(QDir().mkpath(m_dir + "/sub/manualroaming.ini"));
        QComm::addManualRoamingFiles(m_dir + "/sub", "/a");
        QCOMPARE(QComm::getManualRoamingFiles(m_dir + "/sub"), QStringList());
    }

    void emptyDirectoryIsNoList()
    {
        QComm::addManualRoamingFiles("", "/a");
        QComm::delManualRoamingFiles("", "/a");
        QCOMPARE(QComm::getManualRoamingFiles(""), QStringList());
        QCOMPARE(QDir::current().entryList(QDir::Files), QStringList());
        QVERIFY(!QFileInfo::exists("/manualroaming.ini"));
    }
};

QTEST_GUILESS_MAIN(TestQCommManualRoaming)
#include "tst_qcommmanualroaming.moc"
