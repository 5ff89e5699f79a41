// SPDX-License-Identifier: MIT
// How far a comparison in another process has come, for whoever waits at a terminal.
#ifndef TRESK_REPORT_INPUT_PROGRESS_H
#define TRESK_REPORT_INPUT_PROGRESS_H

#include "report/progress.h"

#include <array>
#include <cstdint>
#include <string>
#include <sys/types.h>

namespace report
{

class InputProgress
{
  public:
    // The process that reads the two files. Nothing is shown where that is not wanted.
    InputProgress(pid_t reader, const std::string &golden, const std::string &regression, bool is_wanted);

    // Whether to look and draw at all.
    bool is_shown() const
    {
        return is_wanted_ && line_.is_shown();
    }

    // Draws where the system says that the reader is in its files. Of no file that has no size.
    void show_reading();
    void wipe()
    {
        line_.wipe();
    }

    // Waits until the process, a child that has its report to write yet, ends. Returns its status, as wait()
    // has it.
    int wait_for_end();

  private:
    struct Input {
        dev_t device = 0;
        ino_t inode = 0;
        std::int64_t size = 0; // 0 of what is no regular file
        std::int64_t position = 0;
    };

    void look();

    pid_t reader_;
    bool is_wanted_;
    std::array<Input, 2> inputs_;
    Progress line_;
};

} // namespace report

#endif
