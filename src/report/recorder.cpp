// SPDX-License-Identifier: MIT
#include "report/recorder.h"

#include "driver/exit_grade.h"
#include "report/keys.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>

namespace report
{

namespace
{

// Passing coefficients and roots that are kept, of the whole run and of one signal or modify: more than a
// figure can show.
constexpr std::size_t kMostBeside = 20000;

const auto is_worse = [](const auto &a, const auto &b) {
    return worse(a.rank, b.rank);
};

// Whether the worst ones of a stream have room for one more, or a less bad one to give up for it.
template <typename Item> bool is_wanted(const std::vector<Item> &heap, const Rank &rank, std::size_t most)
{
    return heap.size() < most || (most > 0 && worse(rank, heap.front().rank));
}

// Takes the least bad one out where there is no room for one more.
template <typename Item> void make_room(std::vector<Item> &heap, std::size_t most)
{
    if (heap.size() == most) {
        std::pop_heap(heap.begin(), heap.end(), is_worse);
        heap.pop_back();
    }
}

template <typename Item> void put_in(std::vector<Item> &heap, Item item)
{
    heap.push_back(std::move(item));
    std::push_heap(heap.begin(), heap.end(), is_worse);
}

// Numbers the keys that two findings share, in the order of the transcript.
class KeyNumbers
{
  public:
    std::string numbered(std::string key)
    {
        for (int number = ++met_[key]; number > 1; number = ++met_[key]) { // a name may end with "~2", too
            key += "~" + std::to_string(number);
        }
        return key;
    }

