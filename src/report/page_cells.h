// SPDX-License-Identifier: MIT
// Tables of the page. A row is begun and ended by its caller: "<tr>" with a row head, then cells.
#ifndef TRESK_REPORT_PAGE_CELLS_H
#define TRESK_REPORT_PAGE_CELLS_H

#include <ostream>
#include <string>
#include <vector>

namespace report
{

struct Column {
    const char *head;
    bool is_number = false; // stands to the right
};

// A part of the page that scrolls by itself where the screen is narrow, by keys too. label is any text.
void begin_scroll(std::ostream &out, const std::string &label, bool is_tall = false);
void end_scroll(std::ostream &out);

// attributes are the page's own; an empty caption is none.
void begin_table(std::ostream &out, const char *attributes, const std::string &caption,
                 const std::vector<Column> &columns);
void end_table(std::ostream &out);

// Four digits of a number, by whose whole value the column sorts.
void number_cell(std::ostream &out, double value);

// Any text, to the right.
void right_cell(std::ostream &out, const std::string &text);

} // namespace report

#endif
