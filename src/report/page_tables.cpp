// SPDX-License-Identifier: MIT
#include "report/facts.h"
#include "report/keys.h"
#include "report/order.h"
#include "report/page_cells.h"
#include "report/page_parts.h"
#include "report/page_words.h"
#include "report/text.h"

#include <cmath>
#include <map>
#include <tuple>

namespace report
{

namespace
{

// The name of a finding, as a link to the figure or the row that shows more of it.
void write_name(std::ostream &out, const PageView &view, std::size_t index)
{
    const Finding &finding = view.result.findings[index].finding;
    const Figure *figure = view.figure_of[index];
    out << "<th scope=\"row\">";
    if (figure != nullptr) {
        out << "<a href=\"#" << figure->id << "\">" << name_text(title_of(finding)) << "</a>";
    } else if (is_tabled(finding)) {
        out << "<a href=\"#v" << index << "\">" << name_text(title_of(finding)) << "</a>";
    } else {
        out << name_text(title_of(finding));
    }
    out << "</th>";
}

// Key and figure, for the script.
void begin_row(std::ostream &out, const PageView &view, std::size_t index)
{
    const Figure *figure = view.figure_of[index];
    out << "<tr data-key=\"" << html_attribute(view.result.findings[index].key) << '"';
    if (figure != nullptr) {
        out << " data-figure=\"" << figure->id << '"';
    }
    out << '>';
}

void write_failing_row(std::ostream &out, const PageView &view, std::size_t index)
{
    const Finding &finding = view.result.findings[index].finding;
    begin_row(out, view, index);
    right_cell(out, std::to_string(index + 1));
    write_name(out, view, index);
    out << "<td>" << analysis_word(finding.analysis) << "<td>" << html_text(place_of(finding)) << "<td>"
        << html_text(subject_of(finding)) << (finding.met_nan ? ", not a number" : "");
    number_cell(out, finding.judged.abserr);
    number_cell(out, finding.judged.relerr);
    out << "<td class=\"marker\"><code>" << html_text(finding.marker) << "</code>";
    if (const auto place = worst_at(finding)) {
        number_cell(out, *place);
    } else {
        out << "<td>";
    }
    out << "</tr>\n";
}

void write_rest(std::ostream &out, std::size_t rest)
{
    if (rest != 0) {
        out << "<p>" << rest << " more, less bad, are in findings.csv.</p>\n";
    }
}

constexpr std::size_t kMostOpenRows = 50; // of a group that stands open

// One group of the page: kind, the file that lacks it, and whether it counts.
using GroupKey = std::tuple<FindingGroup, FindingKind, Side>;

std::string group_title(const GroupKey &key, std::size_t count)
{
    const auto &[group, kind, side] = key;
    std::string title(subject_word(kind));
    if (group == FindingGroup::MISSING) {
        title += " missing in " + std::string(side_word(side));
    }
    title += ": " + std::to_string(count);
    return title + (group == FindingGroup::UNJUDGED ? " (without bearing on the grade)" : "");
}

void write_group_row(std::ostream &out, const PageView &view, std::size_t index, bool with_texts)
{
    const Finding &finding = view.result.findings[index].finding;
    begin_row(out, view, index);
    write_name(out, view, index);
    out << "<td>" << analysis_word(finding.analysis) << "<td>" << html_text(place_of(finding));
    if (with_texts) {
        const auto side = [&](const std::string &text, double value) {
            out << "<td>";
            if (has_values(finding)) {
                out << number_text(value);
            } else {
                out << (text.empty() ? "(none)" : name_text(text));
            }
        };
        side(finding.ref_text, finding.ref_value);
        side(finding.cmp_text, finding.cmp_value);
    } else if (finding.kind == FindingKind::MISSING_POINTS) {
        right_cell(out, std::to_string(finding.missing_points));
    }
    out << "</tr>\n";
}

void write_group(std::ostream &out, const PageView &view, const GroupKey &key,
                 const std::vector<std::size_t> &members)
{
    const FindingKind kind = std::get<FindingKind>(key);
    const bool with_texts = std::get<FindingGroup>(key) != FindingGroup::MISSING;
    const std::string title = group_title(key, members.size());
    out << "<details class=\"group\"" << (members.size() <= kMostOpenRows ? " open" : "") << "><summary>"
        << html_text(title) << "</summary>\n";
    std::vector<Column> columns = {{"name"}, {"analysis"}, {"where"}};
    if (with_texts) {
        columns.insert(columns.end(), {{"golden"}, {"regression"}});
    } else if (kind == FindingKind::MISSING_POINTS) {
        columns.push_back({"points", true});
    }
    begin_scroll(out, title);
    begin_table(out, "", "", columns);
    for (std::size_t i = 0; i < members.size() && i < kMostRows; ++i) {
        write_group_row(out, view, members[i], with_texts);
    }
    end_table(out);
    end_scroll(out);
    write_rest(out, members.size() - std::min(members.size(), kMostRows));
    out << "</details>\n";
}

} // namespace

void write_failing(std::ostream &out, const PageView &view)
{
    std::vector<std::size_t> failing;
    for (std::size_t i = 0; i < view.result.findings.size(); ++i) {
        if (group_of(view.result.findings[i].finding) == FindingGroup::FAILING) {
            failing.push_back(i);
        }
    }
    if (failing.empty()) {
        return;
    }
    out << "<section id=\"failing\"><h2>What fails, worst first</h2>\n";
    begin_scroll(out, "what fails", true);
    begin_table(out, R"(class="sortable" id="findings")", "",
                {{"#", true},
                 {"signal"},
                 {"analysis"},
                 {"where"},
                 {"fails"},
                 {"abs", true},
                 {"rel", true},
                 {"marker"},
                 {"worst at", true}});
    for (std::size_t i = 0; i < failing.size() && i < kMostRows; ++i) {
        write_failing_row(out, view, failing[i]);
    }
    end_table(out);
    end_scroll(out);
    write_rest(out, failing.size() - std::min(failing.size(), kMostRows));
    out << "</section>\n";
}

void write_missing_and_different(std::ostream &out, const PageView &view)
{
    std::map<GroupKey, std::vector<std::size_t>> groups;
    for (std::size_t i = 0; i < view.result.findings.size(); ++i) {
        const Finding &finding = view.result.findings[i].finding;
        const FindingGroup group = group_of(finding);
        if (group != FindingGroup::FAILING) {
            groups[{group, finding.kind, finding.side}].push_back(i);
        }
    }
    if (groups.empty()) {
        return;
    }
    out << "<section id=\"others\"><h2>Missing and different</h2>\n";
    for (const auto &[key, members] : groups) {
        write_group(out, view, key, members);
    }
    out << "</section>\n";
}

} // namespace report
