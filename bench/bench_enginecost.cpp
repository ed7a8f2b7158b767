// What a web engine costs the host before the library does anything: the
// time to a bare view's first page, and the memory resident when it shows,
// for QtWebKit and QtWebEngine on Qt 5, on the same page (the library's
// offline page, from the source tree).
//
// Each measurement is a fresh process, since an engine starts once per
// process: a small program per engine (linked with that engine only, so
// neither pays for the other's libraries) shows a bare view of the page and
// reports. The time runs from making the view, where the engine starts, to
// its loadFinished. Memory is taken half a second after the view is shown,
// summed over the process and every process it started (QtWebEngine's
// zygote, renderer and GPU process): resident set, which counts the pages
// the processes share once per process, and proportional set, which
// shares them out. The same program without a view (a shown QWidget, no
// engine) gives what Qt alone holds.
//
// This program runs each of the three, alternating, kRounds times and
// prints the medians. It measures, it does not judge: it exits 1 only when
// a run could not be measured.

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTextStream>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include <algorithm>
#include <vector>

#include <unistd.h>

#if AUTH_ENGINECOST_QTWEBENGINE
#include <QWebEngineView>
using KBareView = QWebEngineView;
#elif AUTH_ENGINECOST_QTWEBKIT
#include <QWebView>
using KBareView = QWebView;
#endif

namespace {

constexpr int kSettleMs = 500;
constexpr int kLoadTimeoutMs = 60000;

// Sums a "Key:   <n> kB" line of a /proc file.
qint64 kibibytes(const QString& path, const QByteArray& key)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    qint64 sum = 0;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith(key))
            sum += line.mid(key.size()).trimmed().split(' ').value(0).toLongLong();
    }
    return sum;
}

// The process and every process below it.
QList<qint64> family(qint64 root)
{
    QList<qint64> members{root};
    bool grew = true;
    while (grew) {
        grew = false;
        for (const QString& entry : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
            bool number = false;
            const qint64 pid = entry.toLongLong(&number);
            if (!number || members.contains(pid))
                continue;
            QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
            if (!stat.open(QIODevice::ReadOnly))
                continue;
            // "pid (name) state ppid ...": the name may hold spaces and parentheses.
            const QByteArray text = stat.readAll();
            const QList<QByteArray> after = text.mid(text.lastIndexOf(')') + 2).split(' ');
            if (after.size() > 1 && members.contains(after.at(1).toLongLong())) {
                members.append(pid);
                grew = true;
            }
        }
    }
    return members;
}

// One measurement, in this process: prints "<ms> <rss KiB> <pss KiB> <processes>".
int measure(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    double firstPageMs = 0;
#if AUTH_ENGINECOST_QTWEBENGINE || AUTH_ENGINECOST_QTWEBKIT
    const QUrl page = QUrl::fromLocalFile(QStringLiteral(AUTH_ENGINECOST_PAGE));
    QElapsedTimer clock;
    clock.start();
    KBareView view;
    view.resize(600, 400);
    bool loaded = false;
    QObject::connect(&view, &KBareView::loadFinished, &app, [&](bool ok) {
        firstPageMs = clock.nsecsElapsed() / 1e6;
        loaded = ok;
        view.show();
        QTimer::singleShot(kSettleMs, &app, &QCoreApplication::quit);
    });
    QTimer::singleShot(kLoadTimeoutMs, &app, &QCoreApplication::quit);
    view.setUrl(page);
    app.exec();
    if (!loaded)
        return 1;
#else
    QWidget view;
    view.resize(600, 400);
    view.show();
    QTimer::singleShot(kSettleMs, &app, &QCoreApplication::quit);
    app.exec();
#endif
    qint64 rss = 0;
    qint64 pss = 0;
    const QList<qint64> members = family(QCoreApplication::applicationPid());
    for (const qint64 pid : members) {
        rss += kibibytes(QStringLiteral("/proc/%1/status").arg(pid), "VmRSS:");
        pss += kibibytes(QStringLiteral("/proc/%1/smaps_rollup").arg(pid), "Pss:");
    }
    QTextStream(stdout) << firstPageMs << ' ' << rss << ' ' << pss << ' ' << members.size() << '\n';
    return 0;
}

