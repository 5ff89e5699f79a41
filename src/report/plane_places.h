// SPDX-License-Identifier: MIT
// Where roots stand in the drawing of a plane.
#ifndef TRESK_REPORT_PLANE_PLACES_H
#define TRESK_REPORT_PLANE_PLACES_H

#include "report/axis.h"
#include "report/figure.h"

namespace report
{

struct Spot {
    double x;
    double y;
};

// Both axes reach from -m to m, m the decade above all coordinates. They are linear up to the decade below
// the smallest coordinate that is not 0, but no more than 9 decades below m.
struct PlaneAxes {
    Axis real;
    Axis imaginary;

    Spot golden(const PlaneRoot &root) const;
    Spot regression(const PlaneRoot &root) const;
};

// A square of that size whose upper left corner is at (left, top).
PlaneAxes plane_axes(const Figure &figure, double left, double top, double side);

} // namespace report

#endif
