// SPDX-License-Identifier: MIT
#include "report/progress.h"

#include <cstdio>
#include <unistd.h>
#include <utility>

namespace report
{

Progress::Progress(std::string what, std::size_t all)
    : what_(std::move(what)), all_(all), start_(std::chrono::steady_clock::now()),
      is_terminal_(isatty(STDERR_FILENO) == 1)
{
}

Progress::~Progress()
{
    hide();
}

void Progress::hide()
{
    if (is_shown_) {
        std::fputs("\r\033[K", stderr);
        std::fflush(stderr);
        is_shown_ = false;
    }
}

void Progress::show(std::size_t done)
{
    if (is_terminal_ && std::chrono::steady_clock::now() - start_ > std::chrono::seconds(1)) {
        std::fprintf(stderr, "\r%zu of %zu %s\033[K", done, all_, what_.c_str());
        std::fflush(stderr);
        is_shown_ = true;
    }
}

} // namespace report
