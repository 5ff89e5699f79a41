// SPDX-License-Identifier: MIT
#include "raw2punch/text_source.h"

#include "raw2punch/fault.h"
#include "raw2punch/text_tools.h"

#include <algorithm>

namespace
{

constexpr std::size_t kWindowSize = std::size_t{256} << 10;
constexpr std::size_t kLongestWord = 400; // digits of a double written out
constexpr std::size_t kBlockNumbers = std::size_t{32} << 10;

bool is_space(char c)
{
    return is_blank(c) || c == '\n';
}

} // namespace

WordReader::WordReader(const InputFile &file, std::int64_t offset, std::int64_t end, bool utf16)
    : file_(file), end_(end), base_(offset), unit_(utf16 ? 2 : 1), window_(kWindowSize),
      wide_(utf16 ? 2 * kWindowSize : 0)
{
}

std::int64_t WordReader::offset() const
{
    return base_ + static_cast<std::int64_t>(position_) * unit_;
}

// Moves what is not used yet to the front of the window and reads on behind it. False at the end.
bool WordReader::fill()
{
    base_ = offset();
    std::copy(window_.begin() + static_cast<std::ptrdiff_t>(position_),
              window_.begin() + static_cast<std::ptrdiff_t>(size_), window_.begin());
    size_ -= position_;
    position_ = 0;
    const std::int64_t from = base_ + static_cast<std::int64_t>(size_) * unit_;
    const std::int64_t left = (end_ - from) / unit_;
    const std::size_t count =
        std::min(window_.size() - size_, static_cast<std::size_t>(std::max<std::int64_t>(left, 0)));
    if (unit_ == 1) {
        file_.read(from, window_.data() + size_, count);
    } else {
        file_.read(from, wide_.data(), 2 * count);
        for (std::size_t i = 0; i < count; ++i) {
            window_[size_ + i] = wide_[2 * i + 1] == '\0' ? wide_[2 * i] : '?';
        }
    }
    size_ += count;
    return count > 0;
}

// The next character; a line feed at the end.
char WordReader::current()
{
    return position_ < size_ || fill() ? window_[position_] : '\n';
}

void WordReader::skip_space()
{
    while (is_space(current()) && position_ < size_) {
        ++position_;
    }
}

std::string_view WordReader::next()
{
    skip_space();
    if (size_ - position_ <= kLongestWord) {
        fill();
    }
    std::size_t end = position_;
    while (end < size_ && !is_space(window_[end]) && window_[end] != ',') {
        ++end;
    }
    if (end - position_ > kLongestWord) {
        throw Fault("a value has more than " + std::to_string(kLongestWord) + " characters");
    }
    const std::string_view word(window_.data() + position_, end - position_);
    position_ = end;
    return word;
}

bool WordReader::take_comma()
{
    while (is_blank(current())) {
        ++position_;
    }
    if (current() != ',') {
        return false;
    }
    ++position_;
    return true;
}

TextSource::TextSource(const InputFile &file, const RawPlot &plot, const DataPlace &place,
                       const PointRange &range)
    : plot_(plot), words_(file, range.offset, place.end, plot.utf16), point_(range.first),
      end_(range.first + range.count)
{
    for (std::size_t i = 0; i < plot.variables.size(); ++i) {
        present_.push_back(i);
    }
}

void TextSource::fail(const char *what) const
{
    throw Fault("plot '" + plot_.name + "', point " + std::to_string(point_) + ": " + what);
}

// Points are numbered from 0, from the start of the plot or of each run. Where the numbers do not rise, a
// value is missing or there is one too many.
void TextSource::read_point_number()
{
    std::int64_t number = 0;
    if (!to_count(words_.next(), number)) {
        fail("the number of the point is missing");
    }
    if (number == 0) {
        numbered_from_ = point_;
    }
    if (number != point_ - numbered_from_) {
        fail("the numbers of the points do not go on");
    }
}

double TextSource::read_number()
{
    double number = 0.0;
    const std::string_view word = words_.next();
    if (!to_number(word, number)) {
        fail(word.empty() ? "a value is missing" : "a value is no number");
    }
    return number;
}

// Appends the numbers of one point. Returns how many.
std::size_t TextSource::read_point()
{
    const std::size_t before = numbers_.size();
    read_point_number();
    for (const std::size_t variable : present_) {
        static_cast<void>(variable);
        numbers_.push_back(read_number());
        if (plot_.complex) {
            if (!words_.take_comma()) {
                fail("a complex value lacks its second number");
            }
            numbers_.push_back(read_number());
        }
    }
    return numbers_.size() - before;
}

bool TextSource::next(Block &block)
{
    if (point_ == end_) {
        return false;
    }
    const std::int64_t first = point_;
    std::int64_t layout_end = end_;
    if (plot_.unpadded) {
        const auto has_run_out = [this](std::size_t variable) {
            return plot_.variables[variable].points <= point_;
        };
        present_.erase(std::remove_if(present_.begin(), present_.end(), has_run_out), present_.end());
        for (const std::size_t variable : present_) {
            layout_end = std::min(layout_end, plot_.variables[variable].points);
        }
    }
    numbers_.clear();
    block.text_offsets.clear();
    std::size_t row = 0;
    while (point_ < layout_end && numbers_.size() < kBlockNumbers) {
        block.text_offsets.push_back(words_.offset());
        row = read_point();
        ++point_;
    }
    if (point_ == plot_.points && !words_.next().empty()) {
        fail("there are more values than the header promises");
    }
    block.first = first;
    block.points = static_cast<std::size_t>(point_ - first);
    block.columns.clear();
    for (std::size_t i = 0; i < present_.size(); ++i) {
        ColumnView column;
        column.variable = present_[i];
        column.values = reinterpret_cast<const char *>(numbers_.data() + i * (plot_.complex ? 2 : 1));
        column.stride = row * sizeof(double);
        block.columns.push_back(column);
    }
    return true;
}
