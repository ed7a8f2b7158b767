// The main of every benchmark: the helpers and the stand-in host expect an
// application object, as they have one in the suite; benchmarks that show
// widgets get a QApplication (built with AUTH_BENCH_WIDGETS).

#include "kratioreporter.h"

#ifdef AUTH_BENCH_WIDGETS
#include <QApplication>
#else
#include <QCoreApplication>
#endif

#include <benchmark/benchmark.h>

#include <vector>

int main(int argc, char** argv)
{
#ifdef AUTH_BENCH_WIDGETS
    QApplication app(argc, argv);
#else
    QCoreApplication app(argc, argv);
#endif

    // The machines are shared and noisy: every benchmark runs five times,
    // interleaved at random with the others, and ratios compare medians.
    // Flags on the command line come after these and win.
    char repetitions[] = "--benchmark_repetitions=5";
    char interleaved[] = "--benchmark_enable_random_interleaving=true";
    char minTime[] = "--benchmark_min_time=0.2";
    std::vector<char*> args{argv[0], repetitions, interleaved, minTime};
    args.insert(args.end(), argv + 1, argv + argc);
    int count = static_cast<int>(args.size());
    args.push_back(nullptr);

    benchmark::Initialize(&count, args.data());
    if (benchmark::ReportUnrecognizedArguments(count, args.data()))
        return 1;
    KRatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
