// SPDX-License-Identifier: MIT
#include "raw2punch/converter.h"
#include "raw2punch/exit_codes.h"
#include "raw2punch/options.h"
#include "raw2punch/output_file.h"
#include "raw2punch/punch_names.h"

#include <cstdio>
#include <exception>
#include <new>

int main(int argc, char **argv)
{
    try {
        const CommandLine line = read_command_line(argc, argv);
        if (line.exit_code >= 0) {
            return line.exit_code;
        }
        remove_output_on_signals();
        Report report;
        convert(line.options, report);
        report.finish();
        return report.left_out_count() == 0 || line.allow_left_out ? EXIT_CONVERTED : EXIT_LEFT_OUT;
    } catch (const std::bad_alloc &) {
        std::fputs("raw2punch: error: out of memory\n", stderr);
    } catch (const std::exception &fault) {
        std::fprintf(stderr, "raw2punch: error: %s\n", title_text(fault.what()).c_str());
    }
    return EXIT_FAILED;
}
