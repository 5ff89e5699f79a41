// SPDX-License-Identifier: MIT
// The table layouts of the transcript: headers, the columns of a result line, lines about a
// difference between the files, summaries.
#ifndef TRESK_COMPARE_RESULT_LINES_H
#define TRESK_COMPARE_RESULT_LINES_H

#include <cstddef>

// Analysis name used in headers and summaries ("TR Waveform"); "Unknown" outside 0 to 21.
const char *into_string(unsigned code);

// Prints the table header of an analysis, unless it was printed for this modify pair already.
void print_tk_header(int code);

// The two lines that end a section, each only when its count is above 0, and an empty line.
void print_tk_summary(int fails, int missing, const char *label);

// A name, left-aligned in a column extra characters wider than the longest name, but at least
// minimum wide.
void print_name_column(const char *name, std::size_t extra, std::size_t minimum = 0);

// The last columns of a result line: "%9.3e (%9.3e) [%9.3e] %s\n" of the errors, their product and
// the marker. gap is what separates the columns, one or two blanks.
void print_error_columns(const char *gap, double abserr, double relerr, const char *marker);

// "  Reference file : a,  Comparison file: b" and the end, which is one or two line feeds.
void print_both_files(const char *reference, const char *comparison, const char *end = "\n\n");

// The same for two numbers in a printf format.
void print_both_files(const char *format, double reference, double comparison);

#endif
