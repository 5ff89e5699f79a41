// SPDX-License-Identifier: MIT
// Values as text: for each point its number, then a value for each variable, all between white space.
#ifndef RAW2PUNCH_TEXT_SOURCE_H
#define RAW2PUNCH_TEXT_SOURCE_H

#include "raw2punch/raw_data.h"

#include <string_view>

// The words of a text, which are ASCII. In a UTF-16 file other characters become "?".
class WordReader
{
  public:
    WordReader(const InputFile &file, std::int64_t offset, std::int64_t end, bool utf16);

    // The next word, up to white space or a comma; empty at the end. Valid up to the next call. Throws Fault
    // at a word that is too long for a number.
    std::string_view next();

    // Steps over a comma behind the last word, with blanks in front of it. False if there is none.
    bool take_comma();

    // File offset of what has not been used yet.
    std::int64_t offset() const;

  private:
    char current();
    bool fill();
    void skip_space();

    const InputFile &file_;
    std::int64_t end_;
    std::int64_t base_; // file offset of the window
    std::int64_t unit_; // bytes of a character
    std::vector<char> window_;
    std::vector<char> wide_;
    std::size_t position_ = 0;
    std::size_t size_ = 0;
};

class TextSource : public DataSource
{
  public:
    TextSource(const InputFile &file, const RawPlot &plot, const DataPlace &place, const PointRange &range);
    bool next(Block &block) override;

  private:
    void read_point_number();
    double read_number();
    std::size_t read_point();
    [[noreturn]] void fail(const char *what) const;

    const RawPlot &plot_;
    WordReader words_;
    std::int64_t point_;
    std::int64_t end_;
    std::int64_t numbered_from_ = 0;   // the point that has the number 0
    std::vector<std::size_t> present_; // variables that points have from here on
    std::vector<double> numbers_;
};

#endif
