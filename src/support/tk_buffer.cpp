// SPDX-License-Identifier: MIT
#include "support/tk_buffer.h"

#include "support/number.h"
#include "support/number_form.h"
#include "support/plain_fields.h"
#include "support/signal_scanner.h"
#include "support/slab.h"

#include <algorithm>
#include <cstring>
#include <utility>

const char *tk_BUF = nullptr; // set by tk_BUFinit
std::size_t tk_BUFlength = 0;
std::size_t tk_BUFindex = 0;
std::int64_t tk_BUFoffset = 0;
int tk_eofflag = 0;
int tk_eolnflag = 0;
int tk_argflag = 0;
int tk_error = 0;
int tk_skipcomments = 1;
std::string tk_field;
std::string namebuf;
std::size_t tk_linesread = 0;
std::size_t tk_filesread = 0;

namespace
{

// The line behind the end of a file, and what is left of a line whose data follows: always readable
// as far as words are searched.
constexpr char kEmptyLine[kReadAhead + 1] = "";

char upper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// Finds a byte in the window, remembering the stretch already searched, so that looking for a rare
// byte in every line costs one pass over the file.
struct ByteFinder {
    char byte;
    std::int64_t from = 0; // no such byte in [from, at)
    std::int64_t at = 0;
    bool hit = false; // there is one at at

