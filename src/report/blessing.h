// SPDX-License-Identifier: MIT
// One golden file and the regression file that is to replace it.
#ifndef TRESK_REPORT_BLESSING_H
#define TRESK_REPORT_BLESSING_H

#include "report/bless.h"
#include "report/blessing_log.h"
#include "report/kit_tree.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace report
{

// Why a file is not blessed.
struct Refused : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Blessing
{
  public:
    // Checks all that can be checked without writing: both files are those that were compared, and the
    // regression file is one that can be compared with itself. Throws Refused.
    Blessing(const KitTree &tree, const KitPair &pair, const BlessOptions &options);

    // "FAIL_V, 13 findings, worst TR V(OUT)" of the comparison.
    std::string summary_text() const;

    // Replaces the golden file and puts that on record. Throws Refused, or std::runtime_error of a fault of
    // the system; the golden file is the old one then, but for a fault of the record itself.
    void carry_out(BlessingLog &log);

  private:
    void read_summary();
    void check_digests() const;
    std::string check_against(const std::string &golden) const;
    void make_new(const std::string &path) const;
    void keep_old() const;
    std::vector<std::string> record_fields() const;

    const KitTree &tree_;
    const KitPair &pair_;
    const BlessOptions &options_;
    std::vector<std::string> summary_; // fields of summary.tsv
    std::string tolerances_;
};

} // namespace report

#endif
