// SPDX-License-Identifier: MIT
// The page of a pair: one HTML file that loads nothing and sends nothing. All that it says stands in it as
// HTML and SVG, so that it also serves where scripts and styles are blocked; its script only zooms, sorts and
// filters.
#ifndef TRESK_REPORT_PAGE_H
#define TRESK_REPORT_PAGE_H

#include "report/figure.h"
#include "report/result.h"

#include <ostream>
#include <string>
#include <vector>

namespace report
{

struct Version {
    std::string program;
    std::string version;
};

// What the page shows beside the result.
struct PageInput {
    std::string transcript_path;      // the transcript so far; a file that cannot be read is said to be none
    std::vector<Figure> figures;      // worst first, as make_figures returns them
    std::vector<std::string> command; // the call of tresk that gives this transcript, as words
    std::vector<Version> versions;    // of the programs that made the page
};

// Writes the page. Bytes depend on the arguments alone, not on time, locale or machine.
void write_page(std::ostream &out, const Result &result, const PageInput &input);

} // namespace report

#endif
