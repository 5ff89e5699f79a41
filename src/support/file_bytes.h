// SPDX-License-Identifier: MIT
// The bytes of a punch file after its reading pass, to be read again at any offset. A file stays open
// under the descriptor of its reading pass, so that replacing it by a rename harms nothing. What cannot
// be read twice (a pipe) was kept whole in memory.
#ifndef TRESK_SUPPORT_FILE_BYTES_H
#define TRESK_SUPPORT_FILE_BYTES_H

#include <cstddef>
#include <cstdint>
#include <ctime>

struct FileBytes {
    int fd;                   // -1 where the bytes are kept
    const char *kept;         // all bytes, null where there is a descriptor
    std::int64_t end;         // offset up to which the reading pass went
    std::int64_t opened_size; // as it was when the file was opened
    std::timespec opened_change;
    int fault; // errno of the first read that failed; 0 as long as none did
};

// Copies the bytes at offset (>= 0). What lies at or behind the end of the reading pass is filled with
// 0xFF, as that pass took it. Returns false, and sets fault, when bytes that were there cannot be read any
// more; the rest is undefined then.
bool read_again(FileBytes &file, std::int64_t offset, char *to, std::size_t count);

// Whether the file is the one that was opened: nothing failed, and size and time of change are as they
// were. Sets fault otherwise.
bool is_unchanged(FileBytes &file);

#endif
