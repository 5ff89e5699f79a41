// SPDX-License-Identifier: MIT
#include "support/signal_scanner.h"

#include "support/number.h"

#include <climits>

int tk_splitting_bus = 0;

namespace
{

// The range of which elements are pending.
struct PendingBus {
    TextPlace name;
    int current = 0; // the element last returned
    int to = 0;
    int eolnflag = 0; // of the name
};

// The text of a name around the index, kept for the next element.
struct SplitName {
    TextPlace name;
    std::string left_part;
    std::string right_part;
};

// A name as a number, kept likewise.
struct NameNumber {
    TextPlace name;
    double value = 0.0;
    int error = 0;
};

PendingBus bus;
SplitName split_name;
NameNumber name_number;

bool same_place(const TextPlace &a, const TextPlace &b)
{
    return a.line == b.line && a.index == b.index;
}

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

// The number in digits, at most INT_MAX.
int bus_bound(std::string_view digits)
{
    long long bound = 0;
    for (const char c : digits) {
        bound = bound * 10 + (c - '0');
        if (bound > INT_MAX) {
            return INT_MAX;
        }
    }
    return static_cast<int>(bound);
}

void copy_plain_text()
{
    const char *text = tk_BUF + tk_BUFindex;
    tk_field += tk_plainNameText(text);
    tk_BUFindex = static_cast<std::size_t>(text - tk_BUF);
}

bool ends_name(char c, NamePart part)
{
    const CharClass kind = class_of(c);
    return kind == LINE_END || kind == BLANK || kind == SEPARATOR || c == '\r' || c == ')' ||
           (c == '(' && part == NamePart::AFTER_SECTION) || (c == '&' && tk_field.empty());
}

bool scan_text(NameScan &scan)
{
    if (is_plain_in_names(tk_current())) {
        copy_plain_text();
        scan.part = NamePart::TEXT;
    }
    const char c = tk_current();
    if (ends_name(c, scan.part)) {
        scan.part = NamePart::SEPARATORS;
    } else if (c == '&') {
        return false;
    } else {
        tk_field += c; // also "]" and ":", which mean nothing here
        ++tk_BUFindex;
        scan.part = c == '(' || c == '[' ? NamePart::SECTION : NamePart::TEXT;
    }
    return true;
}

bool scan_section(NameScan &scan)
{
    copy_plain_text();
    const char c = tk_current();
    if (c == '&' || class_of(c) == LINE_END) {
        return false;
    }
    ++tk_BUFindex;
    if (c == ':') {
        ++scan.colons;
        scan.colon = tk_field.size();
    }
    if (c != ' ') {
        tk_field += c;
    }
    if (c == ')' || c == ']') {
        scan.part = NamePart::AFTER_SECTION;
    }
    return true;
}

bool scan_separators(NameScan &scan)
{
    const char *text = tk_BUF + tk_BUFindex;
    CharClass kind = class_of(*text);
    while (kind == BLANK || kind == SEPARATOR || *text == '(' || *text == ')') {
        tk_argflag |= *text == '=';
        kind = class_of(*++text);
    }
    tk_BUFindex = static_cast<std::size_t>(text - tk_BUF);
    if (kind == CONTINUATION || kind == LINE_END) {
        return false;
    }
    scan.part = NamePart::DONE;
    return true;
}

void read_past_comments(PunchStream &stream)
{
    do {
        tk_BUFreadLine(stream);
    } while (!tk_eofflag && tk_onCommentOrEmpty());
}

// A section that the end of the file leaves open is what there is of it.
void continue_section(PunchStream &stream, NameScan &scan)
{
    read_past_comments(stream);
    if (tk_onCommentOrEmpty()) {
        scan.part = NamePart::AFTER_SECTION;
    } else {
        ++tk_BUFindex; // the continuation mark
        tk_skipBlanks();
    }
}

NameScan scan_whole_name(PunchStream &stream)
{
    NameScan scan = tk_beginName();
    while (scan.part != NamePart::DONE) {
        if (!tk_scanName(scan)) {
            tk_scanNextLine(stream, scan);
        }
    }
    return scan;
}

// Splits the name in tk_field, which begins at place.
void split_bus(const TextPlace &name, const BusRange &range)
{
    split_name = {name, tk_field.substr(0, range.begin), tk_field.substr(range.end)};
}

// Goes back for the text of a name. Where a range was, there is one, unless the file has changed.
void split_again(PunchStream &stream, const TextPlace &name)
{
    const TextPlace here = tk_BUFplace();
    tk_BUFgoto(stream, name);
    const NameScan scan = scan_whole_name(stream);
    BusRange range{tk_field.size(), tk_field.size(), 0, 0};
    tk_findBusRange(tk_field, scan.colon, range);
    split_bus(name, range);
    tk_BUFgoto(stream, here);
}

} // namespace

