// SPDX-License-Identifier: MIT
// Binary values, point after point (rows) or variable after variable (columns).
#ifndef RAW2PUNCH_BINARY_SOURCE_H
#define RAW2PUNCH_BINARY_SOURCE_H

#include "raw2punch/raw_data.h"

// Bytes of one value of a variable, both numbers of a complex one.
std::size_t value_width(const RawPlot &plot, ValueBits bits, std::size_t variable);

class RowSource : public DataSource
{
  public:
    RowSource(const InputFile &file, const RawPlot &plot, const DataPlace &place, const PointRange &range);
    bool next(Block &block) override;

  private:
    void lay_out_row();

    const InputFile &file_;
    const RawPlot &plot_;
    DataPlace place_;
    std::int64_t offset_; // in the file, of the next point
    std::int64_t point_;
    std::int64_t end_;
    std::int64_t layout_end_ = 0;        // the point up to which all points have the same variables
    std::vector<std::size_t> variables_; // which a point here has
    std::vector<ColumnView> columns_;    // of the variables, with places relative to the row
    std::vector<std::size_t> places_;
    std::size_t row_size_ = 0;
    std::vector<char> bytes_;
};

class ColumnSource : public DataSource
{
  public:
    ColumnSource(const InputFile &file, const RawPlot &plot, const DataPlace &place, const PointRange &range);
    bool next(Block &block) override;

  private:
    const InputFile &file_;
    const RawPlot &plot_;
    DataPlace place_;
    std::int64_t point_;
    std::int64_t end_;
    std::size_t row_size_ = 0;
    std::vector<char> bytes_;
};

#endif
