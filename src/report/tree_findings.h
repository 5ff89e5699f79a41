// SPDX-License-Identifier: MIT
// What the reports of a tree found, and which signals broke everywhere.
#ifndef TRESK_REPORT_TREE_FINDINGS_H
#define TRESK_REPORT_TREE_FINDINGS_H

#include "report/tree_run.h"

#include <cstddef>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace report
{

// A finding as a result.json holds it.
struct TreeFinding {
    std::string key;
    std::string analysis; // "TR" ...; may be empty
    std::string name;     // of the signal, clean text; may be empty
    std::string what;     // "fails", "signal missing in golden", "x units differ"
    bool fails = false;   // a judged pair that fails
    bool is_judged = true;
    std::optional<double> abs;
    std::optional<double> rel;
};

struct TreeFindings {
    std::vector<TreeFinding> findings; // worst first
    bool hides = false;                // the grade hides something worse
    bool is_cut = false;               // there are more than were read
};

// The findings in a result.json. Of a large one the first bytes, at most so many. Where there is no such
// file, or one of a later schema, it has none and is cut.
TreeFindings read_findings(const std::string &path, std::size_t most_bytes);

// "V(OUT) TR fails: abs 1e-09, rel 0.02" as one line of plain text, to be escaped.
std::string finding_line(const TreeFinding &finding);

// A signal, or a table without one, over all pairs.
struct TreeSignal {
    std::string analysis;
    std::string name;
    std::string what;
    bool is_judged = false;         // in any of the pairs
    std::vector<std::size_t> pairs; // numbers in TreeRun::pairs, rising
    std::size_t worst = 0;          // of these, where the product of the errors is largest
    std::optional<double> abs;      // there
    std::optional<double> rel;
};

class TreeSignals
{
  public:
    // Takes the findings of a pair. Pairs come in their order.
    void add(std::size_t pair, const std::vector<TreeFinding> &findings);

    // All signals: those of most pairs first, then the larger errors. Those that bear on no grade come last.
    std::vector<TreeSignal> sorted() const;

    // Findings whose signal was left out, since there are too many different ones.
    std::int64_t left_out() const
    {
        return left_out_;
    }

  private:
    std::unordered_map<std::string, std::size_t> numbers_;
    std::vector<TreeSignal> signals_;
    std::int64_t left_out_ = 0;
};

} // namespace report

#endif
