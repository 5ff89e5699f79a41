// SPDX-License-Identifier: MIT
// Adds made-up nights to a history, for tests of what may happen meanwhile and for measurements:
// history_driver FILE FIRST-NIGHT NIGHTS PAIRS [FAILING-PER-MILLE]. The same numbers make the same nights.
#include "report/history.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace
{

using namespace report;

constexpr std::int64_t kFirstNight = 1'700'000'000; // seconds since 1970
constexpr int kSignals = 5;

// Evenly spread, and the same on every machine.
unsigned mixed(unsigned a, unsigned b)
{
    unsigned x = a * 2654435761U ^ b * 2246822519U;
    x = (x ^ x >> 15U) * 2654435761U;
    return x ^ x >> 13U;
}

// Pairs break in one of eight weeks and are mended some nights later.
RunPair made_pair(unsigned pair, unsigned night, unsigned failing)
{
    RunPair made;
    made.path = "block" + std::to_string(pair % 100) + "/cell" + std::to_string(pair) + ".pun";
    const unsigned span = night / 7 + pair % 7;
    if (mixed(pair, span) % 1000 >= failing) {
        return made;
    }
    made.grade = 3;
    made.has_findings = true;
    for (int signal = 0; signal < kSignals; ++signal) {
        const std::string name = "V(OUT" + std::to_string(signal) + ")";
        const double error = 1e-9 * (1 + mixed(pair, night + static_cast<unsigned>(signal)) % 1000);
        made.findings.push_back({"r1m0/TR/area/" + name, "TR", name, error, error * 1e6});
    }
    made.finding_count = kSignals;
    return made;
}

Run made_run(unsigned night, unsigned pairs, unsigned failing)
{
    Run run{"/nightly/out", kFirstNight + night * 86400LL, "-r 0.01", {}};
    for (unsigned pair = 0; pair < pairs; ++pair) {
        run.pairs.push_back(made_pair(pair, night, failing));
    }
    return run;
}

double seconds_since(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

int main(int argc, char **argv)
try {
    const auto number = [argc, argv](int at, unsigned usual) {
        return at < argc ? static_cast<unsigned>(std::strtoul(argv[at], nullptr, 10)) : usual;
    };
    const unsigned first = number(2, 0);
    const unsigned nights = number(3, 1);
    double last = 0.0;
    for (unsigned night = first; night < first + nights; ++night) {
        const Run run = made_run(night, number(4, 10), number(5, 50));
        const auto start = std::chrono::steady_clock::now();
        History(argc > 1 ? argv[1] : "", History::Access::WRITE).add(run);
        last = seconds_since(start);
    }
    const auto start = std::chrono::steady_clock::now();
    const Courses courses = History(argv[1], History::Access::READ).courses();
    std::printf("last run added in %.3f s; %zu pairs of %zu runs read in %.3f s\n", last,
                courses.pairs.size(), courses.runs.size(), seconds_since(start));
} catch (const std::exception &fault) {
    std::fprintf(stderr, "%s\n", fault.what());
    return 1;
}
