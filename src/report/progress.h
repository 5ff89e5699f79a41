// SPDX-License-Identifier: MIT
// How far long work has come, for whoever waits at a terminal: one line of standard error, which is wiped
// when the work is done. Nothing in a log, and nothing of work that is done within a second.
#ifndef TRESK_REPORT_PROGRESS_H
#define TRESK_REPORT_PROGRESS_H

#include <chrono>
#include <cstddef>
#include <string>

namespace report
{

class Progress
{
  public:
    // what: "reports read", plain text. all: units of work, 0 where that is not known.
    Progress(std::string what, std::size_t all);
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;
    ~Progress();

    // So many units are done. Cheap: may be called for each.
    void show(std::size_t done);

    // Draws a text instead, where a drawing is due.
    void show_text(const std::string &text);

    // Whether anybody sees it at all.
    bool is_shown() const
    {
        return is_shown_;
    }

    // Whether the work is long and the last drawing some time ago.
    bool is_due() const
    {
        return is_shown_ && Clock::now() >= next_;
    }

    // Takes the line away, since something else is to be printed.
    void wipe();

  private:
    using Clock = std::chrono::steady_clock;

    std::string what_;
    std::size_t all_;
    bool is_shown_;
    bool is_drawn_ = false;
    Clock::time_point next_; // when to draw it again
};

} // namespace report

#endif
