// SPDX-License-Identifier: MIT
// Lines of text from a file, in ASCII, UTF-8 or UTF-16 (least significant byte first).
#ifndef RAW2PUNCH_LINE_READER_H
#define RAW2PUNCH_LINE_READER_H

#include "raw2punch/input_file.h"

#include <string>
#include <vector>

// Whether the text at offset has the two-byte characters of a UTF-16 file: its first character, perhaps
// behind a byte order mark, is an ASCII letter and a zero byte.
bool is_utf16_at(const InputFile &file, std::int64_t offset);

class LineReader
{
  public:
    // Begins at offset; a byte order mark there is skipped.
    LineReader(const InputFile &file, std::int64_t offset, bool utf16);

    // The next line as UTF-8, without its line end. False at the end of the file. Throws Fault at a line of
    // more than 1 MiB: no text file has one.
    bool next(std::string &line);

    // File offset behind the line read last.
    std::int64_t offset() const
    {
        return base_ + static_cast<std::int64_t>(position_);
    }

  private:
    bool next_unit(unsigned &unit);
    bool next_plain(std::string &line);
    bool next_wide(std::string &line);
    bool fill();

    const InputFile &file_;
    std::int64_t base_; // offset of the window
    std::vector<char> window_;
    std::size_t position_ = 0; // in the window
    std::size_t size_ = 0;
    bool utf16_;
};

#endif
