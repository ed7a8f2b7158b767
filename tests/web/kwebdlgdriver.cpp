#include "kwebdlgdriver.h"

#include "ktestenvironment.h"

#include <kdeskhivelib.h>
#include <kxauthwebview.h>
#include <kxwebdlg.h>

#include <deskhive/nimboclient.h>
#include <vexlite/hostcontrol.h>

#include <QTimer>
#include <QWebElement>
#include <QWebFrame>
#include <QtTest>

namespace AuthTest {

namespace {

class ShowWatcher : public QObject
{
public:
    ShowWatcher(KxWebDlg& dialog, const std::function<void()>& whenShown, int closeWith)
        : m_dialog(dialog)
        , m_whenShown(whenShown)
        , m_closeWith(closeWith)
    {
        dialog.installEventFilter(this);
    }

    int shows = 0;

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Show && ++shows == 1)
            QTimer::singleShot(0, this, [this] { run(); });
        return false;
    }

private:
    void run()
    {
        if (m_whenShown)
            m_whenShown();
        if (m_dialog.isVisible())
            m_dialog.done(m_closeWith);
    }

    KxWebDlg& m_dialog;
    std::function<void()> m_whenShown;
    int m_closeWith;
};

} // namespace

bool resetWebHost(const KTestEnvironment& env)
{
    qputenv("DESKHIVE_STATE", (env.rootPath() + "/deskhive-state.json").toUtf8());
    env.resetHost();
    krt::hostcontrol::setVersion("12.1.0.17890");
    krt::hostcontrol::setDistributionChannel("mc-test");
    krt::hostcontrol::setHardwareId("hd-42");
    INimboClient* client = KDeskhiveLib::instance()->nimboClientInstance();
    if (client)
        client->logout();
    return client;
}

KExecRecord execShown(KxWebDlg& dialog, const std::function<void()>& whenShown, int closeWith)
{
    ShowWatcher watcher(dialog, whenShown, closeWith);
    KExecRecord record;
    record.result = dialog.exec();
    record.shows = watcher.shows;
    dialog.removeEventFilter(&watcher);
    return record;
}

KxAuthWebView* webView(KxWebDlg& dialog)
{
    return dialog.findChild<KxAuthWebView*>();
}

QWebFrame* mainFrame(KxWebDlg& dialog)
{
    return webView(dialog)->page()->mainFrame();
}

QVariant js(KxWebDlg& dialog, const QString& script)
{
    return mainFrame(dialog)->evaluateJavaScript(script);
}

bool clickElement(KxWebDlg& dialog, const QString& selector)
{
    const QWebElement element = mainFrame(dialog)->findFirstElement(selector);
    if (element.isNull() || element.geometry().isEmpty())
        return false;
    QTest::mouseClick(webView(dialog), Qt::LeftButton, Qt::NoModifier, element.geometry().center());
    return true;
}

} // namespace AuthTest