    // Index of the first such byte in [begin, end) of the window, or end.
    std::size_t find(const PunchStream &stream, std::size_t begin, std::size_t end)
    {
        const std::int64_t first = stream.base + static_cast<std::int64_t>(begin);
        const std::int64_t last = stream.base + static_cast<std::int64_t>(end);
        if (first < from || first > at) {
            from = at = first;
            hit = false;
        }
        if (!hit && at < last) {
            const auto index = static_cast<std::size_t>(at - stream.base);
            const void *found = std::memchr(stream.window + index, byte, stream.size - index);
            hit = found != nullptr;
            at = stream.base + (hit ? static_cast<const char *>(found) - stream.window
                                    : static_cast<std::ptrdiff_t>(stream.size));
        }
        return hit && at < last ? static_cast<std::size_t>(at - stream.base) : end;
    }
};

// The lines of the window that are complete and have no byte 255: entering them sets no flag.
struct WholeLines {
    std::int64_t known_to = -1; // file offset of the window's end they were found for
    std::int64_t end = 0;       // file offset behind the last of them
};

WholeLines whole_lines;
ByteFinder nul_finder{'\0'};
ByteFinder end_byte_finder{static_cast<char>(kEndOfFileByte)};

bool at_end = false;   // the last line has been handed out
bool past_end = false; // the current line is an empty one behind the end

std::size_t field_end = 0;         // index behind the last field's text ...
std::int64_t field_end_offset = 0; // ... in the line that starts here

TextPlace mark;

const char *after_blanks(const char *text)
{
    while (class_of(*text) == BLANK) {
        ++text;
    }
    return text;
}

void set_line(const PunchStream &stream, std::size_t begin, std::size_t end)
{
    tk_BUF = stream.window + begin;
    tk_BUFlength = nul_finder.find(stream, begin, end) - begin;
    tk_BUFoffset = stream.base + static_cast<std::int64_t>(begin);
}

void set_empty_line(const PunchStream &stream)
{
    tk_BUF = kEmptyLine;
    tk_BUFlength = 0;
    tk_BUFoffset = stream_tell(stream);
    past_end = true;
}

void reach_end()
{
    tk_eofflag = 1;
    tk_eolnflag = 1;
    at_end = true;
}

// Takes the bytes up to the next line feed, a byte 255 or the end of the file as the current line.
void take_line(PunchStream &stream)
{
    ++tk_linesread;
    std::size_t searched = 0; // bytes behind the position without a line feed
    while (!at_end) {
        const std::size_t begin = stream.position + searched;
        const char *feed =
            static_cast<const char *>(std::memchr(stream.window + begin, '\n', stream.size - begin));
        const std::size_t limit =
            feed != nullptr ? static_cast<std::size_t>(feed - stream.window) : stream.size;
        const std::size_t end = end_byte_finder.find(stream, begin, limit);
        if (end == limit && feed != nullptr) {
            set_line(stream, stream.position, limit);
            stream.position = limit + 1;
            return;
        }
        searched = end - stream.position;
        if (end != limit || !stream_fill(stream)) { // which moves the position, found or not
            set_line(stream, stream.position, stream.position + searched);
            stream.position += searched;
            reach_end();
            return;
        }
    }
    set_empty_line(stream);
    reach_end();
}

// The end of the whole lines in the window, at least of the current one.
const char *whole_lines_end(const PunchStream &stream)
{
    const std::int64_t window_end = stream.base + static_cast<std::int64_t>(stream.size);
    if (whole_lines.known_to != window_end || whole_lines.end <= tk_BUFoffset) {
        const std::size_t end = end_byte_finder.find(stream, stream.position, stream.size);
        const std::string_view unread(stream.window + stream.position, end - stream.position);
        whole_lines.known_to = window_end;
        whole_lines.end =
            stream_tell(stream) + static_cast<std::int64_t>(unread.rfind('\n') + 1); // npos + 1 is 0
    }
    return stream.window + (whole_lines.end - stream.base);
}

// Goes on at text in the whole line that begins at line; the current line if that is null.
void enter_line(PunchStream &stream, const char *line, const char *text)
{
    if (line != nullptr) {
        stream.position = static_cast<std::size_t>(line - stream.window);
        take_line(stream);
    }
    tk_BUFindex = static_cast<std::size_t>(text - tk_BUF);
}

bool only_spaces(const char *text)
{
    while (*text == ' ') {
        ++text;
    }
    return class_of(*text) == LINE_END;
}

// The "," or "=" that ends a word.
void step_over_separator()
{
    if (tk_currentClass() == SEPARATOR) {
        tk_argflag |= tk_current() == '=';
        ++tk_BUFindex;
    }
}

// Steps over what separates a field from the next one, into the next line where this one ends.
void finish_field(PunchStream &stream)
{
    const char *next = after_blanks(tk_BUF + tk_BUFindex);
    if (*next == '=') {
        tk_argflag = 1;
        next = after_blanks(next + 1);
    }
    if (*next == ',') {
        next = after_blanks(next + 1);
    }
    tk_BUFindex = static_cast<std::size_t>(next - tk_BUF);
    if (class_of(*next) == LINE_END) {
        tk_continueLine(stream, false);
    }
}

// The end of the field whose number ends at text; null if it goes on with more than the carriage return that
// stays at the end of the lines of some files.
const char *number_field_end(const char *text)
{
    if (*text == '\r') {
        ++text;
    }
    return class_of(*text) == ORDINARY || class_of(*text) == CONTINUATION ? nullptr : text;
}

// The beginning of what a continuation line holds, the line feed in front of it being at text. Lines with
// nothing on them are passed over. Null if there is none in front of lines_end.
const char *continuation_text(const char *text, const char *lines_end, const char *&line)
{
    do {
        line = text + 1;
        if (line >= lines_end || *line != '+') {
            return nullptr;
        }
        text = line + 1;
        while (*text == ' ') {
            ++text;
        }
    } while (*text == '\n');
    return after_blanks(text);
}

// The field behind another one that ends at text, if there are only blanks and commas between them and
// perhaps the beginning of a continuation line in front of lines_end, which then becomes line. Null for all
// else.
const char *next_plain_field(const char *text, const char *lines_end, const char *&line)
{
    const char *new_line = line;
    const char *const end_of_field = text;
    while (*text == ' ') {
        ++text;
    }
    if (*text != '\n' && class_of(*text) != ORDINARY) {
        // One that ends the field, and one behind blanks: a third would be an empty field.
        if (*text == ',' && text == end_of_field) {
            ++text;
        }
        text = after_blanks(text);
        if (*text == ',') {
            text = after_blanks(text + 1);
        }
    }
    if (*text == '\n') {
        text = continuation_text(text, lines_end, new_line);
    }
    if (text == nullptr || class_of(*text) != ORDINARY) {
        return nullptr;
    }
    line = new_line;
    return text;
}

// Converts the number at text, which goes no further than line_end, where its form was not as guessed.
// Returns the end of its field, or null if it is no number for the fast path.
const char *unguessed_number(NumberForm &form, const char *text, const char *line_end, double &value)
{
    NumberShape shape;
    const char *end = fast_number(text, line_end, value, shape);
    if (end != nullptr) {
        end = number_field_end(end);
    }
    if (end != nullptr && form.is_promising()) {
        form.was_wrong(shape);
    }
    return end;
}

void append_upper(const char *begin, const char *end)
{
    const std::size_t old_size = tk_field.size();
    tk_field.append(begin, end);
    for (std::size_t i = old_size; i < tk_field.size(); ++i) {
        tk_field[i] = upper(tk_field[i]);
    }
}

void copy_word(PunchStream &stream)
{
    for (;;) {
        const char *begin = tk_BUF + tk_BUFindex;
        const char *end = word_end(begin);
        append_upper(begin, end);
        tk_BUFindex = static_cast<std::size_t>(end - tk_BUF);
        if (*end != '&') {
            return;
        }
        tk_BUFreadLine(stream);
    }
}

// A group that is never closed ends with its physical line.
void copy_group()
{
    const char closing = tk_current() == '(' ? ')' : '#';
    int depth = 0;
    tk_field = "#";
    ++tk_BUFindex;
    for (; tk_currentClass() != LINE_END; ++tk_BUFindex) {
        const char c = tk_current();
        if (c == closing && depth == 0) {
            ++tk_BUFindex;
            return;
        }
        if (class_of(c) == BLANK) {
            continue;
        }
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        tk_field += upper(c);
    }
}

} // namespace

