#ifndef KRATIOREPORTER_H
#define KRATIOREPORTER_H

#include <benchmark/benchmark.h>

#include <initializer_list>
#include <map>
#include <string>
#include <vector>

// On a shared machine a time alone says little; a time against a baseline
// measured in the same run says more. This reporter prints the console
// table, then each quoted benchmark's CPU time as a multiple of its
// baseline's (the wall-clock time for benchmarks that use real or manual
// time). With repetitions it compares the medians and shows the
// aggregates alone. The table comes at the end of the run.
class KRatioReporter : public benchmark::ConsoleReporter
{
public:
    struct Quote
    {
        const char* benchmark;
        const char* baseline;
    };

    // Pairs benchmarks with their baselines by the names the report shows
    // ("appType/unknown"). Each benchmark file calls it once from a static
    // initialiser; returns how many pairs are known so far.
    static int quote(std::initializer_list<Quote> quotes);

    KRatioReporter();

    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    // CPU seconds per iteration of every repetition, by benchmark name.
    std::map<std::string, std::vector<double>> m_times;
    // The table's rows, printed at the end in the order of the source.
    std::vector<Run> m_shown;
};

#endif // KRATIOREPORTER_H
