// SPDX-License-Identifier: MIT
// What is around the text of every page: one HTML file with its style and script in it.
#ifndef TRESK_REPORT_PAGE_SHELL_H
#define TRESK_REPORT_PAGE_SHELL_H

#include <ostream>
#include <string>
#include <string_view>

namespace report
{

struct PageShell {
    std::string title; // any text
    std::string_view style;
    std::string_view script;
};

// Writes all up to the start of the body, with a policy that allows this style and this script and nothing
// else: no name of a file can become code, and nothing is ever loaded or sent.
void begin_page(std::ostream &out, const PageShell &shell);

// Writes the script of the shell.
void write_script(std::ostream &out, std::string_view script);

void end_page(std::ostream &out);

} // namespace report

#endif
