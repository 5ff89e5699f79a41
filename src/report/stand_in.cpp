// SPDX-License-Identifier: MIT
// Until the page is there.
#include "report/page.h"

namespace report
{

void write_page(std::ostream &out, const Result &, const PageInput &)
{
    out << "<!DOCTYPE html>\n";
}

} // namespace report
