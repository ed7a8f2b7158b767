// Services of the stand-in host beside its commands: the suite's system
// strings and user information, the host settings, usage collection, and
// the shell's applications with their account service.

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <vex/ikuserinformation.h>
#include <vex/kxsettings.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/ikaccountservice.h>
#include <vexlite/krtinfocollect.h>
#include <vexlite/kshellapplicaitons.h>
#include <vexlite/kshellapplication.h>

#include <QtTest>

using namespace AuthTest;

using namespace krt::hostcontrol;

namespace {

// "|" stands for a zero unit in the tables.
std::u16string units(const QString& text)
{
    std::u16string result = QString(text).replace('|', QChar(0)).toStdU16String();
    return result;
}

QString shown(XBSTR string)
{
    if (!string)
        return "null";
    // The unit after the last one must be zero as well.
    const unsigned length = XSysStringLen(string);
    return QString::fromUtf16(string, int(length)).replace(QChar(0), '|') +
           (string[length] == 0 ? "" : "(unterminated)");
}

} // namespace

class TestHostServices : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void init() { m_env.resetHost(); }

    // op: "alloc" (up to the first zero), "alloc:<n>" (n units), or
    // "realloc" of the string "old" ("realloc:inside" from its third unit
    // on). text "null" is a null pointer.
    void systemStrings_data()
    {
        QTest::addColumn<QString>("op");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected"); // "null" for none

        const auto row = [](const char* tag, const char* op, const QString& text,
                            const QString& expected) {
            QTest::newRow(tag) << QString(op) << text << expected;
        };
        row("up to the first zero", "alloc", "ab|c", "ab");
        row("zeros kept with a length", "alloc:3", "a|b", "a|b");
        row("shorter than the text", "alloc:2", "abc", "ab");
        row("empty", "alloc", "", "");
        row("null text", "alloc", "null", "null");
        row("null text with a length: zeros", "alloc:2", "null", "||");
        row("too long to count in bytes", "alloc:2147483648", "null", "null");
        row("non-Latin", "alloc", QString::fromUtf8("张三"), QString::fromUtf8("张三"));
        row("replace", "realloc", "new", "new");
        row("replace with null text: empty", "realloc", "null", "");
        row("replace from inside itself", "realloc:inside", "", "d");
    }

    void systemStrings()
    {
        QFETCH(QString, op);
        QFETCH(QString, text);
        QFETCH(QString, expected);

        const int live = XSysStringLiveCount();
        const std::u16string source = units(text), old = units("old");
        const XOLECHAR* data = text == "null" ? nullptr : source.c_str();
        XBSTR string = nullptr;
        if (op.startsWith("realloc")) {
            string = XSysAllocString(old.c_str());
            QVERIFY(XSysReAllocString(&string, op.endsWith("inside") ? string + 2 : data));
        } else {
            string = op == "alloc" ? XSysAllocString(data)
                                   : XSysAllocStringLen(data, op.mid(6).toUInt());
        }
        QCOMPARE(shown(string), expected);
        QCOMPARE(XSysStringLiveCount(), live + (string ? 1 : 0));
        XSysFreeString(string);
        XSysFreeString(nullptr);
        QCOMPARE(XSysReAllocString(nullptr, old.c_str()), 0);
        QCOMPARE(XSysStringLiveCount(), live);
    }

    // The user information keeps the suite user name, zeros included, in the
    // per-user store; the host holds a reference of its own.
    void userInformation()
    {
        IKUserInformation* info = nullptr;
        QVERIFY(XSucceeded(vex_GetUserInformation(&info)) && info);
        QCOMPARE(vex_GetUserInformation(nullptr), X_E_POINTER);
        QCOMPARE(info->AddRef(), 3ul);
        QCOMPARE(info->Release(), 2ul);
        const std::u16string text = units("new|name");
        const XBSTR name = XSysAllocStringLen(text.c_str(), unsigned(text.size()));
        QVERIFY(XSucceeded(info->setUserName(name)));
        XSysFreeString(name);
        QCOMPARE(suiteUserName(), QString("new") + QChar(0) + "name");
        XBSTR read = nullptr;
        QVERIFY(XSucceeded(info->getUserName(&read)));
        QCOMPARE(shown(read), QString("new|name"));
        XSysFreeString(read);
        QCOMPARE(info->Release(), 1ul);
    }

    // The host settings are a real file of the per-user store: another
    // object, or any reader of the file, sees what one wrote.
    void settings()
    {
        {
            KxSettings settings;
            settings.beginGroup("ZentoCtx");
            settings.setValue("key", "value");
            settings.setValue(QString::fromUtf8("名"), 7);
        }
        KxSettings again;
        QCOMPARE(again.value("ZentoCtx/key").toString(), QString("value"));
        QCOMPARE(again.value(QString::fromUtf8("ZentoCtx/名")).toInt(), 7);
        QCOMPARE(again.fileName(), m_env.profilePath() + "/stores/user.ini");
        QSettings file(again.fileName(), QSettings::IniFormat);
        QCOMPARE(file.value("Corvane/Office/6.0/vex/ZentoCtx/key").toString(), QString("value"));
    }

    void usageEvents()
    {
        clearRecordedEvents();
        const QDateTime start = QDateTime::currentDateTimeUtc().addSecs(-1);
        const QString label = QString::fromUtf8("a \"quoted\"\nline, 张");
        krt::infocollect::collectExpEvent("exp", "B", "click", "dialog", label, 3, "home");
        krt::infocollect::collectExpView("", "", "home", "page");
        QCOMPARE(infoCollectFile(), m_env.profilePath() + "/userdata/infocollect.jsonl");

        // Somebody else's line in the file is no event.
        QFile file(infoCollectFile());
        QVERIFY(file.open(QIODevice::Append));
        file.write("not json\n[1]\n");
        file.close();
        krt::infocollect::collectExpEvent("exp", "B", "close", "", "", 0, "");

        QList<QVariantMap> events = recordedEvents();
        QCOMPARE(events.size(), 3);
        for (QVariantMap& event : events) {
            const QDateTime when =
                QDateTime::fromString(event.take("time").toString(), Qt::ISODateWithMs);
            QVERIFY(when >= start && when <= QDateTime::currentDateTimeUtc());
        }
        const QVariantMap click{{"kind", "event"},
                                {"expId", "exp"},
                                {"expVar", "B"},
                                {"eventName", "click"},
                                {"eventCategory", "dialog"},
                                {"eventLable", label},
                                {"eventValue", 3},
                                {"viewName", "home"}};
        const QVariantMap view{{"kind", "view"},
                               {"expId", ""},
                               {"expVar", ""},
                               {"viewName", "home"},
                               {"viewCategory", "page"}};
        QCOMPARE(events[0], click);
        QCOMPARE(events[1], view);
        QCOMPARE(events[2].value("eventName").toString(), QString("close"));
        clearRecordedEvents();
        QVERIFY(recordedEvents().isEmpty());
    }

    // Every application's account service reports the one suite account
    // and records its entry calls; the shell's state travels with the
    // profile, where members of the wrong type count as absent.
    void shell()
    {
        KShellApplicaitons* shell = KShellApplicaitons::instance();
        const auto account = [&] { return shell->getActiveApp()->accountService(); };
        QCOMPARE(shell->getActiveApp()->name(), QString("zento"));
        QVERIFY(!account()->getUserInfo().logined());
        IKAccountService* zento = account();
        setAccountLogined(true, "Ada");
        setLogoutDuetoOffLine(true);
        setActiveApp("tabix");
        QCOMPARE(shell->getActiveApp(), shell->application("tabix"));
        QCOMPARE(account(), zento);
        QCOMPARE(account()->getUserInfo().userName(), QString("Ada"));
        QVERIFY(account()->getUserInfo().logined() && account()->isLogoutDuetoOffLine());
        account()->entry(4, "a", "b");
        QCOMPARE(accountEntryCalls().size(), 1);
        QCOMPARE(accountEntryCalls()[0].code, 4);
        QCOMPARE(accountEntryCalls()[0].first + accountEntryCalls()[0].second, QString("ab"));

        QVERIFY(saveProfile(m_env.rootPath() + "/saved"));
        setAccountLogined(false, "Ada");
        QCOMPARE(account()->getUserInfo().userName(), QString());
        setActiveApp("");
        QVERIFY(!shell->getActiveApp());
        QVERIFY(loadProfile(m_env.rootPath() + "/saved"));
        QCOMPARE(shell->getActiveApp()->name(), QString("tabix"));
        QVERIFY(account()->getUserInfo().logined() && account()->isLogoutDuetoOffLine());
        QVERIFY(accountEntryCalls().isEmpty());

        QVERIFY(KTestAppDir::write(m_env.rootPath() + "/odd/host.json",
                                   R"({"shell": {"activeApp": 3, "account": "yes"}})"));
        QVERIFY(loadProfile(m_env.rootPath() + "/odd"));
        QCOMPARE(shell->getActiveApp()->name(), QString("zento"));
        QVERIFY(!account()->getUserInfo().logined());
    }
};

QTEST_GUILESS_MAIN(TestHostServices)
#include "tst_hostservices.moc"
