// SPDX-License-Identifier: MIT
#include "report/tresk_run.h"

#include "driver/tk_main.h"
#include "support/transcript.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace report
{

namespace
{

bool write_whole(int to, const std::string &text)
{
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t wrote = write(to, text.data() + done, text.size() - done);
        if (wrote < 0 && errno != EINTR) {
            return false;
        }
        done += wrote > 0 ? static_cast<std::size_t>(wrote) : 0;
    }
    return true;
}

std::string read_whole(int from)
{
    std::string text;
    char piece[1 << 14];
    for (;;) {
        const ssize_t got = read(from, piece, sizeof piece);
        if (got > 0) {
            text.append(piece, static_cast<std::size_t>(got));
        } else if (got == 0 || errno != EINTR) {
            return text;
        }
    }
}

[[noreturn]] void run_and_end(const std::vector<std::string> &arguments, Listener &heard,
                              const std::function<std::string()> &answer, int to)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL); // nobody waits for the answer then
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    if (nowhere >= 0) {
        dup2(nowhere, STDIN_FILENO);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
    }
    listener = &heard;
    run_tresk_on(arguments);
    listener = nullptr;
    bool is_answered = false;
    try {
        is_answered = write_whole(to, answer());
    } catch (const std::exception &) {
        is_answered = false;
    }
    _exit(is_answered ? 0 : 1);
}

[[noreturn]] void fail(const char *what)
{
    throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
}

} // namespace

int run_tresk_on(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), "tresk");
    std::vector<char *> argv;
    argv.reserve(arguments.size() + 1);
    for (std::string &argument : arguments) {
        argv.push_back(argument.data());
    }
    const int argc = static_cast<int>(argv.size());
    argv.push_back(nullptr);
    return run_tresk(argc, argv.data());
}

std::string end_text(int wait_status)
{
    if (WIFSIGNALED(wait_status)) {
        const int number = WTERMSIG(wait_status);
        return "ended by signal " + std::to_string(number) + " (" + strsignal(number) + ")";
    }
    return "ended with exit code " + std::to_string(WEXITSTATUS(wait_status));
}

std::string run_apart(const std::vector<std::string> &arguments, Listener &heard,
                      const std::function<std::string()> &answer)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        fail("cannot make a pipe");
    }
    std::fflush(nullptr);
    transcript_flush();
    const pid_t child = fork();
    if (child < 0) {
        close(ends[0]);
        close(ends[1]);
        fail("cannot start a process");
    }
    if (child == 0) {
        close(ends[0]);
        run_and_end(arguments, heard, answer, ends[1]);
    }
    close(ends[1]);
    std::string text = read_whole(ends[0]);
    close(ends[0]);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || text.empty()) {
        throw NoGrade("the comparison " + end_text(status) + " without a grade");
    }
    return text;
}

} // namespace report
