// SPDX-License-Identifier: MIT
// Writes a golden and a regression punch file of one kind and any size, the same for the same seed.
// The values differ a little, within the default tolerances, so that the pair passes; those of
// op-failing all fail. Prints the number of points (or values) of one file.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <numeric>
#include <string>
#include <vector>

namespace
{

enum Analysis { TR, AC, OP };
enum Format { TEXT, FLOAT, DOUBLE, SPARSE }; // the last: floats, all 0, as a hole of the file
enum Times { OF_SIGNAL, OF_FILE, OF_ALL };   // whose own x they are; of a file: of each of its signals, too

struct Kind {
    const char *name;
    Analysis analysis;
    Format format;
    std::size_t points; // of one signal
    double deviation;   // of a regression value, relative
    Times times = OF_SIGNAL;
    int x_digits = 9;
    int y_digits = 9;
    bool shuffled = false; // the regression file has the signals in another order
};

// Transient signals are judged by the absolute area between them, hence the small deviation.
constexpr Kind kKinds[] = {
    {"transient-text", TR, TEXT, 10000, 1e-7},
    {"transient-text-own-times", TR, TEXT, 10000, 1e-7, OF_FILE},
    {"transient-text-shared-times", TR, TEXT, 10000, 1e-7, OF_ALL},
    {"transient-text-long", TR, TEXT, 10000, 1e-7, OF_SIGNAL, 15, 17},
    {"transient-float", TR, FLOAT, 10000, 1e-7},
    {"transient-double", TR, DOUBLE, 10000, 1e-7},
    {"ac-text", AC, TEXT, 1000, 1e-3},
    {"ac-float", AC, FLOAT, 1000, 1e-3},
    {"ac-double", AC, DOUBLE, 1000, 1e-3},
    {"ac-sparse", AC, SPARSE, 10000000, 0.0},
    {"op-values", OP, TEXT, 1, 1e-3},
    {"op-failing", OP, TEXT, 1, 0.1},
    {"many-signals", TR, TEXT, 4, 1e-7, OF_SIGNAL, 9, 9, true},
    {"tiny", TR, TEXT, 10, 1e-7},
};

struct Options {
    const Kind *kind = nullptr;
    std::uint64_t signals = UINT64_MAX; // either this or bytes limits the size
    std::uint64_t bytes = UINT64_MAX;
    std::string golden;
    std::string regression;
    std::uint64_t seed = 1;
    bool raw = false;
};

[[noreturn]] void usage()
{
    std::fputs("usage: make_punch KIND SIZE GOLDEN REGRESSION [--seed N] [--raw]\n"
               "SIZE: a number of signals, or of bytes with kB, MB or GB behind it\n"
               "--raw: also write all x and y as native doubles, to GOLDEN.raw and REGRESSION.raw\n"
               "KIND:",
               stderr);
    for (const Kind &kind : kKinds) {
        std::fprintf(stderr, " %s", kind.name);
    }
    std::fputs("\n", stderr);
    std::exit(2);
}

// The same numbers everywhere, which the distributions of the standard library do not promise.
class Random
{
  public:
    explicit Random(std::uint64_t seed) : state_(seed)
    {
    }

    std::uint64_t bits()
    {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        return (state_ ^ (state_ >> 29)) * 0xBF58476D1CE4E5B9U;
    }

    double uniform() // 0 to 1
    {
        return static_cast<double>(bits() >> 11) * 0x1p-53;
    }

  private:
    std::uint64_t state_;
};

struct Point {
    double x;
    double y;
};

// The points of one signal. Golden and regression draw the same random numbers, so that they agree
// but for the deviation and, where each file has its own, the times. Curves are smooth then, as their
// areas must not depend on where the points are.
class Signal
{
  public:
    Signal(const Options &options, std::size_t index, std::size_t points, bool regression)
        : analysis_(options.kind->analysis), is_phase_(analysis_ == AC && index % 4 == 3),
          deviation_(regression ? options.kind->deviation : 0.0)
    {
        const Times times = options.kind->times;
        const std::uint64_t own_seed = options.seed + (index + 1) * 0x9E3779B97F4A7C15U;
        values_ = Random(own_seed);
        times_ = Random(times == OF_ALL                  ? options.seed
                        : times == OF_FILE && regression ? ~own_seed
                                                         : own_seed + 1);
        values_.bits();
        times_.bits();
        level_ = 0.5 + 2.0 * values_.uniform();
        corner_ = std::pow(10.0, 3.0 + (times == OF_FILE ? 2.0 : 4.0) * values_.uniform());
        noise_ = times == OF_FILE ? 1e-6 : 1e-3;
        const auto steps = static_cast<double>(points);
        step_ = analysis_ == TR ? 1e-6 / steps : std::pow(1e9, 1.0 / steps) - 1.0;
        x_ = analysis_ == TR ? 0.0 : 1.0;
    }

