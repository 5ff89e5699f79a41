// SPDX-License-Identifier: MIT
#include "read/look_ahead.h"

#include "read/codes.h"
#include "support/signal_scanner.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace
{

constexpr std::size_t kLongestWord = 10; // of those looked for
constexpr std::size_t kBoundDigits = 11; // enough for a number above INT_MAX

// Text of a name, or of the rest of one from some place on, and the ":" in its sections.
struct NameText {
    std::string text;
    std::size_t colons = 0;
    std::size_t colon = 0; // the last of them
};

NameText joined(std::string first, std::size_t colons, std::size_t colon, const NameText &rest)
{
    if (rest.colons > 0) {
        colon = first.size() + rest.colon;
    }
    return {std::move(first += rest.text), colons + rest.colons, colon};
}

// Digits in place of many that make the same bus bound, with others before them too.
std::string short_digits(const std::string &digits)
{
    if (digits.size() <= kBoundDigits) {
        return digits;
    }
    const std::size_t dropped = digits.size() - kBoundDigits;
    const bool too_large = digits.find_first_not_of('0') < dropped;
    return too_large ? std::string(kBoundDigits, '9') : digits.substr(dropped);
}

// A short name in place of a long one. With any text in front, both have the same bus range or none, and
// are the same word or none.
NameText shortened(NameText name)
{
    const std::string &text = name.text;
    const char *const kDigits = "0123456789";
    if (name.colons > 1) {
        return {"", 2, 0};
    }
    if (name.colons == 1) {
        const std::size_t begin = text.substr(0, name.colon).find_last_not_of(kDigits) + 1;
        const std::size_t end = std::min(text.find_first_not_of(kDigits, name.colon + 1), text.size());
        const std::string before =
            (begin > 0 ? "x" : "") + short_digits(text.substr(begin, name.colon - begin));
        return {before + ":" + short_digits(text.substr(name.colon + 1, end - name.colon - 1)), 1,
                before.size()};
    }
    if (text.size() <= kLongestWord) {
        return name;
    }
    const std::size_t end = std::min(text.find_first_not_of(kDigits), text.size());
    return {short_digits(text.substr(0, end)) + (end < text.size() ? "x" : ""), 0, 0};
}

// A name that was looked at.
struct SeenName {
    TextPlace begin;
    NameText text;       // shortened
    std::size_t end = 0; // the NameEnd
};

// What stands behind a name and what separates it from the next one.
struct NameEnd {
    TextPlace place;
    std::optional<SeenName> next; // as far as it was asked for
    std::optional<bool> pwl_field;
};

// The rest of a name.
struct NameRest {
    NameText text;
    std::size_t end = 0;
};

class LookAheadMemory
{
  public:
    // Called where looking ahead begins. That lies further on each time.
    void begin()
    {
        if (file_ != tk_filesread || tk_BUFoffset > last_line_) {
            forget();
        }
        file_ = tk_filesread;
    }

    SeenName name_here(PunchStream &stream);

    const SeenName &name_behind(PunchStream &stream, const SeenName &name);

    bool is_pwl_field_behind(PunchStream &stream, const SeenName &name);

    const TextPlace &place_behind(const SeenName &name) const
    {
        return ends_[name.end].place;
    }

  private:
    using Key = std::uint64_t;

    // A key of what is remembered, met on the way through a name.
    struct Step {
        Key key = 0;
        NameScan scan;        // so far
        std::size_t size = 0; // of the text so far
    };

    // The keys: how a line is left, or a place in it behind a bracket, or in front of a piece of a field.
    static constexpr Key kWays = 16;
    static constexpr Key kAtMark = 4; // to be added to the NamePart
    static constexpr Key kBehindBracket = 8;
    static constexpr Key kInField = 9; // and the three behind

    static Key key_of(std::int64_t place, Key way)
    {
        return static_cast<Key>(place) * kWays + way;
    }

    void forget();
    const NameRest *find(const Step &step);
    const NameRest *scan_on(PunchStream &stream, NameScan &scan);
    void remember(Key key, const NameRest &rest);
    bool is_pwl_field_here(PunchStream &stream);

    using Rests = std::unordered_map<Key, std::size_t>; // the NameRest behind a key
    using Fields = std::unordered_map<Key, bool>;       // whether what is behind it completes PWL

    Rests known_;
    Fields known_fields_;
    std::vector<NameRest> rests_;
    std::vector<NameEnd> ends_;
    std::vector<Step> steps_;     // of the name being scanned, not known before
    std::int64_t last_line_ = -1; // offset of the last line that something is known about
    std::size_t file_ = 0;
};

LookAheadMemory memory;

void LookAheadMemory::forget()
{
    if (last_line_ >= 0) {
        known_ = Rests(); // not clear(), which costs as much as there once was
        known_fields_ = Fields();
        rests_.clear();
        last_line_ = -1;
    }
    ends_.clear();
}

// What is known behind a step; otherwise takes note of it.
const NameRest *LookAheadMemory::find(const Step &step)
{
    const auto found = known_.find(step.key);
    if (found != known_.end()) {
        return &rests_[found->second];
    }
    steps_.push_back(step);
    last_line_ = std::max(last_line_, tk_BUFoffset);
    return nullptr;
}

// Scans a name to its end, or up to where its rest is known. Brackets are steps in the first line only:
// names that begin further on find them in theirs. A name that ends in the first line without a range is no
// step there, as the reader will not look ahead from that line again.
const NameRest *LookAheadMemory::scan_on(PunchStream &stream, NameScan &scan)
{
    const std::size_t first_line = tk_linesread;
    const NameRest *known = nullptr;
    while (known == nullptr && scan.part != NamePart::DONE) {
        if (!tk_scanName(scan)) {
            const bool may_be_range = scan.part != NamePart::SEPARATORS || scan.colons > 0;
            if (tk_linesread != first_line || may_be_range) {
                const Key way = static_cast<Key>(scan.part) + (tk_current() == '&' ? kAtMark : 0);
                known = find({key_of(tk_BUFoffset, way), scan, tk_field.size()});
            }
            if (known == nullptr) {
                tk_scanNextLine(stream, scan);
            }
        } else if (scan.part == NamePart::SECTION && tk_linesread == first_line &&
                   (tk_field.back() == '(' || tk_field.back() == '[')) {
            const std::int64_t place = tk_BUFoffset + static_cast<std::int64_t>(tk_BUFindex);
            known = find({key_of(place, kBehindBracket), scan, tk_field.size()});
        }
    }
    return known;
}

void LookAheadMemory::remember(Key key, const NameRest &rest)
{
    if (rests_.empty() || rests_.back().end != rest.end || rests_.back().text.text != rest.text.text ||
        rests_.back().text.colons != rest.text.colons) {
        rests_.push_back(rest);
    }
    known_.emplace(key, rests_.size() - 1);
}

SeenName LookAheadMemory::name_here(PunchStream &stream)
{
    const TextPlace begin = tk_BUFplace();
    NameScan scan = tk_beginName();
    steps_.clear();
    const NameRest *known = scan_on(stream, scan);
    NameRest rest;
    if (known != nullptr) {
        rest = *known;
    } else {
        rest.end = ends_.size();
        ends_.push_back({tk_BUFplace(), {}, {}});
    }
    Step behind{0, scan, tk_field.size()};
    const auto add_text_from = [&](const Step &step) {
        rest.text = shortened(joined(tk_field.substr(step.size, behind.size - step.size),
                                     behind.scan.colons - step.scan.colons, behind.scan.colon - step.size,
                                     rest.text));
        behind = step;
    };
    for (auto step = steps_.rbegin(); step != steps_.rend(); ++step) {
        add_text_from(*step);
        remember(step->key, rest);
    }
    add_text_from({});
    return {begin, std::move(rest.text), rest.end};
}

const SeenName &LookAheadMemory::name_behind(PunchStream &stream, const SeenName &name)
{
    if (!ends_[name.end].next) {
        tk_BUFgoto(stream, ends_[name.end].place);
        SeenName next = name_here(stream);
        ends_[name.end].next = std::move(next);
    }
    return *ends_[name.end].next;
}

bool LookAheadMemory::is_pwl_field_behind(PunchStream &stream, const SeenName &name)
{
    NameEnd &end = ends_[name.end];
    if (!end.pwl_field) {
        tk_BUFgoto(stream, end.place);
        end.pwl_field = is_pwl_field_here(stream);
    }
    return *end.pwl_field;
}

// The word is compared piece by piece, since a field may go on over many lines without a character.
bool LookAheadMemory::is_pwl_field_here(PunchStream &stream)
{
    constexpr std::string_view kWord = "PWL";
    std::size_t matched = 0;
    std::vector<Key> keys;
    bool answer = false;
    for (;;) {
        while (matched < kWord.size() && tk_nxchar() == kWord[matched]) {
            ++tk_BUFindex;
            ++matched;
        }
        if (tk_current() != '&') {
            answer = matched == kWord.size() && tk_currentClass() != ORDINARY;
            break;
        }
        keys.push_back(key_of(tk_BUFoffset, kInField + matched));
        const auto found = known_fields_.find(keys.back());
        if (found != known_fields_.end()) {
            answer = found->second;
            break;
        }
        last_line_ = std::max(last_line_, tk_BUFoffset);
        tk_BUFreadLine(stream);
    }
    for (const Key key : keys) {
        known_fields_.emplace(key, answer);
    }
    return answer;
}

// Makes the bus range of a name pending. True if the name has one.
bool leave_bus_pending(const SeenName &name)
{
    BusRange range;
    if (name.text.colons != 1 || !tk_findBusRange(name.text.text, name.text.colon, range)) {
        return false;
    }
    tk_leaveBusPending(name.begin, range, memory.place_behind(name).eolnflag);
    return tk_splitting_bus != 0;
}

// Takes a name, which a range stays pending of.
bool is_word(const SeenName &name, std::string_view word)
{
    return !leave_bus_pending(name) && name.text.text == word;
}

// Whether the second name is not PWL because both are plain text on the current line, as nearly always.
bool is_plainly_no_pwl()
{
    const char *text = tk_BUF + tk_BUFindex;
    if (tk_plainNameText(text).empty() || class_of(*text) != BLANK) {
        return false;
    }
    while (class_of(*text) == BLANK) {
        ++text;
    }
    const std::string_view second = tk_plainNameText(text);
    return !second.empty() && second != "PWL" && (class_of(*text) == BLANK || class_of(*text) == LINE_END);
}

} // namespace

bool tk_lookAheadForPwl(PunchStream &stream)
{
    if (!tk_splitting_bus && is_plainly_no_pwl()) {
        return false;
    }
    memory.begin();
    BusElement element;
    if (tk_nxelement(element)) {
        return !tk_eolnflag && !tk_nxelement(element) && is_word(memory.name_here(stream), "PWL");
    }
    const SeenName first = memory.name_here(stream);
    if (leave_bus_pending(first)) {
        tk_nxelement(element);
        return false;
    }
    return !memory.place_behind(first).eolnflag && is_word(memory.name_behind(stream, first), "PWL");
}

bool tk_lookAheadForDelay(PunchStream &stream)
{
    memory.begin();
    const SeenName name = memory.name_here(stream);
    return is_word(name, "DELAY") && !memory.is_pwl_field_behind(stream, name);
}

bool tk_lookAheadForFormat(PunchStream &stream)
{
    memory.begin();
    const SeenName name = memory.name_here(stream);
    return !leave_bus_pending(name) && format_of_word(name.text.text.c_str()) != NO_DATA;
}
