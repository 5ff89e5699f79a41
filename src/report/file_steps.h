// SPDX-License-Identifier: MIT
// Steps of replacing a file so that it is the old or the new one whenever the process is killed or the
// machine stops. All throw std::runtime_error with the path.
#ifndef TRESK_REPORT_FILE_STEPS_H
#define TRESK_REPORT_FILE_STEPS_H

#include <functional>
#include <string>
#include <sys/types.h>

namespace report
{

// Makes a file, in place of any of that name, has it filled through its descriptor, and waits until it is on
// the disk.
void make_file(const std::string &path, mode_t mode, const std::function<void(int fd)> &fill);

// Renames over a file of the same folder and waits until that is on the disk.
void put_in_place(const std::string &from, const std::string &to);

// Makes the folders above a file.
void make_folders_of(const std::string &path);

// The folder that a file stands in.
std::string folder_of(const std::string &path);

// Writes all of a text.
void write_text(int fd, const std::string &text, const std::string &path);

// Digest of what is in a file, of a compressed one of what it unpacks to; empty where it cannot be read.
std::string plain_digest(const std::string &path);

} // namespace report

#endif
