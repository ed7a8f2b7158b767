// The cloud client's store accessors: where each one keeps its values, the
// per-user-then-machine fallback, text conversion, and the fixed answers of
// the raw registry functions.

#include "ktestenvironment.h"

#include "common/commstores.h"
#include "common/qcommstores.h"

#include <vexlite/khksoftwaresettings.h>

#include <QDir>
#include <QFileInfo>
#include <QSize>
#include <QtTest>

#include <functional>

using Reader = std::function<QString(const QString&, const QVariant&)>;
using Writer = std::function<void(const QString&, const QVariant&)>;
Q_DECLARE_METATYPE(Reader)
Q_DECLARE_METATYPE(Writer)

namespace {

QVariant rawValue(KHKSoftwareSettings::HKEY root, const QString& path)
{
    QSettings file(KHKSoftwareSettings::storeFileName(root), QSettings::IniFormat);
    return file.value(path);
}

void setRaw(KHKSoftwareSettings::HKEY root, const QString& path, const QVariant& value)
{
    QSettings file(KHKSoftwareSettings::storeFileName(root), QSettings::IniFormat);
    file.setValue(path, value);
}

const auto user = KHKSoftwareSettings::CurrentUser;
const auto machine = KHKSoftwareSettings::LocalMachine;

} // namespace

