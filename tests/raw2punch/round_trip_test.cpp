// SPDX-License-Identifier: MIT
// Values go through unchanged: random plots in all forms of rawfiles, read back by the reader of tresk.
#include "conversion.h"
#include "rawfile.h"
#include "read/point_blocks.h"

#include <gtest/gtest.h>

#include <random>

namespace
{

using Random = std::mt19937;

std::uint64_t bits_of(double value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

double of_bits(std::uint64_t bits)
{
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

std::size_t below(Random &random, std::size_t limit)
{
    return random() % limit;
}

// Any bits, or a value that is special: a NaN with the bits of the end mark, infinities, tiny ones ...
double any_value(Random &random)
{
    const double specials[] = {
        of_bits(~std::uint64_t{0}), kNan, kInf, -kInf, 0.0, -0.0, 5e-324, -2e-310, 1e300, 1};
    const std::uint64_t bits = std::uint64_t{random()} << 32U | random();
    switch (below(random, 4)) {
    case 0:
        return specials[below(random, std::size(specials))];
    case 1:
        return of_bits(bits);
    default:
        return static_cast<double>(random()) * 1e-9 - 2.0;
    }
}

RawContents any_contents(Random &random)
{
    RawContents raw;
    raw.form = static_cast<RawForm>(below(random, 8));
    raw.complex = below(random, 3) == 0 && raw.form != RawForm::MIXED && raw.form != RawForm::MIXED_COLUMNS;
    raw.plot = raw.complex ? "AC Analysis" : below(random, 2) == 0 ? "Transient Analysis" : "Noise Analysis";
    raw.unpadded =
        below(random, 4) == 0 && raw.form != RawForm::COLUMNS && raw.form != RawForm::MIXED_COLUMNS;
    const std::size_t signals = 2 + (below(random, 8) == 0 ? below(random, 3000) : below(random, 6));
    const std::size_t points = 2 + (signals > 20 ? below(random, 30) : below(random, 2500));
    if (below(random, 3) == 0) {
        raw.run_length = 2 + below(random, points);
    }
    for (std::size_t i = 0; i < signals; ++i) {
        const bool is_short = i > 0 && below(random, 5) == 0;
        const std::size_t held = is_short ? 2 + below(random, points - 1) : points;
        RawSignal signal{"v(n" + std::to_string(i) + ")", "voltage", {}};
        for (std::size_t k = 0; k < held * raw.width(); ++k) {
            signal.values.push_back(i == 0 ? static_cast<double>(k / raw.width() % raw.run_length) * 0.125
                                           : any_value(random));
        }
        raw.signals.push_back(signal);
    }
    if (below(random, 4) == 0) {
        raw.signals[0].values[(points - 1) * raw.width()] = of_bits(~std::uint64_t{0});
    }
    return raw;
}

// What must come out for a number of a signal.
double expected_value(double value, const RawContents &raw, std::size_t signal, PunchFormat format)
{
    if (raw.text() && std::isnan(value)) {
        value = kNan; // text has no more of it
    }
    if (!raw.text() && raw.is_float(signal)) {
        value = static_cast<double>(static_cast<float>(value));
    }
    if (format == PunchFormat::BINARY) {
        value = static_cast<double>(static_cast<float>(value));
    }
    return value;
}

// A NaN that looks like the end mark gets other bits; text does not keep the bits of a NaN.
bool is_kept(double expected, double value, PunchFormat format)
{
    return std::isnan(expected) &&
                   (format != PunchFormat::BINARY_DBL || bits_of(expected) == ~std::uint64_t{0})
               ? std::isnan(value)
               : bits_of(expected) == bits_of(value);
}

// Checks the points of a signal that belong to a run.
void check_signal(const Wform &wave, const RawContents &raw, std::size_t signal, std::size_t part,
                  std::size_t first, PunchFormat format)
{
    const std::vector<double> &ys = raw.signals[signal].values;
    const std::size_t end = std::min(first + std::min(raw.run_length, ys.size()), ys.size() / raw.width());
    ASSERT_EQ(static_cast<std::size_t>(wave.count), end - first) << wave.name;
    BlockWalk walk(wave);
    std::size_t number = first;
    for (PointBlock block = walk.next(); block.count != 0; block = walk.next()) {
        for (std::size_t i = 0; i < block.count; ++i, ++number) {
            const std::size_t place = number * raw.width();
            const double x = expected_value(raw.signals[0].values[place], raw, 0, format);
            const double y = expected_value(ys[place + part], raw, signal, format);
            ASSERT_TRUE(is_kept(x, block.x[i], format)) << wave.name << ": x of point " << number;
            ASSERT_TRUE(is_kept(y, block.val[i], format))
                << wave.name << ": " << block.val[i] << " for " << y;
        }
    }
    ASSERT_EQ(number, end);
}

void check_all(const PF &file, const RawContents &raw, PunchFormat format)
{
    ASSERT_NE(file.rerun, nullptr);
    const MODIFYform *modify = file.rerun->modify;
    const std::size_t points = raw.signals[0].values.size() / raw.width();
    for (std::size_t first = 0; first < points; first += std::min(raw.run_length, points)) {
        ASSERT_NE(modify, nullptr);
        const Wform *wave = modify->wform;
        for (std::size_t i = 1; i < raw.signals.size(); ++i) {
            for (std::size_t part = 0; part < raw.width(); ++part) {
                if (raw.signals[i].values.size() / raw.width() <= first) {
                    continue;
                }
                ASSERT_NE(wave, nullptr);
                const std::string letters = !raw.complex ? "v" : part == 0 ? "vr" : "vi";
                ASSERT_EQ(wave->name, letters + "(n" + std::to_string(i) + ")");
                check_signal(*wave, raw, i, part, first, format);
                wave = wave->next;
            }
        }
        EXPECT_EQ(wave, nullptr);
        modify = modify->next;
    }
    EXPECT_EQ(modify, nullptr);
}

class RoundTrip : public testing::TestWithParam<PunchFormat>
{
};

TEST_P(RoundTrip, KeepsNamesAndValues)
{
    for (unsigned seed = 0; seed < 60 && !HasFatalFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        const RawContents raw = any_contents(random);
        Conversion conversion;
        conversion.options.format = GetParam();
        conversion.options.functions = {Function::REAL, Function::IMAGINARY};
        conversion.options.hints.big_endian = raw.form == RawForm::SWAPPED;
        if (raw.complex && raw.form == RawForm::FLOATS) {
            conversion.options.hints.bits = ValueBits::FLOATS; // never guessed
        }
        ASSERT_EQ(conversion.run(rawfile(raw)), "");
        check_all(conversion.read(), raw, GetParam());
    }
}

INSTANTIATE_TEST_SUITE_P(, RoundTrip,
                         testing::Values(PunchFormat::TEXT, PunchFormat::BINARY, PunchFormat::BINARY_DBL),
                         [](const auto &row) {
                             return row.param == PunchFormat::TEXT     ? "Text"
                                    : row.param == PunchFormat::BINARY ? "Floats"
                                                                       : "Doubles";
                         });

// Each operating point value comes back under its name, and so does each waveform.
TEST(Names, AreReadAsWritten)
{
    const struct {
        const char *raw;
        const char *waveform;
        const char *solution;
    } cases[] = {
        {"v(1)", "v(1)", "v(1)"},
        {"v(out)", "v(out)", "v(out)"},
        {"@r1[i]", "@r1[i]", "@r1[i]"},
        {"vin#branch", "vin#branch", "vin#branch"},
        {"v(a)*i(b)", "v(a)*i(b)", "v(a)*i(b)"},
        {"v(a)(b)", "v(a)(b)", "v(a){b}"},
        {"v(pole(1))", "v(pole(1))", "v(pole{1})"},
        {"v(data[3])", "v(data[3])", "v(data{3})"},
        {"v(x1:2)", "v(x1:2)", "v(x1.2)"},
        {"v(x1:2:3)", "v(x1:2:3)", "v(x1:2:3)"},
        {"V(a,b)=1&", "V(a,b)=1&", "V(a_b)_1_"},
        {"v(a b)", "v(a_b)", "v(a_b)"},
        {"((a)", "((a)", "{(a)"},
        {"a]b(", "a]b(", "a}b{"},
        {"*a", "_*a", "_*a"},
        {"+1", "_+1", "_+1"},
        {".a", "_.a", "_.a"},
        {"YUNITS", "YUNITS", "YUNITS"},
        {"NODE", "NODE", "NODE"},
        {"\xC2\xB5\xFFm", "\xC2\xB5_m", "\xC2\xB5_m"},
        {"v(out)", "v(out)#2", "v(out)#2"},
        {"v(out)", "v(out)#3", "v(out)#3"},
    };
    for (const PunchFormat format : {PunchFormat::TEXT, PunchFormat::BINARY_DBL}) {
        RawContents raw;
        raw.signals.push_back({"time", "time", {0, 1}});
        for (const auto &row : cases) {
            raw.signals.push_back({row.raw, "notype", {1, 2}});
        }
        Conversion waves;
        waves.options.format = format;
        ASSERT_EQ(waves.run(rawfile(raw)), "");
        const PF file = waves.read();
        const Wform *wave = file.rerun->modify->wform;
        for (const auto &row : cases) {
            ASSERT_NE(wave, nullptr);
            EXPECT_STREQ(wave->name, row.waveform);
            wave = wave->next;
        }
        raw.plot = "Operating Point";
        raw.signals.erase(raw.signals.begin());
        for (RawSignal &signal : raw.signals) {
            signal.values = {1};
        }
        Conversion solutions;
        solutions.options.format = format;
        ASSERT_EQ(solutions.run(rawfile(raw)), "");
        const Isoln *value = solutions.read().rerun->modify->op; // newest first
        for (std::size_t i = std::size(cases); i-- > 0; value = value->next) {
            ASSERT_NE(value, nullptr);
            EXPECT_STREQ(value->name, cases[i].solution);
            EXPECT_EQ(value->value, 1);
        }
    }
}

} // namespace
