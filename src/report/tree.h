// SPDX-License-Identifier: MIT
// "tresk-report tree": a page, a table and test results of the comparisons of two trees.
#ifndef TRESK_REPORT_TREE_H
#define TRESK_REPORT_TREE_H

#include <string>

namespace report
{

constexpr const char *kTreePageFile = "index.html";
constexpr const char *kTreeCsvFile = "tree.csv";
constexpr const char *kJunitFile = "junit.xml";

struct TreeOptions {
    std::string out;       // the folder of the kit
    std::string before;    // that of an earlier run to compare with; may be empty
    std::string history;   // file of the history that the run is added to; may be empty
    unsigned accepted = 0; // a bit for each grade that counts as passed
    bool quiet = false;    // not the path of the page
};

// Reads what the kit left, runs nothing, and writes to OUT/report. Returns the worst grade, 0 to 7,
// kWrongCall or kNotWritten (pair.h).
int run_tree(const TreeOptions &options);

} // namespace report

#endif
