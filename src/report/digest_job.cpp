// SPDX-License-Identifier: MIT
#include "report/digest_job.h"

#include "report/digest.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace report
{

namespace
{

constexpr std::int64_t kLarge = std::int64_t{4} << 20; // takes longer than to start a process

bool is_large(const std::string &path)
{
    struct stat status {
    };
    return stat(path.c_str(), &status) == 0 && status.st_size >= kLarge;
}

void digest_file(const std::string &path, Handover::Digest &to)
{
    FileDigest digest(path);
    while (digest.step()) {
    }
    copy_text(to.sha256, digest.sha256());
    to.bytes = digest.size();
}

} // namespace

DigestJob::DigestJob(const std::string &path, Handover::Digest &digest)
{
    digest.bytes = -1; // until it is known
    if (is_large(path)) {
        child_ = fork();
        if (child_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            digest_file(path, digest);
            _exit(0);
        }
    }
    if (child_ < 0) {
        digest_file(path, digest);
    }
}

DigestJob::~DigestJob()
{
    wait();
}

void DigestJob::wait()
{
    while (child_ > 0 && waitpid(child_, nullptr, 0) < 0 && errno == EINTR) {
    }
    child_ = -1;
}

} // namespace report
