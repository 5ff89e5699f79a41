// SPDX-License-Identifier: MIT
// What the user should know of a conversion that goes on.
#ifndef RAW2PUNCH_REPORT_H
#define RAW2PUNCH_REPORT_H

#include <cstddef>
#include <string>

// Lines on standard error. A damaged file could give cause for millions of them, so that of each kind only
// the first are printed, and the others counted.
class Report
{
  public:
    // Something of the rawfile or the log that has no place in the punch file.
    void left_out(const std::string &what);

    // Something that was written in another form.
    void note(const std::string &what);

    // Prints how many lines were not printed.
    void finish() const;

    // How often something was left out.
    std::size_t left_out_count() const
    {
        return left_out_;
    }

  private:
    std::size_t left_out_ = 0;
    std::size_t notes_ = 0;
};

#endif
