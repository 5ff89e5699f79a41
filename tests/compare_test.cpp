// SPDX-License-Identifier: MIT
#include "compare/integration.h"
#include "compare/pair_index.h"
#include "compare/phase.h"
#include "compare/tolerance.h"
#include "driver/exit_grade.h"

#include "test_support.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

TEST(Tolerance, VerdictsAndMarkers)
{
    glAbstol = 0.5;
    glReltol = 0.25;
    const auto modes = {
        std::pair(&glAonly, "-Aonly"), {&glRonly, "-Ronly"}, {&glAorR, "-AorR"}, {&glAandR, "-AandR"}};
    for (const TableRow &row : cases_of("Tolerance")) {
        SCOPED_TRACE(row.place);
        glDefaultChecking = row["mode"] == "default";
        for (const auto &[setting, name] : modes) {
            *setting = row["mode"] == name;
        }
        glNANflag = 0;
        const char *marker = nullptr;
        const int verdict = test_error_thresholds(std::stod(row["level"]), std::stod(row["absolute error"]),
                                                  std::stod(row["relative error"]), &marker);
        EXPECT_EQ(verdict, row["verdict"] == "within" ? 0 : row["verdict"] == "exceeded" ? 1 : 2);
        EXPECT_EQ(marker, row["marker"]);
        EXPECT_EQ(glNANflag, row["verdict"] == "nan");
        std::string then;
        for (const auto &[setting, name] : modes) {
            then += *setting ? name : "";
        }
        EXPECT_EQ(then.empty() ? "none" : then, row["mode then"]);
    }
    EXPECT_EQ(relative_error(0.0, -0.0), 0.0);
    EXPECT_EQ(relative_error(1e-300, -0.0), 1.0);
    EXPECT_EQ(relative_error(1.0, -4.0), 0.25);
}

// The areas of a grid, separated by blanks. Fails when anything around the array is written to.
static std::string areas(const std::vector<double> &points, double dx, std::size_t entries)
{
    std::vector<double> x;
    std::vector<double> val;
    for (std::size_t i = 0; i < points.size(); ++i) {
        (i % 2 == 0 ? x : val).push_back(points[i]);
    }
    Wform wform{};
    wform.x = x.data();
    wform.val = val.data();
    wform.count = static_cast<std::int64_t>(val.size());
    std::vector<double> guarded(entries + 16, 12345.0);
    std::fill_n(guarded.begin() + 8, entries, 0.0);
    guarded[8] = 99.0; // intline itself clears this one
    intline(&wform, &guarded[8], dx, static_cast<int>(entries) - 2);
    EXPECT_EQ(std::count(guarded.begin(), guarded.end(), 12345.0), 16);
    std::string seen;
    for (std::size_t i = 8; i < entries + 8; ++i) {
        char text[32];
        std::snprintf(text, sizeof text, "%s%g", i > 8 ? " " : "", guarded[i]);
        seen += text[i > 8] == '-' && std::isnan(guarded[i]) ? " nan" : text;
    }
    return seen;
}

TEST(Integration, Areas)
{
    for (const TableRow &row : cases_of("Area")) {
        const std::size_t entries = numbers(row["areas"]).size();
        EXPECT_EQ(areas(numbers(row["points"]), std::stod(row["dx"]), entries), row["areas"]) << row.place;
    }
    debug = DEBUG_ALT_INTEGRATION; // its own arithmetic, but the same curve and no offset by one
    EXPECT_EQ(areas({0, 0, 0.5, 0.5, 0.5, 0.5, 4, 4}, 1, 6), "0.5 1.5 2.5 3.5 0 0");
    debug = 0;
}

