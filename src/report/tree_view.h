// SPDX-License-Identifier: MIT
// What the files about a tree are written from, and the files.
#ifndef TRESK_REPORT_TREE_VIEW_H
#define TRESK_REPORT_TREE_VIEW_H

#include "report/history.h"
#include "report/tree_change.h"
#include "report/tree_findings.h"
#include "report/tree_run.h"

#include <ostream>
#include <string>
#include <vector>

namespace report
{

struct TreeView {
    const TreeRun &run;
    unsigned accepted = 0;                            // a bit for each grade that counts as passed
    std::vector<TreeSignal> signals = {};             // as TreeSignals::sorted()
    std::int64_t cut_reports = 0;                     // reports with more findings than were read
    std::int64_t left_out_findings = 0;               // for too many different signals
    std::vector<std::vector<std::string>> worst = {}; // of each pair the worst findings as lines
    std::string before = {}; // folder of the run that this one is compared with; or none
    TreeChanges changes = {};
    Courses courses = {}; // of the history; without runs where there is none
};

// tree.csv: a heading and a row for each pair, worst first, as RFC 4180 has it.
void write_tree_csv(std::ostream &out, const TreeView &view);

// junit.xml for servers that show test results. Kept below what they take: of a large tree pairs are left
// out from the best on, which the suites say.
void write_junit(std::ostream &out, const TreeView &view);

// index.html: one file that loads nothing and sends nothing, but has links to the reports beside it. Of a
// large tree it leaves out pairs from the best on, and says so.
void write_tree_page(std::ostream &out, const TreeView &view);

// The rows of the page as one JSON object within its script element, in columns; rows of as many pairs, from
// the worst on, as take about max_bytes. Returns their number.
std::size_t write_tree_data(std::ostream &out, const TreeView &view, std::size_t max_bytes);

} // namespace report

#endif
