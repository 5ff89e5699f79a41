// SPDX-License-Identifier: MIT
#include "driver/tk_main.h"

#include "compare/exit_bits.h"
#include "driver/options.h"
#include "driver/tk_rerun.h"
#include "read/codes.h"
#include "read/record_dump.h"
#include "read/signal_names.h"
#include "read/signal_totals.h"
#include "read/tk_read.h"
#include "support/settings.h"
#include "support/transcript.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace
{

constexpr char kVersion[] = "3.94";

// Settles the tolerance mode. False when the user chose more than one.
bool check_tolerance_mode()
{
    const int modes = glAonly + glRonly + glAorR + glAandR;
    glDefaultChecking = modes == 0;
    return modes <= 1;
}

// Takes the places of standard streams that the caller has closed, so that no file opened later can
// be one of them and receive the transcript.
void occupy_standard_streams()
{
    int fd = open("/dev/null", O_RDWR);
    while (fd >= 0 && fd <= STDERR_FILENO) {
        fd = open("/dev/null", O_RDWR);
    }
    close(fd);
}

[[noreturn]] void run_index_mode(const RunOptions &options)
{
    if (ref_file == nullptr) {
        transcript_puts("No punch file to index\nUsage: tresk -index punch_file\n");
        end_with_grade(EXIT_FILE, options.masks);
    }
    if (!indexmirel && !indexrdinp) {
        transcript_puts("\n  Adding punch index table\n\n");
    }
    const int result = readfile(ref_file);
    if (!indexrdinp) {
        transcript_puts("\n");
    }
    if (result == READ_GOOD) {
        end_run(0);
    }
    end_with_grade(EXIT_FILE, options.masks);
}

void require_two_files(const RunOptions &options)
{
    if (com_file != nullptr) {
        return;
    }
    transcript_puts(ref_file == nullptr ? "Missing both punch files\n" : "Missing the second punch file\n");
    transcript_puts("\nUsage: tresk punch_file1 punch_file2\n");
    end_with_grade(EXIT_FILE, options.masks);
}

// Reads a file. Only one that does not exist ends the run; one that cannot be opened or is malformed
// is compared with what was read of it, as harnesses have always seen it.
void read_punch_file(PF *file, const char *what, const RunOptions &options)
{
    transcript_printf("Reading %s file (%s) ...\n", what, file->name);
    const int result = readfile(file);
    if (result == READ_GOOD) {
        print_signal_totals();
    } else if (result == READ_MISSING) {
        end_with_grade(EXIT_FILE, options.masks);
    }
}

// Bits for what the data formats of the two files tell.
unsigned compare_formats()
{
    unsigned bits = 0;
    if (ref_file->format == MIXED_BINARY) {
        bits |= EXIT_FILE;
        transcript_puts("\nThe reference file DOES NOT use a consistent data format\n\n");
    }
    if (com_file->format == MIXED_BINARY) {
        bits |= EXIT_FILE;
        transcript_puts("\nThe comparison file DOES NOT use a consistent data format\n\n");
    }
    if (bits == 0 && ref_file->format != com_file->format) {
        bits |= EXIT_FORMAT;
        transcript_puts("\nThese punch files DO NOT have the same data format\n\n");
    }
    return bits;
}

[[noreturn]] void run_compare_mode(const RunOptions &options)
{
    require_two_files(options);
    read_punch_file(ref_file, "reference", options);
    read_punch_file(com_file, "comparison", options);
    transcript_puts("Done reading the punch files\n\n");
    if (desert) {
        convert_signal_names(ref_file);
        convert_signal_names(com_file);
    }
    if (debugging(DEBUG_DUMP)) {
        transcript_puts("Reference ");
        print_all(ref_file);
        transcript_puts("Comparison ");
        print_all(com_file);
    }
    transcript_printf("Absolute error threshold = %9.3e\n", glAbstol);
    transcript_printf("Relative error threshold = %9.3e\n", glReltol);
    const unsigned bits = tk_rerun(ref_file, com_file);
    end_with_grade(static_cast<int>(bits | compare_formats()), options.masks);
}

} // namespace

void tk_main(int argc, char **argv)
{
    // A reader of the transcript that goes away, or a file that may not grow, must not turn the grade
    // into a signal: the write fails instead.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    occupy_standard_streams();
    read_environment();
    const RunOptions options = scan_arguments(argc, argv);
    if (!check_tolerance_mode()) {
        transcript_puts("\nToo many tolerance control options specified.\n"
                        "Only one of the following is allowed: -Aonly, -Ronly, -AorR, -AandR\n\n");
        end_with_grade(EXIT_ARGUMENTS, options.masks);
    }
    if (!options.indexscript && !indexmirel && !indexrdinp) {
        transcript_printf("\n***** tresk, version %s *****\n\n", kVersion);
    }
    if (pun_index) {
        run_index_mode(options);
    }
    run_compare_mode(options);
}