    Point next()
    {
        const Point point{x_, value() * (1.0 + deviation_ * (0.9 + 0.2 * values_.uniform()))};
        ++count_;
        x_ = analysis_ == TR ? step_ * (count_ + 0.9 * times_.uniform())
                             : x_ * (1.0 + step_ * (0.5 + times_.uniform()));
        return point;
    }

    bool is_phase() const
    {
        return is_phase_;
    }

  private:
    double value()
    {
        const double level = level_ * (1.0 + noise_ * values_.uniform());
        const double ratio = x_ / corner_;
        switch (analysis_) {
        case TR:
            return level * (1.0 + 1.2 * std::sin(x_ * 100.0 * corner_));
        case AC:
            return level * (is_phase_ ? 70.0 * ratio : 1.0) / (1.0 + ratio);
        default:
            return level;
        }
    }

    Random values_{0};
    Random times_{0};
    Analysis analysis_;
    bool is_phase_;
    double deviation_;
    double level_ = 0.0;
    double corner_ = 0.0; // a frequency
    double noise_ = 0.0;  // relative
    double step_ = 0.0;
    double x_ = 0.0; // of the next point
    int count_ = 0;  // of the points so far
};

// With nine digits as 1.23456789E-09.
void append_number(std::string &text, double value, int digits)
{
    char number[32];
    const auto result =
        std::to_chars(number, number + sizeof number, value, std::chars_format::scientific, digits - 1);
    *std::find(number, result.ptr, 'e') = 'E';
    text.append(number, result.ptr);
}

void append_text_points(std::string &text, const Kind &kind, Signal &signal, std::size_t points)
{
    for (std::size_t i = 0; i < points; ++i) {
        const Point point = signal.next();
        text += i % 2 == 0 ? "\n+ " : "  ";
        append_number(text, point.x, kind.x_digits);
        text += ' ';
        append_number(text, point.y, kind.y_digits);
    }
    text += '\n';
}

template <typename Value> void append_big_endian(std::string &data, double number)
{
    const auto value = static_cast<Value>(number);
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    if (__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__) {
        std::reverse(bytes, bytes + sizeof bytes);
    }
    data.append(bytes, sizeof bytes);
}

template <typename Value> void append_binary_points(std::string &data, Signal &signal, std::size_t points)
{
    for (std::size_t i = 0; i < points; ++i) {
        const Point point = signal.next();
        append_big_endian<Value>(data, point.x);
        append_big_endian<Value>(data, point.y);
        data += i % 10 == 9 ? "\n" : "";
    }
    data.append(sizeof(Value), '\xFF'); // the end mark
    data += "\n\n";
}

std::string file_header(Analysis analysis)
{
    constexpr const char *kNames[] = {"TR", "AC", "OP"};
    constexpr const char *kUnits[] = {"* XUNITS = SECONDS\n* X_FUNCTION = LINEAR\n",
                                      "* XUNITS = HERTZ\n* X_FUNCTION = LOG\n", ""};
    return std::string("* ANALYSIS = ") + kNames[analysis] +
           "   PROGRAM = KORSIM3   DATE = 12-MAR-24   TIME = 10:11:12\n"
           "* RERUN_NUMBER = 1, TEMPERATURE = 27.000, MODIFY = 0\n* TITLE  benchmark\n" +
           kUnits[analysis];
}

// A signal with its points, or an OP value.
std::string signal_text(const Kind &kind, Signal signal, std::size_t index, std::size_t points)
{
    std::string text = std::string(signal.is_phase() ? "VP" : "V") + "(XTOP.X" + std::to_string(index / 100) +
                       ".N" + std::to_string(index) +
                       ") YUNITS = " + (signal.is_phase() ? "DEGREES" : "VOLTS");
    if (kind.analysis == OP) {
        text += "  0.0  ";
        append_number(text, signal.next().y, kind.y_digits);
        text += '\n';
    } else if (kind.format == TEXT) {
        append_text_points(text, kind, signal, points);
    } else if (kind.format == SPARSE) {
        text += " DATA = BINARY\n"; // what follows is no text
    } else if (kind.format == FLOAT) {
        text += " DATA = BINARY\n";
        append_binary_points<float>(text, signal, points);
    } else {
        text += " DATA = BINARY_DBL\n";
        append_binary_points<double>(text, signal, points);
    }
    return text;
}

std::ofstream create(const std::string &path)
{
    std::ofstream file;
    file.exceptions(std::ios::failbit | std::ios::badbit); // a full disk must not go unnoticed
    file.open(path, std::ios::binary);
    return file;
}

// Bytes of a point on average.
double point_bytes(const Kind &kind)
{
    switch (kind.format) {
    case TEXT:
        return kind.x_digits + kind.y_digits + 13.5;
    case DOUBLE:
        return 16.1;
    default:
        return 8.1;
    }
}

// Writes a signal. Returns its size.
std::uint64_t write_signal(std::ofstream &file, const Kind &kind, const Signal &signal, std::size_t index,
                           std::size_t points)
{
    const std::string text = signal_text(kind, signal, index, points);
    file << text;
    if (kind.format != SPARSE) {
        return text.size();
    }
    const std::size_t hole = points * 8 + points / 10;
    file.seekp(static_cast<std::ofstream::off_type>(hole), std::ios::cur);
    file << "\xFF\xFF\xFF\xFF\n\n";
    return text.size() + hole + 6;
}

// Returns the number of points of each signal; the last one is cut to what is left of a size in bytes.
std::vector<std::size_t> write_golden(const Options &options)
{
    const Kind &kind = *options.kind;
    std::vector<std::size_t> points;
    std::ofstream file = create(options.golden);
    file << file_header(kind.analysis);
    std::uint64_t written = 0;
    while (points.size() < options.signals && written < options.bytes) {
        const double room = static_cast<double>(options.bytes - written) / point_bytes(kind) + 1.0;
        const std::size_t index = points.size();
        points.push_back(static_cast<std::size_t>(std::min(room, static_cast<double>(kind.points))));
        const Signal signal(options, index, points[index], false);
        written += write_signal(file, kind, signal, index, points[index]);
    }
    return points;
}

void write_regression(const Options &options, const std::vector<std::size_t> &points)
{
    std::vector<std::size_t> order(points.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    if (options.kind->shuffled) {
        Random random(options.seed);
        for (std::size_t left = order.size(); left > 1; --left) {
            std::swap(order[left - 1], order[random.bits() % left]);
        }
    }
    std::ofstream file = create(options.regression);
    file << file_header(options.kind->analysis);
    for (const std::size_t index : order) {
        const Signal signal(options, index, points[index], true);
        write_signal(file, *options.kind, signal, index, points[index]);
    }
}

void write_raw(const Options &options, const std::vector<std::size_t> &points, bool regression)
{
    std::ofstream file = create((regression ? options.regression : options.golden) + ".raw");
    for (std::size_t index = 0; index < points.size(); ++index) {
        Signal signal(options, index, points[index], regression);
        for (std::size_t i = 0; i < points[index]; ++i) {
            const Point point = signal.next();
            file.write(reinterpret_cast<const char *>(&point), sizeof point);
        }
    }
}

void parse_size(const char *text, Options &options)
{
    char *unit = nullptr;
    const std::uint64_t count = std::strtoull(text, &unit, 10);
    if (*unit == '\0') {
        options.signals = count;
        return;
    }
    const std::map<std::string, std::uint64_t> kUnits = {{"kB", 1000}, {"MB", 1000000}, {"GB", 1000000000}};
    const auto found = kUnits.find(unit);
    if (found == kUnits.end()) {
        usage();
    }
    options.bytes = count * found->second;
}

Options parse_options(int argc, char **argv)
{
    if (argc < 5) {
        usage();
    }
    Options options;
    options.kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                [argv](const Kind &kind) { return std::strcmp(kind.name, argv[1]) == 0; });
    if (options.kind == std::end(kKinds)) {
        usage();
    }
    parse_size(argv[2], options);
    options.golden = argv[3];
    options.regression = argv[4];
    for (int i = 5; i < argc; ++i) {
        if (std::strcmp(argv[i], "--raw") == 0) {
            options.raw = true;
        } else if (std::strcmp(argv[i], "--seed") == 0 && i + 1 < argc) {
            options.seed = std::strtoull(argv[++i], nullptr, 10);
        } else {
            usage();
        }
    }
    return options;
}

} // namespace

int main(int argc, char **argv)
{
    const Options options = parse_options(argc, argv);
    const std::vector<std::size_t> points = write_golden(options);
    write_regression(options, points);
    if (options.raw) {
        write_raw(options, points, false);
        write_raw(options, points, true);
    }
    const std::uint64_t total = std::accumulate(points.begin(), points.end(), std::uint64_t{0});
    std::printf("%llu\n", static_cast<unsigned long long>(total));
}
