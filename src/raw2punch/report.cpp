// SPDX-License-Identifier: MIT
#include "raw2punch/report.h"

#include "raw2punch/punch_names.h"

#include <cstdio>

namespace
{

constexpr std::size_t kMostLines = 20;

void print(std::size_t number, const char *kind, const std::string &what)
{
    if (number <= kMostLines) {
        std::fprintf(stderr, "raw2punch: %s%s\n", kind, title_text(what).c_str()); // names may hold anything
    }
}

void print_rest(std::size_t count, const char *kind)
{
    if (count > kMostLines) {
        std::fprintf(stderr, "raw2punch: %s%zu more\n", kind, count - kMostLines);
    }
}

} // namespace

void Report::left_out(const std::string &what)
{
    print(++left_out_, "left out: ", what);
}

void Report::note(const std::string &what)
{
    print(++notes_, "note: ", what);
}

void Report::finish() const
{
    print_rest(left_out_, "left out: ");
    print_rest(notes_, "notes: ");
}
