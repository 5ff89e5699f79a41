// SPDX-License-Identifier: MIT
// The values of a plot, read block after block, whatever their form in the file.
#ifndef RAW2PUNCH_RAW_DATA_H
#define RAW2PUNCH_RAW_DATA_H

#include "raw2punch/raw_header.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

// How many bits binary values have.
enum class ValueBits {
    DOUBLES, // 64
    MIXED,   // 64 for the first variable, 32 for the others
    FLOATS   // 32
};

// What the header does not hold.
struct DataHints {
    std::optional<ValueBits> bits; // found out from the length of the data where it is not given
    bool big_endian = false;       // binary values have their most significant byte first
};

// Where the values of a plot are.
struct DataPlace {
    ValueBits bits = ValueBits::DOUBLES;
    bool big_endian = false;
    std::int64_t end = 0; // file offset behind the values
};

// Finds the values of a plot. Throws Fault where the file cannot hold what the header promises, or where
// neither a plot nor the end of the file follows.
DataPlace place_data(const InputFile &file, const RawPlot &plot, const DataHints &hints);

// Consecutive points of a plot, of which one or more form a sweep.
struct PointRange {
    std::int64_t first = 0;
    std::int64_t count = 0;
    std::int64_t offset = 0; // in the file, where the first point begins; not of fast access form
};

inline PointRange all_points(const RawPlot &plot)
{
    return {0, plot.points, plot.data_offset};
}

// The values of one variable in a block. A complex value is two numbers side by side.
struct ColumnView {
    std::size_t variable = 0;
    const char *values = nullptr;
    std::size_t stride = 0; // bytes from one point to the next
    bool floats = false;    // 32 bits, otherwise 64
    bool swapped = false;   // bytes in the other order than this machine's
};

struct Block {
    std::int64_t first = 0; // its first point, counted in the plot
    std::size_t points = 0;
    std::vector<ColumnView> columns; // by rising variable; those without a value here are left out

    // Where points begin in the file; not of fast access form.
    std::int64_t offset = 0;
    std::vector<std::int64_t> text_offsets; // of text, whose points differ in size
    std::int64_t offset_of(std::size_t point) const
    {
        return text_offsets.empty() ? offset + static_cast<std::int64_t>(point * columns[0].stride)
                                    : text_offsets[point];
    }
};

class DataSource
{
  public:
    DataSource() = default;
    DataSource(const DataSource &) = delete;
    DataSource &operator=(const DataSource &) = delete;
    virtual ~DataSource() = default;

    // Reads the next block, which stays valid up to the next call. False behind the last point.
    virtual bool next(Block &block) = 0;
};

// The values of some points. The arguments must outlive what is returned. Blocks are a few hundred kilobytes,
// or a single point where that is more.
std::unique_ptr<DataSource> open_data(const InputFile &file, const RawPlot &plot, const DataPlace &place,
                                      const PointRange &range);

// Copies the numbers of a column, the second ones of complex values for imaginary, to numbers.
void load_column(const ColumnView &column, bool imaginary, std::size_t points, double *numbers);

#endif
