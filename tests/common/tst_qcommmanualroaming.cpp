// The per-directory list of files marked for roaming by hand: round trips of
// any path through the INI file, also into a second process, the times of
// marking, removal, and what the reader makes of keys it did not write.

#include "kcommprobe.h"
#include "ktestappdir.h"
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
    KTestAppDir m_appDir{m_env.rootPath()};
    KCommProbe m_probe{m_appDir};
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
    QStringList sortedList() const
    {
        QStringList list = QComm::getManualRoamingFiles(m_dir);
        list.sort();
        return list;
    }

private slots:
    void initTestCase() { QVERIFY(m_probe.isValid()); }

    void init()
    {
        m_dir =
            m_env.rootPath() + "/list-" + QTest::currentTestFunction() + QTest::currentDataTag();
        QVERIFY(QDir().mkpath(m_dir));
    }

    void roundTrip_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("key");
        const auto row = [](const char* tag, const QString& path, const QString& key = QString()) {
            QTest::newRow(tag) << path << (key.isEmpty() ? keyOf(path) : key);
        };
        row("plain", "/home/u/a.docx", "L2hvbWUvdS9hLmRvY3g=");
        row("non-ASCII", QString::fromUtf8("/文档/报告 2024.docx"));
        // Keys with "/" and "+": the INI file must not split them into groups.
        row("key with / and +", "/d/???~~~", "L2QvPz8/fn5+");
        row("INI syntax in the path", "/x/[file] a=b;c#d");
        row("backslashes", "C:\\Users\\u\\a.xlsx");
        row("outside the BMP", QString::fromUtf8("/\U0001F600.pdf"));
        row("long", "/" + QString(400, 'n'));
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

        // Another process reads the same list (as a JSON array).
        const QString quoted =
            QString::fromUtf8(QJsonDocument(QJsonArray{path}).toJson(QJsonDocument::Compact));
        QCOMPARE(m_probe.runText({"getManualRoamingFiles", m_dir}), QStringList{quoted});

        QComm::delManualRoamingFiles(m_dir, path);
        QCOMPARE(QComm::getManualRoamingFiles(m_dir), QStringList());
    }

    void markingAgainRenewsTheTime()
    {
        listFile()->setValue(keyOf("/a"), 1000u);
        const uint before = now();
        QComm::addManualRoamingFiles(m_dir, "/a");
        QCOMPARE(QComm::getManualRoamingFiles(m_dir), QStringList{"/a"});
        QCOMPARE(listFile()->allKeys().size(), 1);
        QVERIFY(listFile()->value(keyOf("/a")).toUInt() >= before);
    }

    void removalLeavesTheOthers()
    {
        for (const char* path : {"/a", "/b", "/c"})
            listFile()->setValue(keyOf(path), 1000u + uint(path[1]));
        QComm::delManualRoamingFiles(m_dir, "/never-added");
        QComm::delManualRoamingFiles(m_dir, "/b");
        QCOMPARE(sortedList(), QStringList({"/a", "/c"}));
        QCOMPARE(listFile()->value(keyOf("/a")).toUInt(), 1000u + 'a');
        QCOMPARE(listFile()->value(keyOf("/c")).toUInt(), 1000u + 'c');
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
        QCOMPARE(sortedList(), QStringList({"a", "ab"}));
    }

    void missingOrUnreadableList()
    {
        QCOMPARE(QComm::getManualRoamingFiles(m_dir), QStringList());
        QCOMPARE(QComm::getManualRoamingFiles(m_env.rootPath() + "/no/such/dir"), QStringList());
        QVERIFY(QDir().mkpath(m_dir + "/manualroaming.ini")); // not a file
        QComm::addManualRoamingFiles(m_dir, "/a");
        QCOMPARE(QComm::getManualRoamingFiles(m_dir), QStringList());
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
