#include "kwebdlgdriver.h"

#include "ktestenvironment.h"

#include <kdeskhivelib.h>
#include <kxwebdlg.h>
#include <kxwebdlgengine.h>

#include <deskhive/nimboclient.h>
#include <vexlite/hostcontrol.h>

#include <QJsonDocument>
#include <QJsonValue>
#include <QTimer>
#include <QtTest>

#if AUTH_WEB_QTWEBENGINE
#include <kxwebengineauthpage.h>
using KTestAuthPage = KxWebEngineAuthPage;
#else
#include <kxauthwebpage.h>
using KTestAuthPage = KxAuthWebPage;
#endif

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

QString quoted(const QString& text)
{
    return QString::fromUtf8(
               QJsonDocument::fromVariant(QVariantList{text}).toJson(QJsonDocument::Compact))
        .mid(1)
        .chopped(1);
}

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

KxWebDlgEngine* webEngine(KxWebDlg& dialog)
{
    return dialog.findChild<KxWebDlgEngine*>();
}

QWidget* webView(KxWebDlg& dialog)
{
    return webEngine(dialog)->view();
}

QVariant js(KxWebDlg& dialog, const QString& script)
{
    // The answer waits in the page under a name of its own for each call.
    static int calls = 0;
    const QString slot = QStringLiteral("window['__authTest%1']").arg(++calls);
    KxWebDlgEngine* engine = webEngine(dialog);
    engine->evaluate(QStringLiteral("new Promise(function (resolve) { resolve((0, eval)(%1)); })"
                                    ".then(function (v) { %2 = { done: true, value: v }; },"
                                    " function () { %2 = { done: true, value: null }; }); true")
                         .arg(quoted(script), slot));
    QVariant answer;
    const bool answered = QTest::qWaitFor(
        [&] {
            answer = engine->evaluate(slot);
            return answer.canConvert<QVariantMap>() && answer.toMap().contains("done");
        },
        5000);
    engine->evaluate("delete " + slot);
    if (!answered)
        qWarning("No answer from the page to %s", qUtf8Printable(script.left(80)));
    return answer.toMap().value("value");
}

QString pageText(KxWebDlg& dialog, const QString& selector)
{
    return js(dialog, QStringLiteral("(document.querySelector(%1) || {}).innerText || ''")
                          .arg(quoted(selector)))
        .toString();
}

QRect elementRect(KxWebDlg& dialog, const QString& selector)
{
    const QVariantList box =
        js(dialog, QStringLiteral("var e = document.querySelector(%1); if (e) { var r = "
                                  "e.getBoundingClientRect(); [r.left, r.top, r.width, r.height] "
                                  "} else { [] }")
                       .arg(quoted(selector)))
            .toList();
    if (box.size() != 4)
        return QRect();
    return QRect(qRound(box[0].toDouble()), qRound(box[1].toDouble()), qRound(box[2].toDouble()),
                 qRound(box[3].toDouble()));
}

QWidget* inputWidget(KxWebDlg& dialog)
{
    QWidget* view = webView(dialog);
    return view->focusProxy() ? view->focusProxy() : view;
}

bool clickElement(KxWebDlg& dialog, const QString& selector)
{
    // QtWebEngine drops input that comes before the page's document has
    // drawn a frame (after a navigation it keeps showing the last one for a
    // while): the click waits for the page's next animation frame.
    js(dialog, QStringLiteral("new Promise(function (drawn) { (window.requestAnimationFrame || "
                              "setTimeout)(function () { drawn(true); }); })"));
    const QRect rect = elementRect(dialog, selector);
    if (rect.isEmpty())
        return false;
    QTest::mouseClick(inputWidget(dialog), Qt::LeftButton, Qt::NoModifier, rect.center());
    return true;
}

int popupCount(KxWebDlg& dialog)
{
    return webView(dialog)->findChild<KTestAuthPage*>()->popupCount();
}

int maxPopups()
{
    return KTestAuthPage::kMaxPopups;
}

} // namespace AuthTest
