// SPDX-License-Identifier: MIT
// The scanner of punch-file text: lines and fields. It holds one input line at a time with a read index,
// joins continuation lines, and hands out fields (upper-cased words), raw strings and whole lines; signal
// names are the matter of support/signal_scanner. One file is scanned at a time.
//
// The current line is not copied: it is a view of the stream's window, ended by a byte that no line
// can contain (line feed, NUL or 255). A NUL ends the line's text, a byte 255 the whole file. Every
// call may read on and so invalidate earlier views; callers copy what they keep.
//
// The end is final: once the end of the file or the end marker "*$$" was met, every further line is
// an empty line with tk_eofflag and tk_eolnflag set.
#ifndef TRESK_SUPPORT_TK_BUFFER_H
#define TRESK_SUPPORT_TK_BUFFER_H

#include "support/char_class.h"
#include "support/number_form.h"
#include "support/punch_stream.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// State of the scanner, written by its functions alone.
extern const char *tk_BUF;        // the current line, without its line feed; a CR stays in it
extern std::size_t tk_BUFlength;  // its length in bytes
extern std::size_t tk_BUFindex;   // next character to read
extern std::int64_t tk_BUFoffset; // file offset of its first byte
extern int tk_eofflag;            // the end of the file, or the end marker, was reached
extern int tk_eolnflag;           // the field just returned ended its logical line; see below
extern int tk_argflag;            // the field just returned was followed by "="
extern int tk_error;              // a line copy could not be made (never: allocation failures end the run)
extern int tk_skipcomments;       // skip "*" lines between fields; punch files are read with it off
extern std::string tk_field;      // result of tk_nxfield and tk_nxsignal
extern std::string namebuf;       // result of tk_nxString
extern std::size_t tk_linesread;  // lines taken from files in this run, those read again included
extern std::size_t tk_filesread;  // files begun in this run

// Starts a file: reads its first line, then clears the flags and any bus range left over. So an end
// marker in the first line is a comment like others.
void tk_BUFinit(PunchStream &stream);

// Reads the next line. Lines beginning with "*$" and continuations with nothing on them are passed
// over.
void tk_BUFreadLine(PunchStream &stream);

// What tk_eolnflag stands for, each in its own words, so that no reader sets or clears flags:
// - the end of a logical line: the flag itself, as fields and names leave it. A reader that goes on with
//   the next line takes it.
// - the end mark of binary values, which are read past the scanner.
bool tk_takeLineEnd(); // whether the last field ended its line; the flag is clear afterwards
void tk_noteEndMark(bool met);
bool tk_endMarkMet();
void tk_forgetEndMark();

// Makes the readers stop here, as if the file ended: sets tk_eofflag.
void tk_stopReading();

// The character at the read index, a..z in upper case, or NUL at the end of the line. Does not advance.
char tk_nxchar();

// The next field, in upper case. A field that begins with "(" or "#" is a group up to its closing
// character, returned without blanks behind a "#".
const std::string &tk_nxfield(PunchStream &stream);

// The next field as a number where the fast path can convert it; false leaves the scanner where it
// was, for tk_nxfield and the checked conversion to decide.
bool tk_nxnumber(PunchStream &stream, double &value);

// The columns of the numbers of a table, taken in turn: x and y.
using NumberColumns = std::array<NumberForm, 2>;

// Takes numbers that are each followed by another field, with only blanks, commas or the beginning of a
// continuation line between them, as values[begin] up to values[end - 1] at most; values[i] is of the column
// i % 2. Returns the index behind the last of them, which is begin where tk_nxnumber must decide. Not to be
// called with tk_eofflag set.
std::size_t tk_nxnumbers(PunchStream &stream, NumberColumns &columns, double *values, std::size_t begin,
                         std::size_t end);

// Takes count fields and keeps the last one only.
void tk_dropfields(PunchStream &stream, int count);

// Steps over the next field without handing it out in tk_field.
void tk_skipfield(PunchStream &stream);

// From the beginning of a field: steps over fields of the current line and its continuation lines, many at
// a time, as long as they are plain and not the last. Returns their number, which may be 0 anywhere. Not to
// be called with tk_eofflag set.
std::size_t tk_skipPlainFields(PunchStream &stream);

// The raw text up to the next space. Uses up the line it ends.
const std::string &tk_nxString(PunchStream &stream);

// Whether the scanner still stands on the line that the last field ended in.
bool tk_onFieldLine();

// What follows the last field on its line, without the first skip characters; empty when that field
// was the last of its line.
std::string_view tk_textAfterField(std::size_t skip);

// The rest of the current line, blanks included. Leaves an empty line behind, so that the bytes
// after it can be read straight from the stream.
std::string tk_takeRestOfLine();

// A copy of the whole current line; then reads the next one.
char *tk_nxLine(PunchStream &stream);

char *tk_BUFcpStr();               // a copy of the whole current line
char *tk_NEWstr(const char *text); // a copy of text, null for null

// Part of the interface, called by nothing here.
char *tk_STRappend(const char *first, const char *second);        // both texts joined
const char *tk_BUFsubName(const char *first, const char *second); // makes "first.second" the current line

// A place of the scanner. A pending bus range is no part of it.
struct TextPlace {
    std::int64_t offset = 0; // of the line
    std::size_t index = 0;
    std::size_t line = 0; // tk_linesread when the line was taken
    int eolnflag = 0;
    int eofflag = 0;
    int argflag = 0;
    bool at_end = false;
    bool past_end = false;
};

// The place of the scanner, and going back to it. Staying on the same line costs nothing.
TextPlace tk_BUFplace();
void tk_BUFgoto(PunchStream &stream, const TextPlace &place);

// The same with one place that is kept for the caller.
void tk_BUFmark(PunchStream &stream);
void tk_BUFrestore(PunchStream &stream);

// The rest serves the scanner itself.

inline char tk_current()
{
    return tk_BUF[tk_BUFindex];
}

inline CharClass tk_currentClass()
{
    return class_of(tk_current());
}

// Whether the rest of the line is a comment, or nothing.
inline bool tk_onCommentOrEmpty()
{
    return tk_current() == '*' || tk_currentClass() == LINE_END;
}

void tk_skipBlanks();

// Reads the line that follows the end of a field. True when it continues the logical line: the
// index is then behind its "+" and the blanks there.
bool tk_continueLine(PunchStream &stream, bool skip_empty_lines);

#endif
