// SPDX-License-Identifier: MIT
// The bars of an error strip: the worst error in each pixel column.
#ifndef TRESK_REPORT_ERROR_COLUMNS_H
#define TRESK_REPORT_ERROR_COLUMNS_H

#include "report/axis.h"
#include "report/figure.h"

#include <string>

namespace report
{

// Path data of the errors that fail (of areas all), of those that pass, and of those that are no finite
// number.
struct ErrorPaths {
    std::string fails;
    std::string passes;
    std::string no_number;
    double largest = 0.0; // finite error
};

ErrorPaths error_paths(const ErrorStrip &errors, const Axis &x, double top);

} // namespace report

#endif
