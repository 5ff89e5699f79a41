// SPDX-License-Identifier: MIT
// Words for the codes of a result.
#ifndef TRESK_REPORT_WORDS_H
#define TRESK_REPORT_WORDS_H

#include <string_view>
#include <vector>

namespace report
{

// "PASS" ... "FAIL_SV" of the grades 0 to 5, "NO_GRADE" of any other.
std::string_view grade_word(int grade);

// "tolerance", "file" ... of the bits of an exit status, lowest first.
std::vector<std::string_view> status_words(unsigned status);

// "none", "text", "binary", "binary_dbl" or "mixed" of a DataFormat.
std::string_view format_word(int format);

// "read", "damaged", "missing" or "unreadable" of a ReadResult.
std::string_view read_result_word(int read_result);

} // namespace report

#endif
