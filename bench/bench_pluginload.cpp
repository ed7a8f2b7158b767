// What loading the plug-in costs a host that already has Qt, its web engine
// and its own frameworks in the process: QLibrary::load, resolving the entry
// point, its first call (which makes the handler) and the first getInfo
// through krt::auth, as the host does at start-up. The baseline does the
// same with a library that links the same libraries and has nothing of its
// own (kemptyauthplugin.cpp), so the difference is the plug-in's own share:
// mapping and relocating its code, its static registrations (command
// classes, compiled-in resources, logging categories), the handler and its
// first answer. Goal: at most 1 ms more than the baseline.
//
// Every iteration unloads the library again (not timed) and checks that it
// really left the process; were it still there, the next load would only
// count a reference up and the figure would say nothing.

#include "kratioreporter.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/ikauthorizationhandler.h>
#include <vexlite/krtauth.h>

#include <QElapsedTimer>
#include <QLibrary>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <dlfcn.h>

namespace {

bool inProcess(const char* file)
{
    void* handle = dlopen(file, RTLD_LAZY | RTLD_NOLOAD);
    if (handle)
        dlclose(handle);
    return handle != nullptr;
}

void setUpHost()
{
    // The plug-in's notices at load are not what is measured.
    QLoggingCategory::setFilterRules(QStringLiteral("auth.*.debug=false"));
    static QTemporaryDir profile;
    krt::hostcontrol::resetProfile(profile.path());
    krt::hostcontrol::setLanguage(QStringLiteral("en_US"));
}

void loadAndAsk(benchmark::State& state, const char* file)
{
    setUpHost();
    // The host's libraries are in the process before the plug-in comes (the
    // web engine's, unless the build has none).
    const char* const engine = AUTH_WEB_ENGINE_FILE;
    if ((*engine && !inProcess(engine)) || !inProcess("libjsoncpp.so.25")) {
        state.SkipWithError("the host does not have its web engine and jsoncpp loaded");
        return;
    }
    const QString path = QString::fromLocal8Bit(file);
    const QString key = QStringLiteral("Product/VexName");
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        QLibrary library(path);
        if (!library.load()) {
            state.SkipWithError(qPrintable(library.errorString()));
            break;
        }
        const auto entry = reinterpret_cast<GetAuthorizationHandlerFunc>(
            library.resolve("GetAuthorizationHandler"));
        IKAuthorizationHandler* handler = entry ? entry() : nullptr;
        krt::hostcontrol::setHandler(handler);
        benchmark::DoNotOptimize(krt::auth::getInfo(key));
        state.SetIterationTime(clock.nsecsElapsed() / 1e9);

        krt::hostcontrol::setHandler(nullptr);
        if (!handler || !library.unload() || inProcess(file)) {
            state.SkipWithError("the library did not load or did not leave the process");
            break;
        }
    }
}

void pluginLoad(benchmark::State& state)
{
    loadAndAsk(state, AUTH_PLUGIN_FILE);
}

void baselineEmptyLibraryLoad(benchmark::State& state)
{
    loadAndAsk(state, AUTH_EMPTY_PLUGIN_FILE);
}

[[maybe_unused]] const int quoted = KRatioReporter::quote({
    {"pluginLoad/manual_time", "baselineEmptyLibraryLoad/manual_time"},
});

} // namespace

BENCHMARK(pluginLoad)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(baselineEmptyLibraryLoad)->UseManualTime()->Unit(benchmark::kMicrosecond);
