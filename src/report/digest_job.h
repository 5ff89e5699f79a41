// SPDX-License-Identifier: MIT
// Digests of files beside other work: of large files in processes of their own, since they take about as long
// as the comparison.
#ifndef TRESK_REPORT_DIGEST_JOB_H
#define TRESK_REPORT_DIGEST_JOB_H

#include "report/handover.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace report
{

class DigestJob
{
  public:
    // The digest goes to memory that processes share.
    struct File {
        const std::string &path;
        Handover::Digest &digest;
    };

    // Begins. Returns when the small files are done.
    explicit DigestJob(const std::vector<File> &files);
    DigestJob(const DigestJob &) = delete;
    DigestJob &operator=(const DigestJob &) = delete;
    ~DigestJob();

    // Returns when all digests are there.
    void wait();

  private:
    void start(const std::vector<File> &files);

    std::vector<pid_t> children_;
};

} // namespace report

#endif