  private:
    std::unordered_map<std::string, int> met_;
};

// Bits that alone would make a worse grade than all of them together do.
unsigned hidden_bits(unsigned masked, int grade)
{
    unsigned hidden = 0;
    for (unsigned bit = 1; bit != 0 && bit <= masked; bit <<= 1U) {
        if ((masked & bit) != 0 && exit_grade(static_cast<int>(bit)) > grade) {
            hidden |= bit;
        }
    }
    return hidden;
}

bool stands_beside_others(const Finding &finding)
{
    return finding.kind == FindingKind::COEFFICIENT || finding.kind == FindingKind::ROOT;
}

} // namespace

Recorder::Recorder(const RecorderLimits &limits) : limits_(limits)
{
}

void Recorder::started(const RunStart &start)
{
    Options &options = result_.options;
    options.abstol = start.abstol;
    options.reltol = start.reltol;
    options.mode = start.mode;
    options.desert = start.desert;
    options.pem = start.pem;
    options.nem = start.nem;
    report_progress();
}

void Recorder::file_read(const FileRead &read)
{
    InputFile &file = read.side == Side::REFERENCE ? result_.golden : result_.regression;
    file.was_read = true;
    file.file = read.file;
    file.read_result = read.result;
    file.format = read.file->format;
    file.results = read.results;
    report_progress();
}

void Recorder::rerun_pair(const RERUNform &, const RERUNform &)
{
}

void Recorder::modify_pair(int, const MODIFYform &, const MODIFYform &)
{
    close_beside();
}

void Recorder::finding(const Finding &finding)
{
    const Rank rank = rank_of(finding, sequence_++);
    count(finding);
    keep(finding, rank);
    if (finding.areas.count > 0) {
        keep_areas(finding.areas, rank);
    }
    keep_beside(finding, true);
}

void Recorder::passed(const Finding &finding)
{
    ++result_.counts.pairs;
    keep_beside(finding, false);
}

void Recorder::ended(const RunEnd &end)
{
    close_beside();
    result_.grade = end.grade;
    result_.status = end.status;
    result_.masked = static_cast<unsigned>(end.masked);
    result_.hidden = hidden_bits(result_.masked, end.grade);
    report_progress();
}

void Recorder::count(const Finding &finding)
{
    Counts &counts = result_.counts;
    switch (group_of(finding)) {
    case FindingGroup::FAILING:
        ++counts.pairs;
        ++counts.failing;
        break;
    case FindingGroup::MISSING:
        ++counts.missing;
        break;
    case FindingGroup::DIFFERENCE:
        ++counts.differences;
        break;
    case FindingGroup::UNJUDGED:
        ++counts.unjudged;
        break;
    }
}

void Recorder::keep(const Finding &finding, const Rank &rank)
{
    if (!is_wanted(kept_, rank, limits_.findings)) {
        return;
    }
    std::vector<Entry> &entries = result_.findings;
    const bool is_full = kept_.size() == limits_.findings;
    const std::size_t slot = is_full ? kept_.front().slot : entries.size();
    make_room(kept_, limits_.findings);
    if (!is_full) {
        entries.emplace_back();
    }
    Entry &entry = entries[slot];
    entry.finding = finding;
    entry.finding.areas.ref = nullptr;
    entry.finding.areas.cmp = nullptr;
    entry.sequence = rank.sequence;
    put_in(kept_, {rank, slot});
}

void Recorder::keep_areas(const Areas &areas, const Rank &rank)
{
    if (!is_wanted(areas_, rank, limits_.figures)) {
        return;
    }
    const auto copy = [&areas](const double *from) {
        return std::vector<double>(from, from + areas.count);
    };
    make_room(areas_, limits_.figures);
    put_in(areas_, {rank, copy(areas.ref), copy(areas.cmp), areas.dx});
}

void Recorder::keep_beside(const Finding &finding, bool fails)
{
    if (!stands_beside_others(finding)) {
        return;
    }
    if (!beside_.empty() &&
        (beside_.back().kind != finding.kind || beside_.back().signals.ref != finding.signals.ref)) {
        close_beside();
    }
    beside_fails_ = beside_fails_ || fails;
    if (beside_.size() < kMostBeside) {
        beside_.push_back(finding);
    }
}

void Recorder::close_beside()
{
    std::vector<Finding> &all = result_.passing_beside;
    for (Finding &finding : beside_) {
        if (beside_fails_ && finding.bits == 0 && all.size() < kMostBeside) {
            all.push_back(std::move(finding));
        }
    }
    beside_.clear();
    beside_fails_ = false;
}

void Recorder::report_progress()
{
    if (on_progress) {
        on_progress(result_);
    }
}

Result Recorder::take_result()
{
    result_.truncated = sequence_ - static_cast<std::int64_t>(kept_.size());
    number_keys();
    sort_entries();
    fill_areas();
    return std::move(result_);
}

void Recorder::number_keys()
{
    std::sort(kept_.begin(), kept_.end(),
              [](const Kept &a, const Kept &b) { return a.rank.sequence < b.rank.sequence; });
    KeyNumbers numbers;
    for (const Kept &kept : kept_) {
        Entry &entry = result_.findings[kept.slot];
        entry.key = numbers.numbered(key_of(entry.finding));
    }
}

// Puts each finding where its rank belongs, without room for a second set of them.
void Recorder::sort_entries()
{
    std::sort(kept_.begin(), kept_.end(), is_worse);
    for (std::size_t start = 0; start < kept_.size(); ++start) {
        std::size_t place = start;
        while (kept_[place].slot != start) { // along a cycle of findings that stand in each other's places
            std::swap(result_.findings[place], result_.findings[kept_[place].slot]);
            place = std::exchange(kept_[place].slot, place);
        }
        kept_[place].slot = place;
    }
    kept_.clear();
}

void Recorder::fill_areas()
{
    std::unordered_map<std::int64_t, KeptAreas *> by_sequence;
    for (KeptAreas &areas : areas_) {
        by_sequence[areas.rank.sequence] = &areas;
    }
    for (Entry &entry : result_.findings) {
        const auto found = by_sequence.find(entry.sequence);
        if (found != by_sequence.end()) {
            entry.golden_areas = std::move(found->second->golden);
            entry.regression_areas = std::move(found->second->regression);
            entry.interval = found->second->interval;
        }
    }
}

} // namespace report
