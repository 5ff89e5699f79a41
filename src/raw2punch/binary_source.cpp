// SPDX-License-Identifier: MIT
#include "raw2punch/binary_source.h"

#include <algorithm>

namespace
{

// What a block is read at a time: it stays in the cache while its columns are picked out.
constexpr std::size_t kBlockSize = std::size_t{256} << 10;

// Very few points at a time, or very small reads, cost more than the cache saves.
constexpr std::size_t kFewPoints = 16;
constexpr std::size_t kLargeBlockSize = std::size_t{8} << 20;

constexpr bool kLittleEndian = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;

ColumnView make_column(const RawPlot &plot, const DataPlace &place, std::size_t variable)
{
    ColumnView column;
    column.variable = variable;
    column.floats = value_width(plot, place.bits, variable) == (plot.complex ? 2 : 1) * sizeof(float);
    column.swapped = place.big_endian == kLittleEndian;
    return column;
}

// Points of a block, out of those left.
std::size_t points_of_block(std::size_t block_size, std::size_t row_size, std::int64_t left)
{
    const std::size_t few = std::min(kLargeBlockSize / row_size, kFewPoints);
    const std::size_t fitting = std::max({block_size / row_size, few, std::size_t{1}});
    return static_cast<std::size_t>(std::min<std::int64_t>(static_cast<std::int64_t>(fitting), left));
}

} // namespace

std::size_t value_width(const RawPlot &plot, ValueBits bits, std::size_t variable)
{
    const bool floats = bits == ValueBits::FLOATS || (bits == ValueBits::MIXED && variable > 0);
    return (floats ? sizeof(float) : sizeof(double)) * (plot.complex ? 2 : 1);
}

RowSource::RowSource(const InputFile &file, const RawPlot &plot, const DataPlace &place,
                     const PointRange &range)
    : file_(file), plot_(plot), place_(place), offset_(range.offset), point_(range.first),
      end_(range.first + range.count)
{
    for (std::size_t i = 0; i < plot.variables.size(); ++i) {
        variables_.push_back(i);
    }
    lay_out_row();
}

// Finds the variables that the next point has, and up to which point that holds. A variable that has run out
// does not come back, so that all calls together take no longer than the values.
void RowSource::lay_out_row()
{
    const std::int64_t point = point_;
    const auto has_run_out = [this, point](std::size_t variable) {
        return plot_.unpadded && plot_.variables[variable].points <= point;
    };
    variables_.erase(std::remove_if(variables_.begin(), variables_.end(), has_run_out), variables_.end());
    layout_end_ = plot_.points;
    row_size_ = 0;
    columns_.clear();
    places_.clear();
    for (const std::size_t variable : variables_) {
        columns_.push_back(make_column(plot_, place_, variable));
        places_.push_back(row_size_);
        row_size_ += value_width(plot_, place_.bits, variable);
        if (plot_.unpadded) {
            layout_end_ = std::min(layout_end_, plot_.variables[variable].points);
        }
    }
}

bool RowSource::next(Block &block)
{
    if (point_ == end_) {
        return false;
    }
    if (point_ == layout_end_) {
        lay_out_row();
    }
    block.first = point_;
    block.offset = offset_;
    block.points = points_of_block(kBlockSize, row_size_, std::min(layout_end_, end_) - point_);
    bytes_.resize(std::max(bytes_.size(), block.points * row_size_));
    file_.read(offset_, bytes_.data(), block.points * row_size_);
    block.columns = columns_;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        block.columns[i].values = bytes_.data() + places_[i];
        block.columns[i].stride = row_size_;
    }
    point_ += static_cast<std::int64_t>(block.points);
    offset_ += static_cast<std::int64_t>(block.points * row_size_);
    return true;
}

ColumnSource::ColumnSource(const InputFile &file, const RawPlot &plot, const DataPlace &place,
                           const PointRange &range)
    : file_(file), plot_(plot), place_(place), point_(range.first), end_(range.first + range.count)
{
    for (std::size_t i = 0; i < plot.variables.size(); ++i) {
        row_size_ += value_width(plot, place.bits, i);
    }
}

bool ColumnSource::next(Block &block)
{
    if (point_ == end_) {
        return false;
    }
    block.first = point_;
    block.points = points_of_block(kLargeBlockSize, row_size_, end_ - point_);
    block.columns.clear();
    bytes_.resize(std::max(bytes_.size(), block.points * row_size_));
    char *to = bytes_.data();
    std::int64_t column_offset = plot_.data_offset;
    for (std::size_t i = 0; i < plot_.variables.size(); ++i) {
        ColumnView column = make_column(plot_, place_, i);
        column.stride = value_width(plot_, place_.bits, i);
        column.values = to;
        const auto stride = static_cast<std::int64_t>(column.stride);
        file_.read(column_offset + point_ * stride, to, block.points * column.stride);
        to += block.points * column.stride;
        column_offset += plot_.points * stride;
        block.columns.push_back(column);
    }
    point_ += static_cast<std::int64_t>(block.points);
    return true;
}
