// SPDX-License-Identifier: MIT
#include "driver/tk_main.h"

#include "compare/events.h"
#include "driver/compare_files.h"
#include "driver/options.h"
#include "read/tk_read.h"
#include "support/exit_bits.h"
#include "support/settings.h"
#include "support/transcript.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

const char kTreskVersion[] = "3.94";

namespace
{

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

int run_index_mode(const RunOptions &options)
{
    if (ref_file == nullptr) {
        transcript_puts("No punch file to index\nUsage: tresk -index punch_file\n");
        return report_grade(EXIT_FILE, options.masks);
    }
    if (!indexmirel && !indexrdinp) {
        transcript_puts("\n  Adding punch index table\n\n");
    }
    const int result = readfile(ref_file);
    if (!indexrdinp) {
        transcript_puts("\n");
    }
    return result == READ_GOOD ? 0 : report_grade(EXIT_FILE, options.masks);
}

int run_compare_mode(const RunOptions &options)
{
    if (com_file == nullptr) {
        transcript_puts(ref_file == nullptr ? "Missing both punch files\n"
                                            : "Missing the second punch file\n");
        transcript_puts("\nUsage: tresk punch_file1 punch_file2\n");
        return report_grade(EXIT_FILE, options.masks);
    }
    return report_grade(compare_files(ref_file, com_file), options.masks);
}

const char *tolerance_mode()
{
    if (glDefaultChecking) {
        return "default";
    }
    if (glAonly) {
        return "Aonly";
    }
    if (glRonly) {
        return "Ronly";
    }
    return glAorR ? "AorR" : "AandR";
}

// Returns the exit code.
int run(const RunOptions &options)
{
    if (options.information_only) {
        return 0;
    }
    const bool mode_is_clear = check_tolerance_mode();
    note_start({glAbstol, glReltol, mode_is_clear ? tolerance_mode() : "", desert != 0,
                options.masks.positive, options.masks.negative});
    if (!mode_is_clear) {
        transcript_puts("\nToo many tolerance control options specified.\n"
                        "Only one of the following is allowed: -Aonly, -Ronly, -AorR, -AandR\n\n");
        return report_grade(EXIT_ARGUMENTS, options.masks);
    }
    if (!options.indexscript && !indexmirel && !indexrdinp) {
        transcript_printf("\n***** tresk, version %s *****\n\n", kTreskVersion);
    }
    return pun_index ? run_index_mode(options) : run_compare_mode(options);
}

} // namespace

void prepare_process()
{
    // A reader of the transcript that goes away, or a file that may not grow, must not turn the grade
    // into a signal: the write fails instead.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    occupy_standard_streams();
}

int run_tresk(int argc, char **argv)
{
    prepare_process();
    read_environment();
    return run(scan_arguments(argc, argv));
}

void tk_main(int argc, char **argv)
{
    end_run(run_tresk(argc, argv));
}
