// SPDX-License-Identifier: MIT
// The scanner of punch-file text: signal names, and the bus ranges in them. A name may have sections,
// "(...)" or "[...]", which go on over line ends. A single ":" between digits in them makes the name a
// bus range: "A[0:2]" stands for "A[0]", "A[1]" and "A[2]", which are handed out one by one.
#ifndef TRESK_SUPPORT_SIGNAL_SCANNER_H
#define TRESK_SUPPORT_SIGNAL_SCANNER_H

#include "support/tk_buffer.h"

#include <cstddef>
#include <string>
#include <string_view>

extern int tk_splitting_bus; // elements of a bus range are still to be returned: it is pending

// The next signal name in tk_field, case kept; the next element as long as a bus range is pending, which
// reads no input. tk_eolnflag of the range's name comes with its last element.
const std::string &tk_nxsignal(PunchStream &stream);

// The characters at text that are part of a name and mean nothing else; mostly all of it. Moves text behind
// them.
inline std::string_view tk_plainNameText(const char *&text)
{
    const char *begin = text;
    while (is_plain_in_names(*text)) {
        ++text;
    }
    return {begin, static_cast<std::size_t>(text - begin)};
}

// An element of a bus range, for its text to be made when it is needed. Ranges may have more elements,
// and longer names, than anybody wants to have as text.
struct BusElement {
    TextPlace name; // where the name with the range begins
    int number = 0;
};

// Steps over the next element of a pending range as tk_nxsignal does. False when no range is pending.
bool tk_nxelement(BusElement &element);

std::string tk_elementText(PunchStream &stream, const BusElement &element);

// What convert_number makes of that text. It is the same for all elements of a range, since the bracket
// in front of the index is no part of a number.
double tk_elementNumber(PunchStream &stream, const BusElement &element, int &error);

// The digits on both sides of a ":" and the numbers that they make, at most INT_MAX.
struct BusRange {
    std::size_t begin = 0; // of the digits before
    std::size_t end = 0;   // of the digits behind
    int from = 0;
    int to = 0;
};

// Finds the range around the ":" at place colon of a name. False when there are not digits on both sides.
bool tk_findBusRange(std::string_view name, std::size_t colon, BusRange &range);

// Makes the range of the name that begins there pending, its first element taken, as if tk_nxsignal had
// just read the name with the given tk_eolnflag.
void tk_leaveBusPending(const TextPlace &name, const BusRange &range, int eolnflag);

// A name being scanned, step by step. It is left to the caller to read on where a line ends, so that
// whoever looks ahead can look up what comes there.
enum class NamePart {
    TEXT,
    SECTION,
    AFTER_SECTION,
    SEPARATORS, // behind the name
    DONE
};

struct NameScan {
    NamePart part = NamePart::TEXT;
    std::size_t colons = 0; // in sections
    std::size_t colon = 0;  // the last of them in tk_field
};

// Clears tk_field for a name that begins here, and the flags.
NameScan tk_beginName();

// Takes the next piece of the line: at most one bracket. False, at a "&" or the end of the line, if the
// name or what separates it from the next one goes on in the next line.
bool tk_scanName(NameScan &scan);

// Goes on to the next line.
void tk_scanNextLine(PunchStream &stream, NameScan &scan);

#endif
