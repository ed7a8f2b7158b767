// How long the web dialog keeps the user waiting: from exec() to the dialog
// being visible, for a local page. The baseline is a bare view of the same
// engine (QWebView, or QWebEngineView) loading the same page and shown when
// it has loaded, the least any dialog could do. Two pages: the library's offline page, which asks
// the bridge for the version, the language and the account while it loads (and so shows more in the
// dialog than in the bare view, which has no bridge), and the same page without its script, where
// both show the same. Timed by the wall clock (the wait is for events, not for the processor), from
// the call to the Show event; making and destroying the widgets is not timed.

#include "kratioreporter.h"

#include <kxwebdlg.h>
#include <kxwebresources.h>

#include <QElapsedTimer>
#include <QEvent>
#include <QEventLoop>
#include <QFile>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTimer>
#if AUTH_BENCH_QTWEBENGINE
#include <QWebEngineView>
using KBareView = QWebEngineView;
#else
#include <QWebView>
using KBareView = QWebView;
#endif

#include <benchmark/benchmark.h>

namespace {

// Notes when the watched widget is shown, then calls done once the event
// loop is free.
class ShowClock : public QObject
{
public:
    ShowClock(QWidget* widget, std::function<void()> done)
        : m_done(std::move(done))
    {
        widget->installEventFilter(this);
    }

    void start() { m_clock.start(); }
    double seconds() const { return m_seconds; }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Show && m_seconds < 0) {
            m_seconds = m_clock.nsecsElapsed() / 1e9;
            QTimer::singleShot(0, this, [this] { m_done(); });
        }
        return false;
    }

private:
    std::function<void()> m_done;
    QElapsedTimer m_clock;
    double m_seconds = -1;
};

// The library's offline page, or a copy without its script; the dialog's
// notices (one a load) are not what is measured.
QUrl localPage(bool script)
{
    QLoggingCategory::setFilterRules(QStringLiteral("auth.*.debug=false"));
    const QString offline = kxGetWebResMuiFile(QStringLiteral("offline.html"));
    if (script)
        return QUrl(offline);
    static QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("static.html"));
    QFile original(offline.mid(3)); // ":/..." of "qrc:/..."
    QFile copy(path);
    if (original.open(QIODevice::ReadOnly) && copy.open(QIODevice::WriteOnly))
        copy.write(QString::fromUtf8(original.readAll())
                       .remove(QRegularExpression(QStringLiteral("<script>.*</script>"),
                                                  QRegularExpression::DotMatchesEverythingOption))
                       .toUtf8());
    return QUrl::fromLocalFile(path);
}

void execToVisible(benchmark::State& state)
{
    const QUrl page = localPage(state.range(0));
    for (auto _ : state) {
        KxWebDlg dialog(page);
        ShowClock clock(&dialog, [&dialog] { dialog.accept(); });
        clock.start();
        dialog.exec();
        state.SetIterationTime(clock.seconds());
    }
}

void baselineBareView(benchmark::State& state)
{
    const QUrl page = localPage(state.range(0));
    for (auto _ : state) {
        KBareView view;
        view.resize(600, 300);
        view.page(); // made before the clock starts, as the dialog's is
        QEventLoop loop;
        ShowClock clock(&view, [&loop] { loop.quit(); });
        QObject::connect(&view, &KBareView::loadFinished, &view, &QWidget::show);
        clock.start();
        view.setUrl(page);
        loop.exec();
        state.SetIterationTime(clock.seconds());
    }
}

[[maybe_unused]] const int quoted = KRatioReporter::quote({
    {"execToVisible/script:1/manual_time", "baselineBareView/script:1/manual_time"},
    {"execToVisible/script:0/manual_time", "baselineBareView/script:0/manual_time"},
});

} // namespace

BENCHMARK(execToVisible)
    ->ArgName("script")
    ->Arg(1)
    ->Arg(0)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(baselineBareView)
    ->ArgName("script")
    ->Arg(1)
    ->Arg(0)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
