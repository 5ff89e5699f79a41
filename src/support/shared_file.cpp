// SPDX-License-Identifier: MIT
#include "support/shared_file.h"

#include "support/os_layer.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr int kPatience = 100; // replacements of a file that is waited for

bool is_regular(int fd)
{
    struct stat about {
    };
    return fstat(fd, &about) == 0 && S_ISREG(about.st_mode);
}

} // namespace

std::FILE *open_locked(const char *name)
{
    for (int tries = 0; tries < kPatience; ++tries) {
        std::FILE *stream = std::fopen(name, "rb+e");
        if (stream == nullptr || !is_regular(fileno(stream))) {
            return stream;
        }
        while (flock(fileno(stream), LOCK_EX) != 0 && errno == EINTR) {
        }
        if (still_named(fileno(stream), name)) {
            return stream;
        }
        std::fclose(stream);
    }
    errno = EBUSY;
    return nullptr;
}

std::FILE *create_anew(const char *name)
{
    if (unlink(name) != 0 && errno != ENOENT) {
        return nullptr;
    }
    const int fd = open(name, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    return fd >= 0 ? fdopen(fd, "wb+") : nullptr;
}

bool still_named(int fd, const char *name)
{
    struct stat opened {
    };
    struct stat named {
    };
    return fstat(fd, &opened) == 0 && stat(name, &named) == 0 && opened.st_dev == named.st_dev &&
           opened.st_ino == named.st_ino;
}

bool ends_at(int fd, std::int64_t offset)
{
    struct stat about {
    };
    return fstat(fd, &about) == 0 && (!S_ISREG(about.st_mode) || about.st_size == offset);
}

bool append_at(int fd, std::int64_t offset, const char *bytes, std::size_t size)
{
    if (fcntl(fd, F_SETFL, O_APPEND) < 0) { // never over what others append
        return false;
    }
    std::size_t written = 0;
    ssize_t put = 0;
    const auto end = [&] {
        return offset + static_cast<std::int64_t>(written);
    };
    while (written < size && ends_at(fd, end()) && (put = write(fd, bytes + written, size - written)) > 0) {
        written += static_cast<std::size_t>(put);
    }
    const std::int64_t last = lseek(fd, 0, SEEK_CUR);
    if (written == size && (last == end() || !is_regular(fd))) {
        return true;
    }
    // Bytes of others may stand in front of what a single write has appended, but not inside it.
    const bool in_one_piece = last == end() || static_cast<std::size_t>(put) == written;
    if (written > 0 && in_one_piece && ends_at(fd, last)) {
        tundra_os_truncate_file(fd, last - static_cast<std::int64_t>(written));
    }
    return false;
}