void tk_BUFinit(PunchStream &stream)
{
    ++tk_filesread;
    at_end = false;
    past_end = false;
    tk_splitting_bus = 0;
    whole_lines = WholeLines{};
    nul_finder = ByteFinder{'\0'};
    end_byte_finder = ByteFinder{static_cast<char>(kEndOfFileByte)};
    tk_BUFreadLine(stream);
    at_end = false;
    tk_eofflag = 0;
    tk_eolnflag = 0;
}

void tk_BUFreadLine(PunchStream &stream)
{
    for (;;) {
        take_line(stream);
        tk_BUFindex = 0;
        tk_skipBlanks();
        const char *text = tk_BUF + tk_BUFindex;
        if (text[0] == '*' && text[1] == '$') {
            if (text[2] == '$') {
                reach_end();
                return;
            }
        } else if (text[0] != '+' || !only_spaces(text + 1)) {
            return;
        }
    }
}

bool tk_takeLineEnd()
{
    return std::exchange(tk_eolnflag, 0) != 0;
}

void tk_noteEndMark(bool met)
{
    tk_eolnflag = met;
}

bool tk_endMarkMet()
{
    return tk_eolnflag != 0;
}

void tk_forgetEndMark()
{
    tk_eolnflag = 0;
}

void tk_stopReading()
{
    tk_eofflag = 1;
}

char tk_nxchar()
{
    return tk_currentClass() == LINE_END ? '\0' : upper(tk_current());
}

const std::string &tk_nxfield(PunchStream &stream)
{
    tk_eolnflag = 0;
    tk_argflag = 0;
    if (tk_current() == '(' || tk_current() == '#') {
        copy_group();
    } else {
        tk_field.clear();
        copy_word(stream);
        field_end = tk_BUFindex;
        field_end_offset = tk_BUFoffset;
        step_over_separator();
    }
    finish_field(stream);
    return tk_field;
}

bool tk_nxnumber(PunchStream &stream, double &value)
{
    const char *end = fast_number(tk_BUF + tk_BUFindex, tk_BUF + tk_BUFlength, value);
    if (end == nullptr || class_of(*end) == ORDINARY || class_of(*end) == CONTINUATION) {
        return false;
    }
    tk_eolnflag = 0;
    tk_argflag = 0;
    tk_BUFindex = static_cast<std::size_t>(end - tk_BUF);
    step_over_separator();
    finish_field(stream);
    return true;
}

std::size_t tk_nxnumbers(PunchStream &stream, NumberColumns &columns, double *values, std::size_t begin,
                         std::size_t end)
{
    if (tk_currentClass() != ORDINARY) {
        return begin;
    }
    const char *const lines_end = whole_lines_end(stream);
    const char *line = nullptr; // the line being read unless it is the current one
    const char *line_end = tk_BUF + tk_BUFlength;
    const char *text = tk_BUF + tk_BUFindex;
    NumberForm *form = &columns[begin % 2];
    NumberForm *other = &columns[1 - begin % 2];
    for (; begin != end; ++begin) {
        const char *behind = form->is_promising() ? form->convert(text, values[begin]) : nullptr;
        if (behind != nullptr && class_of(*behind) == ORDINARY) {
            behind = number_field_end(behind);
        }
        if (behind != nullptr) {
            form->was_right();
        } else {
            behind = unguessed_number(*form, text, line_end, values[begin]);
            if (behind == nullptr) {
                break;
            }
        }
        std::swap(form, other);
        if (behind[0] == ' ' && class_of(behind[1]) == ORDINARY) {
            text = behind + 1;
            continue;
        }
        behind = next_plain_field(behind, lines_end, line);
        if (behind == nullptr) {
            break;
        }
        text = behind;
        line_end = line == nullptr ? line_end : lines_end;
    }
    enter_line(stream, line, text);
    return begin;
}

void tk_dropfields(PunchStream &stream, int count)
{
    for (int i = 0; i < count; ++i) {
        tk_nxfield(stream);
    }
}

void tk_skipfield(PunchStream &stream)
{
    const char first = tk_current();
    const char *end = word_end(tk_BUF + tk_BUFindex);
    if (first == '(' || first == '#' || *end == '&') {
        tk_nxfield(stream);
        return;
    }
    tk_eolnflag = 0;
    tk_argflag = 0;
    tk_BUFindex = static_cast<std::size_t>(end - tk_BUF);
    step_over_separator();
    finish_field(stream);
}

