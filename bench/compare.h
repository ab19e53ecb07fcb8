/// Interleaved timing of two implementations.
#pragma once

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

/// The figures of the library and of its baseline.
struct Figures {
    double ours, baseline;

    double Ratio() const { return ours / baseline; }
};

/// Prints a row of a table for bench/report.py. limit is the highest acceptable ratio, 0 for none.
inline void PrintRow(const char* table, const std::string& name, const char* baseline,
                     const char* unit, Figures figures, double limit) {
    std::printf("%s\t%s\t%s\t%s\t%g\t%g\t%g\n", table, name.c_str(), baseline, unit, figures.ours,
                figures.baseline, limit);
    std::fflush(stdout);
}

/// Exits if the two results differ.
inline void RequireEqual(bool areEqual, const std::string& name, const char* baseline) {
    if (areEqual) return;
    std::fprintf(stderr, "%s: the result differs from that of %s\n", name.c_str(), baseline);
    std::exit(1);
}

/// Returns a copy of a result whose memory may be reused.
template <class Result>
Result CopyResult(Result result) {
    return result;
}
inline std::string CopyResult(std::string_view bytes) { return std::string(bytes); }

/// Returns the CPU time of this process in nanoseconds: unlike wall-clock time, it excludes
/// other processes.
inline double CpuTime() {
    std::timespec now;
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

/// Returns the CPU time of that many calls of work, in nanoseconds.
template <class Work>
double Time(const Work& work, long calls) {
    // A call through a volatile pointer cannot be optimized away or hoisted.
    auto(*const volatile call)(const Work&) = +[](const Work& called) { return called(); };
    const double start = CpuTime();
    for (long i = 0; i < calls; ++i) call(work);
    return CpuTime() - start;
}

/// Returns how many calls of work take a millisecond, rounded up to a power of two.
template <class Work>
long CountCalls(const Work& work) {
    long calls = 1;
    while (Time(work, calls) < 1e6) calls *= 2;
    return calls;
}

inline double Median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<long>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Checks that both results are equal and returns the median nanoseconds of a call of each, from 31
/// pairs of samples, or from as many as fit into two seconds but at least 7. A sample takes at
/// least a millisecond.
template <class Ours, class Baseline>
Figures Measure(const std::string& name, const char* baselineName, const Ours& ours,
                const Baseline& baseline) {
    const auto result = CopyResult(ours());
    RequireEqual(result == CopyResult(baseline()), name, baselineName);
    const long calls = std::max(CountCalls(ours), CountCalls(baseline));
    std::vector<double> oursTimes, baselineTimes;
    const double end = CpuTime() + 2e9;
    while (oursTimes.size() < 7 || (oursTimes.size() < 31 && CpuTime() < end)) {
        oursTimes.push_back(Time(ours, calls) / static_cast<double>(calls));
        baselineTimes.push_back(Time(baseline, calls) / static_cast<double>(calls));
    }
    return {Median(oursTimes), Median(baselineTimes)};
}

/// Measures both and prints the row.
template <class Ours, class Baseline>
void Compare(const char* table, const std::string& name, const char* baselineName, double limit,
             const Ours& ours, const Baseline& baseline) {
    PrintRow(table, name, baselineName, "ns", Measure(name, baselineName, ours, baseline), limit);
}
