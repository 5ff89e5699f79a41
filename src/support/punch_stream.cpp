// SPDX-License-Identifier: MIT
#include "support/punch_stream.h"

#include "support/char_class.h"
#include "support/memory.h"
#include "support/slab.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace
{

// Large enough that the system call does not count, small enough to stay in the second-level cache.
constexpr std::size_t kBlock = std::size_t{512} * 1024;

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

// File offset behind the bytes held.
std::int64_t stream_end(const PunchStream &stream)
{
    return stream.base + static_cast<std::int64_t>(stream.size);
}

// Brings what outlives the stream up to date.
void note_bytes(PunchStream &stream)
{
    if (stream.lasting != nullptr) {
        stream.lasting->kept = stream.seekable ? nullptr : stream.window;
        stream.lasting->end = std::max(stream.lasting->end, stream_end(stream));
    }
}

struct stat status_of(int fd)
{
    struct stat about {
    };
    fstat(fd, &about);
    return about;
}

// Whether there is something to read at fd; errno is the reason if not. Makes reading block again.
bool can_be_read(int fd)
{
    constexpr int kPatience = 10 * 1000; // milliseconds
    const struct stat about = status_of(fd);
    if (S_ISDIR(about.st_mode)) {
        errno = EISDIR;
        return false;
    }
    pollfd readable{fd, POLLIN, 0};
    if (S_ISFIFO(about.st_mode) && poll(&readable, 1, kPatience) == 0) {
        errno = ETIMEDOUT;
        return false;
    }
    return fcntl(fd, F_SETFL, 0) >= 0;
}

} // namespace

bool stream_open(PunchStream &stream, const char *path)
{
    const int fd = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK); // a FIFO would wait for a writer
    if (fd < 0) {
        return false;
    }
    if (!can_be_read(fd)) {
        const int reason = errno;
        close(fd);
        errno = reason;
        return false;
    }
    stream_attach(stream, fd);
    return true;
}

void stream_attach(PunchStream &stream, int fd)
{
    stream.fd = fd;
    stream.seekable = lseek(fd, 0, SEEK_CUR) >= 0;
    stream.exhausted = false;
    stream.error = 0;
    stream.base = 0;
    stream.size = 0;
    stream.position = 0;
    const struct stat about = status_of(fd);
    stream.opened_size = about.st_size;
    stream.opened_change = about.st_mtim;
    if (stream.window == nullptr) {
        reserve(stream, kBlock);
    }
    stream.window[0] = '\n';
}

void stream_close(PunchStream &stream)
{
    note_bytes(stream);
    const FileBytes *lasting = std::exchange(stream.lasting, nullptr);
    if (lasting != nullptr && lasting->kept != nullptr) {
        stream.window = nullptr;
        stream.capacity = 0;
    }
    const int fd = std::exchange(stream.fd, -1);
    if (fd >= 0 && (lasting == nullptr || lasting->fd < 0)) {
        close(fd);
    }
}

FileBytes *stream_keep(PunchStream &stream)
{
    if (stream.lasting == nullptr) {
        static Slab<FileBytes> slab;
        stream.lasting = slab.take();
        stream.lasting->fd = stream.seekable ? stream.fd : -1;
        stream.lasting->opened_size = stream.opened_size;
        stream.lasting->opened_change = stream.opened_change;
    }
    note_bytes(stream);
    return stream.lasting;
}

bool stream_fill(PunchStream &stream)
{
    if (stream.fd < 0 || stream.exhausted) {
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
    } else {
        stream.exhausted = true;
        stream.error = got < 0 ? errno : 0;
    }
    stream.window[stream.size] = '\n';
    note_bytes(stream);
    return got > 0;
}

void stream_seek(PunchStream &stream, std::int64_t offset)
{
    if (offset >= stream.base && offset <= stream_end(stream)) {
        stream.position = static_cast<std::size_t>(offset - stream.base);
    } else if (stream.seekable) {
        stream.exhausted = lseek(stream.fd, static_cast<off_t>(offset), SEEK_SET) < 0;
        stream.base = offset;
        stream.size = 0;
        stream.position = 0;
        stream.window[0] = '\n';
    } else { // a stream that keeps all it has read can only be read on
        while (stream_end(stream) < offset && stream_fill(stream)) {
        }
        stream.position = static_cast<std::size_t>(std::min(offset, stream_end(stream)) - stream.base);
    }
}

std::size_t stream_require(PunchStream &stream, std::size_t wanted)
{
    while (stream.size - stream.position < wanted && stream_fill(stream)) {
    }
    return stream.size - stream.position;
}
