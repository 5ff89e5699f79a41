// SPDX-License-Identifier: MIT
#include "report/figure_data.h"
#include "report/order.h"
#include "report/page_numbers.h"
#include "report/page_parts.h"
#include "report/page_words.h"
#include "report/svg.h"
#include "report/text.h"

namespace report
{

namespace
{

// The worst stand open, so that they are seen where a reader cannot open them: in mail, say.
constexpr std::size_t kOpenFigures = 5;

void write_summary(std::ostream &out, const Figure &figure, const Entry &worst, std::size_t place)
{
    out << "<summary><span class=\"place\">" << place << "</span> <span class=\"thumb\">"
        << thumbnail_svg(figure) << "</span> <span class=\"what\"><b>" << name_text(figure.title)
        << "</b> <span class=\"hint\">" << extent_of(worst.finding) << "</span></span></summary>\n";
}

void write_caption(std::ostream &out, const PageView &view, const Figure &figure)
{
    out << "<figcaption>";
    constexpr std::size_t kMostTold = 3;
    for (std::size_t i = 0; i < figure.findings.size() && i < kMostTold; ++i) {
        const Finding &finding = view.result.findings[figure.findings[i]].finding;
        out << (i == 0 ? "" : "; ") << "<b>" << name_text(title_of(finding)) << "</b> "
            << html_text(subject_of(finding)) << ", " << extent_of(finding) << " <code>"
            << html_text(finding.marker) << "</code>";
    }
    if (figure.findings.size() > kMostTold) {
        out << " and " << figure.findings.size() - kMostTold << " more";
    }
    out << '.';
    if (figure.cut) {
        out << " <span class=\"hint\">Of long waveforms, points that draw the same picture are kept, and all "
            << "around the worst place.</span>";
    }
    out << "</figcaption>\n";
}

void write_figure(std::ostream &out, const PageView &view, std::size_t index)
{
    const Figure &figure = view.input.figures[index];
    const Entry &worst = view.result.findings[figure.findings.front()];
    out << "<details class=\"one\"" << (index < kOpenFigures ? " open" : "") << ">\n";
    write_summary(out, figure, worst, index + 1);
    out << "<figure id=\"" << figure.id << "\" data-key=\"" << html_attribute(worst.key) << "\">\n";
    write_caption(out, view, figure);
    out << R"(<div class="drawing" tabindex="0" role="region" aria-label="drawing )"
        << html_attribute(figure.title) << "\">" << figure_svg(figure) << "</div>\n";
    write_figure_numbers(out, figure);
    out << "</figure>\n</details>\n";
}

// Signals that could be drawn and are not, since there are so many of them.
void write_undrawn(std::ostream &out, const PageView &view)
{
    std::size_t undrawn = 0;
    for (std::size_t i = 0; i < view.result.findings.size(); ++i) {
        const Finding &finding = view.result.findings[i].finding;
        const bool could_be = group_of(finding) == FindingGroup::FAILING && !is_tabled(finding);
        undrawn += could_be && view.figure_of[i] == nullptr ? 1 : 0;
    }
    if (undrawn != 0) {
        out << "<p>" << undrawn
            << " more findings, less bad, have no figure here: --figures sets how many have.</p>\n";
    }
}

} // namespace

void write_figures(std::ostream &out, const PageView &view)
{
    if (view.input.figures.empty()) {
        return;
    }
    out << "<section id=\"figures\"><h2>Figures, worst first</h2>\n";
    for (std::size_t i = 0; i < view.input.figures.size(); ++i) {
        write_figure(out, view, i);
    }
    write_undrawn(out, view);
    out << "</section>\n<script type=\"application/json\" id=\"data\">";
    write_figure_data(out, view.input.figures);
    out << "</script>\n";
}

} // namespace report
