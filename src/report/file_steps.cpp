// SPDX-License-Identifier: MIT
#include "report/file_steps.h"

#include "report/digest.h"
#include "report/plain_file.h"
#include "report/text.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace report
{

namespace
{

[[noreturn]] void fail(const std::string &path)
{
    throw std::runtime_error("cannot write " + terminal_line(path) + ": " + std::strerror(errno));
}

void sync_folder(const std::string &path)
{
    const int fd = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool is_synced = fd >= 0 && (fsync(fd) == 0 || errno == EINVAL); // which not every folder can do
    const int error = errno;
    if (fd >= 0) {
        close(fd);
    }
    if (!is_synced) {
        errno = error;
        fail(path);
    }
}

} // namespace

std::string folder_of(const std::string &path)
{
    const std::size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

void write_text(int fd, const std::string &text, const std::string &path)
{
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t wrote = write(fd, text.data() + done, text.size() - done);
        if (wrote < 0 && errno != EINTR) {
            fail(path);
        }
        done += wrote > 0 ? static_cast<std::size_t>(wrote) : 0;
    }
}

void make_file(const std::string &path, mode_t mode, const std::function<void(int fd)> &fill)
{
    if (unlink(path.c_str()) != 0 && errno != ENOENT) {
        fail(path);
    }
    const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (fd < 0) {
        fail(path);
    }
    try {
        fill(fd);
        if (fchmod(fd, mode) != 0 || fsync(fd) != 0) {
            fail(path);
        }
    } catch (...) {
        close(fd);
        unlink(path.c_str());
        throw;
    }
    if (close(fd) != 0) {
        fail(path);
    }
}

void put_in_place(const std::string &from, const std::string &to)
{
    if (std::rename(from.c_str(), to.c_str()) != 0) {
        fail(to);
    }
    sync_folder(folder_of(to));
}

void make_folders_of(const std::string &path)
{
    for (std::size_t slash = path.find('/', 1); slash != std::string::npos;
         slash = path.find('/', slash + 1)) {
        const std::string folder = path.substr(0, slash);
        if (mkdir(folder.c_str(), S_IRWXU | S_IRWXG | S_IRWXO) != 0 && errno != EEXIST) {
            fail(folder);
        }
    }
}

std::string plain_digest(const std::string &path)
{
    try {
        const PlainFile plain(path);
        FileDigest digest(plain.path());
        while (digest.step()) {
        }
        return digest.sha256();
    } catch (const std::runtime_error &) {
        return {};
    }
}

} // namespace report
