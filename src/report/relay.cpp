// SPDX-License-Identifier: MIT
#include "report/relay.h"

#include "support/transcript.h"

#include <cerrno>
#include <cstddef>
#include <poll.h>
#include <unistd.h>

namespace report
{

void Relay::run()
{
    is_whole = to_file >= 0;
    bool is_digesting = true;
    for (bool goes_on = true; goes_on;) {
        pollfd ready{from, POLLIN, 0};
        if (poll(&ready, 1, is_digesting ? 0 : -1) > 0) {
            goes_on = take_piece();
        } else if (is_digesting) {
            is_digesting = step_digests();
        }
    }
    while (step_digests()) {
    }
}

bool Relay::step_digests()
{
    return digests[0]->step() || digests[1]->step();
}

// False at the end of the transcript.
bool Relay::take_piece()
{
    char piece[std::size_t{64} << 10];
    const ssize_t got = read(from, piece, sizeof piece);
    if (got <= 0) {
        return got < 0 && errno == EINTR;
    }
    const auto size = static_cast<std::size_t>(got);
    if (!is_quiet) {
        transcript_puts({piece, size});
        transcript_flush();
    }
    write_piece(piece, size);
    return true;
}

void Relay::write_piece(const char *piece, std::size_t size)
{
    while (is_whole && size > 0) {
        const ssize_t done = write(to_file, piece, size);
        if (done > 0) {
            piece += done;
            size -= static_cast<std::size_t>(done);
        } else if (errno != EINTR) {
            file_error = errno;
            is_whole = false;
        }
    }
}

} // namespace report
