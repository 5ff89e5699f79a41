// SPDX-License-Identifier: MIT
#include "report/digest_job.h"

#include "report/digest.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <sched.h>
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

void digest_file(const DigestJob::File &file)
{
    FileDigest digest(file.path);
    while (digest.step()) {
    }
    copy_text(file.digest.sha256, digest.sha256());
    file.digest.bytes = digest.size();
}

// A comparison that has to share its processor ends later than the digests of both files.
constexpr int kBusyBeside = 2; // the comparison, and one process for digests

int processors()
{
    cpu_set_t set;
    return sched_getaffinity(0, sizeof set, &set) == 0 ? CPU_COUNT(&set) : 1;
}

} // namespace

DigestJob::DigestJob(const std::vector<File> &files)
{
    std::vector<File> large;
    for (const File &file : files) {
        file.digest.bytes = -1; // until it is known
        if (is_large(file.path)) {
            large.push_back(file);
        } else {
            digest_file(file);
        }
    }
    if (processors() > kBusyBeside) {
        for (const File &file : large) {
            start({file});
        }
    } else if (!large.empty()) {
        start(large);
    }
}

DigestJob::~DigestJob()
{
    wait();
}

void DigestJob::start(const std::vector<File> &files)
{
    const pid_t child = fork();
    if (child == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
    }
    if (child <= 0) { // here where there is no room for a process
        std::for_each(files.begin(), files.end(), digest_file);
    }
    if (child == 0) {
        _exit(0);
    }
    if (child > 0) {
        children_.push_back(child);
    }
}

void DigestJob::wait()
{
    for (const pid_t child : children_) {
        while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    children_.clear();
}

} // namespace report
