// SPDX-License-Identifier: MIT
// A line on the terminal while long work goes on.
#ifndef TRESK_REPORT_PROGRESS_H
#define TRESK_REPORT_PROGRESS_H

#include <chrono>
#include <cstddef>
#include <string>

namespace report
{

// Shown after a second and where standard error is a terminal, gone at the end.
class Progress
{
  public:
    Progress(std::string what, std::size_t all);
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;
    ~Progress();

    void show(std::size_t done);
    void hide();

  private:
    std::string what_;
    std::size_t all_;
    std::chrono::steady_clock::time_point start_;
    bool is_terminal_;
    bool is_shown_ = false;
};

} // namespace report

#endif
