// SPDX-License-Identifier: MIT
// The memory of the scanner when it looks ahead over signal names.
#ifndef TRESK_SUPPORT_SECTION_MEMORY_H
#define TRESK_SUPPORT_SECTION_MEMORY_H

#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

// Sections of names over which looking ahead found nothing. Sections that enter a line at the same
// place end at the same bracket, so the same follows them. Without this memory a file full of headers
// with a bracket that is never closed would be read to its end from each of them. (It still is where
// exactly one ":" is left in the file, which makes a bus range or nearly so.)
class SectionMemory
{
  public:
    void forget()
    {
        colons_behind_.clear();
    }

    void begin_name()
    {
        entered_.clear();
        known_ = false;
    }

    // Called where a section enters a line. True if it need not be read on.
    bool enter_line(std::int64_t place, std::int64_t colons)
    {
        const auto found = colons_behind_.find(place);
        // A single colon may make a bus range, which stays pending when looking ahead is over.
        known_ = found != colons_behind_.end() && colons + found->second != 1;
        if (known_) {
            colons_ = colons + found->second;
        } else {
            entered_.emplace_back(place, colons);
        }
        return known_;
    }

    // Called at the end of a name that was read whole.
    void end_name(std::int64_t colons)
    {
        colons_ = colons;
    }

    bool is_known() const
    {
        return known_;
    }

    void remember()
    {
        for (const auto &[place, colons] : entered_) {
            colons_behind_.insert({place, colons_ - colons});
        }
    }

  private:
    std::unordered_map<std::int64_t, std::int64_t> colons_behind_; // by file offset
    std::vector<std::pair<std::int64_t, std::int64_t>> entered_;   // by this name: places, colons before
    std::int64_t colons_ = 0;                                      // of this name
    bool known_ = false;                                           // this name was left before its end
};

#endif
