// SPDX-License-Identifier: MIT
// Micro-benchmarks of the places where the time of a run goes: the fields of the scanner, the
// conversion of numbers and the integration of transient signals.
#include "compare/integration.h"
#include "support/number.h"
#include "support/punch_stream.h"
#include "support/tk_buffer.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <vector>

namespace
{

constexpr int kNumbers = 200000;
constexpr int kGridIntervals = 1000;

// Nine significant digits of growing numbers, as a simulator writes them.
std::vector<std::string> number_texts()
{
    std::vector<std::string> texts;
    char text[32];
    for (int i = 0; i < kNumbers; ++i) {
        std::snprintf(text, sizeof text, "%.8E", 1.23456789e-9 * (1.0 + 7e-4 * i));
        texts.emplace_back(text);
    }
    return texts;
}

// Writes all the numbers as one logical line, four to a physical line, into a file in memory.
// Returns its path.
std::string write_numbers()
{
    const int fd = memfd_create("numbers", 0);
    std::FILE *file = fdopen(fd, "w");
    if (file == nullptr) {
        std::perror("memfd_create");
        std::exit(1);
    }
    int column = 0;
    for (const std::string &text : number_texts()) {
        std::fprintf(file, "%s%s", column % 4 == 0 ? "\n+ " : " ", text.c_str());
        ++column;
    }
    std::fflush(file); // it is gone once closed
    return "/proc/self/fd/" + std::to_string(fd);
}

// Scans the whole file with take, once per iteration.
template <typename Take> void scan_file(benchmark::State &state, Take take)
{
    static const std::string path = write_numbers();
    static PunchStream stream;
    for ([[maybe_unused]] auto iteration : state) {
        stream_open(stream, path.c_str());
        tk_BUFinit(stream);
        while (!tk_eofflag) {
            take(stream);
        }
        stream_close(stream);
    }
    state.SetItemsProcessed(state.iterations() * kNumbers);
}

void scanner_field(benchmark::State &state)
{
    scan_file(state, [](PunchStream &stream) { benchmark::DoNotOptimize(tk_nxfield(stream)); });
}

void scanner_number(benchmark::State &state)
{
    scan_file(state, [](PunchStream &stream) {
        double value = 0.0;
        if (!tk_nxnumber(stream, value)) {
            tk_nxfield(stream);
        }
        benchmark::DoNotOptimize(value);
    });
}

void scanner_skip(benchmark::State &state)
{
    scan_file(state, [](PunchStream &stream) { tk_skipfield(stream); });
}

template <typename Convert> void convert_all(benchmark::State &state, Convert convert)
{
    const std::vector<std::string> texts = number_texts();
    for ([[maybe_unused]] auto iteration : state) {
        for (const std::string &text : texts) {
            double value = 0.0;
            convert(text, value);
            benchmark::DoNotOptimize(value);
        }
    }
    state.SetItemsProcessed(state.iterations() * kNumbers);
}

void number_fast(benchmark::State &state)
{
    convert_all(state, [](const std::string &text, double &value) {
        fast_number(text.data(), text.data() + text.size(), value);
    });
}

void number_strtod(benchmark::State &state)
{
    convert_all(state,
                [](const std::string &text, double &value) { value = std::strtod(text.c_str(), nullptr); });
}

// The argument is the number of points: many to an interval of the grid, or few.
void integration(benchmark::State &state)
{
    std::vector<double> x(static_cast<std::size_t>(state.range(0)));
    std::vector<double> val(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        x[i] = 1e-12 * static_cast<double>(i);
        val[i] = 1.0 + 1e-3 * static_cast<double>(i);
    }
    Wform wform{};
    wform.x = x.data();
    wform.val = val.data();
    wform.count = static_cast<std::int64_t>(x.size());
    std::vector<double> area(kGridIntervals + 2);
    const double interval = x.back() / kGridIntervals;
    for ([[maybe_unused]] auto iteration : state) {
        intline(&wform, area.data(), interval, kGridIntervals);
        benchmark::DoNotOptimize(area.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(scanner_field);
BENCHMARK(scanner_number);
BENCHMARK(scanner_skip);
BENCHMARK(number_fast);
BENCHMARK(number_strtod);
BENCHMARK(integration)->Arg(500)->Arg(100000);

} // namespace

BENCHMARK_MAIN();
