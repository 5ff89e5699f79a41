// SPDX-License-Identifier: MIT
// Text on its way out. Names, titles, units, ports and paths are bytes of files that anybody may have made:
// each goes through exactly one of these, that of the place where it is to stand.
#ifndef TRESK_REPORT_TEXT_H
#define TRESK_REPORT_TEXT_H

#include <string>
#include <string_view>

namespace report
{

// Well-formed UTF-8 in one line: U+FFFD for each byte that belongs to no character, and for each control
// character (line feeds and tabs too), line or paragraph separator, mark or override of the direction of
// writing, and non-character. What all of the others do first.
std::string clean_text(std::string_view bytes);

// Text between tags, or in a quoted attribute.
std::string html_text(std::string_view bytes);
std::string html_attribute(std::string_view bytes);

// The same for many lines: line feeds and tabs stay.
std::string html_lines(std::string_view bytes);

// A JSON text, quotes included.
std::string json_text(std::string_view bytes);

// JSON that stands within <script>: no "<", ">" or "&", which only texts can hold.
std::string script_json(std::string_view json);

// A field of a CSV file, quoted. An apostrophe stands before what a spreadsheet would take for a formula.
std::string csv_field(std::string_view bytes);

// A line for a terminal, or a field between tabs.
std::string terminal_line(std::string_view bytes);

// Bytes within a URL: all but letters, digits and "-._~" percent-encoded.
std::string url_bytes(std::string_view bytes);

// Bytes in lower-case hexadecimal.
std::string hexadecimal(std::string_view bytes);

// The shortest decimal number that is exactly this value; "nan", "inf" or "-inf".
std::string number_text(double value);

// The same as JSON: "nan", "inf" and "-inf" in quotes.
std::string json_number(double value);

} // namespace report

#endif