std::size_t tk_skipPlainFields(PunchStream &stream)
{
    if (tk_currentClass() != ORDINARY) { // a separator or the end of a line: an empty field
        return 0;
    }
    const char *text = tk_BUF + tk_BUFindex;
    const PlainFields fields = plain_fields(text, whole_lines_end(stream));
    if (fields.count < 2) {
        return 0;
    }
    const std::string_view passed(text, static_cast<std::size_t>(fields.last - text));
    const std::size_t feed = passed.rfind('\n');
    enter_line(stream, feed == std::string_view::npos ? nullptr : text + feed + 1, fields.last);
    return fields.count - 1;
}

const std::string &tk_nxString(PunchStream &stream)
{
    namebuf.clear();
    for (;;) {
        const char *begin = tk_BUF + tk_BUFindex;
        const char *end = begin;
        while (*end != ' ' && class_of(*end) != LINE_END) {
            ++end;
        }
        namebuf.append(begin, end);
        tk_BUFindex = static_cast<std::size_t>(end - tk_BUF);
        if (begin == end || *end == ' ' || end[-1] != '&') {
            break;
        }
        namebuf.pop_back();
        tk_BUFreadLine(stream);
    }
    while (tk_current() == ' ') {
        ++tk_BUFindex;
    }
    if (tk_currentClass() == LINE_END) {
        tk_BUFreadLine(stream);
        while (tk_current() == '+' || tk_current() == ' ') {
            ++tk_BUFindex;
        }
    }
    return namebuf;
}

bool tk_onFieldLine()
{
    return field_end_offset == tk_BUFoffset;
}

std::string_view tk_textAfterField(std::size_t skip)
{
    if (!tk_onFieldLine() || field_end + skip >= tk_BUFlength) {
        return {};
    }
    return {tk_BUF + field_end + skip, tk_BUFlength - field_end - skip};
}

std::string tk_takeRestOfLine()
{
    ++tk_linesread; // the line is another one now
    std::string rest(tk_BUF + tk_BUFindex, tk_BUFlength - tk_BUFindex);
    tk_BUF = kEmptyLine;
    tk_BUFlength = 0;
    tk_BUFindex = 0;
    return rest;
}

char *tk_nxLine(PunchStream &stream)
{
    char *line = tk_BUFcpStr();
    tk_BUFreadLine(stream);
    return line;
}

char *tk_BUFcpStr()
{
    return slab_text({tk_BUF, tk_BUFlength});
}

char *tk_NEWstr(const char *text)
{
    return text == nullptr ? nullptr : slab_text(text);
}

char *tk_STRappend(const char *first, const char *second)
{
    return slab_text(std::string(first) + second);
}

const char *tk_BUFsubName(const char *first, const char *second)
{
    static std::string line;
    ++tk_linesread;
    line = std::string(first) + "." + second;
    tk_BUFlength = line.size();
    line.append(kReadAhead, '\0');
    tk_BUF = line.c_str();
    tk_BUFindex = 0;
    return tk_BUF;
}

TextPlace tk_BUFplace()
{
    return {tk_BUFoffset, tk_BUFindex, tk_linesread, tk_eolnflag, tk_eofflag, tk_argflag, at_end, past_end};
}

void tk_BUFgoto(PunchStream &stream, const TextPlace &place)
{
    if (place.line != tk_linesread) {
        at_end = place.past_end;
        past_end = false;
        stream_seek(stream, place.offset);
        tk_BUFreadLine(stream);
    }
    at_end = place.at_end;
    tk_BUFindex = std::min(place.index, tk_BUFlength);
    tk_eolnflag = place.eolnflag;
    tk_eofflag = place.eofflag;
    tk_argflag = place.argflag;
}

void tk_BUFmark(PunchStream &)
{
    mark = tk_BUFplace();
}

void tk_BUFrestore(PunchStream &stream)
{
    tk_BUFgoto(stream, mark);
}

void tk_skipBlanks()
{
    tk_BUFindex = static_cast<std::size_t>(after_blanks(tk_BUF + tk_BUFindex) - tk_BUF);
}

bool tk_continueLine(PunchStream &stream, bool skip_empty_lines)
{
    do {
        tk_BUFreadLine(stream);
    } while (!tk_eofflag && ((tk_skipcomments && tk_current() == '*') ||
                             (skip_empty_lines && tk_currentClass() == LINE_END)));
    if (tk_current() != '+') {
        tk_eolnflag = 1;
        return false;
    }
    ++tk_BUFindex;
    tk_skipBlanks();
    tk_eolnflag = 0;
    return true;
}