const std::string &tk_nxsignal(PunchStream &stream)
{
    BusElement element;
    if (tk_nxelement(element)) {
        return tk_field = tk_elementText(stream, element);
    }
    const TextPlace begin = tk_BUFplace();
    const NameScan scan = scan_whole_name(stream);
    BusRange range;
    if (scan.colons == 1 && tk_findBusRange(tk_field, scan.colon, range)) {
        split_bus(begin, range);
        tk_leaveBusPending(begin, range, tk_eolnflag);
        tk_field = tk_elementText(stream, {begin, range.from});
    }
    return tk_field;
}

bool tk_nxelement(BusElement &element)
{
    if (!tk_splitting_bus) {
        return false;
    }
    bus.current += bus.current < bus.to ? 1 : -1;
    element = {bus.name, bus.current};
    if (bus.current == bus.to) {
        tk_splitting_bus = 0;
        tk_eolnflag = bus.eolnflag;
    }
    return true;
}

std::string tk_elementText(PunchStream &stream, const BusElement &element)
{
    if (!same_place(split_name.name, element.name)) {
        split_again(stream, element.name);
    }
    return split_name.left_part + std::to_string(element.number) + split_name.right_part;
}

// Up to its first bracket, a name reads like a field.
double tk_elementNumber(PunchStream &stream, const BusElement &element, int &error)
{
    if (!same_place(name_number.name, element.name)) {
        const TextPlace here = tk_BUFplace();
        tk_BUFgoto(stream, element.name);
        name_number.name = element.name;
        name_number.value = convert_number(tk_nxfield(stream).c_str(), name_number.error);
        tk_BUFgoto(stream, here);
    }
    error = name_number.error;
    return name_number.value;
}

bool tk_findBusRange(std::string_view name, std::size_t colon, BusRange &range)
{
    std::size_t begin = colon;
    while (begin > 0 && is_digit(name[begin - 1])) {
        --begin;
    }
    std::size_t end = colon + 1;
    while (end < name.size() && is_digit(name[end])) {
        ++end;
    }
    if (begin == colon || end == colon + 1) {
        return false;
    }
    range = {begin, end, bus_bound(name.substr(begin, colon - begin)),
             bus_bound(name.substr(colon + 1, end - colon - 1))};
    return true;
}

void tk_leaveBusPending(const TextPlace &name, const BusRange &range, int eolnflag)
{
    tk_splitting_bus = range.from != range.to;
    if (tk_splitting_bus) {
        bus = {name, range.from, range.to, eolnflag};
        tk_eolnflag = 0;
    }
}

NameScan tk_beginName()
{
    tk_eolnflag = 0;
    tk_argflag = 0;
    tk_field.clear();
    return {};
}

bool tk_scanName(NameScan &scan)
{
    if (scan.part == NamePart::SECTION && !scan_section(scan)) {
        return false;
    }
    if (scan.part == NamePart::SECTION) {
        return true;
    }
    if (scan.part != NamePart::SEPARATORS && !scan_text(scan)) {
        return false;
    }
    return scan.part != NamePart::SEPARATORS || scan_separators(scan);
}

void tk_scanNextLine(PunchStream &stream, NameScan &scan)
{
    const bool at_mark = tk_current() == '&';
    if (scan.part == NamePart::SEPARATORS) {
        if (at_mark) {
            read_past_comments(stream);
        } else if (!tk_continueLine(stream, true)) {
            scan.part = NamePart::DONE;
        }
    } else if (at_mark) {
        tk_BUFreadLine(stream);
        if (scan.part == NamePart::TEXT) {
            tk_BUFindex = 0;
        }
    } else {
        continue_section(stream, scan);
    }
}
