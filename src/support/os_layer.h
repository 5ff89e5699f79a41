// SPDX-License-Identifier: MIT
// What differs between operating systems, in six small functions. Nothing here calls others than
// tundra_os_truncate_file: they are part of the interface.
#ifndef TRESK_SUPPORT_OS_LAYER_H
#define TRESK_SUPPORT_OS_LAYER_H

#include <cstdint>

// The 64-bit value that it is given.
std::uint64_t tundra_os_filetime_to_size_t(std::uint64_t filetime);

// User and system processor time of this process so far, in seconds.
void tundra_os_capture_user_sys_times(double *user, double *sys);

// Cuts the file at fd, opened for writing, to length bytes. Returns false (errno set) when the file is
// left as it was.
bool tundra_os_truncate_file(int fd, std::int64_t length);

// Permission is found out by opening, so each of these answers 1.
int tundra_os_is_readable(const char *path);
int tundra_os_is_writable(const char *path);
int tundra_os_is_executable(const char *path);

#endif
