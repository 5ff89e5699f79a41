// SPDX-License-Identifier: MIT
// Files of the source tree that are part of the program (embed_text in CMakeLists.txt).
#ifndef TRESK_REPORT_EMBEDDED_H
#define TRESK_REPORT_EMBEDDED_H

#include <string_view>

namespace report
{

extern const std::string_view kResultSchema;  // of result.json
extern const std::string_view kHistorySchema; // tables of a history
extern const std::string_view kPageStyle;     // web/report.css
extern const std::string_view kPageScript;    // the scripts of web/
extern const std::string_view kTreeStyle;     // web/report.css and web/tree/tree.css
extern const std::string_view kTreeScript;    // web/base.js and the scripts of web/tree/

} // namespace report

#endif
