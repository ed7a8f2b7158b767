// The plug-in's commands in the host's command factory, as a host meets
// them: the built libauthplugin loaded with QLibrary brings its images,
// hands out its one handler, registers its classes
// in table order, the host creates them for its main windows, they work
// through the handler and speak the host's language, and unloading the
// library withdraws them in the reverse order, with its catalogue. This
// suite links the host alone, never the plug-in.

#include "ktestappdir.h"
#include "ktestenvironment.h"
#include "kurlcatcher.h"
#include "kwarningcatcher.h"

#include <vex/kcommandfactory.h>
#include <vex/kcommandfactoryitembase.h>
#include <vex/klistcommand.h>
#include <vex/kmainwindow.h>
#include <vex/kresourcescheme.h>
#include <vex/ktriggercommand.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/ikauthorizationhandler.h>

#include <QLibrary>
#include <QPixmap>
#include <QtTest>

using namespace AuthTest;

using namespace krt::hostcontrol;

namespace {

const QStringList kTable{"KUserCenterMenuCommand", "KxOpenPersonalCenterCommand",
                         "KEnterpriseCenterTriggerCommand"};
const QString kCenter = "https://account.example/center?from=suite";
const char kDetail[] = "You have signed in Zento Office.";

class KDerivedMainWindow : public KMainWindow
{};

} // namespace

class TestCommandFactory : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    QLibrary m_plugin{QCoreApplication::applicationDirPath() + "/libauthplugin.so"};
    GetAuthorizationHandlerFunc m_entry = nullptr;
    KUrlCatcher m_urls;

