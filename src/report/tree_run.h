// SPDX-License-Identifier: MIT
// What the kit left in its folder OUT: the comparisons of two trees of files, and the reports of them.
#ifndef TRESK_REPORT_TREE_RUN_H
#define TRESK_REPORT_TREE_RUN_H

#include "report/result.h"

#include <array>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace report
{

// Behind the grades of a comparison and kNoGrade: there was nothing to compare.
constexpr int kNoDataGrade = 7;
constexpr int kTreeGrades = 8;

// "PASS" ... "NO_DATA" of 0 to 7.
std::string_view tree_grade_word(int grade);

// The number of a grade that is given as a number or as a word; -1 of anything else.
int read_tree_grade(std::string_view text);

struct TreePair {
    std::string path; // below both trees; any bytes but a line end
    int grade = kNoGrade;
    std::string status;        // exit status as the kit gives it: "9", "-", "code=137"
    std::string remark;        // "(not run)"; may be empty
    std::string options;       // of this pair alone
    std::string golden_suffix; // ".gz" ... of the file, behind the path
    std::string regression_suffix;
    std::string lacks;             // the tree that has no such file, "golden" or "regression"; else empty
    std::optional<double> seconds; // that the comparison took
    bool has_report = false;       // a finished one; what follows is of it
    bool has_page = false;
    bool has_transcript = false; // in OUT/transcripts
    std::int64_t failing = 0;
    std::int64_t missing = 0;
    std::int64_t differences = 0;
    std::string analysis; // of the worst failing signal, with its name and errors; empty where none fails
    std::string signal;
    std::optional<double> abs;
    std::optional<double> rel;
    bool hides = false; // the grade hides something worse
    std::string golden_sha256;
    std::string regression_sha256;
};

struct TreeRun {
    std::string out;    // as it was given
    std::string golden; // the trees, absolute
    std::string regression;
    std::string options;                               // for all pairs
    std::int64_t began = 0;                            // when the pairs were listed, in seconds since 1970
    std::vector<TreePair> pairs;                       // worst first: see worse_pair()
    std::array<std::int64_t, kTreeGrades> counts = {}; // of each grade

    // Paths of what belongs to a pair.
    std::string report_folder(const TreePair &pair) const;
    std::string transcript(const TreePair &pair) const;
};

// There is no list of pairs in OUT, or it makes no sense.
struct NoTree : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Reads OUT. A grade counts for the files and options that it was made of, as in tresk-collect. Throws
// NoTree.
TreeRun read_tree(const std::string &out);

// The product of the errors, by which findings are ordered; -1 where no signal fails.
double error_product(const TreePair &pair);

// Whether a comes before b: the higher grade, then what is no number, the larger product of errors, more
// findings, and the path.
bool worse_pair(const TreePair &a, const TreePair &b);

// The worst of the grades but those accepted, a bit for each; PASS where none is left.
int worst_grade(const TreeRun &run, unsigned accepted);

} // namespace report

#endif
