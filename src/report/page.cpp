// SPDX-License-Identifier: MIT
#include "report/page.h"

#include "report/embedded.h"
#include "report/order.h"
#include "report/page_parts.h"
#include "report/page_shell.h"
#include "report/page_words.h"
#include "report/words.h"

#include <algorithm>

namespace report
{

namespace
{

std::vector<const Figure *> figures_by_finding(const Result &result, const std::vector<Figure> &figures)
{
    std::vector<const Figure *> figure_of(result.findings.size(), nullptr);
    for (const Figure &figure : figures) {
        for (const std::size_t finding : figure.findings) {
            if (figure_of[finding] == nullptr) {
                figure_of[finding] = &figure;
            }
        }
    }
    return figure_of;
}

// Links to the sections that there are.
void write_contents(std::ostream &out, const PageView &view)
{
    const std::vector<Entry> &findings = view.result.findings;
    const auto link_if = [&](bool (*holds)(const Entry &entry), const char *link) {
        if (std::any_of(findings.begin(), findings.end(), holds)) {
            out << link;
        }
    };
    out << "<nav aria-label=\"sections\">";
    link_if([](const Entry &entry) { return group_of(entry.finding) == FindingGroup::FAILING; },
            "<a href=\"#failing\">What fails</a> ");
    out << (view.input.figures.empty() ? "" : "<a href=\"#figures\">Figures</a> ");
    link_if([](const Entry &entry) { return is_tabled(entry.finding); }, "<a href=\"#values\">Values</a> ");
    link_if([](const Entry &entry) { return group_of(entry.finding) != FindingGroup::FAILING; },
            "<a href=\"#others\">Missing and different</a> ");
    out << "<a href=\"#transcript\">Transcript</a> <a href=\"#origin\">What made this page</a></nav>\n";
}

} // namespace

void write_page(std::ostream &out, const Result &result, const PageInput &input)
{
    const PageView view = {result, input, figures_by_finding(result, input.figures)};
    begin_page(
        out, {std::string(grade_word(result.grade)) + ' ' + result.regression.path, kPageStyle, kPageScript});
    write_head(out, view);
    write_contents(out, view);
    out << "<main>\n";
    if (result.findings.empty() && result.grade == 0) {
        out << "<p class=\"nothing\">All " << result.counts.pairs
            << " judged pairs pass, nothing is missing, nothing differs.</p>\n";
    }
    write_failing(out, view);
    write_figures(out, view);
    write_values(out, view);
    write_missing_and_different(out, view);
    write_transcript(out, view);
    write_origin(out, view);
    out << "</main>\n";
    write_script(out, kPageScript);
    end_page(out);
}

} // namespace report
