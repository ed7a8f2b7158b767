#include "kratioreporter.h"

#include <algorithm>
#include <cstdio>
#include <ostream>
#include <utility>

#include <unistd.h>

namespace {

std::vector<std::pair<std::string, std::string>>& quotes()
{
    static std::vector<std::pair<std::string, std::string>> all;
    return all;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

std::string timeText(double seconds)
{
    char text[32];
    if (seconds < 1e-6)
        std::snprintf(text, sizeof text, "%.1f ns", seconds * 1e9);
    else if (seconds < 1e-3)
        std::snprintf(text, sizeof text, "%.2f us", seconds * 1e6);
    else
        std::snprintf(text, sizeof text, "%.2f ms", seconds * 1e3);
    return text;
}

} // namespace

int KRatioReporter::quote(std::initializer_list<Quote> pairs)
{
    for (const Quote& pair : pairs)
        quotes().emplace_back(pair.benchmark, pair.baseline);
    return static_cast<int>(quotes().size());
}

KRatioReporter::KRatioReporter()
    : ConsoleReporter(isatty(STDOUT_FILENO) ? OO_Color : OO_None)
{}

void KRatioReporter::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        const bool repeated = run.repetitions > 1;
        // Benchmarks timed by the wall clock (UseRealTime, UseManualTime:
        // their names end in "/real_time" or "/manual_time") wait for events
        // rather than compute; their real time is what they measure.
        const bool wallClock = !run.run_name.time_type.empty();
        if (run.run_type == Run::RT_Iteration && !run.error_occurred)
            m_times[run.run_name.str()].push_back(
                (wallClock ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime()) /
                benchmark::GetTimeUnitMultiplier(run.time_unit));
        // Five rows per benchmark bury the table; the aggregates sum them up.
        if (!repeated || run.run_type == Run::RT_Aggregate || run.error_occurred)
            m_shown.push_back(run);
    }
}

void KRatioReporter::Finalize()
{
    // Interleaved runs finish in random order; the table follows the source.
    std::stable_sort(m_shown.begin(), m_shown.end(), [](const Run& a, const Run& b) {
        return std::make_pair(a.family_index, a.per_family_instance_index) <
               std::make_pair(b.family_index, b.per_family_instance_index);
    });
    if (!m_shown.empty())
        ConsoleReporter::ReportRuns(m_shown);

    size_t width = 0;
    size_t baseWidth = 0;
    for (const auto& [name, baseline] : quotes()) {
        width = std::max(width, name.size());
        baseWidth = std::max(baseWidth, baseline.size());
    }
    bool header = false;
    for (const auto& [name, baseline] : quotes()) {
        const auto measured = m_times.find(name);
        const auto base = m_times.find(baseline);
        // Left out by a filter, or failed.
        if (measured == m_times.end() || base == m_times.end())
            continue;
        const double time = median(measured->second);
        const double baseTime = median(base->second);
        if (!header) {
            GetOutputStream() << "\nCPU time (wall-clock time for .../real_time and "
                                 ".../manual_time) against the baseline (medians of "
                              << measured->second.size() << " runs):\n";
            header = true;
        }
        char line[512];
        std::snprintf(line, sizeof line, "%-*s %7.2f x  %-*s %10s / %s\n", int(width), name.c_str(),
                      baseTime > 0 ? time / baseTime : 0.0, int(baseWidth), baseline.c_str(),
                      timeText(time).c_str(), timeText(baseTime).c_str());
        GetOutputStream() << line;
    }
    ConsoleReporter::Finalize();
}
