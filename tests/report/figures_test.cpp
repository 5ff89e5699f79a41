// SPDX-License-Identifier: MIT
#include "../listening.h"
#include "../test_support.h"
#include "report/axis.h"
#include "report/curve.h"
#include "report/figure_data.h"
#include "report/figures.h"
#include "report/packed_column.h"
#include "report/recorder.h"
#include "report/reduce.h"
#include "report/svg.h"
#include "report/units.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace
{

using namespace report;

TEST(Axis, HasLegibleTicks)
{
    for (const TableRow &row : rows_of("tests/report/axis_cases.md", "Ticks")) {
        const std::string name = row["scale"];
        const Scale scale = name == "log" ? Scale::LOG : name == "linear" ? Scale::LINEAR : Scale::SIGNED_LOG;
        const Axis axis = {
            std::stod(row["low"]), std::strtod(row["high"].c_str(), nullptr), 0, 1, scale, 1e5};
        const std::string units = row["units"];
        const TickLabels labels =
            label_ticks(ticks_of(axis, 5), unit_of(units.empty() ? nullptr : units.c_str()), scale);
        std::string text;
        for (const std::string &label : labels.texts) {
            text += (text.empty() ? "" : " ") + label;
        }
        text += labels.unit.empty() ? "" : " / " + labels.unit;
        EXPECT_EQ(text + (labels.offset.empty() ? "" : " > " + labels.offset), row["labels"]) << row.place;
    }
    for (const TableRow &row : rows_of("tests/report/axis_cases.md", "Numbers")) {
        const double value = std::strtod(row["value"].c_str(), nullptr);
        EXPECT_EQ(with_unit(value, unit_of(row["units"].c_str())), row["text"]) << row.place;
    }
}

TEST(PackedColumn, IsNarrowWhereThatIsExactEnough)
{
    const auto text = [](const std::vector<double> &values, double tolerance) {
        const PackedColumn column = packed(values, tolerance);
        return column.type + " "s + column.data;
    };
    EXPECT_EQ(text({}, 0), "f4 ");
    EXPECT_EQ(text({1, kNan, -kInf}, 0), "f4 AACAPwAAwH8AAID/");
    EXPECT_EQ(text({0.1}, 0), "f8 mpmZmZmZuT8=");
    EXPECT_EQ(text({0.1}, 1e-8), "f4 zczMPQ==");
    EXPECT_EQ(text({1e300}, 1e299), "f8 nHUAiDzkN34=");
    EXPECT_EQ(text({1e-50}, 0).substr(0, 2), "f8");
}

// Of each column, the range of a line through points, whose parts end at the borders of columns.
std::map<int, Range> extents(const Curve &line)
{
    std::map<int, Range> found;
    for (std::size_t i = 1; i < line.x.size(); ++i) {
        const double slope = (line.y[i] - line.y[i - 1]) / (line.x[i] - line.x[i - 1]);
        const auto last = static_cast<int>(std::floor(line.x[i]));
        for (auto column = static_cast<int>(std::floor(line.x[i - 1])); column <= last; ++column) {
            const bool begins = column == static_cast<int>(std::floor(line.x[i - 1]));
            found[column].add(begins ? line.y[i - 1] : line.y[i] + slope * (column - line.x[i]));
            found[column].add(column == last ? line.y[i] : line.y[i] + slope * (column + 1 - line.x[i]));
        }
    }
    return found;
}

TEST(ColumnReducer, LeavesTheSamePicture)
{
    std::mt19937 random(1);
    std::normal_distribution<double> noise;
    for (const double density : {0.2, 3.0, 400.0}) { // points in a column
        Curve all;
        Curve left;
        ColumnReducer reducer([&left](double x, double y) {
            left.x.push_back(x);
            left.y.push_back(y);
        });
        for (double x = 0.0; x < 100.0; x += std::fabs(noise(random)) / density + 1e-9) {
            all.x.push_back(x);
            all.y.push_back(std::sin(x / 9.0) + noise(random) * (noise(random) > 2.0 ? 1.0 : 0.01));
            reducer.add(column_at(x), x, all.y.back());
        }
        reducer.flush();
        const std::map<int, Range> whole = extents(all);
        const std::map<int, Range> reduced = extents(left);
        ASSERT_EQ(whole.size(), reduced.size());
        for (const auto &[column, range] : whole) {
            EXPECT_NEAR(reduced.at(column).low, range.low, 1e-6) << column << " of " << density;
            EXPECT_NEAR(reduced.at(column).high, range.high, 1e-6) << column << " of " << density;
        }
        EXPECT_LE(left.x.size(), 4 * whole.size());
    }
}

TEST(Curve, IsCutToItsRoom)
{
    constexpr int kPoints = 300000;
    std::vector<double> x(kPoints);
    std::vector<double> y(kPoints);
    Wform wform = {};
    wform.x = x.data();
    wform.val = y.data();
    wform.count = kPoints;
    wform.xmax = 1.0;
    Detail detail = {5000, {0.0, 1.0, false}, 0.5, 0.502};
    for (const bool to_and_fro : {false, true}) {
        for (int i = 0; i < kPoints; ++i) {
            x[i] = (to_and_fro ? i * 7919.0 - std::floor(i * 7919.0 / kPoints) * kPoints : i) / kPoints;
            y[i] = i % 1000 == 7 ? kNan : (i % 10007 * 7919 % 10007) * 1e-4;
        }
        const Curve curve = read_curve(wform, detail);
        const auto near = std::count_if(curve.x.begin(), curve.x.end(),
                                        [](double place) { return place >= 0.5 && place < 0.502; });
        EXPECT_LE(curve.x.size(), 5000U);
        EXPECT_GE(curve.x.size(), 1000U);
        EXPECT_EQ(curve.points, kPoints);
        EXPECT_TRUE(to_and_fro || near == 600) << near;
    }
}

// Writes the figures of a run when it ends.
class FigureWriter : public Recorder
{
  public:
    FigureWriter(const std::string &path, std::int64_t budget)
        : Recorder({1000, 50}), path_(path), budget_(budget)
    {
    }

    void ended(const RunEnd &end) override
    {
        Recorder::ended(end);
        const Result result = take_result();
        const std::vector<Figure> figures = make_figures(result, 50, budget_);
        std::ofstream out(path_);
        for (const Figure &figure : figures) {
            out << figure.title << (figure.log_x ? ", log" : "") << (figure.cut ? ", cut" : "") << "\n";
            check_errors(figure, result, out);
            const std::string svg = figure_svg(figure) + thumbnail_svg(figure);
            out << (svg.find("<HOSTILE") == std::string::npos ? "" : "unescaped\n");
        }
        std::ostringstream data;
        write_figure_data(data, figures);
        out << (data.str().find_first_of("<>&") == std::string::npos ? "" : "unescaped data\n");
        out << (static_cast<std::int64_t>(data.str().size()) < budget_ ? "" : "too long\n");
    }

  private:
    // What a figure shows must be what the transcript says.
    static void check_errors(const Figure &figure, const Result &result, std::ostream &out)
    {
        for (const Panel &panel : figure.panels) {
            double sum = 0.0;
            double largest = 0.0;
            for (std::size_t i = 0; i < panel.errors.error.size(); ++i) {
                sum += panel.errors.error[i];
                const bool fails = !panel.errors.fails.empty() && panel.errors.fails[i] != 0;
                largest = fails ? std::max(largest, panel.errors.error[i]) : largest;
            }
            for (const std::size_t index : figure.findings) {
                const Finding &finding = result.findings[index].finding;
                const double shown = finding.kind == FindingKind::AREA ? sum : largest;
                const bool is_shown =
                    result.findings[index].key == panel.key && figure.kind == FigureKind::WAVES;
                out << (is_shown && shown != finding.judged.abserr ? "not as judged\n" : "");
            }
        }
        for (const std::size_t index : figure.findings) {
            const Finding &finding = result.findings[index].finding;
            for (const Bar &bar : figure.bars) {
                out << (bar.position == finding.position && bar.error != finding.judged.abserr ? "bar\n"
                                                                                               : "");
            }
        }
    }

    std::string path_;
    std::int64_t budget_;
};

std::string figures_of(const std::string &golden, const std::string &regression, std::int64_t budget)
{
    const std::string folder = make_folder();
    FigureWriter writer(folder + "/figures", budget);
    run_listening(writer, folder, {golden, regression});
    std::stringstream text;
    text << std::ifstream(folder + "/figures").rdbuf();
    return text.str();
}

TEST(Figures, ShowWhatWasJudged)
{
    const std::map<std::string, std::string> wanted = {
        {"nand", "V(Y) - TR Waveform, rerun 1, modify 0\nV(Y) - TR Waveform, rerun 2, modify 0\n"},
        {"lc_filter",
         "V(B) - TR Waveform, rerun 1, modify 0, cut\nV(OUT) - TR Waveform, rerun 1, modify 0, cut\n"},
        {"sallen_key", "Poles and zeros - POLE-ZERO, rerun 1, modify 0\n"
                       "VDB(OUT), VP(OUT) - AC, rerun 1, modify 0, log\n"
                       "V(OUT) - TR Waveform, rerun 1, modify 0\nV(IN) - TR Waveform, rerun 1, modify 0\n"},
    };
    for (const auto &[sample, figures] : wanted) {
        const std::string folder = TRESK_SOURCE "/samples/" + sample;
        const std::int64_t budget = sample == "lc_filter" ? 50000 : 1 << 20;
        EXPECT_EQ(figures_of(folder + "/golden.pun", folder + "/regress.pun", budget), figures);
    }
}

TEST(Figures, StandHostileNamesAndValues)
{
    const std::string folder = make_folder();
    const auto write = [&folder](const std::string &name, const std::string &values) {
        const std::string header =
            "* ANALYSIS = AC   PROGRAM = A   DATE = B   TIME = C\n"
            "* RERUN_NUMBER = 1, TEMPERATURE = 27.0, MODIFY = 0\n* XUNITS = <HOSTILE>\n";
        std::ofstream(folder + "/" + name) << header << "VM(<HOSTILE>\") YUNITS = <HOSTILE>' " << values
                                           << "\nVP(<HOSTILE>\") YUNITS = DEGREES 1 1 1e3 2\nVM(b) 1 1 2 2\n";
        return folder + "/" + name;
    };
    const std::string golden = write("golden", "1 1 2 1e308 1000 -1e308 1e4 5e-324");
    for (const char *values : {"1 nan 2 inf 1000 1e308", "nan 2 inf 2", "0 2 -1 2 1 2 1e308 3 -1e308 4"}) {
        const std::string figures = figures_of(golden, write("regression", values), 1 << 20);
        const std::string title = "VM(<HOSTILE>\"), VP(<HOSTILE>\") - AC, rerun 1, modify 0";
        EXPECT_EQ(figures.substr(0, title.size()), title);
        EXPECT_EQ(figures.find("unescaped"), std::string::npos);
    }
}

} // namespace
