// What an account question costs the plug-in: the user-centre button asks
// for the user information and the signed-in flag on every client signal,
// and every centre page is wrapped for automatic sign-in before it opens.
// Runs against the simulator beside the benchmark, signed in.

#include "kdeskhivelib.h"
#include "knimboclientinstance.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

// Signs the simulator in through a state file of the benchmark's own, once.
bool signedIn()
{
    static QTemporaryDir dir;
    static const bool ready = [] {
        const QString state = dir.filePath(QStringLiteral("state.json"));
        QFile file(state);
        if (!file.open(QIODevice::WriteOnly) ||
            file.write(R"({"IsLogined": true, "Name": "Bench", "Id": "b-1"})") < 0)
            return false;
        file.close();
        qputenv("DESKHIVE_STATE", state.toUtf8());
        return KNimboClientInstance::isLogined();
    }();
    return ready;
}

#define REQUIRE_SIGNED_IN(state)                                                                   \
    if (!signedIn()) {                                                                             \
        state.SkipWithError("the simulator beside the benchmark is missing or signed out");        \
        return;                                                                                    \
    }

void userInfo(benchmark::State& state)
{
    REQUIRE_SIGNED_IN(state)
    for (auto _ : state)
        benchmark::DoNotOptimize(KNimboClientInstance::userInfo());
}

void isLogined(benchmark::State& state)
{
    REQUIRE_SIGNED_IN(state)
    for (auto _ : state)
        benchmark::DoNotOptimize(KNimboClientInstance::isLogined());
}

void autoLoginUrl(benchmark::State& state)
{
    REQUIRE_SIGNED_IN(state)
    const QString url = QStringLiteral("https://centre.example/personal?from=menu");
    for (auto _ : state)
        benchmark::DoNotOptimize(KNimboClientInstance::getAutoLoginUrl(url));
}

} // namespace

BENCHMARK(userInfo);
BENCHMARK(isLogined);
BENCHMARK(autoLoginUrl);
