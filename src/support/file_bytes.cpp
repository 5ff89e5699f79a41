// SPDX-License-Identifier: MIT
#include "support/file_bytes.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

bool fail(FileBytes &file, int reason)
{
    file.fault = reason;
    return false;
}

} // namespace

bool read_again(FileBytes &file, std::int64_t offset, char *to, std::size_t count)
{
    const auto there = static_cast<std::size_t>(
        std::clamp<std::int64_t>(file.end - offset, 0, static_cast<std::int64_t>(count)));
    std::memset(to + there, 0xFF, count - there);
    if (file.kept != nullptr) {
        std::copy_n(file.kept + offset, there, to);
        return true;
    }
    std::size_t held = 0;
    while (held < there) {
        const ssize_t got =
            pread(file.fd, to + held, there - held, static_cast<off_t>(offset) + static_cast<off_t>(held));
        if (got > 0) {
            held += static_cast<std::size_t>(got);
        } else if (got == 0) {
            return fail(file, ESTALE); // cut off since
        } else if (errno != EINTR) {
            return fail(file, errno);
        }
    }
    return true;
}

bool is_unchanged(FileBytes &file)
{
    struct stat now {
    };
    if (file.fault != 0 || file.kept != nullptr) {
        return file.fault == 0;
    }
    if (fstat(file.fd, &now) != 0) {
        return fail(file, errno);
    }
    const bool same = now.st_size == file.opened_size && now.st_mtim.tv_sec == file.opened_change.tv_sec &&
                      now.st_mtim.tv_nsec == file.opened_change.tv_nsec;
    return same || fail(file, ESTALE);
}
