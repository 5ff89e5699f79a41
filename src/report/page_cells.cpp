// SPDX-License-Identifier: MIT
#include "report/page_cells.h"

#include "report/page_words.h"
#include "report/text.h"

namespace report
{

void begin_scroll(std::ostream &out, const std::string &label, bool is_tall)
{
    out << "<div class=\"scroll" << (is_tall ? " tall" : "") << R"(" tabindex="0" role="region" aria-label=")"
        << html_attribute(label) << "\">";
}

void end_scroll(std::ostream &out)
{
    out << "</div>\n";
}

void begin_table(std::ostream &out, const char *attributes, const std::string &caption,
                 const std::vector<Column> &columns)
{
    out << "<table" << (*attributes != '\0' ? " " : "") << attributes << '>';
    if (!caption.empty()) {
        out << "<caption>" << name_text(caption) << "</caption>";
    }
    out << "\n<thead><tr>";
    for (const Column &column : columns) {
        out << "<th scope=\"col\"" << (column.is_number ? " class=\"n\"" : "") << '>' << column.head
            << "</th>";
    }
    out << "</tr></thead>\n<tbody>\n";
}

void end_table(std::ostream &out)
{
    out << "</tbody></table>";
}

void number_cell(std::ostream &out, double value)
{
    out << R"(<td class="n" data-v=")" << number_text(value) << "\">" << four_digits(value);
}

void right_cell(std::ostream &out, const std::string &text)
{
    out << "<td class=\"n\">" << html_text(text);
}

} // namespace report
