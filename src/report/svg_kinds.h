// SPDX-License-Identifier: MIT
// Drawings of the three kinds of figures.
#ifndef TRESK_REPORT_SVG_KINDS_H
#define TRESK_REPORT_SVG_KINDS_H

#include "report/figure.h"

#include <string>

namespace report
{

std::string waves_svg(const Figure &figure);
std::string bars_svg(const Figure &figure);
std::string plane_svg(const Figure &figure);

} // namespace report

#endif