class TestQCommStores : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void init() { m_env.resetHost(); }

    void storePaths_data()
    {
        QTest::addColumn<Reader>("read");
        QTest::addColumn<Writer>("write");
        QTest::addColumn<QString>("path");

        using namespace QComm;
        QTest::newRow("cloud")
            << Reader(qOverload<const QString&, const QVariant&>(readNimboRegValue))
            << Writer(qOverload<const QString&, const QVariant&>(writeNimboRegValue))
            << "Corvane/ZentoCloud";
        QTest::newRow("cloud, group") << Reader([](const QString& k, const QVariant& d) {
            return readNimboRegValue("grp", k, d);
        }) << Writer([](const QString& k, const QVariant& v) { writeNimboRegValue("grp", k, v); })
                                      << "Corvane/ZentoCloud/grp";
        QTest::newRow("cloud, nested group") << Reader([](const QString& k, const QVariant& d) {
            return readNimboRegValue("a/b", k, d);
        }) << Writer([](const QString& k, const QVariant& v) { writeNimboRegValue("a/b", k, v); })
                                             << "Corvane/ZentoCloud/a/b";
        QTest::newRow("user info")
            << Reader(readNimboUserInfoRegValue) << Writer(writeNimboUserInfoRegValue)
            << "Corvane/ZentoCloud/userinfo";
        QTest::newRow("suite common")
            << Reader(readZentoCommonRegValue) << Writer(writeZentoCommonRegValue)
            << "Corvane/Office/6.0/Common";
        QTest::newRow("cloud-document plug-in")
            << Reader(qOverload<const QString&, const QVariant&>(readDeskhiveRegValue))
            << Writer(qOverload<const QString&, const QVariant&>(writeDeskhiveRegValue))
            << "Corvane/Office/6.0/plugins/deskhive";
        QTest::newRow("cloud-document plug-in, group")
            << Reader([](const QString& k, const QVariant& d) {
                   return readDeskhiveRegValue("g", k, d);
               })
            << Writer([](const QString& k, const QVariant& v) { writeDeskhiveRegValue("g", k, v); })
            << "Corvane/Office/6.0/plugins/deskhive/g";
        QTest::newRow("cloud disk")
            << Reader(readNimboCloudDiskRegValue) << Writer(writeNimboCloudDiskRegValue)
            << "Corvane/ZentoCloud/clouddisk";
        QTest::newRow("name-space extension")
            << Reader(readNimboNseRegValue) << Writer(writeNimboNseRegValue)
            << "Corvane/ZentoCloud/Nse";
    }

    void storePaths()
    {
        QFETCH(Reader, read);
        QFETCH(Writer, write);
        QFETCH(QString, path);

        QCOMPARE(read("flag", "absent"), QString("absent"));
        write("flag", 5);
        QCOMPARE(rawValue(user, path + "/flag").toString(), QString("5"));
        QVERIFY(rawValue(machine, path + "/flag").isNull());
        QCOMPARE(read("flag", "absent"), QString("5"));
        write("flag", "changed");
        QCOMPARE(read("flag", QVariant()), QString("changed"));
    }

    void oldCloudStoreIsReadOnly()
    {
        setRaw(user, "Corvane/nimbo/userid", 42);
        QCOMPARE(QComm::readOldNimboRegValue("userid", ""), QString("42"));
        QCOMPARE(QComm::readOldNimboRegValue("other", "d"), QString("d"));
    }

    void readsAreText_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QVariant>("defaultValue");
        QTest::addColumn<QString>("expected");

        QTest::newRow("integer default") << QVariant() << QVariant(0) << "0";
        QTest::newRow("boolean default") << QVariant() << QVariant(true) << "true";
        QTest::newRow("null default") << QVariant() << QVariant() << "";
        QTest::newRow("default without text") << QVariant() << QVariant(QSize(1, 2)) << "";
        QTest::newRow("stored integer") << QVariant(7) << QVariant("d") << "7";
        QTest::newRow("stored boolean") << QVariant(false) << QVariant(true) << "false";
        QTest::newRow("stored empty text") << QVariant("") << QVariant("d") << "";
        QTest::newRow("stored non-ASCII") << QVariant(QString::fromUtf8(u8"\u6f2b\u6e38"))
                                          << QVariant() << QString::fromUtf8(u8"\u6f2b\u6e38");
    }

    void readsAreText()
    {
        QFETCH(QVariant, stored);
        QFETCH(QVariant, defaultValue);
        QFETCH(QString, expected);

        if (stored.isValid())
            QComm::writeNimboCloudDiskRegValue("k", stored);
        QCOMPARE(QComm::readNimboCloudDiskRegValue("k", defaultValue), expected);
    }

    void machineFallback_data()
    {
        QTest::addColumn<QVariant>("perUser");
        QTest::addColumn<QVariant>("machineWide");
        QTest::addColumn<QVariant>("defaultValue");
        QTest::addColumn<QString>("expected");

        QTest::newRow("neither: default") << QVariant() << QVariant() << QVariant("x") << "x";
        QTest::newRow("machine only, empty default")
            << QVariant() << QVariant("v") << QVariant("") << "v";
        QTest::newRow("machine only, default hides it")
            << QVariant() << QVariant("v") << QVariant("x") << "x";
        QTest::newRow("per user wins") << QVariant("u") << QVariant("m") << QVariant() << "u";
        QTest::newRow("empty per-user text defers")
            << QVariant("") << QVariant("m") << QVariant("x") << "m";
        QTest::newRow("both empty") << QVariant("") << QVariant("") << QVariant("x") << "";
    }

    void machineFallback()
    {
        QFETCH(QVariant, perUser);
        QFETCH(QVariant, machineWide);
        QFETCH(QVariant, defaultValue);
        QFETCH(QString, expected);

        const QStringList paths{"Corvane/Office/6.0/Common", "Corvane/Office/6.0/plugins/deskhive",
                                "Corvane/Office/6.0/plugins/deskhive/g"};
        for (const QString& path : paths) {
            if (perUser.isValid())
                setRaw(user, path + "/k", perUser);
            if (machineWide.isValid())
                setRaw(machine, path + "/k", machineWide);
        }
        QCOMPARE(QComm::readZentoCommonRegValue("k", defaultValue), expected);
        QCOMPARE(QComm::readDeskhiveRegValue("k", defaultValue), expected);
        QCOMPARE(QComm::readDeskhiveRegValue("g", "k", defaultValue), expected);
    }

    void storesWithoutFallback()
    {
        setRaw(machine, "Corvane/ZentoCloud/k", "m");
        setRaw(machine, "Corvane/ZentoCloud/userinfo/k", "m");
        QCOMPARE(QComm::readNimboRegValue("k", ""), QString(""));
        QCOMPARE(QComm::readNimboUserInfoRegValue("k", ""), QString(""));
    }

    void removeUsesTheNativeFileOfThePath()
    {
        QComm::writeNimboUserInfoRegValue("userid", "12345");
        {
            QSettings native("Corvane\\ZentoCloud\\userinfo", QSettings::NativeFormat);
            native.setValue("userid", "99");
            native.setValue("other", "kept");
        }
        QComm::removeNimboUserInfoRegValue("userid");

        // The store keeps its value; only the native file lost the key.
        QCOMPARE(QComm::readNimboUserInfoRegValue("userid", ""), QString("12345"));
        QSettings native("Corvane\\ZentoCloud\\userinfo", QSettings::NativeFormat);
        QVERIFY(!native.contains("userid"));
        QCOMPARE(native.value("other").toString(), QString("kept"));
        QVERIFY(QFileInfo(native.fileName()).absolutePath() == QDir::currentPath());
    }

    void makeIniKey_data()
    {
        QTest::addColumn<QString>("group");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("expected");
        QTest::newRow("both") << "a"
                              << "b"
                              << "/a/b";
        QTest::newRow("empty group") << ""
                                     << "k"
                                     << "//k";
        QTest::newRow("empty key") << "g"
                                   << ""
                                   << "/g/";
        QTest::newRow("nested") << "a/b"
                                << "c"
                                << "/a/b/c";
    }

    void makeIniKey()
    {
        QFETCH(QString, group);
        QFETCH(QString, key);
        QFETCH(QString, expected);
        QCOMPARE(QComm::makeIniKey(group, key), expected);
    }

    void wideUserInfo()
    {
        Comm::writeNimboUserInfoRegValue(u"zentocloudfiles", 1u);
        Comm::writeNimboUserInfoRegValue(u"name", u"\u5f20\u4e09");
        QCOMPARE(Comm::readNimboUserInfoRegValue(u"zentocloudfiles", 0u), 1);
        QCOMPARE(Comm::readNimboUserInfoRegValue(u"name", u""), std::u16string(u"\u5f20\u4e09"));
        QCOMPARE(Comm::readNimboUserInfoRegValue(u"missing", 5u), 5);
        QCOMPARE(Comm::readNimboUserInfoRegValue(u"missing", u"d"), std::u16string(u"d"));
        QCOMPARE(Comm::readNimboUserInfoRegValue(u"name", 3u), 0); // text that is no number

        // The same store as the Qt-typed accessors.
        QCOMPARE(QComm::readNimboUserInfoRegValue("zentocloudfiles", 0), QString("1"));
        QComm::writeNimboUserInfoRegValue("level", "12");
        QCOMPARE(Comm::readNimboUserInfoRegValue(u"level", 0u), 12);
    }

    void rawRegistryFunctionsAreInert_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("name");
        QTest::addColumn<uint>("expectedNumber");

        QTest::newRow("path and name") << "Software\\X"
                                       << "v" << 0u;
        QTest::newRow("empty path") << ""
                                    << "v" << 7u;
        QTest::newRow("empty name") << "Software\\X"
                                    << "" << 7u;
    }

    void rawRegistryFunctionsAreInert()
    {
        QFETCH(QString, path);
        QFETCH(QString, name);
        QFETCH(uint, expectedNumber);

        const auto p = path.toStdU16String();
        const auto n = name.toStdU16String();
        QCOMPARE(Comm::readRegNumValue(user, p, n, 7u), expectedNumber);
        QCOMPARE(Comm::readRegStrValue(machine, p, n, u"dflt"), std::u16string(u"dflt"));
        QVERIFY(!Comm::writeRegStrValue(user, p, n, u"x"));
        QVERIFY(!Comm::writeRegNumValue(user, p, n, 1u));
        QVERIFY(!QFileInfo::exists(KHKSoftwareSettings::storeFileName(user)));
    }

    void fixedAnswers()
    {
        QCOMPARE(Comm::getVersionNetwork(-3), -3);
        QCOMPARE(Comm::getVersionNetwork(1024), 1024);
        std::u16string version = u"v", channel = u"c";
        Comm::getZentoVersionAndChannel(version, channel);
        QCOMPARE(version, std::u16string(u"v"));
        QCOMPARE(channel, std::u16string(u"c"));
        QVERIFY(Comm::checkIsSupportThriftIpc());
        QVERIFY(!Comm::checkIsSupportNimboNse());
    }
};

QTEST_GUILESS_MAIN(TestQCommStores)
#include "tst_qcommstores.moc"
