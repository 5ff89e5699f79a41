// SPDX-License-Identifier: MIT
// Micro-benchmarks of the places where the time of a run goes: the fields of the scanner, the
// conversion of numbers and the integration of transient signals.
#include "compare/integration.h"
#include "support/char_class.h"
#include "support/number.h"
#include "support/number_form.h"
#include "support/punch_stream.h"
#include "support/tk_buffer.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>
#include <sys/mman.h>
#include <vector>

namespace
{

constexpr int kNumbers = 200000;
constexpr int kGridIntervals = 1000;

// Growing numbers with so many digits behind the point, as a simulator writes them.
std::vector<std::string> number_texts(int decimals)
{
    std::vector<std::string> texts;
    char text[32];
    for (int i = 0; i < kNumbers; ++i) {
        std::snprintf(text, sizeof text, "%.*E", decimals, 1.23456789e-9 * (1.0 + 7e-4 * i));
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
    for (const std::string &text : number_texts(8)) {
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

void scanner_numbers(benchmark::State &state)
{
    NumberColumns columns;
    scan_file(state, [&columns](PunchStream &stream) {
        double values[128];
        const std::size_t count = tk_nxnumbers(stream, columns, values, 0, std::size(values));
        if (count < std::size(values)) {
            tk_nxfield(stream);
        }
        benchmark::DoNotOptimize(values);
    });
}

void scanner_fields(benchmark::State &state)
{
    scan_file(state, [](PunchStream &stream) {
        benchmark::DoNotOptimize(tk_skipPlainFields(stream));
        tk_skipfield(stream);
    });
}

void scanner_skip(benchmark::State &state)
{
    scan_file(state, [](PunchStream &stream) { tk_skipfield(stream); });
}

// The argument is the number of digits behind the point.
template <typename Convert> void convert_all(benchmark::State &state, Convert convert)
{
    std::vector<std::string> texts = number_texts(static_cast<int>(state.range(0)));
    for (std::string &text : texts) {
        text.append(kReadAhead, ' ');
    }
    for ([[maybe_unused]] auto iteration : state) {
        for (const std::string &text : texts) {
            benchmark::DoNotOptimize(convert(text.c_str()));
        }
    }
    state.SetItemsProcessed(state.iterations() * kNumbers);
}

void number_guessed(benchmark::State &state)
{
    NumberForm form;
    convert_all(state, [&form](const char *text) {
        double value = 0.0;
        NumberShape shape;
        if (form.convert(text, value) == nullptr) {
            fast_number(text, text + kReadAhead, value, shape);
            form.was_wrong(shape);
        }
        return value;
    });
}

void number_fast(benchmark::State &state)
{
    convert_all(state, [](const char *text) {
        double value = 0.0;
        fast_number(text, text + kReadAhead, value);
        return value;
    });
}

void number_library(benchmark::State &state)
{
    convert_all(state, [](const char *text) {
        double value = 0.0;
        library_number(text, text + kReadAhead, value);
        return value;
    });
}

void number_strtod(benchmark::State &state)
{
    convert_all(state, [](const char *text) { return std::strtod(text, nullptr); });
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
BENCHMARK(scanner_numbers);
BENCHMARK(scanner_fields);
BENCHMARK(scanner_skip);
BENCHMARK(number_guessed)->Arg(8)->Arg(16);
BENCHMARK(number_fast)->Arg(8)->Arg(16);
BENCHMARK(number_library)->Arg(8)->Arg(16);
BENCHMARK(number_strtod)->Arg(8)->Arg(16);
BENCHMARK(integration)->Arg(500)->Arg(100000);

} // namespace

BENCHMARK_MAIN();
