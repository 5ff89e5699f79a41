// SPDX-License-Identifier: MIT
// The values of a tolerance at which something fails. Not always all up to a limit: in the default mode a
// larger -a can make a value fail that passes, since it is then judged absolutely.
#ifndef TRESK_REPORT_FAIL_SET_H
#define TRESK_REPORT_FAIL_SET_H

#include <limits>
#include <optional>
#include <vector>

namespace report
{

// From here up to, but without, the end, which may be infinite.
struct FailRange {
    double from;
    double to;
    double share; // which part of the value an error is that ends here
};

class FailSet
{
  public:
    static constexpr double kNever = std::numeric_limits<double>::infinity(); // end where nothing helps

    // Values from a number >= 0 on.
    void add(const FailRange &range);
    void add(const FailSet &other);

    bool contains(double value) const;

    // The smallest value that is not below the given one and does not fail; none where all of them do.
    std::optional<double> smallest_passing(double from = 0.0) const;

    // The share of the range that ends there.
    double share_at(double end) const;

    // In rising order, apart from each other.
    const std::vector<FailRange> &ranges() const;

  private:
    void merge() const;

    // What begins at 0, which nearly all do, is kept as one value.
    FailRange first_ = {0.0, 0.0, 0.0};
    mutable std::vector<FailRange> ranges_;
    mutable std::size_t merged_ = 0; // of ranges_, those that are in order
};

} // namespace report

#endif
