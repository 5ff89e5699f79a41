// SPDX-License-Identifier: MIT
#include "support/os_layer.h"

#include <sys/resource.h>
#include <unistd.h>

std::uint64_t tundra_os_filetime_to_size_t(std::uint64_t filetime)
{
    return filetime;
}

void tundra_os_capture_user_sys_times(double *user, double *sys)
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval &t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
    };
    *user = seconds(usage.ru_utime);
    *sys = seconds(usage.ru_stime);
}

bool tundra_os_truncate_file(int fd, std::int64_t length)
{
    return ftruncate(fd, static_cast<off_t>(length)) == 0;
}

int tundra_os_is_readable(const char *)
{
    return 1;
}

int tundra_os_is_writable(const char *)
{
    return 1;
}

int tundra_os_is_executable(const char *)
{
    return 1;
}
