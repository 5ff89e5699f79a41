// SPDX-License-Identifier: MIT
#include "support/transcript.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <unistd.h>

namespace
{

constexpr std::size_t kCapacity = std::size_t{64} * 1024;

// Static, so that the message about an exhausted heap needs no heap.
char buffer[kCapacity];
std::size_t used = 0;

void write_out(const char *data, std::size_t size)
{
    while (size > 0) {
        const ssize_t done = write(STDERR_FILENO, data, size);
        if (done > 0) {
            data += done;
            size -= static_cast<std::size_t>(done);
        } else if (errno == EAGAIN) { // a reader that is slower than the comparison
            pollfd ready{STDERR_FILENO, POLLOUT, 0};
            poll(&ready, 1, -1);
        } else if (errno != EINTR) {
            return;
        }
    }
}

} // namespace

void transcript_flush()
{
    const int saved_errno = errno;
    write_out(buffer, used);
    used = 0;
    errno = saved_errno;
}

void transcript_puts(std::string_view text)
{
    if (text.size() > kCapacity - used) {
        transcript_flush();
    }
    if (text.size() > kCapacity) {
        write_out(text.data(), text.size());
        return;
    }
    std::memcpy(buffer + used, text.data(), text.size());
    used += text.size();
}

void transcript_put_padded(std::string_view text, std::size_t width)
{
    transcript_puts(text);
    for (std::size_t length = text.size(); length < width;) {
        static constexpr std::string_view kBlanks = "                                ";
        const std::size_t piece = std::min(width - length, kBlanks.size());
        transcript_puts(kBlanks.substr(0, piece));
        length += piece;
    }
}

void transcript_put_error(double value)
{
    constexpr std::size_t kWidth = 9;
    char text[32];
    const char *end = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, 3).ptr;
    const auto length = static_cast<std::size_t>(end - text);
    transcript_put_padded("", length < kWidth ? kWidth - length : 0);
    transcript_puts({text, length});
}

void transcript_printf(const char *format, ...)
{
    std::va_list args;
    va_start(args, format);
    std::va_list again;
    va_copy(again, args);
    const int wanted = std::vsnprintf(buffer + used, kCapacity - used, format, args);
    if (wanted >= 0 && static_cast<std::size_t>(wanted) < kCapacity - used) {
        used += static_cast<std::size_t>(wanted);
    } else if (wanted >= 0) {
        transcript_flush();
        if (static_cast<std::size_t>(wanted) < kCapacity) {
            used = static_cast<std::size_t>(std::vsnprintf(buffer, kCapacity, format, again));
        } else if (char *text = static_cast<char *>(std::malloc(static_cast<std::size_t>(wanted) + 1))) {
            // A name or title longer than the whole buffer: rare enough for a copy of its own.
            std::vsnprintf(text, static_cast<std::size_t>(wanted) + 1, format, again);
            write_out(text, static_cast<std::size_t>(wanted));
            std::free(text);
        }
    }
    va_end(again);
    va_end(args);
}

void end_run(int status)
{
    transcript_flush();
    std::exit(status);
}
