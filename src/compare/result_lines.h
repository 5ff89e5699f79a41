// SPDX-License-Identifier: MIT
// The lines of judged pairs. Each function takes a pair that was judged, prints its line below the
// header of its table if the pair fails, passes it on to the listener if there is one, and returns the
// ExitBit set that it raises.
#ifndef TRESK_COMPARE_RESULT_LINES_H
#define TRESK_COMPARE_RESULT_LINES_H

#include "compare/events.h"
#include "compare/point_walk.h"

// Two single values.
unsigned report_value(const Isoln &ref, const Isoln &cmp, int code, const Judged &judged);

// What the walk over two swept signals has found.
struct SweepResult {
    std::int64_t fails = 0; // points, as compared
    std::int64_t compared = 0;
    double max_abs = 0.0; // of failing points only
    double max_rel = 0.0;
};

unsigned report_ac_sweep(const Wform &ref, const Wform &cmp, int code, const SweepResult &found);
unsigned report_dc_sweep(const Wform &ref, const Wform &cmp, int code, const SweepResult &found);

// Two waveforms over time by their areas.
unsigned report_area(const Wform &ref, const Wform &cmp, int code, const Judged &judged, const Areas &areas);

// Two waveforms over time of one point each: their values or times.
unsigned report_single_point(FindingKind kind, const Wform &ref, const Wform &cmp, int code,
                             const Judged &judged);

// Waveforms over time that have no area to be compared. They fail, however they are.
unsigned report_few_points(const Wform &ref, const Wform &cmp, int code);

// One coefficient of two Fourier signals; position counts from 1.
unsigned report_coefficient(const Wform &ref, const Wform &cmp, const PT &ref_point, const PT &cmp_point,
                            int position, const Judged &judged);

enum RootKind : int { POLE = 1, ZERO = 2, CANCELLED_POLE = 3, CANCELLED_ZERO = 4 };

// Two roots of a RootKind; position counts from 1. Roots on different sides of the plane fail whatever
// their errors are.
unsigned report_root(const TRI &ref, const TRI &cmp, int kind, int position, const Judged &judged,
                     bool sides_differ);

// How a root is named: "cancelled pole 3".
std::string root_name(int kind, int position);

#endif
