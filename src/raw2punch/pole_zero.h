// SPDX-License-Identifier: MIT
// Poles and zeros.
#ifndef RAW2PUNCH_POLE_ZERO_H
#define RAW2PUNCH_POLE_ZERO_H

#include "raw2punch/raw_data.h"
#include "raw2punch/report.h"

#include <string>

// The block of a punch file for the roots in the first point of a block, whose variables are called
// "pole(1)", "zero(2)" or "v(pole(1))". Others are reported. A rawfile holds neither the ports nor the gain;
// nor are roots looked for that cancel each other, since rounding would decide it.
std::string pole_zero_block(const RawPlot &plot, const Block &block, Report &report);

#endif
