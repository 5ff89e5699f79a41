// SPDX-License-Identifier: MIT
// Runs commands in turn (A A B B A A B B ..., the second of two counts), each as a whole process with
// its output dropped, and prints for each one line: its median wall time in seconds, its largest
// resident set in KiB and its exit status. In turn, so that a change of the machine's mood hits all of
// them alike.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace
{

constexpr double kLongRun = 4.0; // seconds

struct Command {
    std::vector<char *> argv; // ended by a null pointer
    std::vector<double> seconds;
    long kibibytes = 0;
    int status = 0;
};

[[noreturn]] void die(const char *what)
{
    std::perror(what);
    std::exit(2);
}

// Returns the wall time in seconds.
double run(Command &command)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);

    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    if (posix_spawnp(&child, command.argv[0], &actions, nullptr, command.argv.data(), environ) != 0) {
        die(command.argv[0]);
    }
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) < 0) {
        die("wait4");
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;

    posix_spawn_file_actions_destroy(&actions);
    command.kibibytes = std::max(command.kibibytes, usage.ru_maxrss);
    command.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return elapsed.count();
}

off_t length_of(const char *path)
{
    struct stat about {
    };
    if (stat(path, &about) != 0) {
        die(path);
    }
    return about.st_size;
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

std::vector<Command> parse_commands(char **argv)
{
    std::vector<Command> commands(1);
    for (; *argv != nullptr; ++argv) {
        if (std::strcmp(*argv, "--vs") == 0) {
            commands.emplace_back();
        } else {
            commands.back().argv.push_back(*argv);
        }
    }
    for (Command &command : commands) {
        command.argv.push_back(nullptr);
    }
    return commands;
}

} // namespace

int main(int argc, char **argv)
{
    // A file that every run is to find at its present length, whatever the one before appended.
    const char *kept = argc > 2 && std::strcmp(argv[1], "--keep") == 0 ? argv[2] : nullptr;
    char **next = argv + (kept != nullptr ? 3 : 1);
    const int runs = *next != nullptr ? std::atoi(*next++) : 0;
    if (runs < 1 || *next == nullptr) {
        std::fputs("usage: timed_run [--keep FILE] RUNS COMMAND... [--vs COMMAND...]...\n", stderr);
        return 2;
    }
    const off_t kept_length = kept != nullptr ? length_of(kept) : 0;
    std::vector<Command> commands = parse_commands(next);
    const auto run_once = [kept, kept_length](Command &command) {
        const double seconds = run(command);
        if (kept != nullptr && truncate(kept, kept_length) != 0) {
            die(kept);
        }
        return seconds;
    };
    for (int i = 0; i < runs; ++i) {
        for (Command &command : commands) {
            // The first of two runs gets back what the command before took: the caches, and memory
            // that a virtual machine has handed to its host. A long run does not notice.
            const double first = run_once(command);
            command.seconds.push_back(first < kLongRun ? run_once(command) : first);
        }
    }
    for (const Command &command : commands) {
        std::printf("%.6f %ld %d\n", median(command.seconds), command.kibibytes, command.status);
    }
}
