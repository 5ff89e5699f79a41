// SPDX-License-Identifier: MIT
// A history as a table for a terminal.
#ifndef TRESK_REPORT_HISTORY_TABLE_H
#define TRESK_REPORT_HISTORY_TABLE_H

#include "report/history.h"

#include <ostream>
#include <string>

namespace report
{

// The worst errors of the recent runs as a line of characters, one for each: a dot for a pass, a blank where
// the pair was not part of the run, "?" where nothing is known, and for a failure a bar whose height is the
// logarithm of the product of both errors between the least and the largest of the line; "!" where an error
// is no finite number, or where there is none.
std::string course_line(const std::vector<Moment> &moments);

// A line for each pair that did not pass in a recent run, and one for each of its signals: what fails now
// first, of these what broke last, then the others by path.
void write_history_table(std::ostream &out, const Courses &courses);

// Prints the table of a history. Returns the exit code.
int print_history(const std::string &path);

} // namespace report

#endif