// Whatever the numbers are, the walk ends at once and stays inside the array.
TEST(Integration, AnyNumbers)
{
    constexpr double kTimes[] = {kNan, kInf, -kInf, 1e300, -1e300, -1e-300, -2.5, -0.0, 1.0, 2.5, 1001.0};
    for (const double dx : {0.0, kNan, kInf, -kInf, -1.0, 1.0, 1e-300, 1e300, 5e-324}) {
        for (int i = 0; i < 2 * 11 * 11 * 11; ++i) {
            debug = i % 2 * DEBUG_ALT_INTEGRATION;
            areas({kTimes[i / 2 % 11], 1, kTimes[i / 22 % 11], -2, kTimes[i / 242], 3}, dx,
                  i % 7 == 0 ? 2 : 5);
        }
    }
    debug = 0;
}

static void expect_wraps_like_additions(double degrees)
{
    double expected = degrees;
    while (expected < -180.0) {
        expected += 360.0;
    }
    while (expected > 180.0) {
        expected -= 360.0;
    }
    ASSERT_EQ(wrap_phase(degrees), expected) << degrees;
    ASSERT_EQ(std::signbit(wrap_phase(degrees)), std::signbit(expected)) << degrees;
}

TEST(Phase, WrapsLikeAdditionsAndEnds)
{
    for (int i = -14; i <= 14; ++i) {
        for (const double degrees : {i * 180.0, i * 180.0 + 999720.0, i * 1e-13}) {
            for (const double towards : {-kInf, degrees, kInf}) {
                expect_wraps_like_additions(std::nextafter(degrees, towards));
            }
        }
    }
    std::mt19937_64 random(360);
    for (int i = 0; i < 100000; ++i) {
        std::uniform_real_distribution<double> any(i % 100 == 0 ? -1e6 : -1e3, i % 100 == 50 ? 1e6 : 1e3);
        expect_wraps_like_additions(any(random));
    }
    EXPECT_LE(std::fabs(wrap_phase(-1e300)), 180.0);
    EXPECT_LE(std::fabs(wrap_phase(std::numeric_limits<double>::max())), 180.0);
    EXPECT_EQ(wrap_phase(-kInf), -kInf);
    EXPECT_TRUE(std::isnan(wrap_phase(kNan)));
    EXPECT_EQ(wrapped_distance(179.0, -179.0), 358.0);
}

TEST(PairIndex, FindsWhatTheSearchFromTheHeadFinds)
{
    static char names[][8] = {"", "A", "B", "AB", "a", "V(OUT)", "V(OUT"};
    std::mt19937 random(7);
    for (int round = 0; round < 500; ++round) {
        std::vector<Isoln> ref(random() % 60);
        std::vector<Isoln> cmp(random() % 60);
        for (auto *list : {&ref, &cmp}) {
            for (Isoln &value : *list) { // few names and kinds, so that most are there several times
                value.name = names[random() % 7];
                value.type = 1 + static_cast<int>(random() % 3);
            }
        }
        std::vector<Isoln *> unmatched;
        PairIndex<Isoln> index;
        for (Isoln &value : cmp) {
            index.add(&value);
            unmatched.push_back(&value);
        }
        for (Isoln &value : ref) {
            const auto found = std::find_if(unmatched.begin(), unmatched.end(), [&value](const Isoln *other) {
                return other->type == value.type && std::string(other->name) == value.name;
            });
            Isoln *const expected = found != unmatched.end() ? *found : nullptr;
            ASSERT_EQ(index.match(value), expected);
            ASSERT_EQ(value.matched, expected != nullptr);
            if (expected != nullptr) {
                ASSERT_EQ(expected->matched, 1);
                unmatched.erase(found);
            }
        }
    }
}

TEST(ExitGrade, MasksAndGrades)
{
    for (const TableRow &row : cases_of("Grade")) {
        desert = std::stoi(row["desert"]);
        const ExitMasks masks{std::stoi(row["positive mask"]), std::stoi(row["negative mask"])};
        const int masked = masked_status(std::stoi(row["status"]), masks);
        EXPECT_EQ(std::to_string(masked), row["masked status"]) << row.place;
        EXPECT_EQ(std::to_string(exit_grade(masked)), row["grade"]) << row.place;
    }
    desert = 0;
}
