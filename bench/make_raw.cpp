// SPDX-License-Identifier: MIT
// Writes a SPICE rawfile of any size: a transient analysis with 64-bit values, point after point. Prints the
// number of points. usage: make_raw SIZE VARIABLES FILE; SIZE in bytes, perhaps with kB or MB behind it
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <vector>

namespace
{

std::uint64_t size_of(const char *text)
{
    char *unit = nullptr;
    const std::uint64_t number = std::strtoull(text, &unit, 10);
    const auto is = [unit](const char *name) {
        return std::strcmp(unit, name) == 0;
    };
    return number * (is("MB") ? 1000000 : is("kB") ? 1000 : is("") ? 1 : 0);
}

void write_header(std::ostream &file, std::uint64_t points, std::uint64_t variables)
{
    file << "Title: benchmark\nDate: Tue Mar 12 10:11:12 2024\nPlotname: Transient Analysis\nFlags: real\n"
         << "No. Variables: " << variables << "\nNo. Points: " << points << "\nVariables:\n\t0\ttime\ttime\n";
    for (std::uint64_t i = 1; i < variables; ++i) {
        file << "\t" << i << "\tv(n" << i << ")\tvoltage\n";
    }
    file << "Binary:\n";
}

} // namespace

int main(int argc, char **argv)
{
    const std::uint64_t size = argc == 4 ? size_of(argv[1]) : 0;
    const std::uint64_t variables = argc == 4 ? size_of(argv[2]) : 0;
    if (size == 0 || variables == 0) {
        std::fputs("usage: make_raw SIZE VARIABLES FILE\n", stderr);
        return 2;
    }
    const std::uint64_t points = size / (variables * sizeof(double)) + 1;
    std::ofstream file(argv[3], std::ios::binary);
    write_header(file, points, variables);
    std::vector<double> row(variables);
    for (std::uint64_t i = 0; i < points; ++i) {
        row[0] = 1e-12 * static_cast<double>(i);
        for (std::uint64_t k = 1; k < variables; ++k) {
            row[k] = std::sin(static_cast<double>(i) * 1e-3 + static_cast<double>(k));
        }
        file.write(reinterpret_cast<const char *>(row.data()),
                   static_cast<std::streamsize>(row.size() * sizeof(double)));
    }
    std::printf("%llu\n", static_cast<unsigned long long>(points));
    return file.flush() ? 0 : 1;
}
