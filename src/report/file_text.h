// SPDX-License-Identifier: MIT
// Small files as texts, read and written whole.
#ifndef TRESK_REPORT_FILE_TEXT_H
#define TRESK_REPORT_FILE_TEXT_H

#include <cstddef>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace report
{

// The first bytes of a regular file, at most so many; nothing of one that cannot be read.
std::optional<std::string> read_text(const std::string &path, std::size_t most);

// The lines of a text, without their ends; what stands behind the last line end is a line too.
std::vector<std::string_view> lines_of(std::string_view text);

// Takes the part up to a separator off the front of the text, and the separator; all of it where there is
// none.
std::string_view take_field(std::string_view &text, char separator);

// The value of a decimal number, "nan", "inf" or "-inf"; nothing of any other text.
std::optional<double> read_number(std::string_view text);

// Writes a file beside its name (PATH.new) and renames it. Throws WriteFault (output_folder.h), without
// leaving anything behind.
void replace_file(const std::string &path, const std::function<void(std::ostream &)> &content);

} // namespace report

#endif
