// SPDX-License-Identifier: MIT
// The one writer of the transcript. Everything that the program says goes to the standard error
// stream through here, collected in one buffer so that a transcript of a million lines is a few
// hundred writes. Write errors (a full disk, a closed pipe) are dropped: the exit grade still counts.
#ifndef TRESK_SUPPORT_TRANSCRIPT_H
#define TRESK_SUPPORT_TRANSCRIPT_H

#include <cstddef>
#include <string_view>

// Appends printf-formatted text; numbers print as the C library prints them.
void transcript_printf(const char *format, ...) __attribute__((format(printf, 1, 2)));

// Appends the text as it stands.
void transcript_puts(std::string_view text);

// Appends the text, filled up with blanks behind it to width characters.
void transcript_put_padded(std::string_view text, std::size_t width);

// Appends the value as printf's "%9.3e" does, in a fraction of the time: a transcript may hold
// millions of result lines.
void transcript_put_error(double value);

// Writes out what is buffered.
void transcript_flush();

// Flushes the transcript and ends the process. The only way out of the program.
[[noreturn]] void end_run(int status);

#endif