private slots:
    void initTestCase()
    {
        const QString state = m_env.rootPath() + "/state.json";
        QVERIFY(KTestAppDir::write(state, R"({"IsLogined": true, "Name": "", "Id": "id-7"})"));
        qputenv("DESKHIVE_STATE", state.toUtf8());
        setProductString("PersonalCenterUrl", kCenter);
        setFeatureSupported("SimplifiedUserCenter", true);
        KResourceScheme::install();

        KCommandFactory::clearRegistrationLog();
        QVERIFY(KCommandFactory::registeredClasses().isEmpty());
        // The compiled-in images arrive with the library, without the host
        // calling anything in it; the entry point by its plain name gives
        // one handler.
        QVERIFY(QPixmap("res:/images/logo.png").isNull());
        QVERIFY2(m_plugin.load(), qPrintable(m_plugin.errorString()));
        QCOMPARE(QPixmap("res:/images/logo.png").size(), QSize(40, 40));
        m_entry = reinterpret_cast<GetAuthorizationHandlerFunc>(
            m_plugin.resolve("GetAuthorizationHandler"));
        QVERIFY(m_entry && m_entry() && m_entry() == m_entry());
        setHandler(m_entry());
    }

    void registeredAtLoad()
    {
        QCOMPARE(KCommandFactory::registeredClasses(), kTable);
        QStringList log;
        for (const QString& name : kTable)
            log << "register " + name;
        QCOMPARE(KCommandFactory::registrationLog(), log);
        for (const QString& name : kTable)
            QCOMPARE(KCommandFactory::lookup(name)->className(), name);
    }

    void createFor_data()
    {
        QTest::addColumn<QString>("className");
        QTest::addColumn<QString>("host");
        QTest::addColumn<bool>("created");

        // Each class with its own host class; the other kinds of host once.
        for (const QString& name : kTable) {
            QTest::addRow("%s, main window", qPrintable(name)) << name << "KMainWindow" << true;
            QTest::addRow("%s, Qt main window", qPrintable(name)) << name << "QMainWindow" << false;
        }
        QTest::newRow("derived main window") << kTable[0] << "derived" << true;
        QTest::newRow("widget") << kTable[1] << "QWidget" << false;
        QTest::newRow("no host") << kTable[2] << "" << false;
    }

    // A suitable host gets a new command each time, parented to the window;
    // any other gets the warning and nothing.
    void createFor()
    {
        QFETCH(QString, className);
        QFETCH(QString, host);
        QFETCH(bool, created);

        const auto make = [&]() -> QWidget* {
            if (host == "KMainWindow")
                return new KMainWindow;
            if (host == "derived")
                return new KDerivedMainWindow;
            if (host == "QMainWindow")
                return new QMainWindow;
            return host == "QWidget" ? new QWidget : nullptr;
        };
        QScopedPointer<QWidget> window(make());
        QObject other;
        KWarningCatcher catcher;
        QScopedPointer<KCommand> first(
            KCommandFactory::createCommand(className, window.data(), &other));
        QScopedPointer<KCommand> second(
            KCommandFactory::createCommand(className, window.data(), &other));
        QCOMPARE(!first.isNull(), created);
        if (!created) {
            const QString warning = className + " need a host KMainWindow";
            QCOMPARE(catcher.warnings(), QStringList({warning, warning}));
            return;
        }
        QVERIFY(catcher.warnings().isEmpty());
        QVERIFY(first != second);
        QCOMPARE(QString(first->metaObject()->className()), className);
        // The user centre is the account menu's list; the centres are its entries.
        if (className == kTable[0])
            QVERIFY(qobject_cast<KListCommand*>(first.data()) && !first->icon().isNull());
        else
            QVERIFY(qobject_cast<KTriggerCommand*>(first.data()) && !first->text().isEmpty());
        QCOMPARE(first->parent(), window.data());
        QCOMPARE(first->host(), &other);
        QCOMPARE(first->name(), className);
    }

    // The commands in a main window's title area: the personal centre shows
    // for the signed-in user and, clicked, opens the centre signed in; the
    // enterprise centre goes to the host. Both reach the handler. Each
    // command's clone is one of its class with its properties.
    void commandsWork()
    {
        clearExecutedCommands();
        m_urls.take();
        KMainWindow window;
        KCommand* centre = window.addTitleCommand(kTable[0]);
        KCommand* personal = window.addTitleCommand(kTable[1]);
        KCommand* enterprise = window.addTitleCommand(kTable[2]);
        QVERIFY(centre && personal && enterprise);
        personal->setVisible(false);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(personal->isVisible());
        QTest::mouseClick(window.pocketWidget(personal), Qt::LeftButton);
        static_cast<KTriggerCommand*>(enterprise)->trigger();
        QCOMPARE(executedCommands(), QStringList({"OpenUserCenter", "OpenEnterpriseCenter"}));
        QCOMPARE(m_urls.take(), QStringList("wrapped:" + QUrl::toPercentEncoding(kCenter)));

        QObject parent;
        for (KCommand* command : {centre, personal, enterprise}) {
            command->setDetail("d");
            QScopedPointer<KCommand> copy(command->clone(&parent, &window));
            QCOMPARE(copy->metaObject(), command->metaObject());
            QVERIFY(copy->parent() == &parent && copy->host() == &window);
            QVERIFY(copy->name() == command->name() && copy->detail() == "d");
        }
    }

    void languages_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QStringList>("texts"); // detail, balloon, personal centre, button name

        const QStringList english{kDetail, "abnormal network status, turn to be offline status",
                                  "Personal Center", "User centre"};
        QTest::newRow("English") << "en_US" << english;
        QTest::newRow("Chinese") << "zh_CN"
                                 << QStringList{"您已登录 Zento 办公。", "网络异常，已转为离线状态",
                                                "个人中心", "用户中心"};
    }

    // The plug-in's own catalogue follows the host's language, from the other
    // one: the texts of commands the host makes after it set its language,
    // the offline balloon among them.
    void languages()
    {
        QFETCH(QString, language);
        QFETCH(QStringList, texts);

        setLanguage(language == "en_US" ? "zh_CN" : "en_US");
        KMainWindow before;
        QVERIFY(before.addTitleCommand(kTable[0])); // the other catalogue in use
        setLanguage(language);
        KMainWindow window;
        KCommand* centre = window.addTitleCommand(kTable[0]);
        KCommand* personal = KCommandFactory::createCommand(kTable[1], &window, &window);
        QVERIFY(centre && personal);
        centre->update();
        QWidget* button = window.pocketWidget(centre);
        setLogoutDuetoOffLine(true);
        QEnterEvent enter(QPointF(2, 2), QPointF(2, 2), QPointF(2, 2));
        QCoreApplication::sendEvent(button, &enter);
        setLogoutDuetoOffLine(false);
        QString balloon;
        for (QWidget* child : button->findChildren<QWidget*>()) {
            if (child->inherits("KLoginStatusTipWidget") && child->isVisible())
                balloon = child->property("text").toString();
        }
        QCOMPARE(
            (QStringList{centre->detail(), balloon, personal->text(), button->accessibleName()}),
            texts);
    }

    // Last: the library goes, and its classes and catalogue with it, the
    // classes last first; what the host was told before stays readable.
    // Asking for the handler installs the catalogue, as making a command does.
    void unloadedInReverse()
    {
        setLanguage("zh_CN");
        QVERIFY(m_entry());
        QCOMPARE(QCoreApplication::translate("KUserCenterMenuCommand", kDetail),
                 QString("您已登录 Zento 办公。"));
        const QStringList before = KCommandFactory::registeredClasses();
        setHandler(nullptr);
        KCommandFactory::clearRegistrationLog();
        QVERIFY2(m_plugin.unload(), qPrintable(m_plugin.errorString()));
        QStringList log;
        for (const QString& name : kTable)
            log.prepend("unregister " + name);
        QCOMPARE(KCommandFactory::registrationLog(), log);
        QVERIFY(KCommandFactory::registeredClasses().isEmpty());
        QVERIFY(!KCommandFactory::lookup(kTable[0]));
        QMainWindow window;
        QVERIFY(!KCommandFactory::createCommand(kTable[0], &window, nullptr));
        QCOMPARE(before, kTable);
        QCOMPARE(QCoreApplication::translate("KUserCenterMenuCommand", kDetail), QString(kDetail));
    }
};

QTEST_MAIN(TestCommandFactory)
#include "tst_commandfactory.moc"
