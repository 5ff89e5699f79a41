// SPDX-License-Identifier: MIT
#include "raw2punch/input_file.h"

#include "raw2punch/fault.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

using namespace std::string_view_literals;

constexpr std::string_view kCompressedStarts[] = {"\x1f\x8b"sv, "BZh"sv,
                                                  "\xfd"
                                                  "7zXZ"sv,
                                                  "\x28\xb5\x2f\xfd"sv, "PK\x03\x04"sv};

void refuse_compressed(const InputFile &file)
{
    char start[8];
    const std::string_view held(start, file.read_some(0, start, sizeof start));
    for (const std::string_view magic : kCompressedStarts) {
        if (held.substr(0, magic.size()) == magic) {
            throw Fault(file.path() + " is compressed; unpack it first");
        }
    }
}

} // namespace

// Without O_NONBLOCK it would wait for a writer of a pipe.
InputFile::InputFile(const std::string &path)
    : path_(path), fd_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
{
    struct stat status {
    };
    if (fd_ < 0 || fstat(fd_, &status) != 0) {
        const int reason = errno;
        if (fd_ >= 0) {
            close(fd_);
        }
        throw Fault("cannot open " + path + ": " + std::strerror(reason));
    }
    try {
        if (!S_ISREG(status.st_mode)) {
            throw Fault(path + " is not a regular file");
        }
        size_ = status.st_size;
        refuse_compressed(*this);
    } catch (...) {
        close(fd_);
        throw;
    }
}

InputFile::~InputFile()
{
    close(fd_);
}

bool is_same_file(const std::string &path, const std::string &other)
{
    struct stat one {
    };
    struct stat two {
    };
    return stat(path.c_str(), &one) == 0 && stat(other.c_str(), &two) == 0 && one.st_dev == two.st_dev &&
           one.st_ino == two.st_ino;
}

std::size_t InputFile::read_some(std::int64_t offset, char *to, std::size_t count) const
{
    std::size_t held = 0;
    while (held < count) {
        const ssize_t got = pread(fd_, to + held, count - held, offset + static_cast<off_t>(held));
        if (got == 0) {
            break;
        }
        if (got < 0 && errno != EINTR) {
            throw Fault("cannot read " + path_ + ": " + std::strerror(errno));
        }
        held += got < 0 ? 0 : static_cast<std::size_t>(got);
    }
    return held;
}

void InputFile::read(std::int64_t offset, char *to, std::size_t count) const
{
    if (read_some(offset, to, count) != count) {
        throw Fault(path_ + " became shorter while it was read");
    }
}
