// SPDX-License-Identifier: MIT
// Takes the transcript of a comparison as it comes, and digests the files meanwhile.
#ifndef TRESK_REPORT_RELAY_H
#define TRESK_REPORT_RELAY_H

#include "report/digest.h"

#include <string>

namespace report
{

struct Relay {
    int from = -1;        // pipe from the comparison
    int to_file = -1;     // the file of the transcript; -1: there is none
    bool is_quiet = true; // not on standard error
    FileDigest *digests[2] = {};

    // Returns when the transcript has ended and the digests are done. On return, whether all of the
    // transcript is in its file, or the error number why not.
    bool is_whole = false;
    int file_error = 0;

    void run();

  private:
    bool step_digests();
    bool take_piece();
    void write_piece(const char *piece, std::size_t size);
};

} // namespace report

#endif
