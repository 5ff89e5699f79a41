// SPDX-License-Identifier: MIT
// Lines of the punch index table: one group of lines for signals that share a key, one entry per
// signal with its byte offset, number of points and units.
#ifndef TRESK_READ_INDEX_TABLE_H
#define TRESK_READ_INDEX_TABLE_H

#include "read/records.h"

#include <cstdint>
#include <cstdio>

// The stream that index lines go to. Opened by read/index_file when a file is opened, null outside
// the index modes.
extern std::FILE *indx_fpt;

// Date and time of the last DATE header, for the groups of the table; written by the header reader.
extern char *rundate;
extern char *runtime;

// The two marker lines that begin a table; the second is how a later run knows it.
extern const char kIndexFirstLine[];
extern const char kIndexMarkerLine[];

// Writes the group of the signal, if it opens one, and the signal's entry. Fills in the X units and
// X function that the signal lacks. Adds 1 to pun_index.
int print_wform_index(const RERUNform *rerun, const MODIFYform *modify, Wform *wform);

// Buffer that indx_fpt needs for print_mirel_entry.
constexpr std::size_t kMirelBuffer = std::size_t{1024} * 1024;

// Writes the entry alone, on one line whatever its length. Lines of half the buffer go out in one piece,
// so that runs that append to the same file do not get into each other's lines.
int print_mirel_entry(const Wform *wform);

// Writes printf-formatted text and a line feed, folded: a line holds at most 74 characters, the
// rest follows behind "*$-" on lines of their own. Returns a negative value when writing fails.
int vprintIndexString(std::FILE *stream, const char *format, ...) __attribute__((format(printf, 2, 3)));

// The units that a signal without YUNITS is taken to have; null, with a message, for an absent name.
const char *getYunits(const char *name, int analysis);

#endif
