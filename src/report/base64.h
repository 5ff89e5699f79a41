// SPDX-License-Identifier: MIT
#ifndef TRESK_REPORT_BASE64_H
#define TRESK_REPORT_BASE64_H

#include <string>
#include <string_view>

namespace report
{

// With padding, without line breaks.
std::string base64(std::string_view bytes);

} // namespace report

#endif
