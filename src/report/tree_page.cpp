// SPDX-License-Identifier: MIT
#include "report/embedded.h"
#include "report/page_cells.h"
#include "report/page_shell.h"
#include "report/page_words.h"
#include "report/text.h"
#include "report/tree_view.h"

#include <algorithm>
#include <sstream>

namespace report
{

namespace
{

constexpr std::size_t kMostDataBytes = 11U << 20U; // of pairs
constexpr std::size_t kMostTableBytes = 2U << 20U; // of a table
constexpr std::size_t kMostPlainPairs = 2000;      // that do not pass, of the table without script
constexpr std::size_t kMostPlainSignals = 200;

// The parts of a path as those of a link.
std::string link_path(const std::string &path)
{
    std::string link;
    std::string_view rest = path;
    while (!rest.empty()) {
        const std::size_t slash = rest.find('/');
        link += url_bytes(rest.substr(0, slash)) + (slash == std::string_view::npos ? "" : "/");
        rest.remove_prefix(slash == std::string_view::npos ? rest.size() : slash + 1);
    }
    return link;
}

void write_counts(std::ostream &out, const TreeRun &run)
{
    out << "<ul class=\"counts\">";
    for (int grade = kTreeGrades - 1; grade >= 0; --grade) {
        const std::int64_t count = run.counts[static_cast<std::size_t>(grade)];
        if (count != 0 || grade == 0) {
            out << "<li><b class=\"g" << grade << "\">" << count << "</b> " << tree_grade_word(grade)
                << "</li>\n";
        }
    }
    out << "</ul>\n";
}

void write_fact(std::ostream &out, const char *name, const std::string &text)
{
    if (!text.empty()) {
        out << "<dt>" << name << "</dt><dd><code>" << html_text(text) << "</code></dd>\n";
    }
}

std::string accepted_words(unsigned accepted)
{
    std::string words;
    for (int grade = 1; grade < kTreeGrades; ++grade) {
        if ((accepted >> static_cast<unsigned>(grade) & 1U) != 0) {
            words += (words.empty() ? "" : ", ") + std::string(tree_grade_word(grade));
        }
    }
    return words;
}

void write_tree_head(std::ostream &out, const TreeView &view)
{
    const TreeRun &run = view.run;
    const int worst = worst_grade(run, view.accepted);
    const auto lonely = std::count_if(run.pairs.begin(), run.pairs.end(),
                                      [](const TreePair &pair) { return !pair.lacks.empty(); });
    const auto pairs = static_cast<std::ptrdiff_t>(run.pairs.size()) - lonely;
    out << "<header>\n<h1><span class=\"grade g" << worst << "\">" << tree_grade_word(worst) << "</span> "
        << pairs << (pairs == 1 ? " pair" : " pairs");
    if (lonely != 0) {
        out << ", " << lonely << " without partner";
    }
    out << "</h1>\n";
    write_counts(out, run);
    out << "<dl class=\"facts\">\n";
    write_fact(out, "golden", run.golden);
    write_fact(out, "regression", run.regression);
    write_fact(out, "options", run.options);
    write_fact(out, "results", run.out);
    write_fact(out, "accepted", accepted_words(view.accepted));
    write_fact(out, "compared with", view.before);
    out << "</dl>\n";
    if (view.cut_reports + view.left_out_findings != 0) {
        out << "<p class=\"aloud\"><b>Not all findings are counted below:</b> " << view.cut_reports
            << " reports hold more than were read, and " << view.left_out_findings
            << " findings are of more different signals than there is room for.</p>\n";
    }
    out << "</header>\n";
}

void write_row(std::ostream &out, const TreeView &view, const TreePair &pair)
{
    out << "<tr><td class=\"g" << pair.grade << "\">" << tree_grade_word(pair.grade) << "<th scope=\"row\">";
    if (pair.has_page) {
        out << "<a href=\"./" << link_path(pair.path) << "/report.html\">" << name_text(pair.path) << "</a>";
    } else {
        out << name_text(pair.path);
    }
    out << "<td>" << name_text(pair.remark);
    right_cell(out, pair.has_report ? std::to_string(pair.failing + pair.missing + pair.differences) : "");
    out << "<td>" << name_text(pair.signal) << ' ' << html_text(pair.analysis);
    right_cell(out, pair.abs ? four_digits(*pair.abs) : "");
    right_cell(out, pair.rel ? four_digits(*pair.rel) : "");
    out << "<td>";
    if (pair.has_transcript) {
        out << "<a href=\"../transcripts/" << link_path(pair.path) << ".txt\">transcript</a>";
    }
    const auto number = static_cast<std::size_t>(&pair - view.run.pairs.data());
    if (!view.before.empty()) {
        out << "<td>" << change_word(view.changes.pairs[number].change);
    }
    out << '\n';
}

// The worst pairs as rows that need no script. Returns whether that is all that did not pass.
void write_plain_pairs(std::ostream &out, const TreeView &view)
{
    std::ostringstream rows;
    std::size_t shown = 0;
    std::size_t bad = 0;
    for (const TreePair &pair : view.run.pairs) {
        bad += pair.grade != 0 ? 1 : 0;
        if (pair.grade != 0 && shown < kMostPlainPairs &&
            static_cast<std::size_t>(rows.tellp()) < kMostTableBytes) {
            write_row(rows, view, pair);
            ++shown;
        }
    }
    out << "<h2>Pairs that did not pass</h2>\n";
    if (bad == 0) {
        out << "<p class=\"nothing\">All pairs pass.</p>\n";
        return;
    }
    out << "<p>The " << shown << " worst of " << bad
        << ", worst first. All are in <a href=\"./tree.csv\">tree.csv</a>.</p>\n";
    std::vector<Column> columns = {{"grade"},        {"path"},      {"remark"},    {"findings", true},
                                   {"worst signal"}, {"abs", true}, {"rel", true}, {"transcript"}};
    if (!view.before.empty()) {
        columns.push_back({"change"});
    }
    begin_scroll(out, "pairs that did not pass");
    begin_table(out, "", "", columns);
    out << rows.str();
    end_table(out);
    end_scroll(out);
}

void write_plain_signals(std::ostream &out, const TreeView &view)
{
    if (view.signals.empty()) {
        return;
    }
    out << "<h2>Signals</h2>\n<p>What broke in most pairs comes first.</p>\n";
    begin_scroll(out, "signals");
    begin_table(out, "", "",
                {{"signal"},
                 {"analysis"},
                 {"what"},
                 {"pairs", true},
                 {"worst abs", true},
                 {"worst rel", true},
                 {"worst in"}});
    for (std::size_t i = 0; i < view.signals.size() && i < kMostPlainSignals; ++i) {
        const TreeSignal &signal = view.signals[i];
        out << "<tr><th scope=\"row\">" << name_text(signal.name) << "<td>" << html_text(signal.analysis)
            << "<td>" << html_text(signal.what) << (signal.is_judged ? "" : " (not judged)");
        right_cell(out, std::to_string(signal.pairs.size()));
        right_cell(out, signal.abs ? four_digits(*signal.abs) : "");
        right_cell(out, signal.rel ? four_digits(*signal.rel) : "");
        out << "<td>" << name_text(view.run.pairs[signal.worst].path) << '\n';
    }
    end_table(out);
    end_scroll(out);
}

// What the page has no room for, by grade.
void write_left_out(std::ostream &out, const TreeView &view, std::size_t shown)
{
    if (shown == view.run.pairs.size()) {
        return;
    }
    std::array<std::int64_t, kTreeGrades> counts = {};
    for (std::size_t i = shown; i < view.run.pairs.size(); ++i) {
        ++counts[static_cast<std::size_t>(view.run.pairs[i].grade)];
    }
    out << "<p class=\"aloud\"><b>This page leaves out " << view.run.pairs.size() - shown << " pairs:</b>";
    for (int grade = 0; grade < kTreeGrades; ++grade) {
        if (const std::int64_t count = counts[static_cast<std::size_t>(grade)]) {
            out << ' ' << count << ' ' << tree_grade_word(grade);
        }
    }
    out << ". All are in <a href=\"./tree.csv\">tree.csv</a>.</p>\n";
}

} // namespace

void write_tree_page(std::ostream &out, const TreeView &view)
{
    const int worst = worst_grade(view.run, view.accepted);
    std::ostringstream data;
    const std::size_t shown = write_tree_data(data, view, kMostDataBytes);
    begin_page(
        out, {std::string(tree_grade_word(worst)) + " tree " + view.run.regression, kTreeStyle, kTreeScript});
    write_tree_head(out, view);
    out << "<main>\n";
    write_left_out(out, view, shown);
    // The script is done before the browser comes to the tables that it replaces.
    out << "<div id=\"app\"></div>\n<script type=\"application/json\" id=\"data\">" << data.str()
        << "</script>\n";
    write_script(out, kTreeScript);
    out << "<div id=\"plain\">\n";
    write_plain_pairs(out, view);
    write_plain_signals(out, view);
    out << "</div>\n</main>\n";
    end_page(out);
}

} // namespace report
