// SPDX-License-Identifier: MIT
#include "report/progress.h"

#include <cstdlib>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace report
{

namespace
{

constexpr std::chrono::milliseconds kPatience(1000);
constexpr std::chrono::milliseconds kPause(100); // between two drawings

// A terminal that can go back to the start of a line and clear it.
bool is_terminal()
{
    const char *type = std::getenv("TERM");
    return isatty(STDERR_FILENO) == 1 && type != nullptr && std::string_view(type) != "dumb";
}

void print(std::string_view text)
{
    const ssize_t done = write(STDERR_FILENO, text.data(), text.size());
    static_cast<void>(done); // whoever has closed the terminal misses nothing
}

} // namespace

Progress::Progress(std::string what, std::size_t all)
    : what_(std::move(what)), all_(all), is_shown_(is_terminal()), next_(Clock::now() + kPatience)
{
}

Progress::~Progress()
{
    wipe();
}

void Progress::show(std::size_t done)
{
    if (is_due()) {
        const std::string of_all = all_ > 0 ? " of " + std::to_string(all_) : "";
        show_text(std::to_string(done) + of_all + ' ' + what_);
    }
}

void Progress::show_text(const std::string &text)
{
    if (!is_due()) {
        return;
    }
    print('\r' + text + "\033[K");
    is_drawn_ = true;
    next_ = Clock::now() + kPause;
}

void Progress::wipe()
{
    if (is_drawn_) {
        print("\r\033[K");
        is_drawn_ = false;
    }
}

} // namespace report
