// SPDX-License-Identifier: MIT
#include "report/fail_set.h"

#include <algorithm>
#include <cstddef>

namespace report
{

namespace
{

constexpr std::size_t kMostUnmerged = 4096; // beyond the number of those that are in order

// Of equal ends the larger share.
void take_end(FailRange &range, const FailRange &other)
{
    if (other.to > range.to || (other.to == range.to && other.share > range.share)) {
        range.to = other.to;
        range.share = other.share;
    }
}

} // namespace

void FailSet::add(const FailRange &range)
{
    if (range.from <= first_.to) {
        take_end(first_, range);
        return;
    }
    ranges_.push_back(range);
    if (ranges_.size() > 2 * merged_ + kMostUnmerged) {
        merge();
    }
}

void FailSet::add(const FailSet &other)
{
    for (const FailRange &range : other.ranges()) {
        add(range);
    }
}

bool FailSet::contains(double value) const
{
    const std::vector<FailRange> &all = ranges();
    const auto behind = std::upper_bound(all.begin(), all.end(), value,
                                         [](double v, const FailRange &range) { return v < range.from; });
    return behind != all.begin() && value < std::prev(behind)->to;
}

std::optional<double> FailSet::smallest_passing(double from) const
{
    for (const FailRange &range : ranges()) {
        if (from >= range.from && from < range.to) {
            from = range.to;
        }
    }
    return from < kNever ? std::optional<double>(from) : std::nullopt;
}

double FailSet::share_at(double end) const
{
    for (const FailRange &range : ranges()) {
        if (range.to == end) {
            return range.share;
        }
    }
    return 0.0;
}

const std::vector<FailRange> &FailSet::ranges() const
{
    merge();
    return ranges_;
}

void FailSet::merge() const
{
    if (first_.to > 0.0 && merged_ > 0 && ranges_.front().from == 0.0) {
        take_end(ranges_.front(), first_);
    } else if (first_.to > 0.0) {
        ranges_.push_back(first_);
    }
    if (ranges_.empty()) {
        return;
    }
    std::sort(ranges_.begin(), ranges_.end(),
              [](const FailRange &a, const FailRange &b) { return a.from < b.from; });
    std::size_t last = 0;
    for (std::size_t i = 1; i < ranges_.size(); ++i) {
        if (ranges_[i].from <= ranges_[last].to) {
            take_end(ranges_[last], ranges_[i]);
        } else {
            ranges_[++last] = ranges_[i];
        }
    }
    ranges_.resize(last + 1);
    merged_ = ranges_.size();
}

} // namespace report
