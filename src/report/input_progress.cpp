// SPDX-License-Identifier: MIT
#include "report/input_progress.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <sys/wait.h>

namespace report
{

InputProgress::InputProgress(pid_t reader, const std::string &golden, const std::string &regression,
                             bool is_wanted)
    : reader_(reader), is_wanted_(is_wanted), line_("", 0)
{
    const std::array<const std::string *, 2> paths = {&golden, &regression};
    for (std::size_t i = 0; i < inputs_.size(); ++i) {
        struct stat status {
        };
        if (stat(paths[i]->c_str(), &status) == 0 && S_ISREG(status.st_mode)) {
            inputs_[i] = {status.st_dev, status.st_ino, status.st_size, 0};
        }
    }
}

// Reads the positions of all files that the reader has open. What cannot be looked at is passed over: the
// process may end at any time.
void InputProgress::look()
{
    const std::string process = "/proc/" + std::to_string(reader_);
    std::error_code fault;
    std::filesystem::directory_iterator file(process + "/fd", fault);
    for (; !fault && file != std::filesystem::directory_iterator(); file.increment(fault)) {
        struct stat status {
        };
        if (stat(file->path().c_str(), &status) != 0) {
            continue;
        }
        std::ifstream facts(process + "/fdinfo/" + file->path().filename().string());
        std::string name; // "pos:" comes first
        std::int64_t position = 0;
        facts >> name >> position;
        for (Input &input : inputs_) {
            if (status.st_dev == input.device && status.st_ino == input.inode) {
                input.position = std::clamp(position, input.position, std::max(input.position, input.size));
            }
        }
    }
}

void InputProgress::show_reading()
{
    if (!is_shown() || !line_.is_due()) {
        return;
    }
    look();
    const std::int64_t all = inputs_[0].size + inputs_[1].size;
    const std::int64_t done = inputs_[0].position + inputs_[1].position;
    const bool has_sizes = inputs_[0].size > 0 && inputs_[1].size > 0;
    if (has_sizes && done < all) {
        constexpr double kHundred = 100.0;
        const double part = kHundred * static_cast<double>(done) / static_cast<double>(all);
        line_.show_text("reading: " + std::to_string(static_cast<int>(part)) + " %");
    } else {
        line_.show_text("comparing");
    }
}

int InputProgress::wait_for_end()
{
    constexpr std::timespec kPause = {0, 5000000};
    int status = 0;
    for (pid_t ended = 0; ended == 0 || (ended < 0 && errno == EINTR);) {
        ended = waitpid(reader_, &status, is_shown() ? WNOHANG : 0);
        if (ended == 0) {
            line_.show_text("writing the report");
            nanosleep(&kPause, nullptr);
        }
    }
    wipe();
    return status;
}

} // namespace report
