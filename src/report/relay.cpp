// SPDX-License-Identifier: MIT
#include "report/relay.h"

#include "support/transcript.h"

#include <cerrno>
#include <unistd.h>

namespace report
{

Relay::Relay(int from, int to_file, bool is_quiet)
    : from_(from), to_file_(to_file), is_quiet_(is_quiet), is_whole_(to_file >= 0)
{
}

void Relay::run()
{
    char piece[std::size_t{64} << 10];
    for (;;) {
        const ssize_t got = read(from_, piece, sizeof piece);
        if (got > 0) {
            write_piece(piece, static_cast<std::size_t>(got));
        } else if (got == 0 || errno != EINTR) {
            break;
        }
    }
    close_file();
}

void Relay::write_piece(const char *piece, std::size_t size)
{
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
