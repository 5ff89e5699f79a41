// SPDX-License-Identifier: MIT
#include "report/comparison.h"

#include "report/recorder.h"
#include "report/report_files.h"
#include "report/tresk_run.h"
#include "support/transcript.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <exception>
#include <fcntl.h>
#include <malloc.h>
#include <sys/prctl.h>
#include <unistd.h>
#include <utility>

namespace report
{

namespace
{

// Runs tresk on its arguments. Returns the seconds that it took.
double run_on(const std::vector<std::string> &arguments)
{
    const auto start = std::chrono::steady_clock::now();
    run_tresk_on(arguments);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The parent takes the transcript for ended when nobody can write to it any more.
void end_transcript()
{
    transcript_flush();
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere >= 0) {
        dup2(nowhere, STDERR_FILENO);
        close(nowhere);
    } else {
        close(STDERR_FILENO);
    }
}

// Memory that one figure gives back is what the next one takes: it need not go to the system and come back
// cleared each time.
void keep_freed_memory()
{
#ifdef M_TRIM_THRESHOLD
    constexpr int kMost = 16 << 20;
    mallopt(M_MMAP_THRESHOLD, kMost);
    mallopt(M_TRIM_THRESHOLD, kMost);
#endif
}

// False when the parent is no more.
bool wait_for_go(int go)
{
    char byte = 0;
    ssize_t got = 0;
    do {
        got = read(go, &byte, 1);
    } while (got < 0 && errno == EINTR);
    return got == 1;
}

} // namespace

void put_arguments(const TreskArguments &arguments, Result &result)
{
    result.golden.path = arguments.golden;
    result.regression.path = arguments.regression;
    result.options.arguments = arguments.options;
}

void compare_and_end(const PairOptions &options, const OutputFolder *folder, const ChildEnds &ends,
                     Handover &handover)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL); // nobody waits for the grade then
    dup2(ends.transcript, STDERR_FILENO);
    close(ends.transcript);
    Recorder recorder(
        {static_cast<std::size_t>(options.findings), static_cast<std::size_t>(options.figures)});
    recorder.on_progress = [&handover](const Result &result) {
        put_progress(result, handover);
    };
    listener = &recorder;
    const double seconds = run_on(options.arguments.tresk);
    listener = nullptr;
    end_transcript();
    if (folder == nullptr) {
        _exit(0);
    }
    keep_freed_memory();
    try {
        Result result = recorder.take_result();
        result.seconds = seconds;
        put_arguments(options.arguments, result);
        std::vector<Figure> figures = page_figures(result, options); // while digests are made
        if (!wait_for_go(ends.go) || !handover.transcript_is_whole) {
            _exit(0);
        }
        take_digests(handover, result);
        write_report_files(*folder, result, std::move(figures), options);
        handover.is_written = true;
    } catch (const std::exception &fault) {
        copy_text(handover.fault, fault.what());
    }
    _exit(0); // memory is given back faster than record by record
}

} // namespace report
