// SPDX-License-Identifier: MIT
#include "support/punch_stream.h"

#include "support/char_class.h"
#include "support/memory.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

// Large enough that the system call does not count, small enough to stay in the second-level cache.
constexpr std::size_t kBlock = std::size_t{256} * 1024;

void reserve(PunchStream &stream, std::size_t capacity)
{
    stream.window = static_cast<char *>(f_realloc_large(stream.window, capacity + kReadAhead));
    stream.capacity = capacity;
}

// Forgets the bytes before position, to make room for what comes.
void drop_read_bytes(PunchStream &stream)
{
    stream.size -= stream.position;
    std::memmove(stream.window, stream.window + stream.position, stream.size);
    stream.base += static_cast<std::int64_t>(stream.position);
    stream.position = 0;
}

} // namespace

bool stream_open(PunchStream &stream, const char *path)
{
    const int fd = open(path, O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        return false;
    }
    struct stat about {
    };
    if (fstat(fd, &about) == 0 && S_ISDIR(about.st_mode)) {
        close(fd);
        errno = EISDIR;
        return false;
    }
    stream.fd = fd;
    stream.seekable = lseek(fd, 0, SEEK_CUR) >= 0;
    stream.base = 0;
    stream.size = 0;
    stream.position = 0;
    if (stream.window == nullptr) {
        reserve(stream, kBlock);
    }
    stream.window[0] = '\n';
    return true;
}

void stream_close(PunchStream &stream)
{
    if (stream.fd >= 0) {
        close(stream.fd);
        stream.fd = -1;
    }
}

bool stream_fill(PunchStream &stream)
{
    if (stream.fd < 0) {
        return false;
    }
    if (stream.seekable && stream.position > 0) {
        drop_read_bytes(stream);
    }
    if (stream.capacity - stream.size < kBlock / 2) {
        reserve(stream, stream.capacity * 2); // a line longer than the window, or a stream kept whole
    }
    ssize_t got = 0;
    do {
        got = read(stream.fd, stream.window + stream.size, stream.capacity - stream.size);
    } while (got < 0 && errno == EINTR);
    if (got > 0) {
        stream.size += static_cast<std::size_t>(got);
    }
    stream.window[stream.size] = '\n';
    return got > 0;
}

void stream_seek(PunchStream &stream, std::int64_t offset)
{
    if (offset >= stream.base && offset <= stream.base + static_cast<std::int64_t>(stream.size)) {
        stream.position = static_cast<std::size_t>(offset - stream.base);
        return;
    }
    if (stream.seekable && lseek(stream.fd, static_cast<off_t>(offset), SEEK_SET) >= 0) {
        stream.base = offset;
        stream.size = 0;
    }
    stream.position = stream.size; // a stream that cannot get there has nothing left to read
}

std::size_t stream_require(PunchStream &stream, std::size_t wanted)
{
    while (stream.size - stream.position < wanted && stream_fill(stream)) {
    }
    return stream.size - stream.position;
}
