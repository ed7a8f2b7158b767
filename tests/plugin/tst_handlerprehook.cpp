// The handler's command entries and how the host's named commands reach
// them.

#include "ktestenvironment.h"

#include "plugin/kxacommonauthhandler.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/krtauth.h>

#include <QtTest>

namespace {

// Sees what arrives at the pointer form of the base.
class KPointerFormProbe : public KCommonAuthHandler
{
public:
    using KCommonAuthHandler::prehook;
    bool prehook(const QString& name, void* data, void* extra) override
    {
        names << name;
        flagSeen = data ? *static_cast<bool*>(data) : false;
        extraSeen = extra;
        return answer;
    }

    QStringList names;
    bool flagSeen = false;
    void* extraSeen = nullptr;
    bool answer = false;
};

// Stands in for a handler further down the family that stops commands.
class KCommandProbe : public KXaCommonAuthHandler
{
public:
    using KXaCommonAuthHandler::prehook;
    bool prehook(const QString& name, void* data) override
    {
        names << name;
        dataSeen = data;
        return name != QLatin1String("Blocked") && KXaCommonAuthHandler::prehook(name, data);
    }

    QStringList names;
    void* dataSeen = nullptr;
};

} // namespace

class TestHandlerPrehook : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void init() { m_env.resetHost(); }

    void baseFormsLetCommandsPass_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("flag");
        QTest::newRow("known name, true") << "OpenUserCenter" << true;
        QTest::newRow("unknown name, false") << "SomethingElse" << false;
        QTest::newRow("empty name") << "" << true;
    }

    void baseFormsLetCommandsPass()
    {
        QFETCH(QString, name);
        QFETCH(bool, flag);

        KXaCommonAuthHandler handler;
        int payload = 0;
        QVERIFY(handler.prehook(name, flag, &payload));
        QVERIFY(handler.prehook(name, &payload, &payload));
        QVERIFY(handler.prehook(name, static_cast<void*>(&payload)));
        IKAuthorizationHandler& asHost = handler;
        QVERIFY(asHost.prehook(name, flag, nullptr));
    }

    void flagFormHandsOnACopyOfTheFlag_data()
    {
        QTest::addColumn<bool>("flag");
        QTest::newRow("true") << true;
        QTest::newRow("false") << false;
    }

    void flagFormHandsOnACopyOfTheFlag()
    {
        QFETCH(bool, flag);

        KPointerFormProbe probe;
        int data = 0;
        probe.answer = false;
        QCOMPARE(probe.prehook("Cmd", flag, &data), false);
        QCOMPARE(probe.names, QStringList("Cmd"));
        QCOMPARE(probe.flagSeen, flag);
        QCOMPARE(probe.extraSeen, static_cast<void*>(&data));
    }

    void commandEntryCallsTheBaseDirectly()
    {
        // An override of the pointer form further down is not asked: the
        // command entry goes straight to the base, which lets it pass.
        KPointerFormProbe probe;
        probe.answer = false;
        QVERIFY(probe.prehook("Cmd", static_cast<void*>(nullptr)));
        QVERIFY(probe.names.isEmpty());
    }

    void hostCommandsReachTheCommandEntry_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("flagForm");
        QTest::addColumn<bool>("goesOn");

        QTest::newRow("flag form") << "OpenUserCenter" << true << true;
        QTest::newRow("pointer form") << "OpenEnterpriseCenter" << false << true;
        QTest::newRow("stopped by the handler") << "Blocked" << true << false;
    }

    void hostCommandsReachTheCommandEntry()
    {
        QFETCH(QString, name);
        QFETCH(bool, flagForm);
        QFETCH(bool, goesOn);

        KCommandProbe probe;
        krt::hostcontrol::setHandler(&probe);
        int data = 0;
        const bool result = flagForm ? krt::auth::prehook(name, false, &data)
                                     : krt::auth::prehook(name, &data, nullptr);
        krt::hostcontrol::setHandler(nullptr);

        QCOMPARE(result, goesOn);
        QCOMPARE(probe.names, QStringList(name));
        QCOMPARE(probe.dataSeen, static_cast<void*>(&data));
        QCOMPARE(krt::hostcontrol::executedCommands(), goesOn ? QStringList(name) : QStringList());
    }
};

QTEST_GUILESS_MAIN(TestHandlerPrehook)
#include "tst_handlerprehook.moc"
