// SPDX-License-Identifier: MIT
#include "raw2punch/raw_data.h"

#include "raw2punch/binary_source.h"
#include "raw2punch/fault.h"
#include "raw2punch/text_source.h"

#include <cstring>

namespace
{

// What the values of a plot take up with values of so many bits.
std::optional<std::int64_t> size_of_data(const RawPlot &plot, ValueBits bits, std::int64_t most)
{
    std::int64_t size = 0;
    for (std::size_t i = 0; i < plot.variables.size(); ++i) {
        const std::int64_t points = plot.unpadded ? plot.variables[i].points : plot.points;
        const auto width = static_cast<std::int64_t>(value_width(plot, bits, i));
        if (points > (most - size) / width) {
            return std::nullopt;
        }
        size += points * width;
    }
    return size;
}

bool ends_well(const InputFile &file, const RawPlot &plot, std::int64_t end)
{
    const std::int64_t next = skip_white_space(file, end, plot.utf16);
    return next == file.size() || is_header_at(file, next);
}

std::vector<ValueBits> likely_bits(const RawPlot &plot, const DataHints &hints)
{
    if (hints.bits) {
        return {*hints.bits};
    }
    if (plot.complex) {
        return {ValueBits::DOUBLES};
    }
    if (plot.utf16 && !plot.doubles) {
        return {ValueBits::MIXED, ValueBits::FLOATS, ValueBits::DOUBLES};
    }
    return {ValueBits::DOUBLES, ValueBits::MIXED, ValueBits::FLOATS};
}

DataPlace place_binary(const InputFile &file, const RawPlot &plot, const DataHints &hints)
{
    const std::int64_t held = file.size() - plot.data_offset;
    for (const ValueBits bits : likely_bits(plot, hints)) {
        const std::optional<std::int64_t> size = size_of_data(plot, bits, held);
        if (size && ends_well(file, plot, plot.data_offset + *size)) {
            return {bits, hints.big_endian, plot.data_offset + *size};
        }
    }
    const std::optional<std::int64_t> size_of_floats = size_of_data(plot, ValueBits::FLOATS, held);
    const bool may_be_floats =
        !hints.bits && size_of_floats && ends_well(file, plot, plot.data_offset + *size_of_floats);
    throw Fault("plot '" + plot.name + "' does not have the values of " + std::to_string(plot.points) +
                " points and " + std::to_string(plot.variables.size()) +
                " variables that it promises: cut off, or damaged" +
                (may_be_floats ? ", or of 32 bits, as --bits 32 has it" : ""));
}

// A value takes at least two characters.
DataPlace place_text(const InputFile &file, const RawPlot &plot)
{
    const std::int64_t end = find_header(file, plot.data_offset, plot.utf16);
    const auto variables = static_cast<std::int64_t>(plot.variables.size());
    if (plot.points > (end - plot.data_offset) / 2 ||
        (!plot.unpadded && plot.points > (end - plot.data_offset) / 2 / variables)) {
        throw Fault("plot '" + plot.name + "' promises " + std::to_string(plot.points) +
                    " points, more than its values can be");
    }
    return {ValueBits::DOUBLES, false, end};
}

template <typename Value, bool kSwap>
void load(const char *values, std::size_t stride, std::size_t points, double *numbers)
{
    using Bits = std::conditional_t<sizeof(Value) == 8, std::uint64_t, std::uint32_t>;
    for (std::size_t i = 0; i < points; ++i) {
        Bits bits = 0;
        std::memcpy(&bits, values + i * stride, sizeof bits);
        if constexpr (kSwap) {
            bits = sizeof(Value) == 8
                       ? static_cast<Bits>(__builtin_bswap64(bits))
                       : static_cast<Bits>(__builtin_bswap32(static_cast<std::uint32_t>(bits)));
        }
        Value value;
        std::memcpy(&value, &bits, sizeof value);
        numbers[i] = static_cast<double>(value);
    }
}

} // namespace

DataPlace place_data(const InputFile &file, const RawPlot &plot, const DataHints &hints)
{
    if (plot.points == 0) {
        throw Fault("plot '" + plot.name + "' has no points: the run was not finished?");
    }
    if (plot.variables[0].points < plot.points) {
        throw Fault("the first variable of plot '" + plot.name + "' has fewer points than the plot");
    }
    if (plot.text && plot.fast_access) {
        throw Fault("plot '" + plot.name + "' has text in fast access form, which does not exist");
    }
    if (plot.unpadded && plot.fast_access) {
        throw Fault("plot '" + plot.name + "' is both unpadded and in fast access form");
    }
    return plot.text ? place_text(file, plot) : place_binary(file, plot, hints);
}

std::unique_ptr<DataSource> open_data(const InputFile &file, const RawPlot &plot, const DataPlace &place,
                                      const PointRange &range)
{
    if (plot.text) {
        return std::make_unique<TextSource>(file, plot, place, range);
    }
    if (plot.fast_access) {
        return std::make_unique<ColumnSource>(file, plot, place, range);
    }
    return std::make_unique<RowSource>(file, plot, place, range);
}

void load_column(const ColumnView &column, bool imaginary, std::size_t points, double *numbers)
{
    const char *values = column.values + (imaginary ? (column.floats ? sizeof(float) : sizeof(double)) : 0);
    if (column.floats) {
        (column.swapped ? load<float, true> : load<float, false>)(values, column.stride, points, numbers);
    } else {
        (column.swapped ? load<double, true> : load<double, false>)(values, column.stride, points, numbers);
    }
}
