// SPDX-License-Identifier: MIT
// Where index lines go: a side file that is appended to the punch file when all is read, or, in
// MIREL mode, a file that the environment names. The bytes of a punch file before its index table
// are never changed. The punch file is locked from before the old table is looked for until the new one
// is there.
#ifndef TRESK_READ_INDEX_FILE_H
#define TRESK_READ_INDEX_FILE_H

#include "support/punch_stream.h"

#include <cstdint>
#include <cstdio>

// Offset in the punch file at which the index table is to begin. Set by open_punch_file, 0 where that
// is not called.
extern std::int64_t file_end;

// Leaves the stream, opened for update, where the punch data ends, and cuts off an index table found
// there. Always returns 1.
int RemoveExistingIndex(const char *name, std::FILE *stream);

// Opens the named punch file for update, waits until no other run works on it, cuts off its old index
// table, sets file_end and opens the stream on the same file. False, with errno set, when it cannot be
// opened.
bool open_punch_file(const char *name, PunchStream &stream);

// Opens indx_fpt for the punch file, writes the head of the table or, in MIREL mode, moves the
// stream to where indexing is to begin. On failure returns the name of the file that cannot be
// opened, with errno set; null otherwise.
const char *open_index(const char *punch_name, PunchStream &stream);

// Completes the table and appends it to the punch file. A write that fails ends the run with status 1,
// and so does a punch file that has been replaced or does not end where it did when it was opened: the
// table would hide what another program appends.
void finish_index(const char *punch_name);

#endif
