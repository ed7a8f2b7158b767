// The host's registry-like store: two roots in two real files of the
// profile, backslash key paths as nested groups, countable child keys.

#include "ktestenvironment.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/khksoftwaresettings.h>

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QtTest>

class TestKHKSoftwareSettings : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void init() { m_env.resetHost(); }

    void rootsAreSeparateFiles_data()
    {
        QTest::addColumn<int>("writeRoot");
        QTest::addColumn<QString>("file");
        QTest::newRow("per user") << int(KHKSoftwareSettings::CurrentUser) << "stores/user.ini";
        QTest::newRow("machine") << int(KHKSoftwareSettings::LocalMachine) << "stores/machine.ini";
    }

    void rootsAreSeparateFiles()
    {
        QFETCH(int, writeRoot);
        QFETCH(QString, file);

        const auto root = KHKSoftwareSettings::HKEY(writeRoot);
        const auto other = KHKSoftwareSettings::HKEY(1 - writeRoot);
        {
            KHKSoftwareSettings settings(root, "Corvane\\ZentoCloud");
            settings.setValue("k", "v");
        }
        const QString path = QDir(m_env.profilePath()).filePath(file);
        QCOMPARE(KHKSoftwareSettings::storeFileName(root), path);
        QVERIFY(QFileInfo::exists(path));
        QCOMPARE(KHKSoftwareSettings(root, "Corvane\\ZentoCloud").value("k").toString(),
                 QString("v"));
        QVERIFY(!KHKSoftwareSettings(other, "Corvane\\ZentoCloud").contains("k"));
    }

    void backslashPathIsNestedGroups()
    {
        {
            KHKSoftwareSettings settings(KHKSoftwareSettings::CurrentUser,
                                         "Corvane\\Office\\6.0\\Common");
            settings.setValue("infoGUID", "g-1");
        }
        QSettings file(KHKSoftwareSettings::storeFileName(KHKSoftwareSettings::CurrentUser),
                       QSettings::IniFormat);
        QCOMPARE(file.value("Corvane/Office/6.0/Common/infoGUID").toString(), QString("g-1"));
        KHKSoftwareSettings parent(KHKSoftwareSettings::CurrentUser, "Corvane\\Office");
        QCOMPARE(parent.value("6.0/Common/infoGUID").toString(), QString("g-1"));
    }

    void childKeysCanBeCounted()
    {
        for (const char* client : {"101", "102", "103"}) {
            KHKSoftwareSettings settings(KHKSoftwareSettings::CurrentUser,
                                         QString("Corvane\\ZentoCloud\\activeclient\\") + client);
            settings.setValue("pid", 1);
        }
        KHKSoftwareSettings store(KHKSoftwareSettings::CurrentUser, "Corvane\\ZentoCloud");
        store.beginGroup("activeclient");
        QCOMPARE(store.childGroups(), QStringList({"101", "102", "103"}));
        store.endGroup();
        store.beginGroup("nothing");
        QCOMPARE(store.childGroups().size(), 0);
    }

    void storesFollowTheProfile()
    {
        {
            KHKSoftwareSettings settings(KHKSoftwareSettings::CurrentUser, "P");
            settings.setValue("k", "first");
        }
        const QString other = m_env.rootPath() + "/other-profile";
        krt::hostcontrol::resetProfile(other);
        QVERIFY(
            KHKSoftwareSettings::storeFileName(KHKSoftwareSettings::CurrentUser).startsWith(other));
        QVERIFY(!KHKSoftwareSettings(KHKSoftwareSettings::CurrentUser, "P").contains("k"));
        krt::hostcontrol::resetProfile(m_env.profilePath());
        QCOMPARE(KHKSoftwareSettings(KHKSoftwareSettings::CurrentUser, "P").value("k").toString(),
                 QString("first"));
    }
};

QTEST_GUILESS_MAIN(TestKHKSoftwareSettings)
#include "tst_khksoftwaresettings.moc"
