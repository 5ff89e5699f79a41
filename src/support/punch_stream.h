// SPDX-License-Identifier: MIT
// A punch file as a window of bytes that moves through the file in large blocks. Everything that
// reads a file (the line scanner, the binary data readers) works inside the window, without a call
// per byte.
#ifndef TRESK_SUPPORT_PUNCH_STREAM_H
#define TRESK_SUPPORT_PUNCH_STREAM_H

#include "support/file_bytes.h"

#include <cstddef>
#include <cstdint>

struct PunchStream {
    int fd = -1;
    bool seekable = false;
    bool exhausted = false;       // nothing more can be read
    int error = 0;                // errno of the read that failed, 0 as long as none did
    char *window = nullptr;       // the bytes held; a line feed and spare bytes follow
    std::size_t capacity = 0;     // room of the window, the spare bytes not counted
    std::size_t size = 0;         // bytes held
    std::size_t position = 0;     // next byte to read, as an index into the window
    std::int64_t base = 0;        // file offset of the window's first byte
    std::int64_t opened_size = 0; // size and time of change of the file when it was opened
    std::timespec opened_change{};
    FileBytes *lasting = nullptr; // what outlives the stream, once asked for
};

// Opens path for reading. Returns false with errno set when it cannot be opened, is a directory, or is
// a FIFO from which nothing comes within ten seconds.
bool stream_open(PunchStream &stream, const char *path);

// Reads from a descriptor that stands at the start of its file, and closes it in the end.
void stream_attach(PunchStream &stream, int fd);

// Closes the file, but for what stream_keep has promised.
void stream_close(PunchStream &stream);

// Promises that the bytes read so far can be read again until the process exits. Returns the same
// record for all calls on one file. One descriptor a file is all that this costs, and for a pipe its bytes.
FileBytes *stream_keep(PunchStream &stream);

// Brings more of the file into the window; the bytes from position on stay in it, but move, so
// pointers into the window are invalid afterwards (position is kept up to date). Returns false at
// the end of the file; a read error counts as the end and is kept in error.
bool stream_fill(PunchStream &stream);

// File offset of the next byte to read.
inline std::int64_t stream_tell(const PunchStream &stream)
{
    return stream.base + static_cast<std::int64_t>(stream.position);
}

// Continues at a file offset (>= 0). A stream that cannot seek keeps all it has read, so going back
// always works.
void stream_seek(PunchStream &stream, std::int64_t offset);

// The next byte (0 to 255), or -1 at the end of the file.
inline int stream_byte(PunchStream &stream)
{
    if (stream.position == stream.size && !stream_fill(stream)) {
        return -1;
    }
    return static_cast<unsigned char>(stream.window[stream.position++]);
}

// Bytes that can be read at window + position, brought in as needed: at least wanted, unless the
// file ends before.
std::size_t stream_require(PunchStream &stream, std::size_t wanted);

#endif
