// SPDX-License-Identifier: MIT
#include "support/tk_buffer.h"

#include "support/char_class.h"
#include "support/number.h"
#include "support/section_memory.h"
#include "support/slab.h"

#include <climits>
#include <cstring>

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
int tk_splitting_bus = 0;

namespace
{

// The line behind the end of a file, and what is left of a line whose data follows: always readable
// as far as words are searched.
constexpr char kEmptyLine[kReadAhead + 1] = "";

char upper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
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

ByteFinder nul_finder{'\0'};
ByteFinder end_byte_finder{static_cast<char>(kEndOfFileByte)};

bool at_end = false;   // the last line has been handed out
bool past_end = false; // the current line is an empty one behind the end

std::size_t field_end = 0;         // index behind the last field's text ...
std::int64_t field_end_offset = 0; // ... in the line that starts here

std::string bus_left_part;
std::string bus_right_part;
int bus_to = 0;
int bus_current = 0;
int saved_eolnflag = 0;

struct Mark {
    std::int64_t offset = 0;
    std::size_t index = 0;
    int eolnflag = 0;
    int eofflag = 0;
    int argflag = 0;
    bool past_end = false;
};

Mark mark;

char current()
{
    return tk_BUF[tk_BUFindex];
}

CharClass current_class()
{
    return class_of(current());
}

const char *after_blanks(const char *text)
{
    while (class_of(*text) == BLANK) {
        ++text;
    }
    return text;
}

void skip_blanks()
{
    tk_BUFindex = static_cast<std::size_t>(after_blanks(tk_BUF + tk_BUFindex) - tk_BUF);
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

bool only_spaces(const char *text)
{
    while (*text == ' ') {
        ++text;
    }
    return class_of(*text) == LINE_END;
}

// Reads the line that follows the end of a field. True when it continues the logical line: the
// index is then behind its "+" and the blanks there.
bool step_into_continuation(PunchStream &stream, bool skip_empty_lines)
{
    do {
        tk_BUFreadLine(stream);
    } while (!tk_eofflag &&
             ((tk_skipcomments && current() == '*') || (skip_empty_lines && current_class() == LINE_END)));
    if (current() != '+') {
        tk_eolnflag = 1;
        return false;
    }
    ++tk_BUFindex;
    skip_blanks();
    tk_eolnflag = 0;
    return true;
}

// The "," or "=" that ends a word.
void step_over_separator()
{
    if (current_class() == SEPARATOR) {
        tk_argflag |= current() == '=';
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
        step_into_continuation(stream, false);
    }
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
    const char closing = current() == '(' ? ')' : '#';
    int depth = 0;
    tk_field = "#";
    ++tk_BUFindex;
    for (; current_class() != LINE_END; ++tk_BUFindex) {
        const char c = current();
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

bool is_comment_or_empty()
{
    return current() == '*' || current_class() == LINE_END;
}

void read_past_comments(PunchStream &stream)
{
    do {
        tk_BUFreadLine(stream);
    } while (!tk_eofflag && is_comment_or_empty());
}

// The ":" found in the sections of a name.
struct Colons {
    std::int64_t count = 0;
    std::size_t last = 0; // index in tk_field
};

SectionMemory first_name_memory; // of the two names that looking ahead takes
SectionMemory second_name_memory;
SectionMemory *section_memory = nullptr; // that of the name being looked at, null unless looking ahead

// Called where a section enters a line. False where looking ahead can leave it.
bool must_read_on(const Colons &colons)
{
    return section_memory == nullptr ||
           !section_memory->enter_line(tk_BUFoffset + static_cast<std::int64_t>(tk_BUFindex), colons.count);
}

// Copies characters up to one that may mean something inside or outside the sections of a name.
void copy_plain_name_text()
{
    const char *begin = tk_BUF + tk_BUFindex;
    const char *end = begin;
    while (is_plain_in_names(*end)) {
        ++end;
    }
    tk_field.append(begin, end);
    tk_BUFindex += static_cast<std::size_t>(end - begin);
}

// Continues a section on the next line. False if the file ended.
bool enter_line_of_section(PunchStream &stream)
{
    if (current() == '&') {
        tk_BUFreadLine(stream);
        return true;
    }
    read_past_comments(stream);
    if (is_comment_or_empty()) {
        return false;
    }
    ++tk_BUFindex; // the continuation mark
    skip_blanks();
    return true;
}

// Copies a "(...)" or "[...]" section of a name, which may go on over line ends, without its spaces.
// False if it was left before its end.
bool copy_section(PunchStream &stream, Colons &colons)
{
    tk_field += current();
    ++tk_BUFindex;
    for (;;) {
        copy_plain_name_text();
        const char c = current();
        if (c == '&' || class_of(c) == LINE_END) {
            if (!enter_line_of_section(stream)) {
                return true; // what there is of it
            }
            if (!must_read_on(colons)) {
                return false;
            }
        } else {
            ++tk_BUFindex;
            if (c == ':') {
                ++colons.count;
                colons.last = tk_field.size();
            }
            if (c != ' ') {
                tk_field += c;
            }
            if (c == ')' || c == ']') {
                return true;
            }
        }
    }
}

// Copies a signal name.
Colons copy_name(PunchStream &stream)
{
    Colons colons;
    bool after_section = false;
    tk_field.clear();
    for (;;) {
        const char c = current();
        if (class_of(c) == LINE_END || class_of(c) == BLANK || class_of(c) == SEPARATOR || c == '\r' ||
            c == ')' || (c == '(' && after_section) || (c == '&' && tk_field.empty())) {
            return colons;
        }
        if (c == '&') {
            tk_BUFreadLine(stream);
            if (!after_section) {
                tk_BUFindex = 0;
            }
        } else if (c == '(' || c == '[') {
            if (!copy_section(stream, colons)) {
                return colons;
            }
            after_section = true;
        } else {
            tk_field += c; // also "]" and ":", which mean nothing here
            ++tk_BUFindex;
            copy_plain_name_text();
            after_section = false;
        }
    }
}

void finish_signal(PunchStream &stream)
{
    for (;;) {
        const char c = current();
        if (c == '&') {
            read_past_comments(stream);
        } else if (current_class() == LINE_END) {
            if (!step_into_continuation(stream, true)) {
                return;
            }
        } else if (current_class() == BLANK || current_class() == SEPARATOR || c == '(' || c == ')') {
            tk_argflag |= c == '=';
            ++tk_BUFindex;
        } else {
            return;
        }
    }
}

// The number in digits, at most INT_MAX.
int bus_bound(std::string_view digits)
{
    long long bound = 0;
    for (const char c : digits) {
        bound = bound * 10 + (c - '0');
        if (bound > INT_MAX) {
            return INT_MAX;
        }
    }
    return static_cast<int>(bound);
}

void make_bus_name()
{
    tk_field = bus_left_part + std::to_string(bus_current) + bus_right_part;
}

// Turns the name in tk_field into the first element of its bus range, if there are digits on both
// sides of its one colon.
void split_bus(std::size_t colon)
{
    std::size_t begin = colon;
    while (begin > 0 && is_digit(tk_field[begin - 1])) {
        --begin;
    }
    std::size_t end = colon + 1;
    while (end < tk_field.size() && is_digit(tk_field[end])) {
        ++end;
    }
    if (begin == colon || end == colon + 1) {
        return;
    }
    const std::string name = tk_field;
    bus_left_part = name.substr(0, begin);
    bus_right_part = name.substr(end);
    bus_current = bus_bound(std::string_view(name).substr(begin, colon - begin));
    bus_to = bus_bound(std::string_view(name).substr(colon + 1, end - colon - 1));
    make_bus_name();
    if (bus_current != bus_to) {
        tk_splitting_bus = 1;
        saved_eolnflag = tk_eolnflag;
        tk_eolnflag = 0;
    }
}

void next_bus_element()
{
    bus_current += bus_current < bus_to ? 1 : -1;
    make_bus_name();
    if (bus_current == bus_to) {
        tk_splitting_bus = 0;
        tk_eolnflag = saved_eolnflag;
    }
}

} // namespace

void tk_BUFinit(PunchStream &stream)
{
    at_end = false;
    past_end = false;
    tk_splitting_bus = 0;
    first_name_memory.forget();
    second_name_memory.forget();
    nul_finder = ByteFinder{'\0'};
    end_byte_finder = ByteFinder{static_cast<char>(kEndOfFileByte)};
    tk_BUFreadLine(stream);
    tk_eofflag = 0;
    tk_eolnflag = 0;
}

void tk_BUFreadLine(PunchStream &stream)
{
    for (;;) {
        take_line(stream);
        tk_BUFindex = 0;
        skip_blanks();
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

char tk_nxchar()
{
    return current_class() == LINE_END ? '\0' : upper(current());
}

const std::string &tk_nxfield(PunchStream &stream)
{
    tk_eolnflag = 0;
    tk_argflag = 0;
    if (current() == '(' || current() == '#') {
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

void tk_dropfields(PunchStream &stream, int count)
{
    for (int i = 0; i < count; ++i) {
        tk_nxfield(stream);
    }
}

void tk_skipfield(PunchStream &stream)
{
    const char first = current();
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

std::size_t tk_skipPlainFields()
{
    const PlainFields fields = plain_fields(tk_BUF + tk_BUFindex, tk_BUF + tk_BUFlength);
    if (fields.count < 2) {
        return 0;
    }
    tk_BUFindex = static_cast<std::size_t>(fields.last - tk_BUF);
    return fields.count - 1;
}

const std::string &tk_nxsignal(PunchStream &stream)
{
    if (tk_splitting_bus) {
        next_bus_element();
        return tk_field;
    }
    tk_eolnflag = 0;
    tk_argflag = 0;
    const Colons colons = copy_name(stream);
    if (section_memory != nullptr) {
        if (section_memory->is_known()) {
            return tk_field;
        }
        section_memory->end_name(colons.count);
    }
    finish_signal(stream);
    if (colons.count == 1) {
        split_bus(colons.last);
    }
    return tk_field;
}

bool tk_lookAheadForPwl(PunchStream &stream)
{
    SectionMemory &first = first_name_memory;
    SectionMemory &second = second_name_memory;
    first.begin_name();
    second.begin_name();
    section_memory = &first;
    tk_nxsignal(stream);
    section_memory = &second;
    bool found = false;
    bool bus_split = tk_splitting_bus != 0;
    if (!first.is_known() && !tk_eolnflag) {
        found = tk_nxsignal(stream) == "PWL" && !second.is_known();
        bus_split = bus_split || tk_splitting_bus != 0;
    }
    section_memory = nullptr;
    second.remember(); // a name with a section is not PWL, whatever follows
    if (!found && !bus_split) {
        first.remember();
    }
    return found;
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
    while (current() == ' ') {
        ++tk_BUFindex;
    }
    if (current_class() == LINE_END) {
        tk_BUFreadLine(stream);
        while (current() == '+' || current() == ' ') {
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
    line = std::string(first) + "." + second;
    tk_BUFlength = line.size();
    line.append(kReadAhead, '\0');
    tk_BUF = line.c_str();
    tk_BUFindex = 0;
    return tk_BUF;
}

void tk_BUFmark(PunchStream &)
{
    mark = Mark{tk_BUFoffset, tk_BUFindex, tk_eolnflag, tk_eofflag, tk_argflag, past_end};
}

void tk_BUFrestore(PunchStream &stream)
{
    at_end = mark.past_end;
    past_end = false;
    stream_seek(stream, mark.offset);
    tk_BUFreadLine(stream);
    tk_BUFindex = mark.index < tk_BUFlength ? mark.index : tk_BUFlength;
    tk_eolnflag = mark.eolnflag;
    tk_eofflag = mark.eofflag;
    tk_argflag = mark.argflag;
}
