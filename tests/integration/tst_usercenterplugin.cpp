// The built plug-in in a host, as the suite meets it: the user-centre
// command from the factory in a main window, and the plug-in's own
// catalogue chosen by the host's interface language, installed when the
// host asks for the handler or creates a command, and gone with the
// library. This suite links the host alone, never the plug-in.

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <vex/kcommand.h>
#include <vex/kcommandfactory.h>
#include <vex/kmainwindow.h>
#include <vex/kresourcescheme.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/ikauthorizationhandler.h>

#include <QLibrary>
#include <QtTest>

#include <memory>

using namespace AuthTest;

using namespace krt::hostcontrol;

namespace {

const char kDetail[] = "You have signed in Zento Office.";

// What the host sees of the user-centre command and its button.
struct KShown
{
    QString detail;
    QString balloon;
    QString personal;
    QString accessible;
};

KShown showUserCentre()
{
    KShown shown;
    KMainWindow window;
    KCommand* centre = window.addTitleCommand("KUserCenterMenuCommand");
    KCommand* personal =
        KCommandFactory::createCommand("KxOpenPersonalCenterCommand", &window, &window);
    if (!centre || !personal)
        return shown;
    centre->update();
    shown.detail = centre->detail();
    shown.personal = personal->text();
    QWidget* button = window.pocketWidget(centre);
    shown.accessible = button->accessibleName();
    setLogoutDuetoOffLine(true);
    QEnterEvent enter(QPointF(2, 2), QPointF(2, 2), QPointF(2, 2));
    QCoreApplication::sendEvent(button, &enter);
    for (QWidget* child : button->findChildren<QWidget*>()) {
        if (qstrcmp(child->metaObject()->className(), "KLoginStatusTipWidget") == 0 &&
            child->isVisible())
            shown.balloon = child->property("text").toString();
    }
    setLogoutDuetoOffLine(false);
    return shown;
}

} // namespace

class TestUserCenterPlugin : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    QLibrary m_plugin{QCoreApplication::applicationDirPath() + "/libauthplugin.so"};
    GetAuthorizationHandlerFunc m_entry = nullptr;

private slots:
    void initTestCase()
    {
        const QString state = m_env.rootPath() + "/state.json";
        QVERIFY(KTestAppDir::write(state, R"({"IsLogined": true, "Name": "", "Id": "7"})"));
        qputenv("DESKHIVE_STATE", state.toUtf8());
        KResourceScheme::install();
        QVERIFY2(m_plugin.load(), qPrintable(m_plugin.errorString()));
        m_entry = reinterpret_cast<GetAuthorizationHandlerFunc>(
            m_plugin.resolve("GetAuthorizationHandler"));
        QVERIFY(m_entry);
    }

    void init()
    {
        m_env.resetHost();
        setFeatureSupported("SimplifiedUserCenter", true);
    }

    void languages_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("detail");
        QTest::addColumn<QString>("balloon");
        QTest::addColumn<QString>("personal");
        QTest::addColumn<QString>("accessible");

        const QString english = "abnormal network status, turn to be offline status";
        QTest::newRow("English") << "en_US" << kDetail << english << "Personal Center"
                                 << "User centre";
        QTest::newRow("Chinese") << "zh_CN" << QString::fromUtf8("您已登录 Zento 办公。")
                                 << QString::fromUtf8("网络异常，已转为离线状态")
                                 << QString::fromUtf8("个人中心") << QString::fromUtf8("用户中心");
        QTest::newRow("back to English") << "en_US" << kDetail << english << "Personal Center"
                                         << "User centre";
    }

    // The texts of commands the host makes after it set its language.
    void languages()
    {
        QFETCH(QString, language);
        QFETCH(QString, detail);
        QFETCH(QString, balloon);
        QFETCH(QString, personal);
        QFETCH(QString, accessible);

        setLanguage(language);
        const KShown shown = showUserCentre();
        QCOMPARE(shown.detail, detail);
        QCOMPARE(shown.balloon, balloon);
        QCOMPARE(shown.personal, personal);
        QCOMPARE(shown.accessible, accessible);
    }

    // Asking for the handler installs it too; unloading the library takes
    // it out of the application again.
    void withHandlerAndUnload()
    {
        setLanguage("zh_CN");
        QVERIFY(m_entry());
        QCOMPARE(QCoreApplication::translate("KUserCenterMenuCommand", kDetail),
                 QString::fromUtf8("您已登录 Zento 办公。"));
        QVERIFY2(m_plugin.unload(), qPrintable(m_plugin.errorString()));
        QCOMPARE(QCoreApplication::translate("KUserCenterMenuCommand", kDetail), QString(kDetail));
    }
};

QTEST_MAIN(TestUserCenterPlugin)
#include "tst_usercenterplugin.moc"
