// SPDX-License-Identifier: MIT
#include "raw2punch/fourier_table.h"

#include "raw2punch/text_tools.h"

#include <algorithm>
#include <map>

namespace
{

constexpr std::int64_t kMostValues = 3000;

using Tables = std::map<std::size_t, std::vector<double>>; // by variable

void take_values(const Block &block, const RawPlot &plot, Tables &tables)
{
    for (const ColumnView &column : block.columns) {
        const auto table = tables.find(column.variable);
        if (table != tables.end()) {
            std::vector<double> &values = table->second;
            const std::size_t held = values.size();
            const auto size = static_cast<std::size_t>(plot.variables[column.variable].points);
            const std::size_t count = std::min(block.points, size - held);
            values.resize(held + count);
            load_column(column, false, count, values.data() + held);
        }
    }
}

} // namespace

bool is_table(const RawPlot &plot, std::size_t variable)
{
    return plot.variables[variable].rows > 0 && plot.variables[variable].points < plot.points;
}

bool is_fourier_table(const RawPlot &plot, std::size_t variable)
{
    const RawVariable &table = plot.variables[variable];
    return is_table(plot, variable) && table.rows == 3 && table.points > 0 && table.points <= kMostValues &&
           starts_with(lower_case(table.name), "fourier");
}

std::vector<Spectrum> read_fourier_tables(const InputFile &file, const RawPlot &plot, const DataPlace &place)
{
    Tables tables;
    PointRange range = all_points(plot);
    range.count = 0;
    for (std::size_t i = 0; i < plot.variables.size(); ++i) {
        if (is_fourier_table(plot, i)) {
            tables[i];
            range.count = std::max(range.count, plot.variables[i].points);
        }
    }
    if (tables.empty()) {
        return {};
    }
    const std::unique_ptr<DataSource> source = open_data(file, plot, place, range);
    for (Block block; source->next(block);) {
        take_values(block, plot, tables);
    }
    std::vector<Spectrum> spectra;
    for (const auto &[variable, values] : tables) {
        Spectrum spectrum = {plot.variables[variable].name, {}};
        const std::size_t count = values.size() / 3;
        for (std::size_t i = 0; i < count; ++i) {
            spectrum.harmonics.push_back({values[i], values[count + i], values[2 * count + i]});
        }
        spectra.push_back(std::move(spectrum));
    }
    return spectra;
}
