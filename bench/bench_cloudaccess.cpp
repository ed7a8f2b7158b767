// What an account question costs the plug-in: the user-centre button asks
// for the user information and the signed-in flag on every client signal,
// and every centre page is wrapped for automatic sign-in before it opens.
// Runs against the simulator beside the benchmark, signed in.

#include "usercenter/kdeskhivelib.h"
#include "usercenter/knimboclientinstance.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

void userInfo(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(KNimboClientInstance::userInfo());
}

void isLogined(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(KNimboClientInstance::isLogined());
}

void autoLoginUrl(benchmark::State& state)
{
    const QString url = QStringLiteral("https://centre.example/personal?from=menu");
    for (auto _ : state)
        benchmark::DoNotOptimize(KNimboClientInstance::getAutoLoginUrl(url));
}

} // namespace

BENCHMARK(userInfo);
BENCHMARK(isLogined);
BENCHMARK(autoLoginUrl);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const QString state = dir.filePath(QStringLiteral("state.json"));
    QFile file(state);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(R"({"IsLogined": true, "Name": "Bench", "Id": "b-1"})") < 0)
        return 1;
    file.close();
    qputenv("DESKHIVE_STATE", state.toUtf8());
    if (!KNimboClientInstance::isLogined()) {
        qWarning("bench_cloudaccess: the simulator beside the benchmark is missing or signed out");
        return 1;
    }

    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
