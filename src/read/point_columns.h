// SPDX-License-Identifier: MIT
// The points of the waveform that is being read, as two columns that grow, and their place in memory once
// it is read.
#ifndef TRESK_READ_POINT_COLUMNS_H
#define TRESK_READ_POINT_COLUMNS_H

#include "read/records.h"
#include "read/value_range.h"

#include <cstddef>

class PointColumns
{
  public:
    // Begins a waveform.
    void clear();

    // Appends points given as x, y, x, y ...
    void append(const double *values, std::size_t points);

    // Gives a waveform its points, their count and their range. Its x column is that of the waveform before
    // if both are the same, byte by byte.
    void give_to(Wform &wform);

  private:
    void grow(std::size_t points);

    double *x_ = nullptr;
    double *val_ = nullptr;
    std::size_t capacity_ = 0;
    std::size_t count_ = 0;
    ValueRange x_range_;
    ValueRange y_range_;
    const double *last_x_ = nullptr; // column of the waveform before
    std::size_t last_count_ = 0;
};

#endif
