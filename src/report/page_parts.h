// SPDX-License-Identifier: MIT
// The sections of the page, in its order. Each writes nothing where there is nothing to be said. Text of the
// files goes through report/text.h here and nowhere else.
#ifndef TRESK_REPORT_PAGE_PARTS_H
#define TRESK_REPORT_PAGE_PARTS_H

#include "report/page.h"

#include <cstddef>
#include <ostream>
#include <vector>

namespace report
{

// Rows of a table of findings on the page. A browser draws so many in the blink of an eye; all of them are
// in the CSV file.
constexpr std::size_t kMostRows = 2000;

// The page while it is written.
struct PageView {
    const Result &result;
    const PageInput &input;
    // Of each finding the figure that shows it, null where none does.
    std::vector<const Figure *> figure_of;
};

// Grade, files, status, tolerances, counts, how to repeat the comparison, and what the grade does not say.
void write_head(std::ostream &out, const PageView &view);

// All judged pairs that fail, worst first.
void write_failing(std::ostream &out, const PageView &view);

// What one file lacks and what differs, by kind.
void write_missing_and_different(std::ostream &out, const PageView &view);

// Figures, worst first, each below a small one that opens it.
void write_figures(std::ostream &out, const PageView &view);

// Single values with their errors over the tolerances.
void write_values(std::ostream &out, const PageView &view);

// The transcript; of a long one the beginning and the end.
void write_transcript(std::ostream &out, const PageView &view);

// What made the page, of which files.
void write_origin(std::ostream &out, const PageView &view);

} // namespace report

#endif
