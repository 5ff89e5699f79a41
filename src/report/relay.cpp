// SPDX-License-Identifier: MIT
#include "report/relay.h"

#include "support/transcript.h"

#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace report
{

Relay::Relay(int from, int to_file, bool is_quiet, InputProgress &progress)
    : from_(from), to_file_(to_file), is_quiet_(is_quiet), is_whole_(to_file >= 0), progress_(progress)
{
}

void Relay::run()
{
    char piece[std::size_t{64} << 10];
    for (;;) {
        wait_for_piece();
        const ssize_t got = read(from_, piece, sizeof piece);
        if (got > 0) {
            write_piece(piece, static_cast<std::size_t>(got));
        } else if (got == 0 || errno != EINTR) {
            break;
        }
    }
    close_file();
}

// Without a terminal the read waits by itself.
void Relay::wait_for_piece()
{
    constexpr int kPause = 100; // milliseconds
    pollfd end = {from_, POLLIN, 0};
    while (progress_.is_shown() && poll(&end, 1, kPause) == 0) {
        if (is_at_line_start_) {
            progress_.show_reading();
        }
    }
    progress_.wipe();
}

void Relay::write_piece(const char *piece, std::size_t size)
{
    is_at_line_start_ = size == 0 || piece[size - 1] == '\n';
    if (!is_quiet_) {
        transcript_puts({piece, size});
        transcript_flush();
    }
    while (is_whole_ && size > 0) {
        const ssize_t done = write(to_file_, piece, size);
        if (done > 0) {
            piece += done;
            size -= static_cast<std::size_t>(done);
        } else if (errno != EINTR) {
            file_error_ = errno;
            is_whole_ = false;
        }
    }
}

// A disk of another machine may be found full only now.
void Relay::close_file()
{
    if (to_file_ >= 0 && close(to_file_) != 0 && is_whole_) {
        file_error_ = errno;
        is_whole_ = false;
    }
}

} // namespace report
