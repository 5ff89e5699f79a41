// SPDX-License-Identifier: MIT
// Files that other processes may use at the same time. Everything goes through the descriptor that was
// opened, so that whatever is put under the name meanwhile is never touched.
#ifndef TRESK_SUPPORT_SHARED_FILE_H
#define TRESK_SUPPORT_SHARED_FILE_H

#include <cstddef>
#include <cstdint>
#include <cstdio>

// Opens a file for reading and update and waits for its lock (flock), which lasts until the stream is
// closed. A file that was replaced in the meantime is opened again. Only regular files are locked, and a
// file system without locks is no reason not to go on. Returns null with errno set when the file cannot
// be opened or is replaced each time.
std::FILE *open_locked(const char *name);

// Removes what stands under the name, follows no link, and makes a new file there, for update. Returns
// null with errno set when either fails.
std::FILE *create_anew(const char *name);

// Whether the file at fd still is the one under the name.
bool still_named(int fd, const char *name);

// Whether the file at fd ends at the offset. True of everything that is no regular file.
bool ends_at(int fd, std::int64_t offset);

// Appends bytes to the file at fd, which has to end at the offset. On failure, also when another writer
// gets in between, returns false and takes back what was written, unless somebody has written behind it.
bool append_at(int fd, std::int64_t offset, const char *bytes, std::size_t size);

#endif
