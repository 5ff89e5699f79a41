// SPDX-License-Identifier: MIT
#include "report/facts.h"
#include "report/keys.h"
#include "report/page_cells.h"
#include "report/page_parts.h"
#include "report/page_words.h"
#include "report/svg_parts.h"
#include "report/text.h"
#include "report/units.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace report
{

namespace
{

// Bars on a logarithmic scale, from a tenth of the tolerance on, so that 1.1 times and 1e6 times show both.
constexpr double kBarWidth = 100.0;
constexpr double kScaleFrom = 0.1;
constexpr double kScaleMost = 1e12; // all that is beyond fills the bar

// An error in tolerances: infinite where none is allowed, 0 where all are.
double in_tolerances(double error, double tolerance)
{
    if (std::isnan(error)) {
        return error;
    }
    if (std::isnan(tolerance) || error == 0.0 || tolerance == HUGE_VAL) {
        return 0.0;
    }
    return tolerance > 0.0 ? error / tolerance : HUGE_VAL;
}

struct Ratios {
    double abs;
    double rel;
};

Ratios ratios_of(const Finding &finding, const Options &options)
{
    return {in_tolerances(finding.judged.abserr, options.abstol),
            in_tolerances(finding.judged.relerr, options.reltol)};
}

double bar_length(double ratio, double scale_to)
{
    if (std::isnan(ratio)) {
        return kBarWidth;
    }
    const double clamped = std::clamp(ratio, kScaleFrom, scale_to);
    return kBarWidth * std::log10(clamped / kScaleFrom) / std::log10(scale_to / kScaleFrom);
}

void write_bars(std::ostream &out, const Ratios &ratios, double scale_to)
{
    const std::string limit = coordinate(bar_length(1.0, scale_to));
    out << "<td><svg class=\"over\" viewBox=\"0 0 100 16\" width=\"100\" height=\"16\" role=\"img\" "
           "aria-label=\""
        << "absolute error " << four_digits(ratios.abs) << " times its tolerance, relative error "
        << four_digits(ratios.rel) << R"( times"><rect class="over-abs" x="0" y="1" height="6" width=")"
        << coordinate(bar_length(ratios.abs, scale_to))
        << R"(" fill="#b3261e"/><rect class="over-rel" x="0" y="9" height="6" width=")"
        << coordinate(bar_length(ratios.rel, scale_to))
        << R"(" fill="#6aa9e4"/><path class="over-limit" d="M)" << limit
        << R"( 0V16" stroke="#222" stroke-dasharray="2 1"/></svg> <span class="hint">)"
        << with_unit(ratios.abs, {}, 2) << " / " << with_unit(ratios.rel, {}, 2) << "</span>";
}

void write_sides(std::ostream &out, const Finding &finding)
{
    if (finding.kind == FindingKind::FEW_POINTS) {
        for (const Wform *signal : {finding.signals.ref, finding.signals.cmp}) {
            right_cell(out, std::to_string(signal != nullptr ? signal->count : 0) + " points");
        }
        return;
    }
    for (const double value : {finding.ref_value, finding.cmp_value}) {
        out << R"(<td class="n" data-v=")" << number_text(value) << "\">" << number_text(value);
    }
}

void write_row(std::ostream &out, const PageView &view, std::size_t index, double scale_to)
{
    const Entry &entry = view.result.findings[index];
    const Finding &finding = entry.finding;
    const Ratios ratios = ratios_of(finding, view.result.options);
    out << "<tr id=\"v" << index << "\" data-key=\"" << html_attribute(entry.key) << R"("><th scope="row">)"
        << name_text(title_of(finding)) << "</th>";
    write_sides(out, finding);
    out << "<td>" << name_text(units_of(finding));
    for (const double error : {finding.judged.abserr, finding.judged.relerr}) {
        number_cell(out, error);
    }
    write_bars(out, ratios, scale_to);
    out << "<td class=\"marker\"><code>" << html_text(finding.marker) << "</code></tr>\n";
}

double scale_of(const PageView &view, const std::vector<std::size_t> &rows)
{
    double most = 10.0;
    for (const std::size_t index : rows) {
        const Ratios ratios = ratios_of(view.result.findings[index].finding, view.result.options);
        for (const double ratio : {ratios.abs, ratios.rel}) {
            if (std::isfinite(ratio)) {
                most = std::max(most, ratio);
            }
        }
    }
    return std::min(most, kScaleMost);
}

void write_table(std::ostream &out, const PageView &view, const std::string &title,
                 const std::vector<std::size_t> &rows)
{
    const double scale_to = scale_of(view, rows);
    out << "<h3>" << html_text(title) << "</h3>\n";
    begin_scroll(out, title);
    begin_table(out, "class=\"values sortable\"", "",
                {{"name"},
                 {"golden", true},
                 {"regression", true},
                 {"units"},
                 {"abs", true},
                 {"rel", true},
                 {"error / tolerance"},
                 {"marker"}});
    for (const std::size_t index : rows) {
        write_row(out, view, index, scale_to);
    }
    end_table(out);
    end_scroll(out);
}

} // namespace

void write_values(std::ostream &out, const PageView &view)
{
    // In the order in which they are met, so that the table with the worst value comes first.
    std::vector<std::pair<std::string, std::vector<std::size_t>>> tables;
    std::map<std::string, std::size_t> table_of;
    std::size_t rows = 0;
    for (std::size_t i = 0; i < view.result.findings.size() && rows < kMostRows; ++i) {
        const Finding &finding = view.result.findings[i].finding;
        if (!is_tabled(finding)) {
            continue;
        }
        const std::string what = finding.kind == FindingKind::VALUE || finding.kind == FindingKind::SWEEP
                                     ? ""
                                     : ", " + subject_of(finding);
        const std::string title =
            std::string(analysis_word(finding.analysis)) + what + ", " + place_of(finding);
        const auto place = table_of.emplace(title, tables.size());
        if (place.second) {
            tables.push_back({title, {}});
        }
        tables[place.first->second].second.push_back(i);
        ++rows;
    }
    if (tables.empty()) {
        return;
    }
    out << "<section id=\"values\"><h2>Values</h2>\n<p class=\"hint\">Bars show the absolute error (upper, "
           "dark) and "
        << "the relative error (lower, pale) in tolerances, on a logarithmic scale and as numbers; the "
           "dashed line is the "
        << "tolerance. Which of the two was judged, the marker says.</p>\n";
    for (const auto &[title, members] : tables) {
        write_table(out, view, title, members);
    }
    out << "</section>\n";
}

} // namespace report
