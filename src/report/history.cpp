// SPDX-License-Identifier: MIT
#include "report/history.h"

#include "report/history_add.h"
#include "report/history_courses.h"
#include "report/history_file.h"

#include <array>
#include <ctime>
#include <unistd.h>

namespace report
{

History::History(const std::string &path, Access access)
{
    if (access == Access::WRITE && ::access(path.c_str(), F_OK) != 0) {
        make_history(path);
    }
    database_ = open_history(path, access);
}

History::~History() = default;

Added History::add(const Run &run)
{
    return add_run(*database_, run);
}

Courses History::courses(std::size_t most_signals)
{
    return read_courses(*database_, most_signals);
}

std::string run_time_text(const RunMark &run)
{
    const std::time_t time = run.began;
    std::tm parts = {};
    std::array<char, 64> text = {};
    if (gmtime_r(&time, &parts) == nullptr) {
        return "?"; // a year that is none
    }
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &parts)};
}

} // namespace report
