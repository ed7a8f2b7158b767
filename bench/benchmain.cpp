// The main of every benchmark: the helpers and the stand-in host expect an
// application object, as they have one in the suite.

#include <QCoreApplication>

#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
