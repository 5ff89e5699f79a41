// SPDX-License-Identifier: MIT
// The digest of a file beside other work: of a large file in a process of its own, since it takes about as
// long as the comparison.
#ifndef TRESK_REPORT_DIGEST_JOB_H
#define TRESK_REPORT_DIGEST_JOB_H

#include "report/handover.h"

#include <string>
#include <sys/types.h>

namespace report
{

class DigestJob
{
  public:
    // Begins. The digest goes to memory that processes share.
    DigestJob(const std::string &path, Handover::Digest &digest);
    DigestJob(const DigestJob &) = delete;
    DigestJob &operator=(const DigestJob &) = delete;
    ~DigestJob();

    // Returns when it is there.
    void wait();

  private:
    pid_t child_ = -1;
};

} // namespace report

#endif
