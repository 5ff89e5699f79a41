// SPDX-License-Identifier: MIT
// What the process of a comparison and the one that waits for it know of each other: plain values in memory
// that both see. Each side writes while the other waits.
#ifndef TRESK_REPORT_HANDOVER_H
#define TRESK_REPORT_HANDOVER_H

#include "report/result.h"

#include <cstddef>

namespace report
{

struct Handover {
    // From the child: how far it got.
    struct File {
        bool was_read;
        int read_result;
        int format;
    };
    File files[2]; // golden, regression
    double abstol;
    double reltol;
    char mode[8];
    bool desert;
    int pem;
    int nem;
    Counts counts; // when the last of these changed
    bool has_grade;
    int grade;

    // From the child, at its end.
    bool is_written;
    char fault[1024]; // why not

    // From the parent, when the transcript has ended.
    struct Digest {
        char sha256[65];
        std::int64_t bytes; // as InputFile
    };
    Digest digests[2];        // golden, regression
    bool transcript_is_whole; // and in its file
};

// Memory of that kind, zero-filled.
class SharedHandover
{
  public:
    SharedHandover();
    SharedHandover(const SharedHandover &) = delete;
    SharedHandover &operator=(const SharedHandover &) = delete;
    ~SharedHandover();

    Handover &operator*() const
    {
        return *handover_;
    }
    Handover *operator->() const
    {
        return handover_;
    }

  private:
    Handover *handover_;
};

// Copies a text, or what fits of it, with an end.
template <std::size_t kSize> void copy_text(char (&to)[kSize], const std::string &from)
{
    to[from.copy(to, kSize - 1)] = '\0';
}

// The child's side of a result.
void put_progress(const Result &result, Handover &handover);

// What is known of a comparison that has died. What the command line gives is left to the caller.
Result result_of_progress(const Handover &handover);

// What the parent found out of the files.
void take_digests(const Handover &handover, Result &result);

} // namespace report

#endif
