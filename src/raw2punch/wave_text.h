// SPDX-License-Identifier: MIT
// Waveforms as text.
#ifndef RAW2PUNCH_WAVE_TEXT_H
#define RAW2PUNCH_WAVE_TEXT_H

#include "raw2punch/punch_writer.h"

#include <vector>

// Turns points of BINARY_DBL into text. All waveforms written with one object have the same x.
class PointTexts
{
  public:
    PointTexts(OutputFile &points, PunchWriter &writer) : points_(points), writer_(writer)
    {
    }

    // Writes the points that begin at offset of the file of points.
    void write(std::int64_t offset, std::int64_t count);

  private:
    struct Number {
        char text[kNumberLength];
        unsigned char length;
    };

    char *put_x(std::size_t number, double x, char *to);

    OutputFile &points_;
    PunchWriter &writer_;
    std::vector<Number> xs_; // those at the start, since writing a number takes longer than copying it
    std::vector<char> bytes_;
    std::vector<char> text_;
};

#endif
