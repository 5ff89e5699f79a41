// SPDX-License-Identifier: MIT
// Takes the transcript of a comparison as it comes.
#ifndef TRESK_REPORT_RELAY_H
#define TRESK_REPORT_RELAY_H

#include "report/input_progress.h"

#include <cstddef>

namespace report
{

class Relay
{
  public:
    // From a pipe to a file, -1 where there is none, and to standard error unless it is quiet. While nothing
    // comes the progress is shown, between the lines.
    Relay(int from, int to_file, bool is_quiet, InputProgress &progress);

    // Returns when the transcript has ended.
    void run();

    // Whether all of it is in the file, and if not, the error number why; 0 where there is none.
    bool is_whole() const
    {
        return is_whole_;
    }
    int file_error() const
    {
        return file_error_;
    }

  private:
    void wait_for_piece();
    void write_piece(const char *piece, std::size_t size);
    void close_file();

    int from_;
    int to_file_;
    bool is_quiet_;
    bool is_at_line_start_ = true;
    bool is_whole_;
    int file_error_ = 0;
    InputProgress &progress_;
};

} // namespace report

#endif
