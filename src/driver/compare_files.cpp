// SPDX-License-Identifier: MIT
#include "driver/compare_files.h"

#include "compare/rerun_modify_lines.h"
#include "driver/tk_rerun.h"
#include "read/record_dump.h"
#include "read/signal_names.h"
#include "read/signal_totals.h"
#include "read/tk_read.h"
#include "support/exit_bits.h"
#include "support/settings.h"
#include "support/transcript.h"

namespace
{

// Reads a file. Returns whether there is one.
// Kept: one that cannot be opened or is malformed is compared with what was read of it
// (docs/verdict.md, "Files that cannot be read").
bool read_punch_file(PF *file, Side side)
{
    transcript_printf("Reading %s file (%s) ...\n", side == Side::REFERENCE ? "reference" : "comparison",
                      file->name);
    const int result = readfile(file);
    if (result == READ_GOOD) {
        print_signal_totals();
    }
    note_file_read(*file, side, result);
    return result != READ_MISSING;
}

// A file of which something could not be read again, or that has changed since it was opened, was not
// compared as it is.
unsigned recheck(const PF &file, Side side)
{
    const int result = recheck_file(&file);
    if (result == READ_GOOD) {
        return 0;
    }
    note_file_read(file, side, result);
    return EXIT_FILE;
}

unsigned compare_formats(const PF &ref, const PF &com)
{
    unsigned bits = 0;
    if (ref.format == MIXED_BINARY) {
        bits |= report_mixed_format(ref, Side::REFERENCE);
    }
    if (com.format == MIXED_BINARY) {
        bits |= report_mixed_format(com, Side::COMPARISON);
    }
    return bits != 0 || ref.format == com.format ? bits : report_formats(ref, com);
}

void dump_files(const PF *ref, const PF *com)
{
    transcript_puts("Reference ");
    print_all(ref);
    transcript_puts("Comparison ");
    print_all(com);
}

} // namespace

unsigned compare_files(PF *ref, PF *com)
{
    if (!read_punch_file(ref, Side::REFERENCE) || !read_punch_file(com, Side::COMPARISON)) {
        return EXIT_FILE;
    }
    transcript_puts("Done reading the punch files\n\n");
    if (desert) {
        convert_signal_names(ref);
        convert_signal_names(com);
    }
    if (debugging(DEBUG_DUMP)) {
        dump_files(ref, com);
    }
    transcript_printf("Absolute error threshold = %9.3e\n", glAbstol);
    transcript_printf("Relative error threshold = %9.3e\n", glReltol);
    unsigned bits = tk_rerun(ref, com);
    bits |= recheck(*ref, Side::REFERENCE) | recheck(*com, Side::COMPARISON);
    return bits | compare_formats(*ref, *com);
}
