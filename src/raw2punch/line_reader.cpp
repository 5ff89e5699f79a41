// SPDX-License-Identifier: MIT
#include "raw2punch/line_reader.h"

#include "raw2punch/fault.h"

#include <algorithm>
#include <cstring>

namespace
{

constexpr std::size_t kWindowSize = std::size_t{64} << 10;
constexpr std::size_t kLongestLine = std::size_t{1} << 20;

bool is_letter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

void append_utf8(std::string &text, unsigned c)
{
    const auto tail = [&text](unsigned bits) {
        text += static_cast<char>(0x80U | (bits & 0x3FU));
    };
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xC0U | c >> 6);
        tail(c);
    } else if (c < 0x10000) {
        text += static_cast<char>(0xE0U | c >> 12);
        tail(c >> 6);
        tail(c);
    } else {
        text += static_cast<char>(0xF0U | c >> 18);
        tail(c >> 12);
        tail(c >> 6);
        tail(c);
    }
}

void check_length(const std::string &line, const InputFile &file)
{
    if (line.size() > kLongestLine) {
        throw Fault(file.path() + " has a line of more than a million characters: no text");
    }
}

} // namespace

bool is_utf16_at(const InputFile &file, std::int64_t offset)
{
    char start[4] = {};
    const std::size_t held = file.read_some(offset, start, sizeof start);
    const char *text = std::memcmp(start, "\xFF\xFE", 2) == 0 ? start + 2 : start;
    return text + 2 <= start + held && is_letter(text[0]) && text[1] == '\0';
}

LineReader::LineReader(const InputFile &file, std::int64_t offset, bool utf16)
    : file_(file), base_(offset), window_(kWindowSize), utf16_(utf16)
{
    fill();
    const std::string mark = utf16 ? "\xFF\xFE" : "\xEF\xBB\xBF";
    if (size_ >= mark.size() && std::memcmp(window_.data(), mark.data(), mark.size()) == 0) {
        position_ = mark.size();
    }
}

// Moves the window behind its end. False at the end of the file.
bool LineReader::fill()
{
    base_ += static_cast<std::int64_t>(size_);
    position_ = 0;
    size_ = file_.read_some(base_, window_.data(), window_.size());
    return size_ > 0;
}

bool LineReader::next(std::string &line)
{
    line.clear();
    if (!(utf16_ ? next_wide(line) : next_plain(line))) {
        return false;
    }
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return true;
}

bool LineReader::next_plain(std::string &line)
{
    while (position_ < size_ || fill()) {
        const char *begin = window_.data() + position_;
        const auto *feed = static_cast<const char *>(std::memchr(begin, '\n', size_ - position_));
        const char *end = feed != nullptr ? feed : window_.data() + size_;
        line.append(begin, end);
        position_ = static_cast<std::size_t>(end - window_.data()) + (feed != nullptr ? 1 : 0);
        check_length(line, file_);
        if (feed != nullptr) {
            return true;
        }
    }
    return !line.empty();
}

bool LineReader::next_unit(unsigned &unit)
{
    unit = 0;
    for (unsigned shift = 0; shift < 16; shift += 8) {
        if (position_ == size_ && !fill()) {
            return false;
        }
        unit |= static_cast<unsigned>(static_cast<unsigned char>(window_[position_])) << shift;
        ++position_;
    }
    return true;
}

bool LineReader::next_wide(std::string &line)
{
    unsigned unit = 0;
    unsigned high = 0; // first half of a character that takes two units
    while (next_unit(unit)) {
        if (unit == '\n') {
            return true;
        }
        if (unit >= 0xD800 && unit < 0xDC00) {
            high = unit;
        } else if (unit >= 0xDC00 && unit < 0xE000) {
            append_utf8(line, high != 0 ? 0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00) : 0xFFFD);
            high = 0;
        } else {
            append_utf8(line, unit);
            high = 0;
        }
        check_length(line, file_);
    }
    return !line.empty();
}
