// SPDX-License-Identifier: MIT
// The debug traces of the transient comparison and its integration.
#ifndef TRESK_COMPARE_TRACE_LINES_H
#define TRESK_COMPARE_TRACE_LINES_H

#include "read/records.h"

// Of the comparison: the grid, what is being integrated, and each pair of areas.
void trace_grid(int most_points, int ndiv);
void trace_second_integration();
void trace_areas(int entry, double difference, double ref, double cmp);

// Of the integration. A piece within one interval, from a point to the next:
void trace_same(double piece, const PT &from, const PT &to, int entry);

// A piece that ends at a boundary; the last one of a crossing is the left part of two.
void trace_boundary(double piece, const PT &from, const PT &to, int boundary, int left, int right);
void trace_right(double piece, const PT &from, const PT &to, int entry);

#endif
