// SPDX-License-Identifier: MIT
// The lines about what one file lacks. Each function prints one, passes it on to the listener if there
// is one, and returns the ExitBit set that it raises. lacking is the file that has not what is given.
#ifndef TRESK_COMPARE_MISSING_LINES_H
#define TRESK_COMPARE_MISSING_LINES_H

#include "compare/events.h"
#include "support/exit_bits.h"

// A signal or value without partner.
unsigned report_missing_signal(const Wform &signal, int code, Side lacking);
unsigned report_missing_signal(const Isoln &value, int code, Side lacking);

// The bits of so many signals, values or .FORCE statements without partner, for those who count them.
constexpr unsigned bits_of_missing(unsigned count)
{
    return count != 0 ? EXIT_SIGNALS : 0U;
}

// Points that only one of two signals has; no line when there is none.
unsigned report_missing_points(const Wform &ref, const Wform &cmp, int code, const PT *ref_rest,
                               const PT *cmp_rest);

// A solution of which only one file has values; the name is that of the lines ("INTR").
unsigned report_missing_solution(int code, const char *name, Side lacking);

// One of the two lists of an .IN DC statement.
unsigned report_missing_indc_point(int code, const char *place, Side lacking);

unsigned report_missing_statement(const TPsoln &statement, Side lacking);
unsigned report_missing_pole_zeros(const PZform &block, Side lacking);

// A root of a RootKind; position counts from 1.
unsigned report_missing_root(const TRI &root, int kind, int position, Side lacking);

unsigned report_missing_modify(const MODIFYform &modify, Side lacking);
unsigned report_missing_rerun(const RERUNform &rerun, Side lacking);

#endif