#if !AUTH_ENGINECOST_QTWEBENGINE && !AUTH_ENGINECOST_QTWEBKIT

constexpr int kRounds = 5;

struct Runs
{
    QString name;
    QString program;
    std::vector<double> values[4]; // first page ms, RSS, PSS, processes
};

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

int drive()
{
    QTextStream out(stdout);
    const QString self = QCoreApplication::applicationFilePath();
    std::vector<Runs> engines{{QStringLiteral("Qt alone (a shown QWidget)"), self, {}},
                              {QStringLiteral("QtWebKit 5.212, QWebView"),
                               QStringLiteral(AUTH_ENGINECOST_QTWEBKIT_FILE),
                               {}},
                              {QStringLiteral("QtWebEngine 5.15, QWebEngineView"),
                               QStringLiteral(AUTH_ENGINECOST_QTWEBENGINE_FILE),
                               {}}};
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!environment.contains(QStringLiteral("QT_QPA_PLATFORM")))
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    // Qt 5's offscreen platform has no OpenGL, which QtWebEngine 5 draws its
    // widget with unless told to use Qt Quick's software renderer.
    if (environment.value(QStringLiteral("QT_QPA_PLATFORM")) == QLatin1String("offscreen"))
        environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
    // Chromium's sandbox does not start for root.
    if (::geteuid() == 0)
        environment.insert(QStringLiteral("QTWEBENGINE_DISABLE_SANDBOX"), QStringLiteral("1"));
    out << "Page: " << AUTH_ENGINECOST_PAGE << "\nMedians of " << kRounds
        << " fresh processes each, run in turn (platform "
        << environment.value(QStringLiteral("QT_QPA_PLATFORM")) << ")\n\n";
    out.flush();

    for (int round = 0; round < kRounds; ++round) {
        for (Runs& engine : engines) {
            QProcess run;
            run.setProcessEnvironment(environment);
            // What the engines say on their error channel is not the result.
            run.setStandardErrorFile(QProcess::nullDevice());
            run.start(engine.program, {QStringLiteral("--measure")});
            if (!run.waitForFinished(2 * kLoadTimeoutMs) || run.exitCode() != 0) {
                out << engine.name << ": the run failed (" << run.errorString() << ")\n";
                return 1;
            }
            const QList<QByteArray> fields = run.readAllStandardOutput().simplified().split(' ');
            for (int i = 0; i < 4; ++i)
                engine.values[i].push_back(fields.value(i).toDouble());
        }
    }

    out << QStringLiteral("%1  %2  %3  %4  %5\n")
               .arg(QStringLiteral("engine"), -34)
               .arg(QStringLiteral("first page"), 10)
               .arg(QStringLiteral("RSS, all processes"), 18)
               .arg(QStringLiteral("PSS, all processes"), 18)
               .arg(QStringLiteral("processes"), 9);
    for (const Runs& engine : engines) {
        out << QStringLiteral("%1  %2  %3  %4  %5\n")
                   .arg(engine.name, -34)
                   .arg(&engine == &engines[0]
                            ? QStringLiteral("-")
                            : QStringLiteral("%1 ms").arg(median(engine.values[0]), 0, 'f', 0),
                        10)
                   .arg(QStringLiteral("%1 MiB").arg(median(engine.values[1]) / 1024, 0, 'f', 1),
                        18)
                   .arg(QStringLiteral("%1 MiB").arg(median(engine.values[2]) / 1024, 0, 'f', 1),
                        18)
                   .arg(median(engine.values[3]), 9);
    }
    const auto ratio = [&](int column) {
        return median(engines[2].values[column]) / std::max(1.0, median(engines[1].values[column]));
    };
    out << QStringLiteral("\nQtWebEngine / QtWebKit: first page %1x, PSS %2x\n")
               .arg(ratio(0), 0, 'f', 2)
               .arg(ratio(2), 0, 'f', 2);
    return 0;
}

#endif

} // namespace

int main(int argc, char** argv)
{
#if AUTH_ENGINECOST_QTWEBENGINE || AUTH_ENGINECOST_QTWEBKIT
    return measure(argc, argv);
#else
    if (argc > 1 && QByteArray(argv[1]) == "--measure")
        return measure(argc, argv);
    QCoreApplication app(argc, argv);
    return drive();
#endif
}
