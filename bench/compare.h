/// Two ways to the same result, timed in turn.
#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

/// A row of a table, for bench/report.py: the figures of a case, and the highest ratio of the two
/// that is the goal, 0 for none.
inline void PrintRow(const char* table, const char* name, const char* rival, const char* unit,
                     double ours, double theirs, double goal) {
    std::printf("%s\t%s\t%s\t%s\t%g\t%g\t%g\n", table, name, rival, unit, ours, theirs, goal);
    std::fflush(stdout);
}

/// Ends the program where a way does not lead to the result of the other.
inline void RequireEqual(bool areEqual, const char* name, const char* rival) {
    if (areEqual) return;
    std::fprintf(stderr, "%s: another result than that of %s\n", name, rival);
    std::exit(1);
}

/// A result apart from the memory that it was made in, where the next one may be made.
template <class Result>
Result Kept(Result result) {
    return result;
}
inline std::string Kept(std::string_view bytes) { return std::string(bytes); }

/// Nanoseconds of one call of work, over so many.
template <class Work>
double Time(const Work& work, long calls) {
    // What a volatile pointer leads to is unknown to the compiler: it can neither leave out a
    // result nor take over that of the call before.
    auto(*const volatile call)(const Work&) = +[](const Work& called) { return called(); };
    const auto start = std::chrono::steady_clock::now();
    for (long i = 0; i < calls; ++i) call(work);
    const std::chrono::duration<double, std::nano> taken = std::chrono::steady_clock::now() - start;
    return taken.count() / static_cast<double>(calls);
}

/// Prints the medians of both ways, once their results have turned out to be equal. Memory that
/// they write to holds something else before.
template <std::size_t samples = 31, class Ours, class Theirs>
void Compare(const char* table, const char* name, const char* rival, double goal, const Ours& ours,
             const Theirs& theirs) {
    const auto result = Kept(ours());
    RequireEqual(result == Kept(theirs()), name, rival);
    // A sample takes a millisecond or one call, whichever is longer.
    const long calls = 1 + static_cast<long>(1e6 / std::max(Time(ours, 3), Time(theirs, 3)));
    std::array<double, samples> oursTimes, theirsTimes;
    for (std::size_t sample = 0; sample < samples; ++sample) {
        oursTimes[sample] = Time(ours, calls);
        theirsTimes[sample] = Time(theirs, calls);
    }
    const auto median = [](auto& times) {
        std::nth_element(times.begin(), times.begin() + samples / 2, times.end());
        return times[samples / 2];
    };
    PrintRow(table, name, rival, "ns", median(oursTimes), median(theirsTimes), goal);
}
