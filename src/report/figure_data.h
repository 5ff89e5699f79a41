// SPDX-License-Identifier: MIT
// The numbers of the figures for the script of the page, as one JSON text that may stand in a
// <script type="application/json"> element as it is: <, > and & are escaped, so that no tag can arise.
//
//   {"figures": [FIGURE ...]} with FIGURE =
//   {"id": "f1", "kind": "waves" | "bars" | "plane", "title": TEXT, "group": TEXT, "findings": [index ...],
//    "cut": bool, "leftOut": n,
//    "x": {"name": "time", "unit": UNIT, "low": n, "high": n, "log": bool},        the whole view
//    "logY": bool,
//    "panels": [PANEL ...], "bars": [BAR ...], "roots": [ROOT ...]}
//   UNIT = {"text": "V", "prefix": bool}
//   PANEL = {"name": TEXT, "unit": UNIT, "key": TEXT,      an empty key: a companion that passes
//            "worst": n | null, "points": [golden, regression],    before they were cut
//            "golden": {"x": COLUMN, "y": COLUMN},
//            "regression": {"x": COLUMN | null, "y": COLUMN},      null: the same as golden.x
//            "errors": {"label": TEXT, "unit": UNIT, "from": COLUMN, "to": COLUMN | null, "error": COLUMN,
//                       "fails": COLUMN | null},           to null: points; fails null: areas
//            "unjudged": [{"from": n, "to": n, "reason": TEXT} ...]}
//   BAR = {"position": n, "x": N, "golden": N, "regression": N, "error": N, "fails": bool}
//   ROOT = {"kind": n, "position": n, "golden": [N, N] | null, "regression": [N, N] | null, "error": N,
//           "fails": bool, "halfPlanes": bool}
//   N = a number, or "nan", "inf", "-inf"
//   COLUMN = {"t": "f4" | "f8" | "u1", "d": base64 of little-endian values}
//
// A y column is f4 where no value is moved by more than a thousandth of the largest judged error (of areas:
// divided by the width of an interval); an x column where none is moved by more than a thousandth of the
// smallest step.
#ifndef TRESK_REPORT_FIGURE_DATA_H
#define TRESK_REPORT_FIGURE_DATA_H

#include "report/figure.h"

#include <ostream>
#include <vector>

namespace report
{

void write_figure_data(std::ostream &out, const std::vector<Figure> &figures);

} // namespace report

#endif
