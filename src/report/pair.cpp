// SPDX-License-Identifier: MIT
#include "report/pair.h"

#include "driver/exit_grade.h"
#include "driver/tk_main.h"
#include "report/comparison.h"
#include "report/digest_job.h"
#include "report/handover.h"
#include "report/input_progress.h"
#include "report/output_folder.h"
#include "report/relay.h"
#include "report/report_files.h"
#include "report/text.h"
#include "report/tresk_run.h"
#include "report/words.h"
#include "support/transcript.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>

namespace report
{

namespace
{

// The two ends of a pipe, closed at the end.
struct Pipe {
    int read_end = -1;
    int write_end = -1;

    Pipe()
    {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) {
            throw std::runtime_error(std::string("cannot make a pipe: ") + std::strerror(errno));
        }
        read_end = ends[0];
        write_end = ends[1];
    }
    Pipe(const Pipe &) = delete;
    Pipe &operator=(const Pipe &) = delete;
    ~Pipe()
    {
        close_end(read_end);
        close_end(write_end);
    }
    static void close_end(int &end)
    {
        if (end >= 0) {
            close(end);
            end = -1;
        }
    }
};

void print_message(const std::string &text)
{
    transcript_puts("tresk-report: " + text + "\n");
    transcript_flush();
}

// NAME.report of the path .../NAME.
std::string usual_folder(const std::string &path)
{
    const std::size_t last = path.find_last_not_of('/');
    const std::string whole = last == std::string::npos ? "" : path.substr(0, last + 1);
    const std::string name = whole.substr(whole.find_last_of('/') + 1);
    return (name.empty() || name == "." || name == ".." ? "pair" : name) + ".report";
}

// One run of tresk and its report.
class PairRun
{
  public:
    explicit PairRun(const PairOptions &options)
        : options_(options),
          path_(options.out.empty() ? usual_folder(options.arguments.regression) : options.out)
    {
    }

    int run()
    {
        open_folder();
        start_comparison();
        relay_transcript();
        wait_for_end();
        if (!handover_->has_grade) {
            write_what_is_left();
        }
        finish_report();
        if (!handover_->has_grade) {
            return kNoGrade;
        }
        return fault_.empty() ? handover_->grade : kNotWritten;
    }

  private:
    void open_folder();
    void start_comparison();
    void relay_transcript();
    int transcript_file();
    void wait_for_end();
    void write_what_is_left();
    void finish_report();
    void print_path() const;

    const PairOptions &options_;
    std::string path_;
    std::unique_ptr<OutputFolder> folder_; // null where nothing can be written
    std::string fault_;                    // why there is no report
    std::string died_;
    double seconds_ = 0.0; // until the end of the transcript
    SharedHandover handover_;
    Pipe transcript_;
    Pipe go_;
    pid_t child_ = -1;
    std::optional<InputProgress> progress_; // of the child
};

// A report that cannot be written is no reason not to compare.
void PairRun::open_folder()
{
    try {
        folder_ = std::make_unique<OutputFolder>(path_);
    } catch (const WriteFault &fault) {
        fault_ = fault.what();
    }
}

void PairRun::start_comparison()
{
    std::fflush(nullptr);
    child_ = fork();
    if (child_ < 0) {
        throw std::runtime_error(std::string("cannot start a process: ") + std::strerror(errno));
    }
    if (child_ == 0) {
        Pipe::close_end(transcript_.read_end);
        Pipe::close_end(go_.write_end);
        compare_and_end(options_, folder_.get(), {transcript_.write_end, go_.read_end}, *handover_);
    }
    Pipe::close_end(transcript_.write_end);
    Pipe::close_end(go_.read_end);
    progress_.emplace(child_, options_.arguments.golden, options_.arguments.regression, !options_.quiet);
}

void PairRun::relay_transcript()
{
    const auto start = std::chrono::steady_clock::now();
    DigestJob digests({{options_.arguments.golden, handover_->digests[0]},
                       {options_.arguments.regression, handover_->digests[1]}});
    Relay relay(transcript_.read_end, transcript_file(), options_.quiet, *progress_);
    relay.run();
    seconds_ = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (relay.file_error() != 0) {
        fault_ = "cannot write " + terminal_line(folder_->path_of(kTranscriptFile)) + ": " +
                 std::strerror(relay.file_error());
    }
    digests.wait();
    handover_->transcript_is_whole = relay.is_whole();
    const ssize_t sent = write(go_.write_end, "g", 1); // fails when the child has died
    static_cast<void>(sent);
}

// Returns its descriptor, or -1.
int PairRun::transcript_file()
{
    try {
        return folder_ ? folder_->create(kTranscriptFile) : -1;
    } catch (const WriteFault &fault) {
        fault_ = fault.what();
        return -1;
    }
}

void PairRun::wait_for_end()
{
    const int status = progress_->wait_for_end();
    const std::string end = end_text(status);
    if (handover_->has_grade) {
        if (fault_.empty() && !handover_->is_written) {
            fault_ = handover_->fault[0] != '\0' ? handover_->fault : "the process that wrote it " + end;
        }
        return;
    }
    died_ = "the comparison " + end + " without a grade";
    if (WIFSIGNALED(status)) { // the transcript has no word about that
        print_message(died_);
    }
}

// A report without findings, that says why.
void PairRun::write_what_is_left()
{
    if (!folder_ || !fault_.empty()) {
        return;
    }
    Result result = result_of_progress(*handover_);
    put_arguments(options_.arguments, result);
    take_digests(*handover_, result);
    result.died = died_;
    result.seconds = seconds_;
    try {
        write_report_files(*folder_, result, {}, options_);
    } catch (const WriteFault &fault) {
        fault_ = fault.what();
    }
}

void PairRun::finish_report()
{
    if (folder_ && fault_.empty()) {
        try {
            folder_->commit();
            print_path();
            return;
        } catch (const WriteFault &fault) {
            fault_ = fault.what();
        }
    }
    if (folder_) {
        folder_->abandon();
    }
    const int grade = handover_->has_grade ? handover_->grade : kNoGrade;
    print_message("no report of this " + std::string(grade_word(grade)) + ": " + fault_);
}

void PairRun::print_path() const
{
    const bool has_page = access(folder_->path_of(kPageFile).c_str(), F_OK) == 0;
    if (has_page && !options_.quiet) {
        std::printf("%s\n", terminal_line(folder_->path_of(kPageFile)).c_str());
        std::fflush(stdout);
    }
}

} // namespace

int run_pair(const PairOptions &options)
{
    prepare_process();
    try {
        return PairRun(options).run();
    } catch (const FolderRefused &refused) {
        print_message(refused.what());
        return kWrongCall;
    } catch (const std::exception &fault) {
        print_message(fault.what());
        return kNoGrade;
    }
}

} // namespace report
